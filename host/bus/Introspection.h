// How a host describes itself on the bus, in D-Bus introspection data format.
#pragma once

#include <map>
#include <string>

namespace host {

/// The host's interfaces: the members, and the six that pass planes once more with descriptors.
std::string HostIntrospection();

/// For each plane member the interface in which a host's description lists it with a descriptor (`h`): a
/// getter that gives one, a setter that takes one. Empty for a host that passes bytes alone, and for what
/// isn't such a description.
std::map<std::string, std::string, std::less<>> DescriptorMembers(const std::string& introspection);

}  // namespace host
