#include "host/members.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <variant>

namespace host {
namespace {

constexpr auto kMembers = std::to_array<Member>({
    {"Vel_SendFormObject", {ValueKind::Window, ValueKind::Integer}, ValueKind::None},
    {"Vel_GetAppDir", {}, ValueKind::Text},
    {"Vel_WallpaperFilename", {}, ValueKind::Text},
    {"Vel_GetFrameRate", {}, ValueKind::Text},
    {"vel_SetFrameRate", {ValueKind::Number}, ValueKind::None},
    {"vel_BufferWidth", {}, ValueKind::Integer},
    {"vel_BufferHeight", {}, ValueKind::Integer},
    {"vel_GetTotalFrames", {}, ValueKind::Integer},
    {"Vel_GotoFrame", {ValueKind::Frame}, ValueKind::None},
    {"Vel_GotoFrameAdv", {ValueKind::Integer, ValueKind::Integer}, ValueKind::None},
    {"vel_GetRbuffer", {}, ValueKind::Table},
    {"vel_GetGbuffer", {}, ValueKind::Table},
    {"Vel_GetBbuffer", {}, ValueKind::Table},
    {"vel_SetRbuffer", {ValueKind::Table}, ValueKind::None},
    {"vel_SetGBuffer", {ValueKind::Table}, ValueKind::None},
    {"vel_SetBBuffer", {ValueKind::Table}, ValueKind::None},
    {"vel_CreateAnimAdv", {ValueKind::Integer, ValueKind::Integer}, ValueKind::None},
    {"vel_StatusOpen", {ValueKind::Text}, ValueKind::None},
    {"vel_Status", {ValueKind::Number}, ValueKind::None},
    {"vel_StatusClose", {}, ValueKind::None},
});

bool Fits(const Variant& value, ValueKind kind) {
  switch (kind) {
    case ValueKind::None:
      return false;
    case ValueKind::Window:
      return std::holds_alternative<FormObject*>(value) && std::get<FormObject*>(value) != nullptr;
    case ValueKind::Integer:
      return IsWhole(value);
    case ValueKind::Frame:
    case ValueKind::Number:
      return IsWhole(value) || std::holds_alternative<float>(value) || std::holds_alternative<double>(value);
    case ValueKind::Text:
      return std::holds_alternative<std::string>(value);
    case ValueKind::Table:
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
  return static_cast<std::size_t>(std::ranges::find(arguments, ValueKind::None) - arguments.begin());
}

bool IsWhole(const Variant& value) {
  return std::holds_alternative<std::int32_t>(value) || std::holds_alternative<std::int16_t>(value);
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
