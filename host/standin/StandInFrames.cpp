// The stand-in's animations: new ones, pictures in, pictures out, and nothing lost without a question.
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>
#include <string>
#include <utility>
#include <variant>

#include "host/standin/DemoAnimation.h"
#include "host/standin/NewAnimationDialog.h"
#include "host/standin/PictureFiles.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/animation.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/Translation.h"

namespace host {

// The questions come after the dialogs: a tool may write frames, or begin to, while a dialog stands open.

QStringList StandInWindow::AskFiles(const QString& title, const QString& filter, QFileDialog::FileMode mode) {
  QFileDialog dialog(this, title, picture_folder_, filter);
  platform::GiveColumnsRoom(dialog);
  dialog.setFileMode(mode);
  if (mode == QFileDialog::Directory) dialog.setOption(QFileDialog::ShowDirsOnly);
  if (mode == QFileDialog::AnyFile) {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // Whether the numbered pictures are there already is asked later, by their own names.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.selectFile("frame");
  }
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

void StandInWindow::AskNewAnimation() {
  auto animation = AskForNewAnimation(this, stand_in_->CurrentAnimation().Size());
  if (animation && MayReplaceFrames()) stand_in_->TakeAnimation(std::move(*animation));
}

void StandInWindow::OpenDemonstration() {
  if (MayReplaceFrames()) stand_in_->TakeAnimation(DrawDemoAnimation());
}

void StandInWindow::AskPictures() {
  const QStringList files = AskFiles(tr("Open numbered pictures or an animation"),
                                     tr("Pictures (%1)").arg(PicturePatterns()), QFileDialog::ExistingFiles);
  if (!files.isEmpty()) OpenDropped(files);
}

void StandInWindow::OpenDropped(const QStringList& paths) {
  if (QFileInfo(paths.first()).isDir()) return OpenFolder(paths.first());
  picture_folder_ = QFileInfo(paths.first()).absolutePath();
  OpenPictures(SortedByNumber(paths));
}

namespace {

/// Nothing can be dropped while a dialog waits for its answer.
QStringList DroppedPaths(const QDropEvent& event) {
  QStringList paths;
  if (QApplication::activeModalWidget() != nullptr) return paths;
  for (const QUrl& url : event.mimeData()->urls())
    if (url.isLocalFile()) paths << url.toLocalFile();
  return paths;
}

}  // namespace

void StandInWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedPaths(*event).isEmpty()) event->acceptProposedAction();
}

/// The program that the files come from waits until this returns: what may ask the user comes later.
void StandInWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this,
      [this, paths = DroppedPaths(*event)] {
        const platform::ToolkitInUsersLanguage language;
        platform::RunEvent([&] { OpenDropped(paths); });
      },
      Qt::QueuedConnection);
}

void StandInWindow::AskFolder() {
  const QStringList folder = AskFiles(tr("Open a folder of pictures"), {}, QFileDialog::Directory);
  if (!folder.isEmpty()) OpenFolder(folder.first());
}

void StandInWindow::OpenFolder(const QString& folder) {
  picture_folder_ = folder;
  const QStringList files = PicturesIn(folder);
  if (files.isEmpty()) return ShowFailure(tr("There is no picture in the folder \"%1\".").arg(folder));
  OpenPictures(files);
}

void StandInWindow::OpenPictures(const QStringList& files) {
  if (!MayReplaceFrames()) return;
  stand_in_->StatusOpen(tr("Opening pictures...").toStdString());
  platform::ShowUncovered();
  auto result = ReadPictures(files, [this](double percent) { stand_in_->StatusPercent(percent); });
  stand_in_->StatusClose();
  if (const auto* reason = std::get_if<std::string>(&result))
    return ShowFailure(QString::fromStdString(*reason));
  stand_in_->TakeAnimation(std::move(std::get<Animation>(result)));
}

void StandInWindow::AskSave() {
  if (stand_in_->CurrentAnimation().FrameCount() == 0) return;
  const QStringList answer =
      AskFiles(tr("Save as numbered pictures"), tr("PNG pictures (*.png)"), QFileDialog::AnyFile);
  if (answer.isEmpty()) return;
  const QString& chosen = answer.first();
  picture_folder_ = QFileInfo(chosen).absolutePath();
  const QString base = chosen.endsWith(".png", Qt::CaseInsensitive) ? chosen.chopped(4) : chosen;
  if (MayReplacePictures(base) && FramesAreFree()) SaveFrames(base);
}

bool StandInWindow::MayReplacePictures(const QString& base) {
  QStringList standing;
  for (const QString& name : NumberedNames(base, stand_in_->CurrentAnimation().FrameCount()))
    if (QFileInfo::exists(name)) standing << QFileInfo(name).fileName();
  if (standing.isEmpty()) return true;
  const QString text = standing.size() == 1
                           ? tr("The picture %1 is already there. Replace it?").arg(standing.first())
                           : tr("%1 of the pictures are already there, %2 to %3. Replace them?")
                                 .arg(standing.size())
                                 .arg(standing.first(), standing.last());
  return QMessageBox::question(this, windowTitle(), text, QMessageBox::Yes | QMessageBox::No,
                               QMessageBox::No) == QMessageBox::Yes;
}

void StandInWindow::SaveFrames(const QString& base) {
  stand_in_->StatusOpen(tr("Saving pictures...").toStdString());
  platform::ShowUncovered();
  const auto failure = SavePictures(stand_in_->CurrentAnimation(), base,
                                    [this](double percent) { stand_in_->StatusPercent(percent); });
  stand_in_->StatusClose();
  if (failure) return ShowFailure(QString::fromStdString(*failure));
  stand_in_->NoteSaved();
  const int frames = stand_in_->CurrentAnimation().FrameCount();
  ShowNote(frames == 1 ? tr("1 picture saved in %1").arg(picture_folder_)
                       : tr("%1 pictures saved in %2").arg(frames).arg(picture_folder_));
}

bool StandInWindow::MayDropFrames() {
  if (!stand_in_->Unsaved()) return true;
  return QMessageBox::question(this, windowTitle(), tr("These frames aren't saved. Go on without them?"),
                               QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

bool StandInWindow::MayEndWithTool() {
  // A tool that went while it was at work has left its display open.
  if (stand_in_->Status()) stand_in_->StatusClose();
  const platform::ToolkitInUsersLanguage language;
  outlives_tool_ = !MayDropFrames();
  if (!outlives_tool_) return true;
  findChild<QAction*>("Leave")->setText(tr("&Quit"));
  showNormal();
  activateWindow();
  return false;
}

bool StandInWindow::FramesAreFree() {
  if (!stand_in_->Status()) return true;
  ShowFailure(tr("A tool is at work with these frames. Try again when it has finished."));
  return false;
}

bool StandInWindow::MayReplaceFrames() { return MayDropFrames() && FramesAreFree(); }

bool StandInWindow::MayQuit() {
  if (!MayDropFrames()) return false;
  if (stand_in_->Forms().empty()) return true;
  return QMessageBox::question(this, windowTitle(),
                               tr("A tool is at work with these frames and can't go on without them. Quit?"),
                               QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

}  // namespace host
