// The stand-in as a host for tools in other processes.
#pragma once

#include <QCoreApplication>
#include <map>
#include <optional>

#include "host/bus/Wire.h"
#include "host/standin/stand_in.h"

namespace host {

/// Puts a stand-in on the session bus under the host's name.
class BusService {
  Q_DECLARE_TR_FUNCTIONS(host::BusService)

 public:
  explicit BusService(std::shared_ptr<StandIn> stand_in);
  ~BusService();

  /// Takes the host's name on the bus. Result: the reason if that fails, or nothing.
  std::optional<QString> Start();

 private:
  class RemoteForm;

  /// Handles any message that has come.
  void Take(const Message& message);
  void TakeCall(const Message& call);
  /// Runs the stand-in's member and sends its result, or the failure.
  void RunMember(const Message& call, Planes planes);
  /// A tool has answered the call to show its window: now its own call that handed the window over is
  /// answered.
  void PassOnShown(const Message& answer);
  /// The window of the calling tool, made and kept for its later calls.
  FormObject* KeepForm(const Message& call, const std::string& path);
  /// Drops the windows of a tool that has left the bus.
  void ForgetTool(const std::string& tool);

  std::shared_ptr<StandIn> stand_in_;
  std::unique_ptr<Connection> connection_;
  Wire wire_;
  /// By tool and object path.
  std::map<std::pair<std::string, std::string>, std::unique_ptr<RemoteForm>> forms_;
  /// The calls that handed windows over, by the number of the call that shows the window.
  std::map<std::uint64_t, Message> handed_over_;
  /// The tool that has opened the status display.
  std::string status_owner_;
};

}  // namespace host
