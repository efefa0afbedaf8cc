#include "host/bus/Connection.h"

#include <poll.h>

#include <QString>
#include <cstring>
#include <stdexcept>

#include "host/bus/bus_names.h"
#include "platform/Application.h"

namespace host {
namespace {

void Check(int result, const char* what) {
  if (result < 0) throw std::runtime_error(std::string(what) + ": " + std::strerror(-result));
}

}  // namespace

std::unique_ptr<Connection> Connection::Open() {
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0) return nullptr;
  std::unique_ptr<Connection> connection(new Connection(bus));
  // The library exchanges the bus's greeting with the first call.
  return connection->OwnerOf(kBusService).empty() ? nullptr : std::move(connection);
}

std::string Connection::OwnerOf(const char* name) {
  sd_bus_message* answer = nullptr;
  const char* owner = "";
  if (sd_bus_call_method(bus_, kBusService, kBusPath, kBusService, "GetNameOwner", nullptr, &answer, "s",
                         name) >= 0)
    sd_bus_message_read(answer, "s", &owner);
  std::string result = owner;
  sd_bus_message_unref(answer);
  return result;
}

void Connection::WatchForLeaving(const std::string& rule) {
  const std::string match =
      "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg2=''" + rule;
  sd_bus_call_method(bus_, kBusService, kBusPath, kBusService, "AddMatch", nullptr, nullptr, "s",
                     match.c_str());
}

void Connection::AddObject(const std::string& path, const char* interface, const sd_bus_vtable* table) {
  Check(sd_bus_add_object_vtable(bus_, nullptr, path.c_str(), interface, table, this),
        "no object can be made");
}

/// Runs inside the library, where no other message can be handled: the call waits until it is asked for.
int Connection::TakeUp(sd_bus_message* call, void* connection, sd_bus_error*) {
  static_cast<Connection*>(connection)->calls_.emplace_back(sd_bus_message_ref(call));
  return 1;
}

Message Connection::MakeCall(const std::string& service, const std::string& path, const char* interface,
                             const std::string& member) {
  sd_bus_message* call = nullptr;
  Check(sd_bus_message_new_method_call(bus_, &call, service.c_str(), path.c_str(), interface, member.c_str()),
        "the call can't be made");
  sd_bus_message_set_auto_start(call, 0);
  return Message(call);
}

std::uint64_t Connection::Send(const Message& message) {
  std::uint64_t number = 0;
  Check(sd_bus_send(bus_, message.get(), &number), "it can't be sent");
  WatchForRoomToWrite();
  return number;
}

void Connection::Refuse(const Message& call, const std::string& reason, const char* error_name) {
  const std::string text = BusText(reason);
  const sd_bus_error error = SD_BUS_ERROR_MAKE_CONST(error_name ? error_name : kErrorName, text.c_str());
  sd_bus_reply_method_error(call.get(), &error);
}

Message Connection::Next() {
  sd_bus_message* message = nullptr;
  while (calls_.empty() && message == nullptr && sd_bus_process(bus_, &message) > 0) {
  }
  if (calls_.empty()) {
    if (message == nullptr) WatchForRoomToWrite();
    return Message(message);
  }
  Message call = std::move(calls_.front());
  calls_.pop_front();
  return call;
}

void Connection::WatchForRoomToWrite() {
  if (writable_) writable_->setEnabled(IsOpen() && sd_bus_get_events(bus_) & POLLOUT);
}

bool Connection::Wait(int milliseconds) {
  pollfd socket{sd_bus_get_fd(bus_), static_cast<short>(sd_bus_get_events(bus_)), 0};
  return poll(&socket, 1, milliseconds) > 0;
}

void Connection::OnArrival(std::function<void()> routine) {
  arrived_ = std::make_shared<std::function<void()>>(std::move(routine));
  readable_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_), QSocketNotifier::Read);
  writable_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_), QSocketNotifier::Write);
  for (QSocketNotifier* notifier : {readable_.get(), writable_.get()})
    QObject::connect(notifier, &QSocketNotifier::activated, [this] { Arrived(); });
  writable_->setEnabled(false);
  PassOnTheRest();
}

void Connection::Arrived() {
  // The socket of a bus that has gone always reports that it can be read, and so does one that nobody reads.
  if (!IsOpen() || platform::EndsWithReport()) readable_->setEnabled(false);
  platform::RunEvent(*arrived_);
}

void Connection::PassOnTheRest() {
  std::uint64_t queued = 0;
  if (!arrived_ || (sd_bus_get_n_queued_read(bus_, &queued) >= 0 && queued + calls_.size() == 0)) return;
  platform::RunLater([routine = std::weak_ptr(arrived_)] {
    if (const auto still_there = routine.lock()) (*still_there)();
  });
}

std::string BusText(const std::string& text) {
  const std::string valid = QString::fromStdString(text).toStdString();
  return valid.substr(0, valid.find('\0'));
}

}  // namespace host
