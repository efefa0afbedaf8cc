#include "host/bus/Wire.h"

#include <algorithm>

#include "host/bus/bus_names.h"

namespace host {
namespace {

bool IsWhole(const Variant& value) {
  return std::holds_alternative<std::int32_t>(value) || std::holds_alternative<std::int16_t>(value);
}

void WriteBytes(sd_bus_message* message, const ByteTable& table, std::string_view member) {
  if (table.bytes.size() > kMostBytesInMessage)
    throw HostError(member, "a plane of " + std::to_string(table.bytes.size()) +
                                " bytes is more than a message of the bus carries, which is " +
                                std::to_string(kMostBytesInMessage));
  if (sd_bus_message_append_array(message, 'y', table.bytes.data(), table.bytes.size()) < 0)
    throw HostError(member,
                    "there is no memory for a message of " + std::to_string(table.bytes.size()) + " bytes");
}

bool ReadBytes(sd_bus_message* message, Variant& value) {
  const void* bytes = nullptr;
  std::size_t size = 0;
  if (sd_bus_message_read_array(message, 'y', &bytes, &size) < 0) return false;
  const std::shared_ptr<void> owner(sd_bus_message_ref(message), MessageRelease());
  value = ByteTable{{static_cast<const std::uint8_t*>(bytes), size}, owner};
  return true;
}

template <typename T, typename Taker>
bool ReadBasic(sd_bus_message* message, char type, const Taker& take) {
  T value{};
  if (sd_bus_message_read_basic(message, type, &value) <= 0) return false;
  take(value);
  return true;
}

std::string_view WordsFor(std::string_view signature) {
  if (signature == "i") return "an integer";
  if (signature == "n") return "a short integer";
  if (signature == "d") return "a double";
  if (signature == "s") return "a text";
  if (signature == "ay") return "a byte table";
  return signature.empty() ? "nothing" : "another type";
}

}  // namespace

bool PassesPlane(const Member& member) {
  return member.result == ResultKind::Table || member.arguments[0] == ArgumentKind::Table;
}

std::string_view Signature(ArgumentKind kind, Planes planes) {
  static constexpr std::array<std::string_view, 7> signatures = {"", "o", "i", "i", "d", "s", "ay"};
  if (kind == ArgumentKind::Table && planes == Planes::AsDescriptors) return "h";
  return signatures[static_cast<std::size_t>(kind)];
}

std::string_view Signature(ResultKind kind, Planes planes) {
  static constexpr std::array<std::string_view, 4> signatures = {"", "i", "s", "ay"};
  if (kind == ResultKind::Table && planes == Planes::AsDescriptors) return "h";
  return signatures[static_cast<std::size_t>(kind)];
}

void Wire::WritePlane(sd_bus_message* message, const ByteTable& table, std::string_view member) {
  platform::SharedMemory& memory = own_memory_[std::string(member)];
  try {
    memory.Fill(table.bytes);
  } catch (const std::runtime_error& failure) {
    throw HostError(member, failure.what());
  }
  if (sd_bus_message_append(message, "h", memory.Descriptor()) < 0)
    throw HostError(member, "the bus passes no descriptors");
}

void Wire::Write(sd_bus_message* message, std::string_view signature, const Variant& value,
                 const Member& member) {
  if (signature == "i") sd_bus_message_append(message, "i", AsLong(value, member.name));
  if (signature == "d") sd_bus_message_append(message, "d", AsDouble(value, member.name));
  if (signature == "s") sd_bus_message_append(message, "s", BusText(AsText(value, member.name)).c_str());
  if (signature == "ay") WriteBytes(message, std::get<ByteTable>(value), member.name);
  if (signature == "h") WritePlane(message, std::get<ByteTable>(value), member.name);
}

void Wire::WriteArguments(sd_bus_message* call, const Member& member, std::span<const Variant> arguments,
                          Planes planes, const std::function<std::string(FormObject&)>& path_of) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const ArgumentKind kind = member.arguments[i];
    if (kind == ArgumentKind::Window)
      sd_bus_message_append(call, "o", path_of(*std::get<FormObject*>(arguments[i])).c_str());
    else
      // A frame number that is whole goes as an integer, a fractional one as a double.
      Write(call, kind == ArgumentKind::Frame && !IsWhole(arguments[i]) ? "d" : Signature(kind, planes),
            arguments[i], member);
  }
}

void Wire::WriteResult(sd_bus_message* answer, const Member& member, const Variant& result, Planes planes) {
  Write(answer, Signature(member.result, planes), result, member);
}

/// The next value of a message; false behind the last one, and where the message is damaged.
bool Wire::ReadNext(sd_bus_message* message, Variant& value,
                    const std::function<FormObject*(const std::string& path)>& form_of) {
  char type = 0;
  const char* contents = nullptr;
  value = {};
  if (sd_bus_message_peek_type(message, &type, &contents) <= 0) return false;
  if (type == 'i') return ReadBasic<std::int32_t>(message, type, [&](auto number) { value = number; });
  if (type == 'n') return ReadBasic<std::int16_t>(message, type, [&](auto number) { value = number; });
  if (type == 'd') return ReadBasic<double>(message, type, [&](auto number) { value = number; });
  if (type == 's')
    return ReadBasic<const char*>(message, type, [&](auto text) { value = std::string(text); });
  if (type == 'a' && std::string_view(contents) == "y") return ReadBytes(message, value);
  if (type == 'h')
    return ReadBasic<int>(message, type, [&](int file) {
      const auto seen = others_memory_.View(file);
      value = ByteTable{seen.bytes, seen.owner, true};
    });
  if (type == 'o' && form_of)
    return ReadBasic<const char*>(message, type, [&](auto path) { value = form_of(path); });
  return sd_bus_message_skip(message, nullptr) > 0;
}

std::vector<Variant> Wire::ReadArguments(sd_bus_message* call,
                                         const std::function<FormObject*(const std::string& path)>& form_of) {
  std::vector<Variant> values;
  for (Variant value; ReadNext(call, value, form_of);) values.push_back(value);
  return values;
}

Variant Wire::ReadResult(const Member& member, sd_bus_message* answer) {
  if (member.result == ResultKind::None) return {};
  const std::string_view given = sd_bus_message_get_signature(answer, 1);
  const std::string_view wanted = Signature(member.result, Planes::AsBytes);
  Variant result;
  try {
    // Whatever a host has announced, each plane says by its type which way it comes.
    if ((given == wanted || (given == "h" && PassesPlane(member))) && ReadNext(answer, result, {}))
      return result;
  } catch (const std::runtime_error& failure) {
    throw HostError(member.name, failure.what());
  }
  throw HostError(member.name, "it answered with " + std::string(WordsFor(given)) + " where " +
                                   std::string(WordsFor(wanted)) + " was expected");
}

}  // namespace host
