#include "platform/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "platform/Application.h"
#include "platform/DarkGround.h"
#include "platform/HeldEvents.h"
#include "platform/Lifetime.h"
#include "platform/Settings.h"

namespace platform {
namespace {

std::function<Answer(const Message&)> message_answer;
std::function<std::optional<std::string>(const FileQuestion&)> file_answer;
QString last_folder;

/// The window that a dialog stands over. Right after another dialog or window has closed none is active yet,
/// and a box without an owner comes up anywhere, behind its window even.
QWidget* Owner() {
  static QPointer<QWidget> last_owner;
  if (QWidget* active = QApplication::activeWindow()) last_owner = active;
  if (last_owner && last_owner->isVisible()) return last_owner;
  return VisibleWindow();
}

QMessageBox::StandardButtons ToolkitButtons(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return QMessageBox::Ok;
    case Buttons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
  }
  return QMessageBox::Ok;
}

QMessageBox::Icon ToolkitIcon(Icon icon) {
  switch (icon) {
    case Icon::None:
      return QMessageBox::NoIcon;
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Question:
      return QMessageBox::Question;
    case Icon::Warning:
      return QMessageBox::Warning;
  }
  return QMessageBox::NoIcon;
}

/// Shows the normal pointer over a message box that comes up during long work: the box waits for the user,
/// not the user for the box.
class PlainPointer {
 public:
  PlainPointer() {
    if (shown_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~PlainPointer() {
    if (shown_) QApplication::restoreOverrideCursor();
  }
  PlainPointer(const PlainPointer&) = delete;
  PlainPointer& operator=(const PlainPointer&) = delete;

 private:
  const bool shown_ = BusyPointerIsOn();
};

/// Gives the focus back to the window that had it. Desktops hand it to the application's main window when a
/// box over one of its tool windows closes.
class FocusReturn {
 public:
  explicit FocusReturn(QWidget* owner) : owner_(owner) {}
  ~FocusReturn() {
    if (owner_ && owner_->isVisible()) owner_->activateWindow();
  }

 private:
  QPointer<QWidget> owner_;
};

Answer ShowMessage(const Message& message) {
  QWidget* const owner = Owner();
  const FocusReturn focus_return(owner);
  const PlainPointer pointer;
  QMessageBox box(ToolkitIcon(message.icon), QString::fromStdString(ProgramTitle()),
                  QString::fromStdString(message.text), ToolkitButtons(message.buttons), owner);
  DressOver(owner, box);
  box.setTextFormat(Qt::PlainText);
  switch (box.exec()) {
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Ok:
      return Answer::Ok;
    default:
      break;
  }
  if (message.buttons == Buttons::YesNo) return Answer::No;
  return message.buttons == Buttons::OkCancel ? Answer::Cancel : Answer::Ok;
}

/// "Wave|*.wav" as the toolkit writes it, the pattern in capitals too: "Wave (*.wav *.WAV)".
QString ToolkitFilter(const std::string& filter) {
  const QString all = QString::fromStdString(filter);
  const QString pattern = all.section('|', 1);
  return all.section('|', 0, 0) + " (" + pattern + " " + pattern.toUpper() + ");;All files (*)";
}

std::optional<std::string> ShowFileDialog(const FileQuestion& question) {
  const QString folder = last_folder.isEmpty() ? QString::fromStdString(DocumentsFolder()) : last_folder;
  QWidget* const owner = Owner();
  const FocusReturn focus_return(owner);
  QFileDialog dialog(owner, QString::fromStdString(question.title), folder, ToolkitFilter(question.filter));
  DressOver(owner, dialog);
  GiveColumnsRoom(dialog);
  dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setDefaultSuffix(QString::fromStdString(question.filter).section("*.", 1));
  const QFileInfo last(QString::fromStdString(question.file_name));
  if (question.save && !question.proposal.empty()) {
    dialog.selectFile(QString::fromStdString(question.proposal));
  } else if (question.save && !question.file_name.empty()) {
    if (last.absoluteDir().exists()) dialog.setDirectory(last.absoluteDir());
    dialog.selectFile(last.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QString chosen = dialog.selectedFiles().first();
  last_folder = QFileInfo(chosen).absolutePath();
  return chosen.toStdString();
}

}  // namespace

void GiveColumnsRoom(QFileDialog& dialog) {
  auto* files = dialog.findChild<QTreeView*>("treeView");
  auto* places = dialog.findChild<QSplitter*>("splitter");
  if (files == nullptr || places == nullptr) return;  // the desktop's own dialog
  const int letter = dialog.fontMetrics().averageCharWidth();
  const int places_width = 22 * letter;
  int width = 0;
  for (const auto& [column, letters] : {std::pair(0, 40), {1, 14}, {2, 22}, {3, 27}}) {
    files->header()->resizeSection(column, letters * letter);
    width += letters * letter;
  }
  places->setSizes({places_width, width});
  dialog.resize(std::max(dialog.width(), places_width + width + 8 * letter),
                std::max(dialog.height(), 68 * letter));
}

std::string DocumentsFolder() {
  // Where the toolkit looks for the folder's name. A pipe in that place would keep it waiting for good.
  const QString names =
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/user-dirs.dirs";
  if (!MayOpenSettings(names.toStdString())) return QDir::homePath().toStdString();
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return (QFileInfo(documents).isDir() ? documents : QDir::homePath()).toStdString();
}

std::vector<std::string> UserFolders() {
  std::vector<std::string> folders = {DocumentsFolder(), QDir::homePath().toStdString(),
                                      QDir::tempPath().toStdString()};
  folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
  return folders;
}

Answer MsgBox(const std::string& text, Buttons buttons, Icon icon) {
  const Message message{text, buttons, icon};
  return message_answer ? message_answer(message) : ShowMessage(message);
}

class StandingQuestion::Box {
 public:
  Box(const std::string& text, const std::string& yes, const std::string& no)
      : focus_return_(Owner()), box_(Owner()) {
    DressOver(Owner(), box_);
    box_.setWindowTitle(QString::fromStdString(ProgramTitle()));
    box_.setIcon(QMessageBox::Question);
    box_.setTextFormat(Qt::PlainText);
    box_.setText(QString::fromStdString(text));
    QPushButton* const stay = box_.addButton(QString::fromStdString(yes), QMessageBox::AcceptRole);
    leave_ = box_.addButton(QString::fromStdString(no), QMessageBox::RejectRole);
    box_.setDefaultButton(stay);
    box_.setEscapeButton(stay);
    box_.setWindowModality(Qt::ApplicationModal);
    box_.show();
  }

  std::optional<bool> Answer() {
    {
      HeldEvents held(&box_, false);
      held.Handle(QEventLoop::AllEvents);
    }
    if (box_.isVisible()) return std::nullopt;
    return box_.clickedButton() != leave_;
  }

 private:
  FocusReturn focus_return_;
  PlainPointer pointer_;
  QMessageBox box_;
  QPushButton* leave_;
};

StandingQuestion::StandingQuestion(const std::string& text, const std::string& yes, const std::string& no)
    : text_(text), box_(message_answer ? nullptr : std::make_unique<Box>(text, yes, no)) {}

StandingQuestion::~StandingQuestion() = default;

std::optional<bool> StandingQuestion::Answer() {
  if (box_) return box_->Answer();
  return message_answer({text_, Buttons::YesNo, Icon::Question}) == platform::Answer::Yes;
}

void AnswerMessagesWith(std::function<Answer(const Message&)> answer) { message_answer = std::move(answer); }

void AnswerFileDialogsWith(std::function<std::optional<std::string>(const FileQuestion&)> answer) {
  file_answer = std::move(answer);
}

CommonDialog::CommonDialog(std::string title, std::string filter)
    : title_(std::move(title)), filter_(std::move(filter)) {}

bool CommonDialog::ShowOpen() { return Show(false, ""); }
bool CommonDialog::ShowSave(const std::string& proposal) { return Show(true, proposal); }

bool CommonDialog::Show(bool save, const std::string& proposal) {
  const FileQuestion question{save, title_, filter_, FileName, proposal};
  auto chosen = file_answer ? file_answer(question) : ShowFileDialog(question);
  if (!chosen) return false;
  FileName = *std::move(chosen);
  return true;
}

}  // namespace platform
