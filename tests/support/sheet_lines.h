// The fields of a sheet file, to be spoilt one by one and written one to a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

using Fields = std::vector<std::string>;

/// "12| 3 |" gives "12", " 3 " and an empty field.
inline Fields Split(std::string_view barred) {
  Fields fields(1);
  for (const char c : barred) c == '|' ? void(fields.emplace_back()) : fields.back().push_back(c);
  return fields;
}

inline std::string Joined(const Fields& fields, const std::string& end = "\r\n") {
  std::string text;
  for (const std::string& field : fields) text += field + end;
  return text;
}

/// The file with another field on this line, which counts from 1.
inline std::string With(Fields fields, std::size_t line, const std::string& text) {
  fields[line - 1] = text;
  return Joined(fields);
}

}  // namespace support
