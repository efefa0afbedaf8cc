#include "convert/formats/JsonText.h"

#include <QJsonDocument>
#include <algorithm>
#include <string>

namespace convert {

JsonObject ParseJsonObject(std::string_view bytes, std::int64_t first_line) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(
      QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())), &error);
  if (error.error != QJsonParseError::NoError) {
    const auto offset =
        std::clamp<std::ptrdiff_t>(error.offset, 0, static_cast<std::ptrdiff_t>(bytes.size()));
    const auto line = first_line + std::count(bytes.begin(), bytes.begin() + offset, '\n');
    return {std::nullopt,
            {QT_TRANSLATE_NOOP("convert", "line %1: %2"),
             {std::to_string(line), error.errorString().toStdString()}}};
  }
  if (!document.isObject())
    return {std::nullopt, {QT_TRANSLATE_NOOP("convert", "expected a JSON object"), {}}};
  return {document.object(), {}};
}

}  // namespace convert
