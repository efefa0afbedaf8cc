// Which host the tool works with.
#pragma once

#include <memory>

#include "host/variant.h"

namespace host {

/// The host that runs beside the tool if there is one, else the embedded stand-in. The application must be
/// running.
std::shared_ptr<HostObject> MakeHost();

}  // namespace host
