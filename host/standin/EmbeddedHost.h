// The stand-in for a paint and animation host, inside the process.
#pragma once

#include <memory>

#include "host/variant.h"

namespace host {

/// Makes the stand-in: an animation that it really holds, every member of the host, a window of its own.
/// The application must be running.
std::shared_ptr<HostObject> MakeEmbeddedHost();

}  // namespace host
