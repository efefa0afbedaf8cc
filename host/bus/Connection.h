// One end of the session bus, and under which names host and tool meet there. Everything happens on the
// caller's own thread, when the caller asks for it.
#pragma once

#include <systemd/sd-bus.h>

#include <QSocketNotifier>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace host {

inline constexpr const char* kHostService = "Vellumark.Vellumark_Class";
inline constexpr const char* kHostPath = "/Vellumark/Vellumark_Class";
inline constexpr const char* kHostInterface = "Vellumark.Vellumark_Class";
/// The plane members once more, with a descriptor of shared memory in place of the bytes.
inline constexpr const char* kDescriptorsInterface = "Vellumark.Vellumark_Class.Descriptors";

/// A window stands on its tool's connection under "/" and its name.
inline constexpr const char* kFormInterface = "Vellumark.Form";
inline constexpr const char* kShow = "Show";
inline constexpr const char* kPrefsCallback = "PrefsCallback";

/// The name of every error that host and tool answer with; the message says the rest.
inline constexpr const char* kErrorName = "Vellumark.Error.Failed";

/// The longest array of bytes that a message of the bus may hold (D-Bus, "Marshaling").
inline constexpr std::size_t kMostBytesInMessage = std::size_t{64} << 20;

using Message = std::shared_ptr<sd_bus_message>;
/// Takes over the caller's reference.
inline Message Owned(sd_bus_message* message) { return {message, sd_bus_message_unref}; }

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
  /// Asks for the bus's own message that a connection has gone. `rule` narrows it.
  void WatchForLeaving(const std::string& rule);
  /// An object of this process. The library describes it, gives its properties and refuses what the table
  /// doesn't have; the other calls are taken up. `first` may take up calls before they are held against it.
  void AddObject(const std::string& path, const char* interface, const sd_bus_vtable* table,
                 sd_bus_message_handler_t first = nullptr);
  /// The handler of what is taken up. It runs within the library, where no other message can be handled, so
  /// the message waits until HandleNext comes to it.
  static int TakeUp(sd_bus_message* message, void* connection, sd_bus_error*);

  /// A call that starts no program. Throws std::runtime_error if a name isn't the bus's kind of name.
  Message MakeCall(const std::string& service, const std::string& path, const char* interface,
                   const std::string& member);
  /// Sends a call, or leaves what the socket doesn't take yet to be sent when there is room. The routine, if
  /// any, is given the answer. Throws std::runtime_error if it can't be sent.
  void Call(const Message& call, std::function<void(const Message&)> answered);
  void Refuse(const Message& call, const std::string& reason, const char* error_name = kErrorName);

  /// From now on the event loop handles what comes: `take` is given what is taken up, message by message, and
  /// `settled` runs when all is handled that came.
  void Listen(std::function<void(const Message&)> take, std::function<void()> settled);
  /// Reads or writes a message, and handles it. False if there was nothing to do.
  bool HandleNext();
  /// Sleeps until there is something to do, at most so many milliseconds.
  void Wait(unsigned milliseconds) { sd_bus_wait(bus_, milliseconds * std::uint64_t{1000}); }
  /// Has the event loop do what is left to do: read what came together with other messages, write the rest.
  void LeaveTheRest();

 private:
  explicit Connection(sd_bus* bus) : bus_(bus) {}
  void HandleAll();

  sd_bus* bus_;
  std::function<void(const Message&)> take_;
  std::function<void()> settled_;
  std::deque<Message> taken_up_;
  /// By the number of the call.
  std::map<std::uint64_t, std::function<void(const Message&)>> awaited_;
  std::unique_ptr<QSocketNotifier> readable_, writable_;
};

/// Text as the bus takes it: UTF-8 without a zero in it.
std::string BusText(const std::string& text);

}  // namespace host
