// What ties the application's life to its windows. For the platform layer and for those who make the
// application.
#pragma once

#include <memory>
#include <string>

class QApplication;
class QWidget;

namespace platform {

/// The toolkit's application object. Every event comes through RunEvent's boundary, whatever it is and
/// whoever receives it.
std::unique_ptr<QApplication> MakeApplication(int& argument_count, char** arguments);

/// How a program is called on the error output, on its boxes and at the start of a sentence.
struct ProgramWords {
  std::string program = "exposure-sheet", title = "Exposure Sheet", subject = "The exposure sheet";
};
void SpeakOfProgram(ProgramWords words);
const std::string& ProgramTitle();

/// Sets the application's names, style and icon. The toolkit's application object must exist.
void PrepareApplication();

/// How many windows are loaded.
int LoadedWindowCount();

/// The eldest window on the screen, for what needs one to stand over; null if there is none.
QWidget* VisibleWindow();

/// Ends the event loop later, if by then no window is loaded and nothing keeps the process alive.
void WindowCountHasChanged();

/// Deletes every window object, loaded or not, without asking; the toolkit must not outlive its widgets'
/// owner.
void DestroyAllWindows();

}  // namespace platform
