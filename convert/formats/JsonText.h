// JSON with its faults told by line.
#pragma once

#include <QJsonObject>
#include <cstdint>
#include <optional>
#include <string_view>

#include "convert/message.h"

namespace convert {

struct JsonObject {
  std::optional<QJsonObject> object;
  Message failure;
};

/// first_line: the number of the line in the file that the text begins with.
JsonObject ParseJsonObject(std::string_view bytes, std::int64_t first_line = 1);

}  // namespace convert
