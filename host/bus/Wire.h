// Values between the tool's types and the bus's.
#pragma once

#include <QList>
#include <QVariant>
#include <functional>

#include "host/members.h"

namespace host {

/// The arguments as the member's methods take them. A byte table is lent, not copied: the list must be sent
/// before the table goes. `path_of` gives a window's object path.
QList<QVariant> ToWire(const Member& member, std::span<const Variant> arguments,
                       const std::function<QString(FormObject&)>& path_of);

/// A result as it goes out, lent likewise.
QList<QVariant> ResultToWire(const Variant& result);

/// A value that came in; a byte table owns what came. `form_of` gives the window behind an object path.
/// Nothing (monostate) for a type that no member takes or gives.
Variant FromWire(const QVariant& value, const std::function<FormObject*(const QString& path)>& form_of);

/// What a member answered, of the type that it must have; a HostError that names the member if it has not.
Variant ResultFromWire(const Member& member, const QList<QVariant>& values);

/// The interface as the bus's introspection describes it.
QString HostInterfaceXml();
QString FormInterfaceXml();

}  // namespace host
