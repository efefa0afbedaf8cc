#include "host/bus/Wire.h"

#include <QDBusObjectPath>

#include "host/bus/bus_names.h"

namespace host {
namespace {

QVariant LentTable(const ByteTable& table) {
  return QByteArray::fromRawData(reinterpret_cast<const char*>(table.bytes.data()),
                                 static_cast<qsizetype>(table.bytes.size()));
}

ByteTable OwnedTable(const QByteArray& bytes) {
  auto owner = std::make_shared<const QByteArray>(bytes);
  return {
      {reinterpret_cast<const std::uint8_t*>(owner->constData()), static_cast<std::size_t>(owner->size())},
      owner};
}

double AsDouble(const Variant& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* number = std::get_if<float>(&value)) return *number;
  return AsLong(value, {});
}

bool IsWhole(const Variant& value) {
  return std::holds_alternative<std::int32_t>(value) || std::holds_alternative<std::int16_t>(value);
}

QVariant ToWire(ArgumentKind kind, const Variant& value, const std::function<QString(FormObject&)>& path_of) {
  switch (kind) {
    case ArgumentKind::None:
      break;
    case ArgumentKind::Window:
      return QVariant::fromValue(QDBusObjectPath(path_of(*std::get<FormObject*>(value))));
    case ArgumentKind::Integer:
      return AsLong(value, {});
    case ArgumentKind::Frame:
      return IsWhole(value) ? QVariant(AsLong(value, {})) : QVariant(AsDouble(value));
    case ArgumentKind::Number:
      return AsDouble(value);
    case ArgumentKind::Text:
      return QString::fromStdString(std::get<std::string>(value));
    case ArgumentKind::Table:
      return LentTable(std::get<ByteTable>(value));
  }
  return {};
}

bool HasType(const Variant& value, ResultKind kind) {
  switch (kind) {
    case ResultKind::None:
      return true;
    case ResultKind::Integer:
      return std::holds_alternative<std::int32_t>(value);
    case ResultKind::Text:
      return std::holds_alternative<std::string>(value);
    case ResultKind::Table:
      return std::holds_alternative<ByteTable>(value);
  }
  return false;
}

std::string_view KindName(ResultKind kind) {
  switch (kind) {
    case ResultKind::Integer:
      return "an integer";
    case ResultKind::Text:
      return "a text";
    case ResultKind::Table:
      return "a byte table";
    case ResultKind::None:
      break;
  }
  return "nothing";
}

const char* Signature(ArgumentKind kind) {
  static constexpr std::array signatures = {"", "o", "i", "i", "d", "s", "ay"};
  return signatures[static_cast<std::size_t>(kind)];
}
const char* Signature(ResultKind kind) {
  static constexpr std::array signatures = {"", "i", "s", "ay"};
  return signatures[static_cast<std::size_t>(kind)];
}

}  // namespace

QList<QVariant> ToWire(const Member& member, std::span<const Variant> arguments,
                       const std::function<QString(FormObject&)>& path_of) {
  QList<QVariant> values;
  for (std::size_t i = 0; i < arguments.size(); ++i)
    values << ToWire(member.arguments[i], arguments[i], path_of);
  return values;
}

QList<QVariant> ResultToWire(const Variant& result) {
  if (const auto* number = std::get_if<std::int32_t>(&result)) return {*number};
  if (const auto* text = std::get_if<std::string>(&result)) return {QString::fromStdString(*text)};
  if (const auto* table = std::get_if<ByteTable>(&result)) return {LentTable(*table)};
  return {};
}

Variant FromWire(const QVariant& value, const std::function<FormObject*(const QString& path)>& form_of) {
  if (value.typeId() == QMetaType::Int) return std::int32_t{value.toInt()};
  if (value.typeId() == QMetaType::Short) return static_cast<std::int16_t>(value.toInt());
  if (value.typeId() == QMetaType::Double) return value.toDouble();
  if (value.typeId() == QMetaType::QString) return value.toString().toStdString();
  if (value.typeId() == QMetaType::QByteArray) return OwnedTable(value.toByteArray());
  if (value.metaType() == QMetaType::fromType<QDBusObjectPath>() && form_of)
    return form_of(value.value<QDBusObjectPath>().path());
  return {};
}

Variant ResultFromWire(const Member& member, const QList<QVariant>& values) {
  if (member.result == ResultKind::None) return {};
  Variant result = values.size() == 1 ? FromWire(values[0], {}) : Variant();
  if (HasType(result, member.result)) return result;
  const bool unknown = !values.isEmpty() && std::holds_alternative<std::monostate>(result);
  throw HostError(member.name, "it answered with " +
                                   std::string(unknown ? "another type" : TypeName(result)) + " where " +
                                   std::string(KindName(member.result)) + " was expected");
}

QString HostInterfaceXml() {
  QString xml = QString("  <interface name=\"%1\">\n").arg(kHostInterface);
  for (const Member& member : Members()) {
    xml += QString("    <method name=\"%1\">\n").arg(QString::fromUtf8(member.name.data()));
    for (std::size_t i = 0; i < member.ArgumentCount(); ++i)
      xml += QString("      <arg direction=\"in\" type=\"%1\"/>\n").arg(Signature(member.arguments[i]));
    if (member.result != ResultKind::None)
      xml += QString("      <arg direction=\"out\" type=\"%1\"/>\n").arg(Signature(member.result));
    xml += "    </method>\n";
  }
  return xml + "  </interface>\n";
}

QString FormInterfaceXml() {
  return QString(
             "  <interface name=\"%1\">\n"
             "    <method name=\"%2\"/>\n    <method name=\"%3\"/>\n"
             "    <property name=\"Name\" type=\"s\" access=\"read\"/>\n"
             "  </interface>\n")
      .arg(kFormInterface, kShow, kPrefsCallback);
}

}  // namespace host
