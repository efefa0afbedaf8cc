// What the recorder's window is made of.
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>
#include <exception>
#include <functional>

#include "platform/Dialogs.h"
#include "platform/version.h"
#include "recorder/LevelMeter.h"
#include "recorder/RecorderLook.h"
#include "recorder/RecorderWindow.h"

namespace recorder {

QString TimeText(double seconds) {
  const auto tenths = static_cast<qint64>(std::floor(seconds * 10));
  const qint64 minutes = tenths / 600;
  const QString rest = QString("%1.%2").arg(tenths / 10 % 60, 2, 10, QChar('0')).arg(tenths % 10);
  if (minutes < 60) return QString("%1:%2").arg(minutes).arg(rest);
  return QString("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, QChar('0')).arg(rest);
}

QAction* RecorderWindow::AddAction(const char* name, const QIcon& icon, const QString& text,
                                   const QString& tip, const QList<QKeySequence>& keys,
                                   void (RecorderWindow::*routine)()) {
  auto* action = new QAction(icon, text, this);
  action->setObjectName(name);
  // Left to itself a button shows the text without its dots and its underlined letter.
  action->setIconText(text);
  action->setShortcuts(keys);
  action->setToolTip(QString("%1 (%2)").arg(tip, keys.first().toString(QKeySequence::NativeText)));
  connect(action, &QAction::triggered, this, [this, routine] {
    Guarded([this, routine] {
      (this->*routine)();
      ShowState();
    });
  });
  addAction(action);
  return action;
}

void RecorderWindow::MakeActions() {
  record_ = AddAction("Record", SignIcon(Sign::Record), tr("&Record"), tr("Begin a new recording"),
                      {QKeySequence(Qt::CTRL | Qt::Key_R)}, &RecorderWindow::Record);
  stop_ =
      AddAction("Stop", SignIcon(Sign::Stop), tr("S&top"), tr("Stop recording or listening"),
                {QKeySequence(Qt::CTRL | Qt::Key_T), QKeySequence(Qt::Key_Escape)}, &RecorderWindow::Stop);
  listen_ = AddAction("Listen", SignIcon(Sign::Listen), tr("&Listen"), tr("Hear what was recorded"),
                      {QKeySequence(Qt::CTRL | Qt::Key_L)}, &RecorderWindow::Listen);
  save_ = AddAction("Save", SignIcon(Sign::Save), tr("&Save as..."), tr("Save the recording as a wave file"),
                    {QKeySequence(Qt::CTRL | Qt::Key_S)}, &RecorderWindow::SaveAs);
}

void RecorderWindow::MakeMenus() {
  QMenu* menu = menuBar()->addMenu(tr("Re&cording"));
  menu->addActions({record_, stop_, listen_});
  menu->addSeparator();
  menu->addAction(save_);
  menu->addSeparator();
  quit_ = menu->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, [this] { close(); });
  QMenu* help = menuBar()->addMenu(tr("&Help"));
  help->addAction(tr("&About the recorder"), this, [this] { About(); })->setObjectName("About");
}

void RecorderWindow::MakeBody() {
  setWindowTitle(tr("Recorder") + "[*]");
  auto* body = new QWidget(this);
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(14, 12, 14, 12);
  rows->setSpacing(10);

  auto* device_row = new QHBoxLayout;
  auto* caption = new QLabel(tr("Record &from"), body);
  devices_ = new QComboBox(body);
  devices_->setObjectName("Devices");
  devices_->setAccessibleName(tr("Recording device"));
  devices_->setPlaceholderText(tr("No recording device"));
  devices_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  devices_->setMinimumContentsLength(24);
  caption->setBuddy(devices_);
  device_row->addWidget(caption);
  device_row->addWidget(devices_);
  rows->addLayout(device_row);

  auto* level_row = new QHBoxLayout;
  time_ = new QLabel(body);
  time_->setObjectName("Time");
  time_->setAccessibleName(tr("Length"));
  QFont large = time_->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  time_->setFont(large);
  time_->setFixedWidth(QFontMetrics(large).horizontalAdvance("0:00:00.0") + 4);
  meter_ = new LevelMeter(body);
  level_row->addWidget(time_);
  level_row->addWidget(meter_);
  rows->addLayout(level_row);

  auto* button_row = new QHBoxLayout;
  button_row->setSpacing(8);
  for (QAction* action : {record_, stop_, listen_, save_}) {
    auto* button = new QToolButton(body);
    button->setObjectName(action->objectName() + "Button");
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIconSize({20, 20});
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button_row->addWidget(button);
  }
  rows->addLayout(button_row);

  status_ = new QLabel(body);
  status_->setObjectName("Status");
  status_->setAccessibleName(tr("What the recorder is doing"));
  status_->setWordWrap(true);
  status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  status_->setMinimumHeight(3 * status_->fontMetrics().lineSpacing());
  rows->addWidget(status_, 1);
  setCentralWidget(body);

  AskKeep = [this] {
    QMessageBox box(QMessageBox::Question, tr("Recorder"),
                    tr("The recording of %1 isn't saved.").arg(TimeText(take_->Seconds())),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setInformativeText(tr("Without saving it is lost."));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Save      ? Keep::Save
           : answer == QMessageBox::Discard ? Keep::Discard
                                            : Keep::Cancel;
  };
  AskPath = [this](const QString& proposal) {
    QFileDialog dialog(this, tr("Save the recording"), proposal, tr("Wave files (*.wav)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    platform::GiveColumnsRoom(dialog);
    dialog.setDefaultSuffix("wav");
    dialog.selectFile(proposal);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
  };
  Tell = [this](const QString& text) { QMessageBox::warning(this, tr("Recorder"), text); };
}

void RecorderWindow::About() {
  QMessageBox::about(
      this, tr("About the recorder"),
      tr("Recorder of the exposure sheet, version %1.\n\nIt records one channel of 16 bits at %2 samples a "
         "second and saves wave files that the exposure sheet opens.")
          .arg(platform::kVersion)
          .arg(kForm.frames_per_second));
}

void RecorderWindow::Say(const QString& text, bool warning) {
  status_->setText(text);
  status_->setProperty("about", {});
  status_->setStyleSheet(warning ? "color: #f0a59c" : "");
}

void RecorderWindow::Guarded(const std::function<void()>& routine) {
  // An exception must not pass through the toolkit's event loop. The take stays as it is.
  try {
    routine();
  } catch (const std::exception& failure) {
    Tell(tr("Something has gone wrong: %1").arg(failure.what()));
  }
}

}  // namespace recorder
