#include "host/bus/Introspection.h"

#include <QXmlStreamReader>

#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"

namespace host {
namespace {

std::string Interface(const char* name, const std::string& contents) {
  return std::string("<interface name=\"") + name + "\">" + contents + "</interface>";
}

std::string Method(std::string_view name, const std::string& arguments) {
  return "<method name=\"" + std::string(name) + "\">" + arguments + "</method>";
}

std::string Argument(const char* direction, std::string_view type) {
  return std::string("<arg direction=\"") + direction + "\" type=\"" + std::string(type) + "\"/>";
}

std::string Arguments(const Member& member, Planes planes) {
  std::string xml;
  for (std::size_t i = 0; i < member.ArgumentCount(); ++i)
    xml += Argument("in", Signature(member.arguments[i], planes));
  if (member.result != ResultKind::None) xml += Argument("out", Signature(member.result, planes));
  return xml;
}

}  // namespace

std::string HostIntrospection() {
  std::string members, descriptors;
  for (const Member& member : Members()) {
    members += Method(member.name, Arguments(member, Planes::AsBytes));
    if (PassesPlane(member)) descriptors += Method(member.name, Arguments(member, Planes::AsDescriptors));
  }
  return "<node>" + Interface(kHostInterface, members) + Interface(kDescriptorsInterface, descriptors) +
         "</node>";
}

std::string FormIntrospection() {
  return "<node>" +
         Interface(kFormInterface, Method(kShow, "") + Method(kPrefsCallback, "") +
                                       "<property name=\"Name\" type=\"s\" access=\"read\"/>") +
         "</node>";
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
