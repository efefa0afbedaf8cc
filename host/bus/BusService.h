// The stand-in as a host for tools in other processes.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <map>
#include <memory>
#include <optional>

#include "host/standin/stand_in.h"

namespace host {

/// A tool's window as the stand-in holds it: its routines are calls over the bus.
class RemoteForm final : public FormObject {
 public:
  RemoteForm(QDBusConnection connection, QString service, QString path)
      : connection_(std::move(connection)), service_(std::move(service)), path_(std::move(path)) {}

  /// The call that handed the window over: it is answered when the window has come up.
  void AnswerWhenShown(const QDBusMessage& call) { handing_over_ = call; }

  std::string FormName() const override { return path_.mid(1).toStdString(); }
  void ShowForm() override;
  void RunPrefsCallback() override;

 private:
  QDBusPendingCall CallTool(const char* routine);

  QDBusConnection connection_;
  QString service_, path_;
  QDBusMessage handing_over_;
};

/// Puts a stand-in on the session bus under the host's name.
class BusService : public QDBusVirtualObject {
 public:
  BusService(std::shared_ptr<StandIn> stand_in, QDBusConnection connection);

  /// Takes the name; otherwise the reason why it can't.
  std::optional<QString> Start();

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  QString introspect(const QString& path) const override;

 private:
  Variant Run(const QDBusMessage& message);
  FormObject* HoldForm(const QDBusMessage& message, const QString& path);
  void ForgetTool(const QString& service);

  std::shared_ptr<StandIn> stand_in_;
  QDBusConnection connection_;
  QDBusServiceWatcher tools_;
  std::map<std::pair<QString, QString>, std::unique_ptr<RemoteForm>> forms_;
  /// The tool that has opened the status display.
  QString status_owner_;
};

}  // namespace host
