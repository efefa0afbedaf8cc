#include "host/MakeHost.h"

#include "host/EmbeddedHost.h"

namespace host {

std::shared_ptr<HostObject> MakeHost() { return MakeEmbeddedHost(); }

}  // namespace host
