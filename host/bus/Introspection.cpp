#include "host/bus/Introspection.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"

namespace host {
namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

void WriteArgument(QXmlStreamWriter& xml, const char* direction, std::string_view type) {
  xml.writeEmptyElement("arg");
  xml.writeAttribute("direction", direction);
  xml.writeAttribute("type", Text(type));
}

void WriteMember(QXmlStreamWriter& xml, const Member& member, Planes planes) {
  xml.writeStartElement("method");
  xml.writeAttribute("name", Text(member.name));
  for (std::size_t i = 0; i < member.ArgumentCount(); ++i)
    WriteArgument(xml, "in", Signature(member.arguments[i], planes));
  if (member.result != ResultKind::None) WriteArgument(xml, "out", Signature(member.result, planes));
  xml.writeEndElement();
}

}  // namespace

std::string HostIntrospection() {
  QByteArray text;
  QXmlStreamWriter xml(&text);
  xml.writeStartElement("node");
  for (const Planes planes : {Planes::AsBytes, Planes::AsDescriptors}) {
    xml.writeStartElement("interface");
    xml.writeAttribute("name", planes == Planes::AsBytes ? kHostInterface : kDescriptorsInterface);
    for (const Member& member : Members())
      if (planes == Planes::AsBytes || PassesPlane(member)) WriteMember(xml, member, planes);
    xml.writeEndElement();
  }
  xml.writeEndElement();
  return text.toStdString();
}

std::map<std::string, std::string, std::less<>> DescriptorMembers(const std::string& introspection) {
  std::map<std::string, std::string, std::less<>> found;
  std::string interface, method;
  QXmlStreamReader xml(QString::fromStdString(introspection));
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const auto attribute = [&](const char* name) {
      return xml.attributes().value(QLatin1String(name)).toString().toStdString();
    };
    if (xml.name() == u"interface") interface = attribute("name");
    if (xml.name() == u"method") method = attribute("name");
    if (xml.name() != u"arg" || attribute("type") != "h") continue;
    const bool comes_out = attribute("direction") == "out";
    for (const Member& member : Members())
      if (member.name == method && PassesPlane(member) && comes_out == (member.result == ResultKind::Table))
        found.emplace(method, interface);
  }
  return found;
}

}  // namespace host
