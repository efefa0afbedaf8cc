#include "host/variant.h"

#include <array>

#include "platform/numbers.h"

namespace host {

HostError::HostError(std::string_view member, std::string_view reason)
    : std::runtime_error("The host's member " + std::string(member) + " failed: " + std::string(reason)),
      member_(member),
      reason_(reason) {}

std::string_view TypeName(const Variant& value) {
  static constexpr std::array<std::string_view, std::variant_size_v<Variant>> names = {
      "nothing",  "a short integer", "an integer",   "a single",
      "a double", "a text",          "a byte table", "a window"};
  return names[value.index()];
}

namespace {

[[noreturn]] void FailWithType(const Variant& value, std::string_view member, std::string_view expected) {
  throw HostError(member, "it gave " + std::string(TypeName(value)) + " where " + std::string(expected) +
                              " was expected");
}

}  // namespace

std::int32_t AsLong(const Variant& value, std::string_view member) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  if (const auto* number = std::get_if<std::int16_t>(&value)) return *number;
  if (const auto* number = std::get_if<float>(&value)) return platform::RoundToLong(double{*number});
  if (const auto* number = std::get_if<double>(&value)) return platform::RoundToLong(*number);
  FailWithType(value, member, "a number");
}

double AsDouble(const Variant& value, std::string_view member) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* number = std::get_if<float>(&value)) return *number;
  return AsLong(value, member);
}

const std::string& AsText(const Variant& value, std::string_view member) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  FailWithType(value, member, "a text");
}

std::span<const std::uint8_t> AsTable(const Variant& value, std::size_t byte_count, std::string_view member) {
  const auto* table = std::get_if<ByteTable>(&value);
  if (table == nullptr) FailWithType(value, member, "a byte table");
  const bool fits = table->shared ? table->bytes.size() >= byte_count : table->bytes.size() == byte_count;
  if (!fits)
    throw HostError(member, "it gave a table of " + std::to_string(table->bytes.size()) + " bytes where " +
                                std::to_string(byte_count) + " were expected");
  return table->bytes.first(byte_count);
}

}  // namespace host
