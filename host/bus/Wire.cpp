#include "host/bus/Wire.h"

namespace host {
namespace {

std::string_view WordsFor(std::string_view letters) {
  if (letters == "i") return "an integer";
  if (letters == "n") return "a short integer";
  if (letters == "d") return "a double";
  if (letters == "s") return "a text";
  if (letters == "ay") return "a byte table";
  return letters.empty() ? "nothing" : "another type";
}

void WriteBytes(sd_bus_message* message, std::span<const std::uint8_t> bytes) {
  const std::string size = std::to_string(bytes.size()) + " bytes";
  if (bytes.size() > kMostBytesInMessage)
    throw std::runtime_error("a plane of " + size + " is more than a message of the bus carries, which is " +
                             std::to_string(kMostBytesInMessage));
  if (sd_bus_message_append_array(message, 'y', bytes.data(), bytes.size()) < 0)
    throw std::runtime_error("there is no memory for a message of " + size);
}

bool ReadBytes(const Message& message, Variant& value) {
  const void* bytes = nullptr;
  std::size_t size = 0;
  if (sd_bus_message_read_array(message.get(), 'y', &bytes, &size) < 0) return false;
  value = ByteTable{{static_cast<const std::uint8_t*>(bytes), size}, message};
  return true;
}

}  // namespace

const char* Letters(ValueKind kind, Planes planes) {
  if (kind == ValueKind::Table && planes == Planes::AsDescriptors) return "h";
  static constexpr std::array letters = {"", "o", "i", "i", "d", "s", "ay"};
  return letters[static_cast<std::size_t>(kind)];
}

void Wire::Write(sd_bus_message* message, const Member& member, ValueKind kind, const Variant& value,
                 Planes planes) try {
  // A frame number that is whole goes as an integer, a fractional one as a double.
  const char* letters = kind == ValueKind::Frame && !IsWhole(value) ? "d" : Letters(kind, planes);
  if (*letters == 'o')
    sd_bus_message_append(message, letters, ("/" + std::get<FormObject*>(value)->FormName()).c_str());
  if (*letters == 'i') sd_bus_message_append(message, letters, AsLong(value, member.name));
  if (*letters == 'd') sd_bus_message_append(message, letters, AsDouble(value, member.name));
  if (*letters == 's') sd_bus_message_append(message, letters, BusText(AsText(value, member.name)).c_str());
  if (*letters == 'a') WriteBytes(message, std::get<ByteTable>(value).bytes);
  if (*letters == 'h') {
    platform::SharedMemory& memory = own_memory_[std::string(member.name)];
    memory.Fill(std::get<ByteTable>(value).bytes);
    if (sd_bus_message_append(message, letters, memory.Descriptor()) < 0)
      throw std::runtime_error("the bus passes no descriptors");
  }
} catch (const std::runtime_error& failure) {
  throw HostError(member.name, failure.what());
}

bool Wire::ReadNext(const Message& message, Variant& value) {
  char type = 0;
  const char* contents = nullptr;
  const auto read_as = [&](auto basic) {
    const bool there = sd_bus_message_read_basic(message.get(), type, &basic) > 0;
    if (there) value = basic;
    return there;
  };
  value = {};
  if (sd_bus_message_peek_type(message.get(), &type, &contents) <= 0) return false;
  if (type == 'i') return read_as(std::int32_t{});
  if (type == 'n') return read_as(std::int16_t{});
  if (type == 'd') return read_as(double{});
  if (type == 's') return read_as("");
  if (type == 'a' && std::string_view(contents) == "y") return ReadBytes(message, value);
  if (type != 'h') return sd_bus_message_skip(message.get(), nullptr) > 0;
  if (!read_as(-1)) return false;
  const auto seen = others_memory_.View(std::get<std::int32_t>(value));
  value = ByteTable{seen.bytes, seen.owner, true};
  return true;
}

Variant Wire::ReadResult(const Member& member, const Message& answer) try {
  if (member.result == ValueKind::None) return {};
  const std::string_view given = sd_bus_message_get_signature(answer.get(), 1);
  const std::string_view wanted = Letters(member.result, Planes::AsBytes);
  Variant result;
  // Whatever a host has announced, each plane says by its type which way it comes.
  if ((given == wanted || (given == "h" && member.PassesPlane())) && ReadNext(answer, result)) return result;
  throw std::runtime_error("it answered with " + std::string(WordsFor(given)) + " where " +
                           std::string(WordsFor(wanted)) + " was expected");
} catch (const std::runtime_error& failure) {
  throw HostError(member.name, failure.what());
}

}  // namespace host
