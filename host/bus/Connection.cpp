#include "host/bus/Connection.h"

#include <poll.h>

#include <QPointer>
#include <QString>
#include <cstring>
#include <stdexcept>

#include "platform/Application.h"

namespace host {
namespace {

constexpr const char* kBus = "org.freedesktop.DBus";

void Check(int result, const char* what) {
  if (result < 0) throw std::runtime_error(std::string(what) + ": " + std::strerror(-result));
}

int TakeUpAnswer(sd_bus_message* message, void* connection, sd_bus_error* error) {
  std::uint64_t number = 0;
  if (sd_bus_message_get_reply_cookie(message, &number) < 0) return 0;
  return Connection::TakeUp(message, connection, error);
}

}  // namespace

std::unique_ptr<Connection> Connection::Open() {
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0) return nullptr;
  std::unique_ptr<Connection> connection(new Connection(bus));
  sd_bus_add_filter(bus, nullptr, TakeUpAnswer, connection.get());
  // This waits for the bus's greeting.
  const char* own_name = nullptr;
  return sd_bus_get_unique_name(bus, &own_name) < 0 ? nullptr : std::move(connection);
}

std::string Connection::OwnerOf(const char* name) {
  sd_bus_message* answer = nullptr;
  const char* owner = "";
  if (sd_bus_call_method(bus_, kBus, "/org/freedesktop/DBus", kBus, "GetNameOwner", nullptr, &answer, "s",
                         name) >= 0)
    sd_bus_message_read(answer, "s", &owner);
  const Message owned = Owned(answer);
  return owner;
}

void Connection::WatchForLeaving(const std::string& rule) {
  const std::string match = "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg2=''";
  sd_bus_add_match(bus_, nullptr, (match + rule).c_str(), TakeUp, this);
}

void Connection::AddObject(const std::string& path, const char* interface, const sd_bus_vtable* table,
                           sd_bus_message_handler_t first) {
  constexpr const char* what = "no object can be made";
  Check(sd_bus_add_object_vtable(bus_, nullptr, path.c_str(), interface, table, this), what);
  if (first != nullptr) Check(sd_bus_add_object(bus_, nullptr, path.c_str(), first, this), what);
}

int Connection::TakeUp(sd_bus_message* message, void* connection, sd_bus_error*) {
  static_cast<Connection*>(connection)->taken_up_.push_back(Owned(sd_bus_message_ref(message)));
  return 1;
}

Message Connection::MakeCall(const std::string& service, const std::string& path, const char* interface,
                             const std::string& member) {
  sd_bus_message* call = nullptr;
  Check(sd_bus_message_new_method_call(bus_, &call, service.c_str(), path.c_str(), interface, member.c_str()),
        "the call can't be made");
  sd_bus_message_set_auto_start(call, 0);
  return Owned(call);
}

void Connection::Call(const Message& call, std::function<void(const Message&)> answered) {
  std::uint64_t number = 0;
  Check(sd_bus_send(bus_, call.get(), &number), "it can't be sent");
  if (answered) awaited_[number] = std::move(answered);
  LeaveTheRest();
}

void Connection::Refuse(const Message& call, const std::string& reason, const char* error_name) {
  sd_bus_reply_method_errorf(call.get(), error_name, "%s", BusText(reason).c_str());
}

void Connection::Listen(std::function<void(const Message&)> take, std::function<void()> settled) {
  take_ = std::move(take);
  settled_ = std::move(settled);
  readable_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_), QSocketNotifier::Read);
  writable_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_), QSocketNotifier::Write);
  for (QSocketNotifier* notifier : {readable_.get(), writable_.get()})
    QObject::connect(notifier, &QSocketNotifier::activated, [this] {
      // The socket of a bus that has gone, or that nobody reads, always reports that it can be read.
      if (!IsOpen() || platform::EndsWithReport()) readable_->setEnabled(false);
      platform::RunEvent([this] { HandleAll(); });
    });
  LeaveTheRest();
}

void Connection::HandleAll() {
  while (HandleNext()) {
  }
  LeaveTheRest();
  settled_();
}

bool Connection::HandleNext() {
  if (taken_up_.empty() && sd_bus_process(bus_, nullptr) <= 0) return false;
  if (taken_up_.empty()) return true;
  const Message message = std::move(taken_up_.front());
  taken_up_.pop_front();
  std::uint64_t number = 0;
  if (sd_bus_message_get_reply_cookie(message.get(), &number) < 0)
    take_(message);
  else if (const auto call = awaited_.extract(number))
    call.mapped()(message);
  return true;
}

void Connection::LeaveTheRest() {
  if (!writable_) return;
  writable_->setEnabled(IsOpen() && sd_bus_get_events(bus_) & POLLOUT);
  std::uint64_t queued = 0;
  sd_bus_get_n_queued_read(bus_, &queued);
  if (queued + taken_up_.size() == 0) return;
  platform::RunLater([this, still_there = QPointer(readable_.get())] {
    if (still_there) HandleAll();
  });
}

std::string BusText(const std::string& text) {
  return QString::fromStdString(text).section(QChar(), 0, 0).toStdString();
}

}  // namespace host
