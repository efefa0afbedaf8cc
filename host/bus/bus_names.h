// Under which names host and tool meet on the session bus.
#pragma once

namespace host {

inline constexpr const char* kHostService = "Vellumark.Vellumark_Class";
inline constexpr const char* kHostPath = "/Vellumark/Vellumark_Class";
inline constexpr const char* kHostInterface = "Vellumark.Vellumark_Class";

/// A window stands on its tool's connection under "/" and its name.
inline constexpr const char* kFormInterface = "Vellumark.Form";
inline constexpr const char* kShow = "Show";
inline constexpr const char* kPrefsCallback = "PrefsCallback";

/// The name of every error that host and tool answer with; the message says the rest.
inline constexpr const char* kErrorName = "Vellumark.Error.Failed";

/// Milliseconds that stand for no time limit: either side may think as long as it likes.
inline constexpr int kNoTimeLimit = 0x7FFFFFFF;

}  // namespace host
