#include "host/MakeHost.h"

#include "host/BusHost.h"
#include "host/EmbeddedHost.h"

namespace host {

std::shared_ptr<HostObject> MakeHost() {
  if (auto host = ConnectToBusHost()) return host;
  return MakeEmbeddedHost();
}

}  // namespace host
