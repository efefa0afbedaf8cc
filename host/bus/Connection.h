// One end of the session bus. Everything happens on the caller's own thread, when the caller asks for it.
#pragma once

#include <systemd/sd-bus.h>

#include <QSocketNotifier>
#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace host {

struct MessageRelease {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageRelease>;

class Connection {
 public:
  /// The session bus, or null if there is none that answers.
  static std::unique_ptr<Connection> Open();
  ~Connection() { sd_bus_flush_close_unref(bus_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// False once the bus has gone.
  bool IsOpen() const { return sd_bus_is_open(bus_) > 0; }
  /// Which connection has the name; empty if none has.
  std::string OwnerOf(const char* name);
  /// True if this connection has the name now, which no other had.
  bool TakeName(const char* name) { return sd_bus_request_name(bus_, name, 0) >= 0; }
  /// Asks the bus to pass on its own message that a connection has gone. `rule` narrows it.
  void WatchForLeaving(const std::string& rule);
  /// An object of this process. The library describes it, gives its properties and refuses what the table
  /// doesn't have; calls of its routines, which have TakeUp for their handler, come out of Next().
  void AddObject(const std::string& path, const char* interface, const sd_bus_vtable* table);
  static int TakeUp(sd_bus_message* call, void* connection, sd_bus_error*);

  /// A call that starts no program. Throws std::runtime_error if one of the names isn't the bus's kind of
  /// name.
  Message MakeCall(const std::string& service, const std::string& path, const char* interface,
                   const std::string& member);
  /// Sends, or leaves what the socket doesn't take yet to be sent with the next look at the connection. Gives
  /// the number that the answer will carry. Throws std::runtime_error if it can't be sent.
  std::uint64_t Send(const Message& message);
  void Answer(const Message& call) { sd_bus_reply_method_return(call.get(), ""); }
  /// With one of the bus's own error names, or the one that host and tool use.
  void Refuse(const Message& call, const std::string& reason, const char* error_name = nullptr);

  /// The next message that has come and nobody has taken, or null. It also writes what is still to be sent.
  Message Next();
  /// Sleeps until there is something to read or write, at most so many milliseconds. False if nothing came.
  bool Wait(int milliseconds);

  /// What the event loop runs when something has come. It must take all that Next() gives.
  void OnArrival(std::function<void()> routine);
  /// Runs the routine soon if messages are still queued that were read together with others.
  void PassOnTheRest();

 private:
  explicit Connection(sd_bus* bus) : bus_(bus) {}
  void Arrived();
  void WatchForRoomToWrite();

  sd_bus* bus_;
  std::deque<Message> calls_;
  std::shared_ptr<std::function<void()>> arrived_;
  std::unique_ptr<QSocketNotifier> readable_, writable_;
};

/// Text as the bus takes it: UTF-8 without a zero in it.
std::string BusText(const std::string& text);

}  // namespace host
