#include <utility>

#include "app/HostSession.h"
#include "platform/numbers.h"
#include "support/desk.h"
#include "support/recording_host.h"

namespace support {
namespace {

std::string Written(const host::Variant& value) {
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
  return std::visit(Writer{}, value);
}

}  // namespace

host::Variant RecordingHost::Invoke(std::string_view member, std::span<const host::Variant> arguments) {
  std::string call(member);
  call += "(";
  for (const auto& argument : arguments)
    call += (&argument == arguments.data() ? "" : ", ") + Written(argument);
  calls.push_back(call + ")");
  if (member == failing_member_ && --calls_until_failure_ == 0) throw host::HostError(member, "told to fail");
  if (before) before(member);
  return Answer(member, arguments);
}

std::vector<std::string> RecordingHost::Take() { return std::exchange(calls, {}); }

void RecordingHost::FailAt(const std::string& member, int nth) {
  failing_member_ = member;
  calls_until_failure_ = nth;
}

host::Variant RecordingHost::Answer(std::string_view member, std::span<const host::Variant> arguments) {
  if (member == "Vel_SendFormObject") std::get<host::FormObject*>(arguments[0])->ShowForm();
  if (member == "Vel_GetAppDir") return app_dir;
  if (member == "Vel_WallpaperFilename") return wallpaper;
  if (member == "Vel_GetFrameRate") return frame_rate;
  if (member == "vel_BufferWidth") return width;
  if (member == "vel_BufferHeight") return height;
  if (member == "vel_GetTotalFrames") return frames;
  if (member == "Vel_GotoFrame" || member == "Vel_GotoFrameAdv")
    current_frame = host::AsLong(arguments[0], member);
  if (member == "vel_CreateAnimAdv") frames = host::AsLong(arguments[0], member);
  if (member == "vel_GetRbuffer") return Plane(0);
  if (member == "vel_GetGbuffer") return Plane(1);
  if (member == "Vel_GetBbuffer") return Plane(2);
  if (member == "vel_SetRbuffer") return Store(0, arguments[0]);
  if (member == "vel_SetGBuffer") return Store(1, arguments[0]);
  if (member == "vel_SetBBuffer") return Store(2, arguments[0]);
  return {};
}

host::Variant RecordingHost::Plane(int channel) {
  auto& plane = planes[{current_frame, channel}];
  if (plane.empty())
    plane.assign(static_cast<std::size_t>((width + 1) * (height + 1)),
                 static_cast<std::uint8_t>(current_frame * 10 + channel));
  const auto owner = std::make_shared<const std::vector<std::uint8_t>>(plane);
  return host::ByteTable{*owner, owner};
}

host::Variant RecordingHost::Store(int channel, const host::Variant& table) {
  const auto bytes = std::get<host::ByteTable>(table).bytes;
  planes[{current_frame, channel}].assign(bytes.begin(), bytes.end());
  return {};
}

std::shared_ptr<RecordingHost> UseRecordingHost() {
  auto recording = std::make_shared<RecordingHost>();
  recording->app_dir = ScratchFolder();
  app::HostSession.Hold(recording);
  return recording;
}

}  // namespace support
