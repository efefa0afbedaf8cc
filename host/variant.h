// What passes between the tool and its host: a value of one of a few types, and the failure of a call.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace host {

/// A window as the host sees it: something that it can name, bring up and ask to take on new colours.
class FormObject {
 public:
  virtual ~FormObject() = default;
  virtual std::string FormName() const = 0;
  /// Loads the window, if it is not loaded yet, and shows it.
  virtual void ShowForm() = 0;
  /// Runs the window's public routine PrefsCallback with the window itself.
  virtual void RunPrefsCallback() = 0;
};

/// One colour channel of a frame: unsigned bytes, x from 0 to the top x index fastest, then y from 0 to the
/// top y index, both inclusive. The table doesn't carry its shape: who reads it checks the byte count
/// against the shape that it expects. `owner` keeps the bytes alive and unchanged; it is empty for a table
/// that is only lent for the time of a call. `shared` says that the bytes are memory of another process,
/// which may be longer than the table: its owner keeps them alive, but they change with the next call.
struct ByteTable {
  std::span<const std::uint8_t> bytes;
  std::shared_ptr<const void> owner;
  bool shared = false;
};

using Variant = std::variant<std::monostate, std::int16_t, std::int32_t, float, double, std::string,
                             ByteTable, FormObject*>;

/// A call to the host has failed. The text names the member and gives the host's own words.
class HostError : public std::runtime_error {
 public:
  HostError(std::string_view member, std::string_view reason);
  const std::string& Member() const { return member_; }
  /// The host's own words alone.
  const std::string& Reason() const { return reason_; }

 private:
  std::string member_, reason_;
};

/// The value as a whole number, whatever numeric type carries it; a HostError naming the member otherwise.
std::int32_t AsLong(const Variant& value, std::string_view member);
/// The value as a double, whatever numeric type carries it; a HostError naming the member otherwise.
double AsDouble(const Variant& value, std::string_view member);
/// The value as text; a HostError naming the member if it is not text.
const std::string& AsText(const Variant& value, std::string_view member);
/// The bytes of a table of just `byte_count` bytes, or at the start of shared memory that is at least as
/// long; a HostError naming the member otherwise. They live as long as the value.
std::span<const std::uint8_t> AsTable(const Variant& value, std::size_t byte_count, std::string_view member);

/// The type of a value in words, for messages.
std::string_view TypeName(const Variant& value);

/// The host's automation object: every member is called by name, in exact letter case.
class HostObject {
 public:
  virtual ~HostObject() = default;
  /// Calls a member. Throws HostError if there is no member of just this name, if the arguments don't fit it,
  /// or if the host answers with an error.
  virtual Variant Invoke(std::string_view member, std::span<const Variant> arguments) = 0;
};

}  // namespace host
