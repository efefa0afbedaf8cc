#include "host/members.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "host/standin/stand_in.h"

namespace host {
namespace {

using Arguments = std::span<const Variant>;

std::int32_t Integer(const Variant& value) { return AsLong(value, {}); }

double Number(const Variant& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* number = std::get_if<float>(&value)) return *number;
  return Integer(value);
}

FormObject& Window(const Variant& value) { return *std::get<FormObject*>(value); }

/// Stands for `(stand_in.*routine)(); return nothing`.
template <typename Action>
Variant Done(Action&& action) {
  action();
  return {};
}

constexpr auto kMembers = std::to_array<Member>({
    {"Vel_SendFormObject",
     {ArgumentKind::Window, ArgumentKind::Integer},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.SendFormObject(Window(given[0])); }); }},
    {"Vel_GetAppDir",
     {},
     ResultKind::Text,
     [](StandIn& host, Arguments) { return Variant(host.GetAppDir()); }},
    {"Vel_WallpaperFilename",
     {},
     ResultKind::Text,
     [](StandIn& host, Arguments) { return Variant(host.WallpaperFilename()); }},
    {"Vel_GetFrameRate",
     {},
     ResultKind::Text,
     [](StandIn& host, Arguments) { return Variant(host.RateText()); }},
    {"vel_SetFrameRate",
     {ArgumentKind::Number},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.SetFrameRate(Number(given[0])); }); }},
    {"vel_BufferWidth",
     {},
     ResultKind::Integer,
     [](StandIn& host, Arguments) { return Variant(host.BufferWidth()); }},
    {"vel_BufferHeight",
     {},
     ResultKind::Integer,
     [](StandIn& host, Arguments) { return Variant(host.BufferHeight()); }},
    {"vel_GetTotalFrames",
     {},
     ResultKind::Integer,
     [](StandIn& host, Arguments) { return Variant(std::int32_t{host.CurrentAnimation().FrameCount()}); }},
    {"Vel_GotoFrame",
     {ArgumentKind::Frame},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.GotoFrame(Integer(given[0])); }); }},
    {"Vel_GotoFrameAdv",
     {ArgumentKind::Integer, ArgumentKind::Integer},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.GotoFrameAdv(Integer(given[0])); }); }},
    {"vel_GetRbuffer",
     {},
     ResultKind::Table,
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Red, "vel_GetRbuffer")); }},
    {"vel_GetGbuffer",
     {},
     ResultKind::Table,
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Green, "vel_GetGbuffer")); }},
    {"Vel_GetBbuffer",
     {},
     ResultKind::Table,
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Blue, "Vel_GetBbuffer")); }},
    {"vel_SetRbuffer",
     {ArgumentKind::Table},
     ResultKind::None,
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Red, std::get<ByteTable>(given[0]), "vel_SetRbuffer"); });
     }},
    {"vel_SetGBuffer",
     {ArgumentKind::Table},
     ResultKind::None,
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Green, std::get<ByteTable>(given[0]), "vel_SetGBuffer"); });
     }},
    {"vel_SetBBuffer",
     {ArgumentKind::Table},
     ResultKind::None,
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Blue, std::get<ByteTable>(given[0]), "vel_SetBBuffer"); });
     }},
    {"vel_CreateAnimAdv",
     {ArgumentKind::Integer, ArgumentKind::Integer},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.CreateAnimAdv(Integer(given[0])); }); }},
    {"vel_StatusOpen",
     {ArgumentKind::Text},
     ResultKind::None,
     [](StandIn& host, Arguments given) {
       return Done([&] { host.StatusOpen(std::get<std::string>(given[0])); });
     }},
    {"vel_Status",
     {ArgumentKind::Number},
     ResultKind::None,
     [](StandIn& host, Arguments given) { return Done([&] { host.StatusPercent(Number(given[0])); }); }},
    {"vel_StatusClose",
     {},
     ResultKind::None,
     [](StandIn& host, Arguments) { return Done([&] { host.StatusClose(); }); }},
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
