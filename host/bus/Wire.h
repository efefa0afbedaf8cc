// Values between the tool's types and the bus's.
#pragma once

#include <map>
#include <string>

#include "host/bus/Connection.h"
#include "host/members.h"
#include "platform/shared_memory.h"

namespace host {

/// The two ways of a plane over the bus.
enum class Planes { AsBytes, AsDescriptors };

/// The type on the bus, in the bus's own letters. For a Frame that of a whole number, which most frames are.
const char* Letters(ValueKind kind, Planes planes);

/// Writes and reads the values of one end. What it keeps between calls is memory that is shared with the
/// other end: one piece for each member, and what the other has passed.
class Wire {
 public:
  /// Writes an argument as the member takes it, or a result as it gives it. Throws HostError for a plane that
  /// is longer than a message may be, or for which there is no memory to share.
  void Write(sd_bus_message* message, const Member& member, ValueKind kind, const Variant& value,
             Planes planes);

  /// The next value of a message; false behind the last one, and where the message is damaged. A byte table
  /// keeps the message or the mapped memory as its owner. A value of a type that no member takes is nothing
  /// (monostate). Throws std::runtime_error for a descriptor that can't be used.
  bool ReadNext(const Message& message, Variant& value);
  /// What a member answered, of the type that it must have; a HostError that names the member if it has not.
  Variant ReadResult(const Member& member, const Message& answer);

 private:
  std::map<std::string, platform::SharedMemory, std::less<>> own_memory_;
  platform::MappedMemory others_memory_;
};

}  // namespace host
