#include "timeline/caption_masks.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/numbers.h"
#include "platform/utf8.h"

namespace timeline {
namespace {

using platform::PixelBox;
using platform::RoundToLong;
using platform::TextMask;

/// Longer texts are cut: the widest canvas shows no more of them.
constexpr std::size_t kLongestText = 16384;
/// The most memory that masks may take, whatever texts a sheet holds.
constexpr std::size_t kMostMaskBytes = std::size_t{32} << 20;
/// Digits of the largest 32-bit frame.
constexpr int kMostDigits = 10;

CaptionReach ReachOf(const TextMask& mask) {
  return {mask.left, mask.top, mask.left + mask.width, mask.top + mask.height};
}

}  // namespace

CaptionReach Union(const CaptionReach& a, const CaptionReach& b) {
  if (a.Empty()) return b;
  if (b.Empty()) return a;
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

CaptionMasks::CaptionMasks(MaskMaker make_mask) : make_mask_(std::move(make_mask)) { ForgetTexts(); }

std::int32_t CaptionMasks::NumberOf(const std::string& text) {
  const auto [found, added] = numbers_.try_emplace(text, static_cast<std::int32_t>(texts_.size()));
  if (added) texts_.push_back(text);
  return found->second;
}

void CaptionMasks::ForgetTexts() {
  numbers_ = {{"", 0}};
  texts_ = {""};
  ForgetMasks();
}

void CaptionMasks::ForgetMasks() {
  masks_.clear();
  mask_bytes_ = 0;
  measured_ = 1;
  text_reach_ = {};
  digits_.clear();
}

TextMask CaptionMasks::MakeMask(const std::string& text) const {
  return platform::Trimmed(make_mask_(std::string(platform::CutAtCharacter(text, kLongestText))));
}

const TextMask& CaptionMasks::MaskFor(std::int32_t text) {
  const auto found = masks_.find(text);
  if (found != masks_.end()) return found->second;
  TextMask mask = MakeMask(texts_[static_cast<std::size_t>(text)]);
  mask_bytes_ += mask.coverage.size();
  if (mask_bytes_ > kMostMaskBytes) {
    masks_.clear();
    mask_bytes_ = mask.coverage.size();
  }
  return masks_[text] = std::move(mask);
}

const CaptionReach& CaptionMasks::TextReach() {
  for (; measured_ < texts_.size(); ++measured_)
    text_reach_ = Union(text_reach_, ReachOf(MaskFor(static_cast<std::int32_t>(measured_))));
  return text_reach_;
}

void CaptionMasks::DrawText(const platform::PixelView& view, int x, int y, std::int32_t text,
                            platform::Color color) {
  if (text != 0) platform::BlendMask(view, x, y, MaskFor(text), color);
}

void CaptionMasks::MakeDigits() {
  if (!digits_.empty()) return;
  blank_advance_ = make_mask_(" ").advance;
  CaptionReach reach;
  double widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    digits_.push_back(MakeMask(std::string(1, digit)));
    reach = Union(reach, ReachOf(digits_.back()));
    widest = std::max(widest, digits_.back().advance);
  }
  number_reach_ = reach;
  // Before a number stands a blank.
  number_reach_.left += RoundToLong(blank_advance_);
  number_reach_.right += RoundToLong(blank_advance_ + widest * (kMostDigits - 1)) + 1;
}

const CaptionReach& CaptionMasks::NumberReach() {
  MakeDigits();
  return number_reach_;
}

void CaptionMasks::DrawFrameNumber(const platform::PixelView& view, int x, int y, std::int32_t frame,
                                   platform::Color color) {
  MakeDigits();
  char text[kMostDigits] = {};
  const char* end = std::to_chars(text, text + kMostDigits, frame).ptr;
  double pen = blank_advance_;
  for (const char* digit = text; digit != end; ++digit) {
    const TextMask& mask = digits_[static_cast<std::size_t>(*digit - '0')];
    platform::BlendMask(view, x + RoundToLong(pen), y, mask, color);
    pen += mask.advance;
  }
}

}  // namespace timeline
