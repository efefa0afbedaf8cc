#include "app/HostSession.h"

namespace app {

HostReference HostSession;

host::Variant HostReference::Invoke(std::string_view member, std::span<const host::Variant> arguments) const {
  if (!object_) throw host::HostError(member, "there is no host");
  return object_->Invoke(member, arguments);
}

}  // namespace app
