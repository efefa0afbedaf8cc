#include "host/members.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace host {
namespace {

constexpr auto kMembers = std::to_array<Member>({
    {"Vel_SendFormObject", {ArgumentKind::Window, ArgumentKind::Integer}, ResultKind::None},
    {"Vel_GetAppDir", {}, ResultKind::Text},
    {"Vel_WallpaperFilename", {}, ResultKind::Text},
    {"Vel_GetFrameRate", {}, ResultKind::Text},
    {"vel_SetFrameRate", {ArgumentKind::Number}, ResultKind::None},
    {"vel_BufferWidth", {}, ResultKind::Integer},
    {"vel_BufferHeight", {}, ResultKind::Integer},
    {"vel_GetTotalFrames", {}, ResultKind::Integer},
    {"Vel_GotoFrame", {ArgumentKind::Frame}, ResultKind::None},
    {"Vel_GotoFrameAdv", {ArgumentKind::Integer, ArgumentKind::Integer}, ResultKind::None},
    {"vel_GetRbuffer", {}, ResultKind::Table},
    {"vel_GetGbuffer", {}, ResultKind::Table},
    {"Vel_GetBbuffer", {}, ResultKind::Table},
    {"vel_SetRbuffer", {ArgumentKind::Table}, ResultKind::None},
    {"vel_SetGBuffer", {ArgumentKind::Table}, ResultKind::None},
    {"vel_SetBBuffer", {ArgumentKind::Table}, ResultKind::None},
    {"vel_CreateAnimAdv", {ArgumentKind::Integer, ArgumentKind::Integer}, ResultKind::None},
    {"vel_StatusOpen", {ArgumentKind::Text}, ResultKind::None},
    {"vel_Status", {ArgumentKind::Number}, ResultKind::None},
    {"vel_StatusClose", {}, ResultKind::None},
});

bool Fits(const Variant& value, ArgumentKind kind) {
  const bool whole =
      std::holds_alternative<std::int32_t>(value) || std::holds_alternative<std::int16_t>(value);
  switch (kind) {
    case ArgumentKind::None:
      return false;
    case ArgumentKind::Window:
      return std::holds_alternative<FormObject*>(value) && std::get<FormObject*>(value) != nullptr;
    case ArgumentKind::Integer:
      return whole;
    case ArgumentKind::Frame:
    case ArgumentKind::Number:
      return whole || std::holds_alternative<float>(value) || std::holds_alternative<double>(value);
    case ArgumentKind::Text:
      return std::holds_alternative<std::string>(value);
    case ArgumentKind::Table:
      return std::holds_alternative<ByteTable>(value);
  }
  return false;
}

bool EqualButForCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(
      a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

[[noreturn]] void FailUnknown(std::string_view name) {
  for (const Member& member : kMembers)
    if (EqualButForCase(member.name, name))
      throw HostError(
          name, "there is no member of this name (letter case counts: " + std::string(member.name) + ")");
  throw HostError(name, "there is no member of this name");
}

}  // namespace

std::size_t Member::ArgumentCount() const {
  return static_cast<std::size_t>(std::ranges::find(arguments, ArgumentKind::None) - arguments.begin());
}

std::span<const Member> Members() { return kMembers; }

const Member& FindMember(std::string_view name) {
  const auto found = std::ranges::find(kMembers, name, &Member::name);
  if (found == kMembers.end()) FailUnknown(name);
  return *found;
}

const Member& CheckedMember(std::string_view name, std::span<const Variant> arguments) {
  const Member& member = FindMember(name);
  if (arguments.size() != member.ArgumentCount())
    throw HostError(name, "it takes " + std::to_string(member.ArgumentCount()) + " arguments, not " +
                              std::to_string(arguments.size()));
  for (std::size_t i = 0; i < arguments.size(); ++i)
    if (!Fits(arguments[i], member.arguments[i]))
      throw HostError(
          name, "argument " + std::to_string(i + 1) + " can't be " + std::string(TypeName(arguments[i])));
  return member;
}

}  // namespace host
