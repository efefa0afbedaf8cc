// The stand-in's members by name: which routine each of them runs.
#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/members.h"
#include "host/standin/animation.h"
#include "host/standin/stand_in.h"
#include "host/variant.h"

namespace host {
namespace {

using Arguments = std::span<const Variant>;

std::int32_t Integer(const Variant& value) { return AsLong(value, {}); }
double Number(const Variant& value) { return AsDouble(value, {}); }
FormObject& Window(const Variant& value) { return *std::get<FormObject*>(value); }
const ByteTable& Table(const Variant& value) { return std::get<ByteTable>(value); }

struct Routine {
  std::string_view member;
  /// Takes arguments that were checked.
  Variant (*run)(StandIn& stand_in, Arguments arguments);
};

/// Stands for `(stand_in.*routine)(); return nothing`.
template <typename Action>
Variant Done(Action&& action) {
  action();
  return {};
}

constexpr auto kRoutines = std::to_array<Routine>({
    {"Vel_SendFormObject",
     [](StandIn& host, Arguments given) { return Done([&] { host.SendFormObject(Window(given[0])); }); }},
    {"Vel_GetAppDir", [](StandIn& host, Arguments) { return Variant(host.GetAppDir()); }},
    {"Vel_WallpaperFilename", [](StandIn& host, Arguments) { return Variant(host.WallpaperFilename()); }},
    {"Vel_GetFrameRate", [](StandIn& host, Arguments) { return Variant(host.RateText()); }},
    {"vel_SetFrameRate",
     [](StandIn& host, Arguments given) { return Done([&] { host.SetFrameRate(Number(given[0])); }); }},
    {"vel_BufferWidth", [](StandIn& host, Arguments) { return Variant(host.BufferWidth()); }},
    {"vel_BufferHeight", [](StandIn& host, Arguments) { return Variant(host.BufferHeight()); }},
    {"vel_GetTotalFrames",
     [](StandIn& host, Arguments) { return Variant(std::int32_t{host.CurrentAnimation().FrameCount()}); }},
    {"Vel_GotoFrame",
     [](StandIn& host, Arguments given) { return Done([&] { host.GotoFrame(Integer(given[0])); }); }},
    {"Vel_GotoFrameAdv",
     [](StandIn& host, Arguments given) { return Done([&] { host.GotoFrameAdv(Integer(given[0])); }); }},
    {"vel_GetRbuffer",
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Red, "vel_GetRbuffer")); }},
    {"vel_GetGbuffer",
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Green, "vel_GetGbuffer")); }},
    {"Vel_GetBbuffer",
     [](StandIn& host, Arguments) { return Variant(host.GetBuffer(Channel::Blue, "Vel_GetBbuffer")); }},
    {"vel_SetRbuffer",
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Red, Table(given[0]), "vel_SetRbuffer"); });
     }},
    {"vel_SetGBuffer",
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Green, Table(given[0]), "vel_SetGBuffer"); });
     }},
    {"vel_SetBBuffer",
     [](StandIn& host, Arguments given) {
       return Done([&] { host.SetBuffer(Channel::Blue, Table(given[0]), "vel_SetBBuffer"); });
     }},
    {"vel_CreateAnimAdv",
     [](StandIn& host, Arguments given) { return Done([&] { host.CreateAnimAdv(Integer(given[0])); }); }},
    {"vel_StatusOpen",
     [](StandIn& host, Arguments given) {
       return Done([&] { host.StatusOpen(std::get<std::string>(given[0])); });
     }},
    {"vel_Status",
     [](StandIn& host, Arguments given) { return Done([&] { host.StatusPercent(Number(given[0])); }); }},
    {"vel_StatusClose", [](StandIn& host, Arguments) { return Done([&] { host.StatusClose(); }); }},
});

}  // namespace

Variant StandIn::Invoke(std::string_view member, Arguments arguments) {
  CheckedMember(member, arguments);
  const auto routine = std::ranges::find(kRoutines, member, &Routine::member);
  if (routine == kRoutines.end()) throw HostError(member, "the stand-in has no routine for it");
  return routine->run(*this, arguments);
}

}  // namespace host
