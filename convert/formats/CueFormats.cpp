#include <QJsonArray>
#include <QJsonObject>
#include <QXmlStreamReader>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/document.h"
#include "convert/formats/JsonText.h"
#include "convert/formats/ToolkitFormats.h"
#include "convert/formats/cues.h"
#include "convert/lines.h"
#include "convert/message.h"

namespace convert {
namespace {

Message Latest(const std::vector<Cue>& cues) {
  return {QT_TRANSLATE_NOOP("convert", "cue %1"), {std::to_string(cues.size() + 1)}};
}

}  // namespace

Reading ReadCueJson(std::string_view bytes, const Context& context) {
  const JsonObject json = ParseJsonObject(bytes);
  if (!json.object) return {std::nullopt, json.failure, {}};
  const QJsonValue list = json.object->value("mouthCues");
  if (!list.isArray()) return Refused(QT_TRANSLATE_NOOP("convert", "the file has no list \"mouthCues\""));
  std::vector<Cue> cues;
  std::optional<double> end;
  for (const auto& value : list.toArray()) {
    const QJsonObject object = value.toObject();
    const QJsonValue start = object.value("start"), letter = object.value("value");
    if (!start.isDouble() || !letter.isString()) {
      return Refused(QT_TRANSLATE_NOOP("convert",
                                       "%1: expected an object with the number \"start\" and the "
                                       "text \"value\""),
                     {}, {Latest(cues)});
    }
    cues.push_back({start.toDouble(), letter.toString().toStdString(), Latest(cues)});
    if (const auto fault = FaultOf(cues.back(), context)) return {std::nullopt, *fault, {}};
    if (object.value("end").isDouble()) end = object.value("end").toDouble();
  }
  const QJsonObject metadata = json.object->value("metadata").toObject();
  if (metadata.value("duration").isDouble()) end = metadata.value("duration").toDouble();
  return SheetOfCues(cues, end, metadata.value("soundFile").toString().toStdString(), context);
}

Reading ReadCueXml(std::string_view bytes, const Context& context) {
  QXmlStreamReader xml(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (!xml.readNextStartElement() || xml.name() != u"rhubarbResult") {
    if (!xml.hasError()) xml.raiseError("expected the element rhubarbResult");
  }
  std::vector<Cue> cues;
  std::optional<double> end, duration;
  std::string sound;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == u"soundFile") {
      sound = xml.readElementText(QXmlStreamReader::SkipChildElements).toStdString();
    } else if (xml.name() == u"duration") {
      duration =
          WholeNumber(xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed().toStdString());
    } else if (xml.name() == u"mouthCue") {
      const Message place = LineNumbered(xml.lineNumber());
      const auto start = WholeNumber(xml.attributes().value("start").toString().toStdString());
      if (!start)
        return Refused(QT_TRANSLATE_NOOP("convert", "%1: the cue has no start in seconds"), {}, {place});
      end = WholeNumber(xml.attributes().value("end").toString().toStdString());
      const QString letter = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
      cues.push_back({*start, letter.toStdString(), place});
      if (const auto fault = FaultOf(cues.back(), context)) return {std::nullopt, *fault, {}};
    }
  }
  if (xml.hasError()) {
    return Refused(QT_TRANSLATE_NOOP("convert", "line %1: %2"),
                   {std::to_string(xml.lineNumber()), xml.errorString().toStdString()});
  }
  return SheetOfCues(cues, duration ? duration : end, sound, context);
}

}  // namespace convert
