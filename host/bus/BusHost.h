// A host in a process of its own, reached over the session bus.
#pragma once

#include <memory>

#include "host/variant.h"

namespace host {

/// The host that owns the host's name on the session bus, or null if there is no bus or no such owner.
///
/// Every call waits for its answer without a time limit. Meanwhile the tool runs what the host calls back
/// (Show and PrefsCallback of the windows that it was handed) and nothing else. A host that answers with an
/// error, with the wrong type, or that has left the bus is a HostError.
std::shared_ptr<HostObject> ConnectToBusHost();

}  // namespace host
