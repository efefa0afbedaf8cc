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

  /// Takes the name; otherwise the reason why it can't.
  std::optional<QString> Start();

 private:
  class RemoteForm;

  void Take(const Message& message);
  void TakeCall(const Message& call);
  void RunMember(const Message& call, Planes planes);
  void PassOnShown(const Message& answer);
  FormObject* HoldForm(const Message& call, const std::string& path);
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
