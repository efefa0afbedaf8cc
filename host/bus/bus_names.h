// Under which names host and tool meet on the session bus.
#pragma once

#include <cstddef>

namespace host {

inline constexpr const char* kHostService = "Vellumark.Vellumark_Class";
inline constexpr const char* kHostPath = "/Vellumark/Vellumark_Class";
inline constexpr const char* kHostInterface = "Vellumark.Vellumark_Class";
/// The plane members once more, with a descriptor of shared memory in place of the bytes.
inline constexpr const char* kDescriptorsInterface = "Vellumark.Vellumark_Class.Descriptors";

/// A window stands on its tool's connection under "/" and its name.
inline constexpr const char* kFormInterface = "Vellumark.Form";
inline constexpr const char* kShow = "Show";
inline constexpr const char* kPrefsCallback = "PrefsCallback";

inline constexpr const char* kBusService = "org.freedesktop.DBus";
inline constexpr const char* kBusPath = "/org/freedesktop/DBus";
inline constexpr const char* kIntrospectable = "org.freedesktop.DBus.Introspectable";

/// The name of every error that host and tool answer with; the message says the rest.
inline constexpr const char* kErrorName = "Vellumark.Error.Failed";

/// The longest array of bytes that a message of the bus may hold (D-Bus Specification, "Marshaling").
inline constexpr std::size_t kMostBytesInMessage = std::size_t{64} << 20;

}  // namespace host
