// What the application and its windows know of each other. For the platform layer and for test mains.
#pragma once

class QWidget;

namespace platform {

/// Sets the application's names, style and icon. The toolkit's application object must exist.
void PrepareApplication();

/// How many windows are loaded.
int LoadedWindowCount();

/// The eldest window on the screen, for what needs one to stand over; null if there is none.
QWidget* VisibleWindow();

/// Ends the event loop, later, if that leaves nothing to live for.
void WindowCountHasChanged();

/// Deletes every window object, loaded or not, without asking; the toolkit must not outlive its widgets'
/// owner.
void DestroyAllWindows();

}  // namespace platform
