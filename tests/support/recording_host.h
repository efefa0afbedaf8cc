// A host for tests: it writes down each call with its arguments and answers from a table.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/variant.h"

namespace support {

class RecordingHost : public host::HostObject {
 public:
  host::Variant Invoke(std::string_view member, std::span<const host::Variant> arguments) override;

  /// "Vel_GotoFrame(5)", in the order of the calls. Byte tables show as "[12 bytes]", singles as "5f",
  /// doubles as "5d", short integers as "5s", windows by their name.
  std::vector<std::string> calls;
  /// The calls since the last take.
  std::vector<std::string> Take();

  std::string app_dir, wallpaper, frame_rate = "12";
  std::int32_t width = 4, height = 3, frames = 48;
  std::int32_t current_frame = 0;
  /// Planes by frame and channel 0 to 2; a plane that is missing is made of `frame * 10 + channel`.
  std::map<std::pair<std::int32_t, int>, std::vector<std::uint8_t>> planes;
  /// Runs before a member answers; may throw in its place.
  std::function<void(std::string_view member)> before;
  /// The n-th call (from 1) of this member fails.
  void FailAt(const std::string& member, int nth);

 private:
  host::Variant Answer(std::string_view member, std::span<const host::Variant> arguments);
  host::Variant Plane(int channel);
  host::Variant Store(int channel, const host::Variant& table);

  std::string failing_member_;
  int calls_until_failure_ = 0;
};

/// Holds a fresh recording host as the session's and returns it; its folder is a fresh empty one.
std::shared_ptr<RecordingHost> UseRecordingHost();

}  // namespace support
