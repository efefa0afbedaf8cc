#include "host/HostSession.h"

namespace host {

HostReference HostSession;

Variant HostReference::Invoke(std::string_view member, std::span<const Variant> arguments) const {
  if (!object_) throw HostError(member, "there is no host");
  return object_->Invoke(member, arguments);
}

}  // namespace host
