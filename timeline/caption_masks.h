// The masks of the timeline's captions, made once for each text.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/pixels.h"

namespace timeline {

/// Where a caption's pixels lie, as offsets from its text position; right and bottom are not included.
using CaptionReach = platform::PixelBox;

/// The smallest box that holds both; an empty one adds nothing.
CaptionReach Union(const CaptionReach& a, const CaptionReach& b);

/// Texts go by numbers, so that a sheet's captions can be kept and compared as numbers; 0 is the empty text.
/// Frame numbers are put together from the masks of their digits.
class CaptionMasks {
 public:
  using MaskMaker = std::function<platform::TextMask(const std::string&)>;

  explicit CaptionMasks(MaskMaker make_mask);

  std::int32_t NumberOf(const std::string& text);
  /// Forgets all texts; numbers given before mean nothing any more.
  void ForgetTexts();

  /// Makes all masks anew when they are next wanted: the maker gives another size from now on.
  void ForgetMasks();

  void DrawText(const platform::PixelView& view, int x, int y, std::int32_t text, platform::Color color);
  /// The number's digits after one blank, where a sign would stand. frame 0 or above.
  void DrawFrameNumber(const platform::PixelView& view, int x, int y, std::int32_t frame,
                       platform::Color color);

  /// The box that holds every text's pixels so far; makes the masks that are still to be made.
  const CaptionReach& TextReach();
  /// The box that holds every frame number's pixels.
  const CaptionReach& NumberReach();

  /// A mask of any text, cut to the pixels that it covers. What lies past the widest canvas is not made.
  platform::TextMask MakeMask(const std::string& text) const;

 private:
  const platform::TextMask& MaskFor(std::int32_t text);
  void MakeDigits();

  MaskMaker make_mask_;
  std::unordered_map<std::string, std::int32_t> numbers_;
  std::vector<std::string> texts_;
  /// Made when first drawn or measured; emptied when they grow too big, and made again.
  std::unordered_map<std::int32_t, platform::TextMask> masks_;
  std::size_t mask_bytes_ = 0, measured_ = 0;
  CaptionReach text_reach_;
  std::vector<platform::TextMask> digits_;
  double blank_advance_ = 0;
  CaptionReach number_reach_;
};

}  // namespace timeline
