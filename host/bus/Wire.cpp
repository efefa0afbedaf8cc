#include "host/bus/Wire.h"

#include "host/bus/bus_names.h"

namespace host {
namespace {

const char* Signature(ArgumentKind kind, const Variant& value) {
  static constexpr std::array signatures = {"", "o", "i", "i", "d", "s", "ay"};
  const bool whole =
      std::holds_alternative<std::int32_t>(value) || std::holds_alternative<std::int16_t>(value);
  return kind == ArgumentKind::Frame && !whole ? "d" : signatures[static_cast<std::size_t>(kind)];
}
const char* Signature(ResultKind kind) {
  static constexpr std::array signatures = {"", "i", "s", "ay"};
  return signatures[static_cast<std::size_t>(kind)];
}

void WriteTable(sd_bus_message* message, const ByteTable& table, std::string_view member) {
  if (table.bytes.size() > kMostBytesInMessage)
    throw HostError(member, "a plane of " + std::to_string(table.bytes.size()) +
                                " bytes is more than a message of the bus carries, which is " +
                                std::to_string(kMostBytesInMessage));
  sd_bus_message_append_array(message, 'y', table.bytes.data(), table.bytes.size());
}

void Write(sd_bus_message* message, std::string_view signature, const Variant& value,
           std::string_view member) {
  if (signature == "i") sd_bus_message_append(message, "i", AsLong(value, member));
  if (signature == "d") sd_bus_message_append(message, "d", AsDouble(value, member));
  if (signature == "s") sd_bus_message_append(message, "s", BusText(AsText(value, member)).c_str());
  if (signature == "ay") WriteTable(message, std::get<ByteTable>(value), member);
}

bool ReadTable(sd_bus_message* message, Variant& value) {
  const void* bytes = nullptr;
  std::size_t size = 0;
  if (sd_bus_message_read_array(message, 'y', &bytes, &size) < 0) return false;
  const std::shared_ptr<void> owner(sd_bus_message_ref(message), MessageRelease());
  value = ByteTable{{static_cast<const std::uint8_t*>(bytes), size}, owner};
  return true;
}

template <typename T>
bool ReadBasic(sd_bus_message* message, char type, const std::function<void(T)>& take) {
  T value{};
  if (sd_bus_message_read_basic(message, type, &value) <= 0) return false;
  take(value);
  return true;
}

/// The next value of a message; false behind the last one, and where the message is damaged.
bool ReadNext(sd_bus_message* message, Variant& value,
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
  if (type == 'a' && std::string_view(contents) == "y") return ReadTable(message, value);
  if (type == 'o' && form_of)
    return ReadBasic<const char*>(message, type, [&](auto path) { value = form_of(path); });
  return sd_bus_message_skip(message, nullptr) > 0;
}

std::string_view WordsFor(std::string_view signature) {
  if (signature == "i") return "an integer";
  if (signature == "n") return "a short integer";
  if (signature == "d") return "a double";
  if (signature == "s") return "a text";
  if (signature == "ay") return "a byte table";
  return signature.empty() ? "nothing" : "another type";
}

std::string Argument(const char* direction, const char* type) {
  return std::string("<arg direction=\"") + direction + "\" type=\"" + type + "\"/>";
}

}  // namespace

void WriteArguments(sd_bus_message* call, const Member& member, std::span<const Variant> arguments,
                    const std::function<std::string(FormObject&)>& path_of) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (member.arguments[i] == ArgumentKind::Window)
      sd_bus_message_append(call, "o", path_of(*std::get<FormObject*>(arguments[i])).c_str());
    else
      Write(call, Signature(member.arguments[i], arguments[i]), arguments[i], member.name);
  }
}

void WriteResult(sd_bus_message* answer, const Member& member, const Variant& result) {
  Write(answer, Signature(member.result), result, member.name);
}

std::vector<Variant> ReadArguments(sd_bus_message* call,
                                   const std::function<FormObject*(const std::string& path)>& form_of) {
  std::vector<Variant> values;
  for (Variant value; ReadNext(call, value, form_of);) values.push_back(value);
  return values;
}

Variant ReadResult(const Member& member, sd_bus_message* answer) {
  if (member.result == ResultKind::None) return {};
  const std::string_view wanted = Signature(member.result), given = sd_bus_message_get_signature(answer, 1);
  Variant result;
  if (given == wanted && ReadNext(answer, result, {})) return result;
  throw HostError(member.name, "it answered with " + std::string(WordsFor(given)) + " where " +
                                   std::string(WordsFor(wanted)) + " was expected");
}

std::string HostIntrospection() {
  std::string xml = std::string("<node><interface name=\"") + kHostInterface + "\">";
  for (const Member& member : Members()) {
    xml += "<method name=\"" + std::string(member.name) + "\">";
    for (std::size_t i = 0; i < member.ArgumentCount(); ++i)
      xml += Argument("in", Signature(member.arguments[i], std::int32_t{0}));
    if (member.result != ResultKind::None) xml += Argument("out", Signature(member.result));
    xml += "</method>";
  }
  return xml + "</interface></node>";
}

std::string FormIntrospection() {
  return std::string("<node><interface name=\"") + kFormInterface + "\"><method name=\"" + kShow +
         "\"/><method name=\"" + kPrefsCallback +
         "\"/><property name=\"Name\" type=\"s\" access=\"read\"/></interface></node>";
}

}  // namespace host
