// Values between the tool's types and the bus's.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/bus/Connection.h"
#include "host/members.h"

namespace host {

/// Writes the arguments as the member takes them. `path_of` gives a window's object path. Throws HostError
/// for a byte table that is longer than a message may be.
void WriteArguments(sd_bus_message* call, const Member& member, std::span<const Variant> arguments,
                    const std::function<std::string(FormObject&)>& path_of);

/// Writes a member's result, by the same rules.
void WriteResult(sd_bus_message* answer, const Member& member, const Variant& result);

/// Everything that a call passes. A byte table keeps the message as its owner. `form_of` gives the window
/// behind an object path. A value of a type that no member takes is nothing (monostate).
std::vector<Variant> ReadArguments(sd_bus_message* call,
                                   const std::function<FormObject*(const std::string& path)>& form_of);

/// What a member answered, of the type that it must have; a HostError that names the member if it has not.
Variant ReadResult(const Member& member, sd_bus_message* answer);

/// The interfaces as the bus's introspection describes them.
std::string HostIntrospection();
std::string FormIntrospection();

}  // namespace host
