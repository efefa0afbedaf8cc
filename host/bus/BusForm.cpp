#include "host/bus/BusForm.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariantMap>

#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"

namespace host {
namespace {

constexpr const char* kPropertiesInterface = "org.freedesktop.DBus.Properties";

/// Runs the routine and answers the host, with an error if the routine fails. The failure then goes on its
/// way through the tool.
void RunAndAnswer(const QDBusMessage& message, const QDBusConnection& connection,
                  const std::function<void()>& routine) {
  try {
    routine();
  } catch (const std::exception& failure) {
    connection.send(message.createErrorReply(kErrorName, failure.what()));
    throw;
  }
  connection.send(message.createReply());
}

}  // namespace

BusForm::BusForm(FormRoutines form, QString host_service,
                 std::function<void(std::function<void()>)> hand_over)
    : form_(std::move(form)), host_service_(std::move(host_service)), hand_over_(std::move(hand_over)) {}

QString BusForm::introspect(const QString&) const { return FormInterfaceXml(); }

void BusForm::HandOver(const QDBusMessage& message, const QDBusConnection& connection,
                       std::function<void()> routine) {
  message.setDelayedReply(true);
  hand_over_(
      [message, connection, routine = std::move(routine)] { RunAndAnswer(message, connection, routine); });
}

bool BusForm::AnswerProperty(const QDBusMessage& message, const QDBusConnection& connection) const {
  const QList<QVariant> asked = message.arguments();
  if (asked.isEmpty() || asked[0].toString() != kFormInterface) return false;
  if (message.member() == "GetAll")
    return connection.send(message.createReply(QVariantMap{{"Name", form_.name}}));
  if (message.member() == "Get" && asked.size() == 2 && asked[1].toString() == "Name")
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(form_.name))));
  return false;
}

bool BusForm::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.interface() == kPropertiesInterface) return AnswerProperty(message, connection);
  if (!message.interface().isEmpty() && message.interface() != kFormInterface) return false;
  if (message.member() != kShow && message.member() != kPrefsCallback) return false;
  if (message.service() != host_service_) {
    connection.send(message.createErrorReply(QDBusError::AccessDenied, "Only the host may call this."));
    return true;
  }
  HandOver(message, connection, message.member() == kShow ? form_.show : form_.prefs_callback);
  return true;
}

}  // namespace host
