// Values between the tool's types and the bus's.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/bus/Connection.h"
#include "host/members.h"
#include "platform/shared_memory.h"

namespace host {

/// The two ways of a plane over the bus.
enum class Planes { AsBytes, AsDescriptors };

/// Whether the member gives or takes a plane.
bool PassesPlane(const Member& member);

/// The types on the bus, in the bus's own letters. For a Frame that of a whole number, which most frames are.
std::string_view Signature(ArgumentKind kind, Planes planes);
std::string_view Signature(ResultKind kind, Planes planes);

/// Writes and reads the values of one end. What it keeps between calls is memory that is shared with the
/// other end: one piece for each member, and what the other has passed.
class Wire {
 public:
  /// Writes the arguments as the member takes them. `path_of` gives a window's object path. Throws HostError
  /// for a plane that is longer than a message may be, or for which there is no memory to share.
  void WriteArguments(sd_bus_message* call, const Member& member, std::span<const Variant> arguments,
                      Planes planes, const std::function<std::string(FormObject&)>& path_of);
  /// Writes a member's result, by the same rules.
  void WriteResult(sd_bus_message* answer, const Member& member, const Variant& result, Planes planes);

  /// Everything that a call passes. A byte table keeps the message or the mapped memory as its owner.
  /// `form_of` gives the window behind an object path. A value of a type that no member takes is nothing
  /// (monostate). Throws HostError for a descriptor that can't be used.
  std::vector<Variant> ReadArguments(sd_bus_message* call,
                                     const std::function<FormObject*(const std::string& path)>& form_of);
  /// What a member answered, of the type that it must have; a HostError that names the member if it has not.
  Variant ReadResult(const Member& member, sd_bus_message* answer);

 private:
  void Write(sd_bus_message* message, std::string_view signature, const Variant& value, const Member& member);
  void WritePlane(sd_bus_message* message, const ByteTable& table, std::string_view member);
  bool ReadNext(sd_bus_message* message, Variant& value,
                const std::function<FormObject*(const std::string& path)>& form_of);

  std::map<std::string, platform::SharedMemory, std::less<>> own_memory_;
  platform::MappedMemory others_memory_;
};

}  // namespace host
