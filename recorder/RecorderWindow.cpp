#include "recorder/RecorderWindow.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <mutex>
#include <utility>

#include "platform/Dialogs.h"
#include "recorder/LevelMeter.h"
#include "recorder/side_thread.h"

namespace recorder {
namespace {

constexpr int kBusyMilliseconds = 40, kIdleMilliseconds = 1000;
constexpr std::chrono::seconds kSearchPatience{5};

double SecondsSince(std::chrono::steady_clock::time_point then, const Session::Clock& clock) {
  return std::chrono::duration<double>(clock() - then).count();
}

}  // namespace

/// A search for devices that is under way.
struct RecorderWindow::Search {
  std::mutex mutex;
  std::optional<platform::SoundDevices> found;
};

RecorderWindow::RecorderWindow(Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      session_(surroundings_.open, surroundings_.clock),
      folder_(QString::fromStdString(platform::DocumentsFolder())) {
  MakeActions();
  MakeMenus();
  MakeBody();
  timer_.callOnTimeout(this, [this] { Guarded([this] { Tick(); }); });
  Say(tr("Looking for recording devices..."));
  LookForDevices();
  OfferLeftTake();
  ShowState();
}

RecorderWindow::~RecorderWindow() { StopListening(); }

void RecorderWindow::Tick() {
  if (const auto ending = session_.Poll()) HasEnded(*ending);
  TakeDevices();
  const double length = take_ ? take_->Seconds() : 0;
  if (listening_since_ && SecondsSince(*listening_since_, surroundings_.clock) > length) Stop();
  ShowState();
}

void RecorderWindow::Record() {
  if (!MayDropTake()) return;
  Stop();
  take_.reset();
  saved_ = true;
  std::string failure;
  auto take = Take::Begin(surroundings_.take_folder, kForm, failure);
  if (!take)
    return Tell(tr("A recording can't be kept in \"%1\": %2")
                    .arg(QString::fromStdString(surroundings_.take_folder), QString::fromStdString(failure)));
  session_.Start(devices_->currentText().toStdString(), std::move(take));
  Say(tr("Opening \"%1\"...").arg(devices_->currentText()));
}

void RecorderWindow::Stop() {
  StopListening();
  if (!session_.IsRunning()) return;
  session_.Stop();
  HasEnded(session_.Current()->Failure().empty() ? Ending::Asked : Ending::WriteFailed);
}

void RecorderWindow::StopListening() {
  listening_since_.reset();
  if (!player_) return;
  player_->Stop();
  RunAside([player = std::shared_ptr(std::move(player_))]() mutable { player.reset(); });
}

void RecorderWindow::HasEnded(Ending ending) {
  take_ = session_.TakeAway();
  Say(Words(ending), ending != Ending::Asked);
  if (take_->DataBytes() == 0) take_.reset();
  saved_ = take_ == nullptr;
}

QString RecorderWindow::Words(Ending ending) const {
  const QString device = devices_->currentText();
  QString kept = take_->DataBytes() == 0
                     ? tr("Nothing was recorded.")
                     : tr("What was recorded until then is kept: %1.").arg(TimeText(take_->Seconds()));
  QString why;
  switch (ending) {
    case Ending::Asked:
      if (take_->DataBytes() == 0) return kept;
      if (session_.Level().Overloaded())
        return tr(
            "Recorded, but too loud in places: the sound is cut there. Go back from the microphone, or "
            "turn it down, and record again.");
      return tr("Recorded. Listen to it, or save it.");
    case Ending::Refused:
      return tr("\"%1\" can't be opened. Another program may be using it.").arg(device);
    case Ending::NoAnswer:
      why = tr("\"%1\" doesn't answer.").arg(device);
      break;
    case Ending::Gone:
      why = tr("\"%1\" has gone.").arg(device);
      break;
    case Ending::Silent:
      why = tr("\"%1\" delivers no sound any more.").arg(device);
      break;
    case Ending::Overrun:
      why = tr("The disk is too slow for the recording.");
      break;
    case Ending::WriteFailed:
      why = tr("The recording can't be written: %1.").arg(QString::fromStdString(take_->Failure()));
      break;
    case Ending::Full:
      why = tr("The recording has the greatest length that a file can have.");
      break;
  }
  return why + " " + kept;
}

void RecorderWindow::Listen() {
  if (!take_ || session_.IsRunning()) return;
  if (!has_output_) return Say(tr("There is no device to listen with."), true);
  StopListening();
  player_ = std::make_unique<platform::SoundPlayer>(platform::OpenAudioDevice);
  player_->Play(take_->Path());
  listening_since_ = surroundings_.clock();
}

void RecorderWindow::LookForDevices() {
  search_ = std::make_shared<Search>();
  search_began_ = surroundings_.clock();
  RunAside([search = search_, find = surroundings_.find_devices] {
    auto found = find();
    platform::LeaveAudioThread();
    const std::lock_guard lock(search->mutex);
    search->found = std::move(found);
  });
}

void RecorderWindow::TakeDevices() {
  std::unique_lock lock(search_->mutex);
  const auto found = std::exchange(search_->found, std::nullopt);
  lock.unlock();
  if (!found) {
    // A search whose result has been taken is over; any other may be hanging in the sound system.
    const bool waiting = search_.use_count() > 1;
    if (!waiting && !session_.IsRunning()) return LookForDevices();
    if (waiting && !devices_known_ && surroundings_.clock() - search_began_ > kSearchPatience)
      Say(tr("The sound system doesn't answer."), true);
    return;
  }
  const bool first = !std::exchange(devices_known_, true);
  const bool had_some = devices_->count() > 0;
  has_output_ = found->has_output;
  QStringList names;
  for (const std::string& name : found->inputs) names.append(QString::fromStdString(name));
  QStringList shown;
  for (int i = 0; i < devices_->count(); ++i) shown.append(devices_->itemText(i));
  if (names != shown && !session_.IsRunning()) {
    const QString chosen = devices_->currentText();
    devices_->clear();
    devices_->addItems(names);
    devices_->setCurrentIndex(std::max(devices_->findText(chosen), names.isEmpty() ? -1 : 0));
  }
  if (names.isEmpty() && (first || had_some))
    Say(tr("No recording device was found. Connect a microphone, and it appears here."), true);
  if (!names.isEmpty() && !had_some && !take_)
    Say(tr("Press \"Record\" and speak. The loudest places belong between -18 and -6 decibels."));
}

void RecorderWindow::OfferLeftTake() {
  take_ = Take::LeftBehind(surroundings_.take_folder);
  if (!take_) return;
  saved_ = false;
  Say(tr("A recording of %1 wasn't saved when the recorder ended. Here it is: listen to it, or save it.")
          .arg(TimeText(take_->Seconds())));
}

bool RecorderWindow::MayDropTake() {
  if (saved_) return true;
  const Keep keep = AskKeep();
  return keep == Keep::Discard || (keep == Keep::Save && Save());
}

QString RecorderWindow::Proposal() const {
  for (int number = 1;; ++number) {
    const QString name = number == 1 ? tr("recording") : tr("recording %1").arg(number);
    QString path = QDir(folder_).filePath(name + ".wav");
    if (!QFileInfo::exists(path)) return path;
  }
}

bool RecorderWindow::Save() {
  if (!take_) return false;
  QString path = AskPath(Proposal());
  if (path.isEmpty()) return false;
  const std::string failure = take_->SaveAs(path.toStdString());
  if (!failure.empty()) {
    Tell(tr("\"%1\" can't be saved: %2").arg(path, QString::fromStdString(failure)));
    return false;
  }
  saved_ = true;
  folder_ = QFileInfo(path).absolutePath();
  Say(tr("Saved as \"%1\". Open it in the exposure sheet with \"Open Wave file...\".").arg(path));
  return true;
}

void RecorderWindow::SaveAs() { Save(); }

void RecorderWindow::closeEvent(QCloseEvent* event) {
  Guarded([this, event] {
    Stop();
    ShowState();
    if (!MayDropTake()) return event->ignore();
    take_.reset();
    event->accept();
  });
}

void RecorderWindow::ShowState() {
  const bool running = session_.IsRunning();
  const bool busy = running || listening_since_;
  record_->setEnabled(!busy && devices_->count() > 0);
  stop_->setEnabled(busy);
  listen_->setEnabled(!busy && take_);
  save_->setEnabled(!running && take_);
  devices_->setEnabled(!running && devices_->count() > 0);
  if (session_.IsHearing() && status_->property("about") != "hearing") {
    Say(tr("Recording from \"%1\".").arg(devices_->currentText()));
    status_->setProperty("about", "hearing");
  }
  const Take* take = running ? session_.Current() : take_.get();
  double seconds = take ? take->Seconds() : 0;
  if (listening_since_) seconds = SecondsSince(*listening_since_, surroundings_.clock);
  time_->setText(TimeText(seconds));
  meter_->Show(session_.Level(), session_.IsHearing());
  setWindowModified(!saved_ || running);
  const bool quick = busy || !devices_known_;
  timer_.setInterval(quick ? kBusyMilliseconds : kIdleMilliseconds);
  if (!timer_.isActive()) timer_.start();
}

}  // namespace recorder
