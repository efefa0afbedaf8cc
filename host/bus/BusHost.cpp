#include "host/bus/BusHost.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QFileInfo>
#include <QThread>
#include <map>

#include "host/bus/BusForm.h"
#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"
#include "host/bus/call_desk.h"
#include "host/members.h"
#include "platform/Application.h"

namespace host {
namespace {

/// A call on its way: what the bus's thread leaves for the tool's.
struct Answer {
  std::shared_ptr<CallDesk::Ticket> ticket = std::make_shared<CallDesk::Ticket>();
  QDBusMessage message;
};

class BusHost final : public HostObject {
 public:
  BusHost(QDBusConnection connection, QString service);
  ~BusHost() override { Stop(); }

  Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;

 private:
  QString Offer(FormObject& form);
  QDBusMessage Send(const QDBusMessage& call);
  void HandToTool(std::function<void()> work);
  void WatchForLoss();
  void Stop();

  QDBusConnection connection_;
  QString service_;
  std::shared_ptr<CallDesk> desk_ = std::make_shared<CallDesk>();
  /// Lives in thread_: answers and call-backs arrive there, so that they arrive while the tool's thread
  /// waits.
  std::unique_ptr<QObject> receiver_ = std::make_unique<QObject>();
  QThread thread_;
  std::map<FormObject*, std::unique_ptr<BusForm>> forms_;
  /// Windows that the host has and hasn't shown yet. The process waits for it, as no window of its own is
  /// loaded.
  std::map<FormObject*, platform::KeepAlive> unshown_;
};

BusHost::BusHost(QDBusConnection connection, QString service)
    : connection_(std::move(connection)), service_(std::move(service)) {
  receiver_->moveToThread(&thread_);
  thread_.setObjectName("bus");
  thread_.start();
  WatchForLoss();
  // The tool holds its host until the process ends, which is later than a thread of the toolkit can live.
  QObject::connect(
      qApp, &QCoreApplication::aboutToQuit, receiver_.get(), [this] { Stop(); }, Qt::DirectConnection);
  QObject::connect(
      qApp, &QObject::destroyed, receiver_.get(), [this] { Stop(); }, Qt::DirectConnection);
}

void BusHost::Stop() {
  thread_.quit();
  thread_.wait();
  forms_.clear();
  unshown_.clear();
}

void BusHost::WatchForLoss() {
  auto* watcher =
      new QDBusServiceWatcher(service_, connection_, QDBusServiceWatcher::WatchForUnregistration, qApp);
  QObject::connect(watcher, &QDBusServiceWatcher::serviceUnregistered, receiver_.get(),
                   [this] { HandToTool([this] { unshown_.clear(); }); });
}

void BusHost::HandToTool(std::function<void()> work) {
  desk_->AddWork(std::move(work));
  // Taken by the call that the tool waits for, if there is one; else by this.
  platform::RunLater([desk = desk_] { desk->RunWaiting(); });
}

QString BusHost::Offer(FormObject& form) {
  const QString name = QString::fromStdString(form.FormName());
  const QString path = "/" + name;
  unshown_.try_emplace(&form);
  auto& offered = forms_[&form];
  if (offered) return path;
  const auto show = [this, &form] {
    form.ShowForm();
    unshown_.erase(&form);
  };
  offered =
      std::make_unique<BusForm>(FormRoutines{name, show, [&form] { form.RunPrefsCallback(); }}, service_,
                                [this](std::function<void()> work) { HandToTool(std::move(work)); });
  offered->moveToThread(&thread_);
  connection_.registerVirtualObject(path, offered.get());
  return path;
}

QDBusMessage BusHost::Send(const QDBusMessage& call) {
  const auto answer = std::make_shared<Answer>();
  const QDBusPendingCall pending = connection_.asyncCall(call, kNoTimeLimit);
  // The watcher must be made in the bus's thread: its signal comes to the thread in which it was made.
  QMetaObject::invokeMethod(receiver_.get(), [pending, answer, desk = desk_, receiver = receiver_.get()] {
    auto* watcher = new QDBusPendingCallWatcher(pending, receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver, [answer, desk, watcher] {
      answer->message = watcher->reply();
      watcher->deleteLater();
      desk->Finish(answer->ticket);
    });
  });
  desk_->WaitFor(answer->ticket);
  return answer->message;
}

std::string FailureText(const QDBusMessage& answer) {
  // Of a host that has gone the bus has only a number to give.
  if (answer.errorName() == "org.freedesktop.DBus.Error.NameHasNoOwner" ||
      answer.errorName() == "org.freedesktop.DBus.Error.ServiceUnknown")
    return "the host is no longer running";
  return (answer.errorMessage().isEmpty() ? answer.errorName() : answer.errorMessage()).toStdString();
}

Variant BusHost::Invoke(std::string_view name, std::span<const Variant> arguments) {
  const Member& member = CheckedMember(name, arguments);
  if (!thread_.isRunning()) throw HostError(name, "the program is ending");
  QDBusMessage call =
      QDBusMessage::createMethodCall(service_, kHostPath, kHostInterface,
                                     QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  call.setAutoStartService(false);
  call.setArguments(ToWire(member, arguments, [this](FormObject& form) { return Offer(form); }));
  const QDBusMessage answer = Send(call);
  if (answer.type() != QDBusMessage::ReplyMessage) throw HostError(name, FailureText(answer));
  return ResultFromWire(member, answer.arguments());
}

/// Whether there is a session bus to connect to. Without this question the toolkit would start one.
bool SessionBusExists() {
  if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
  const QString runtime_folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !runtime_folder.isEmpty() && QFileInfo::exists(runtime_folder + "/bus");
}

}  // namespace

std::shared_ptr<HostObject> ConnectToBusHost() {
  if (!SessionBusExists()) return nullptr;
  const QDBusConnection connection =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, "exposure-sheet");
  if (!connection.isConnected()) return nullptr;
  const QDBusReply<QString> owner = connection.interface()->serviceOwner(kHostService);
  if (!owner.isValid()) return nullptr;
  return std::make_shared<BusHost>(connection, owner.value());
}

}  // namespace host
