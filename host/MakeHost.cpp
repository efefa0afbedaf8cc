#include "host/MakeHost.h"

#include "host/bus/BusHost.h"
#include "host/standin/EmbeddedHost.h"

namespace host {

std::shared_ptr<HostObject> MakeHost() {
  if (auto host = ConnectToBusHost()) return host;
  return MakeEmbeddedHost();
}

}  // namespace host
