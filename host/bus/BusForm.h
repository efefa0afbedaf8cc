// A window of the tool as it stands on the bus.
#pragma once

#include <QDBusVirtualObject>
#include <functional>

namespace host {

/// What stands behind a window on the bus.
struct FormRoutines {
  QString name;
  std::function<void()> show, prefs_callback;
};

/// Takes the host's calls to a window in the bus's thread and hands them to the tool's thread. Others than
/// the host are turned away: nothing but the host's own call-backs may run while the tool waits for it.
class BusForm : public QDBusVirtualObject {
 public:
  /// `hand_over` takes a piece of work to the tool's thread.
  BusForm(FormRoutines form, QString host_service, std::function<void(std::function<void()>)> hand_over);

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  QString introspect(const QString& path) const override;

 private:
  bool AnswerProperty(const QDBusMessage& message, const QDBusConnection& connection) const;
  void HandOver(const QDBusMessage& message, const QDBusConnection& connection,
                std::function<void()> routine);

  FormRoutines form_;
  QString host_service_;
  std::function<void(std::function<void()>)> hand_over_;
};

}  // namespace host
