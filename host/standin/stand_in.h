// The stand-in for a paint and animation host: what its members do, without its window.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/standin/animation.h"
#include "host/standin/frame_size.h"
#include "host/variant.h"

namespace host {

/// The progress display that a tool has opened.
struct StatusDisplay {
  std::string text;
  double percent = 0;
};

/// A frame counts once, however many of its planes are passed, as long as no other comes between.
struct FrameCounts {
  int read = 0, written = 0;
};

/// What shows the stand-in to a user. Told after each change; FrameMoved comes very often and must cost next
/// to nothing.
class StandInView {
 public:
  virtual ~StandInView() = default;
  virtual void FrameMoved() = 0;
  /// The frame that is there was asked for again.
  virtual void FrameKept() = 0;
  virtual void FramePainted() = 0;
  virtual void AnimationChanged() = 0;
  virtual void RateChanged() = 0;
  virtual void StatusChanged() = 0;
  /// A tool has sent a window, which is on its way to the screen.
  virtual void FormSent(FormObject& form) = 0;
};

/// The host's state and the routines behind its members, each named after its member.
class StandIn final : public HostObject {
 public:
  explicit StandIn(Animation animation);

  /// The window that shows this state; it must outlive the stand-in or be taken back with nullptr.
  void SetView(StandInView* view) { view_ = view; }
  void SetAppDir(std::string directory) { app_dir_ = std::move(directory); }
  void SetWallpaper(std::string file_name) { wallpaper_ = std::move(file_name); }

  Variant Invoke(std::string_view member, std::span<const Variant> arguments) override;

  const Animation& CurrentAnimation() const { return animation_; }
  int CurrentFrame() const { return current_frame_; }
  const std::string& RateText() const { return rate_; }
  const std::optional<StatusDisplay>& Status() const { return status_; }
  /// How many frames tools have read and written since they opened the status display; as they left it when
  /// they closed it.
  const FrameCounts& Counts() const { return counts_; }
  /// Whether a tool has written frames that are nowhere else yet.
  bool Unsaved() const { return unsaved_; }
  void NoteSaved() { unsaved_ = false; }
  /// The windows that were handed over, in that order, each once.
  const std::vector<FormObject*>& Forms() const { return forms_; }

  /// Puts another animation in place of the current one; frame 0 becomes current.
  void TakeAnimation(Animation animation);
  /// Holds a window without showing it.
  void KeepForm(FormObject& form);
  /// Forgets a window that is no longer there.
  void DropForm(const FormObject& form);

  void SendFormObject(FormObject& form);
  const std::string& GetAppDir() const { return app_dir_; }
  const std::string& WallpaperFilename() const { return wallpaper_; }
  /// A rate that is not above 0 is not taken.
  void SetFrameRate(double frames_per_second);
  /// Frame width or height; the size that a tool has read last is what its planes are taken to have.
  std::int32_t BufferWidth();
  std::int32_t BufferHeight();
  /// Frames outside the animation stop at its first or last.
  void GotoFrame(std::int32_t frame);
  void GotoFrameAdv(std::int32_t frame);
  ByteTable GetBuffer(Channel channel, std::string_view member);
  void SetBuffer(Channel channel, const ByteTable& table, std::string_view member);
  void CreateAnimAdv(std::int32_t frame_count);
  void StatusOpen(std::string text);
  void StatusPercent(double percent);
  void StatusClose();

 private:
  void RememberSize();
  ByteTable PlaneIn(const ByteTable& memory) const;
  void RequireMemory(std::string_view member, FrameSize size, std::int32_t frames) const;
  void FitSize(std::size_t byte_count, std::string_view member);
  int NearestFrame(std::int32_t frame) const;
  void Tell(void (StandInView::*change)()) {
    if (view_ != nullptr) (view_->*change)();
  }

  StandInView* view_ = nullptr;
  std::string app_dir_, wallpaper_;
  std::string rate_ = "12";
  Animation animation_;
  int current_frame_ = 0;
  /// The frame that the buffer members reach: a user who steps through the frames meanwhile doesn't move it.
  int buffer_frame_ = 0;
  bool unsaved_ = false;
  /// Set from the creation of an animation by a tool until its first plane, which decides its size.
  bool size_open_ = false;
  /// What was free when that animation was created, and what its predecessor held: that can be used again,
  /// but the heap may keep it, so that the operating system doesn't count it as free.
  double memory_for_frames_ = 0;
  /// The sizes that tools have read, the last one first.
  std::vector<FrameSize> read_sizes_;
  std::optional<StatusDisplay> status_;
  FrameCounts counts_;
  /// The frames that were counted last; -1 for none.
  int counted_read_ = -1, counted_write_ = -1;
  std::vector<FormObject*> forms_;
};

}  // namespace host
