// The stand-in as a host for tools in other processes.
#pragma once

#include <QString>
#include <optional>

#include "host/standin/stand_in.h"

namespace host {

/// Puts a stand-in on the session bus under the host's name, as long as what this gives lives. If another has
/// the name, or there is no bus, `problem` says so.
std::shared_ptr<void> ServeOnBus(std::shared_ptr<StandIn> stand_in, std::optional<QString>& problem);

}  // namespace host
