// Message boxes and file dialogs, and the seam at which tests answer them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QFileDialog;

namespace platform {

enum class Buttons { Ok, OkCancel, YesNo };
enum class Icon { None, Information, Question, Warning };
enum class Answer { Ok, Cancel, Yes, No };

struct Message {
  std::string text;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
};

/// Shows a message box with the application's title and waits for its answer. Closing it counts as Cancel,
/// No, or OK where there is nothing else.
Answer MsgBox(const std::string& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None);
/// A question with two answers that is shown during a wait: asking it doesn't block. The box closes when this
/// object is destroyed.
class StandingQuestion {
 public:
  StandingQuestion(const std::string& text, const std::string& yes, const std::string& no);
  ~StandingQuestion();
  StandingQuestion(const StandingQuestion&) = delete;
  StandingQuestion& operator=(const StandingQuestion&) = delete;

  /// Handles what has come for the box, and nothing for other windows but their painting. The answer, if it
  /// is there: closing the box counts as yes.
  std::optional<bool> Answer();

 private:
  class Box;
  std::string text_;
  std::unique_ptr<Box> box_;
};

/// In place of real message boxes; null brings them back.
void AnswerMessagesWith(std::function<Answer(const Message&)> answer);

struct FileQuestion {
  bool save = false;
  std::string title;
  /// Text and pattern: "Wave|*.wav".
  std::string filter;
  /// What was chosen last.
  std::string file_name;
  /// A name for a file that is new, without a folder; empty for none.
  std::string proposal;
};
/// In place of real file dialogs: a path, or nothing for Cancel; null brings them back.
void AnswerFileDialogsWith(std::function<std::optional<std::string>(const FileQuestion&)> answer);

/// The user's folder for documents, or their home where there is none.
std::string DocumentsFolder();
/// Where a file of the user's may be put that has no place of its own: that folder, their home, and the one
/// for temporary files.
std::vector<std::string> UserFolders();

/// The open and save dialogs. They begin in the folder that any of them used last in this run, at first in
/// the user's documents; saving again what has a name, in its own folder. FileName is what was chosen last,
/// or what code has set.
class CommonDialog {
 public:
  CommonDialog(std::string title, std::string filter);
  /// False if the user cancels; FileName then stays.
  bool ShowOpen();
  /// A name without an extension gets the filter's. An existing file is replaced only after a question. A
  /// proposal stands in the dialog in place of FileName.
  bool ShowSave(const std::string& proposal = "");
  std::string FileName;

 private:
  bool Show(bool save, const std::string& proposal);
  std::string title_, filter_;
};

/// The toolkit's own dialog for files begins with columns that cut off sizes and dates.
void GiveColumnsRoom(QFileDialog& dialog);

}  // namespace platform
