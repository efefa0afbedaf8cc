#include "host/bus/BusService.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"
#include "host/members.h"

namespace host {

QDBusPendingCall RemoteForm::CallTool(const char* routine) {
  return connection_.asyncCall(QDBusMessage::createMethodCall(service_, path_, kFormInterface, routine),
                               kNoTimeLimit);
}

void RemoteForm::ShowForm() {
  // The tool calls back while its window loads, so its call is answered later, from the event loop.
  auto* watcher = new QDBusPendingCallWatcher(CallTool(kShow));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                   [watcher, connection = connection_, call = handing_over_] {
                     const QDBusMessage answer = watcher->reply();
                     const bool failed = answer.type() == QDBusMessage::ErrorMessage;
                     connection.send(failed ? call.createErrorReply(kErrorName, answer.errorMessage())
                                            : call.createReply());
                     watcher->deleteLater();
                   });
}

void RemoteForm::RunPrefsCallback() { CallTool(kPrefsCallback); }

BusService::BusService(std::shared_ptr<StandIn> stand_in, QDBusConnection connection)
    : stand_in_(std::move(stand_in)), connection_(std::move(connection)) {
  tools_.setConnection(connection_);
  tools_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
  connect(&tools_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this](const QString& service) { ForgetTool(service); });
}

std::optional<QString> BusService::Start() {
  if (!connection_.isConnected()) return tr("There is no session bus, so no tool can reach these frames.");
  connection_.registerVirtualObject(kHostPath, this);
  // First the object, then the name: who finds the name finds the members.
  const auto taken =
      connection_.interface()->registerService(kHostService, QDBusConnectionInterface::DontQueueService,
                                               QDBusConnectionInterface::DontAllowReplacement);
  if (taken.isValid() && taken.value() == QDBusConnectionInterface::ServiceRegistered) return std::nullopt;
  return tr("Another host is running already; tools go on working with that one.");
}

QString BusService::introspect(const QString&) const { return HostInterfaceXml(); }

FormObject* BusService::HoldForm(const QDBusMessage& message, const QString& path) {
  auto& form = forms_[{message.service(), path}];
  if (!form) form = std::make_unique<RemoteForm>(connection_, message.service(), path);
  form->AnswerWhenShown(message);
  tools_.addWatchedService(message.service());
  return form.get();
}

void BusService::ForgetTool(const QString& service) {
  tools_.removeWatchedService(service);
  std::erase_if(forms_, [&](const auto& entry) {
    if (entry.first.first != service) return false;
    stand_in_->DropForm(*entry.second);
    return true;
  });
  // A tool that died at work can't close its display any more.
  if (status_owner_ == service && stand_in_->Status()) stand_in_->StatusClose();
}

Variant BusService::Run(const QDBusMessage& message) {
  const std::string name = message.member().toStdString();
  std::vector<Variant> arguments;
  for (const QVariant& value : message.arguments())
    arguments.push_back(FromWire(value, [&](const QString& path) { return HoldForm(message, path); }));
  const bool opens_status = name == "vel_StatusOpen";
  if (opens_status) {
    status_owner_ = message.service();
    tools_.addWatchedService(status_owner_);
  }
  return stand_in_->Invoke(name, arguments);
}

bool BusService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (!message.interface().isEmpty() && message.interface() != kHostInterface) return false;
  try {
    const Variant result = Run(message);
    if (FindMember(message.member().toStdString()).arguments[0] == ArgumentKind::Window)
      message.setDelayedReply(true);
    else
      connection.send(message.createReply(ResultToWire(result)));
  } catch (const HostError& failure) {
    // The tool names the member itself.
    connection.send(message.createErrorReply(kErrorName, QString::fromStdString(failure.Reason())));
  } catch (const std::exception& failure) {
    connection.send(message.createErrorReply(kErrorName, failure.what()));
  }
  return true;
}

}  // namespace host
