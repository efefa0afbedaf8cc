// The one process-wide reference to the running host.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "host/variant.h"

namespace host {

/// Set by `app::Main`, and cleared when all windows are gone.
class HostReference {
 public:
  void Set(std::shared_ptr<HostObject> object) { object_ = std::move(object); }

  /// Calls a member of the host by name: HostSession.Call("Vel_GotoFrame", frame).
  template <typename... Arguments>
  Variant Call(std::string_view member, Arguments&&... arguments) const {
    const std::array<Variant, sizeof...(Arguments)> values{Variant(std::forward<Arguments>(arguments))...};
    return Invoke(member, values);
  }

 private:
  Variant Invoke(std::string_view member, std::span<const Variant> arguments) const {
    if (!object_) throw HostError(member, "there is no host");
    return object_->Invoke(member, arguments);
  }

  std::shared_ptr<HostObject> object_;
};

inline HostReference HostSession;

}  // namespace host
