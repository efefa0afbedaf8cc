// A host for tests: it writes down each call with its arguments and answers from a table.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/variant.h"
#include "platform/numbers.h"

namespace support {

class RecordingHost : public host::HostObject {
 public:
  host::Variant Invoke(std::string_view member, std::span<const host::Variant> arguments) override {
    std::string call = std::string(member) + "(";
    for (const auto& argument : arguments)
      call += (&argument == arguments.data() ? "" : ", ") + std::visit(Writer{}, argument);
    calls.push_back(call + ")");
    if (member == failing_member_ && --calls_until_failure_ == 0)
      throw host::HostError(member, "told to fail");
    if (before) before(member);
    return Answer(member, arguments);
  }

  /// "Vel_GotoFrame(5)", in the order of the calls. Byte tables show as "[12 bytes]", singles as "5f",
  /// doubles as "5d", short integers as "5s", windows by their name.
  std::vector<std::string> calls;
  /// The calls since the last take.
  std::vector<std::string> Take() { return std::exchange(calls, {}); }

  std::string app_dir, wallpaper, frame_rate = "12";
  std::int32_t width = 4, height = 3, frames = 48;
  std::int32_t current_frame = 0;
  /// Planes by frame and channel 0 to 2; a plane that is missing is made of `frame * 10 + channel`.
  std::map<std::pair<std::int32_t, int>, std::vector<std::uint8_t>> planes;
  /// Runs before a member answers; may throw in its place.
  std::function<void(std::string_view member)> before;
  /// The n-th call (from 1) of this member fails.
  void FailAt(const std::string& member, int nth) {
    failing_member_ = member;
    calls_until_failure_ = nth;
  }

 private:
  struct Writer {
    std::string operator()(std::monostate) const { return "nothing"; }
    std::string operator()(std::int16_t number) const { return std::to_string(number) + "s"; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(float number) const { return platform::NumberText(number) + "f"; }
    std::string operator()(double number) const { return platform::NumberText(number) + "d"; }
    std::string operator()(const std::string& text) const { return "\"" + text + "\""; }
    std::string operator()(const host::ByteTable& table) const {
      return "[" + std::to_string(table.bytes.size()) + " bytes]";
    }
    std::string operator()(host::FormObject* form) const { return form->FormName(); }
  };

  host::Variant Answer(std::string_view member, std::span<const host::Variant> arguments) {
    if (member == "Vel_SendFormObject") std::get<host::FormObject*>(arguments[0])->ShowForm();
    if (member == "Vel_GetAppDir") return app_dir;
    if (member == "Vel_WallpaperFilename") return wallpaper;
    if (member == "Vel_GetFrameRate") return frame_rate;
    if (member == "vel_BufferWidth") return width;
    if (member == "vel_BufferHeight") return height;
    if (member == "vel_GetTotalFrames") return frames;
    if (member.starts_with("Vel_GotoFrame")) current_frame = host::AsLong(arguments[0], member);
    if (member == "vel_CreateAnimAdv") frames = host::AsLong(arguments[0], member);
    constexpr std::string_view kGet[] = {"vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer"};
    constexpr std::string_view kSet[] = {"vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer"};
    for (const int channel : {0, 1, 2}) {
      if (member == kGet[channel]) return Plane(channel);
      if (member != kSet[channel]) continue;
      const auto bytes = std::get<host::ByteTable>(arguments[0]).bytes;
      planes[{current_frame, channel}].assign(bytes.begin(), bytes.end());
    }
    return {};
  }

  host::Variant Plane(int channel) {
    auto& plane = planes[{current_frame, channel}];
    if (plane.empty())
      plane.assign(static_cast<std::size_t>(width + 1) * static_cast<std::size_t>(height + 1),
                   static_cast<std::uint8_t>(current_frame * 10 + channel));
    const auto owner = std::make_shared<const std::vector<std::uint8_t>>(plane);
    return host::ByteTable{*owner, owner};
  }

  std::string failing_member_;
  int calls_until_failure_ = 0;
};

}  // namespace support
