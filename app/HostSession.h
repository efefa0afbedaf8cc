// The one process-wide reference to the running host.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "host/variant.h"

namespace app {

/// Set once by `Main`, never cleared before the process ends.
class HostReference {
 public:
  void Hold(std::shared_ptr<host::HostObject> object) { object_ = std::move(object); }

  /// Calls a member of the host by name: HostSession.Call("Vel_GotoFrame", frame).
  template <typename... Arguments>
  host::Variant Call(std::string_view member, Arguments&&... arguments) const {
    const std::array<host::Variant, sizeof...(Arguments)> values{
        host::Variant(std::forward<Arguments>(arguments))...};
    return Invoke(member, values);
  }

 private:
  host::Variant Invoke(std::string_view member, std::span<const host::Variant> arguments) const;

  std::shared_ptr<host::HostObject> object_;
};

extern HostReference HostSession;

}  // namespace app
