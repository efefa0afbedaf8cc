// The recorder's window: device, level, record, stop, listen, save.
#pragma once

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Capture.h"
#include "platform/SoundPlayer.h"
#include "recorder/Session.h"

namespace recorder {

class LevelMeter;

/// What the window has around it; tests put their own in place of the machine's.
struct Surroundings {
  /// Called on a thread of its own; may hang.
  std::function<platform::SoundDevices()> find_devices;
  platform::CaptureOpener open;
  Session::Clock clock;
  /// Where takes are kept until they are saved.
  std::string take_folder;
};

enum class Keep { Save, Discard, Cancel };

/// Shows the seconds as minutes, seconds and tenths, "1:02.5"; from an hour on with the hours, "1:00:02.5".
QString TimeText(double seconds);

class RecorderWindow : public QMainWindow {
  Q_DECLARE_TR_FUNCTIONS(recorder::RecorderWindow)

 public:
  explicit RecorderWindow(Surroundings surroundings);
  ~RecorderWindow() override;

  // The questions and messages, which tests answer.
  /// What to do with a recording that isn't saved.
  std::function<Keep()> AskKeep;
  /// Where to save; empty for nowhere. Gets the proposed path.
  std::function<QString(const QString& proposal)> AskPath;
  std::function<void(const QString& text)> Tell;

  /// What the window does by its timer: looks at the devices, the recording and what is being heard.
  void Tick();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct Search;

  void MakeActions();
  void MakeMenus();
  void MakeBody();
  QAction* AddAction(const char* name, const QIcon& icon, const QString& text, const QString& tip,
                     const QList<QKeySequence>& keys, void (RecorderWindow::*routine)());

  void Record();
  void Stop();
  void StopListening();
  void Listen();
  void SaveAs();
  void About();

  void LookForDevices();
  void TakeDevices();
  void OfferLeftTake();
  bool MayDropTake();
  bool Save();
  QString Proposal() const;
  void HasEnded(Ending ending);
  QString Words(Ending ending) const;
  void Say(const QString& text, bool warning = false);
  void ShowState();
  void Guarded(const std::function<void()>& routine);

  Surroundings surroundings_;
  Session session_;
  /// Only while listening. Destroying it can hang with the sound system, so nobody waits for that.
  std::unique_ptr<platform::SoundPlayer> player_;
  std::unique_ptr<Take> take_;
  bool saved_ = true;
  QString folder_;
  std::shared_ptr<Search> search_;
  bool devices_known_ = false;
  bool has_output_ = false;
  std::chrono::steady_clock::time_point search_began_;
  std::optional<std::chrono::steady_clock::time_point> listening_since_;

  QTimer timer_;
  QComboBox* devices_ = nullptr;
  LevelMeter* meter_ = nullptr;
  QLabel* time_ = nullptr;
  QLabel* status_ = nullptr;
  QAction *record_ = nullptr, *stop_ = nullptr, *listen_ = nullptr, *save_ = nullptr, *quit_ = nullptr;
};

}  // namespace recorder
