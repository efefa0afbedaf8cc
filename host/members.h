// The host's members: their names in exact letter case, what they take and what they give.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "host/variant.h"

namespace host {

/// What an argument or a result may be: Integer a long or short, Frame and Number any numeric type. Between
/// processes a whole Frame goes as an integer and a fractional one as a double; a Number always goes as a
/// double.
enum class ValueKind { None, Window, Integer, Frame, Number, Text, Table };

struct Member {
  std::string_view name;
  std::array<ValueKind, 2> arguments;
  ValueKind result;

  std::size_t ArgumentCount() const;
  /// Whether it gives or takes a plane.
  bool PassesPlane() const { return result == ValueKind::Table || arguments[0] == ValueKind::Table; }
};

/// Whether the value is a long or a short.
bool IsWhole(const Variant& value);

std::span<const Member> Members();

/// The member of just this name; a HostError if there is none.
const Member& FindMember(std::string_view name);

/// The same, after a check that the arguments fit in number and type; a HostError that names the member if
/// not.
const Member& CheckedMember(std::string_view name, std::span<const Variant> arguments);

}  // namespace host
