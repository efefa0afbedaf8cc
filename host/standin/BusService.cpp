#include "host/standin/BusService.h"

#include <QCoreApplication>
#include <deque>
#include <vector>

#include "host/bus/Wire.h"

namespace host {
namespace {

/// The members of one of the host's interfaces. The library keeps the table, and describes the host by it.
std::vector<sd_bus_vtable> Describe(Planes planes) {
  static std::deque<std::string> signatures;
  std::vector<sd_bus_vtable> table = {SD_BUS_VTABLE_START(0)};
  for (const Member& member : Members()) {
    if (planes == Planes::AsDescriptors && !member.PassesPlane()) continue;
    std::string& taken = signatures.emplace_back();
    for (const ValueKind kind : member.arguments) taken += Letters(kind, planes);
    table.push_back(SD_BUS_METHOD(member.name.data(), taken.c_str(), Letters(member.result, planes),
                                  Connection::TakeUp, 0));
  }
  table.push_back(SD_BUS_VTABLE_END);
  return table;
}

/// A frame comes as an integer or as a double, and what doesn't fit is refused in words that say more than
/// the library's: so the library doesn't check the arguments.
int TakeUpMember(sd_bus_message* call, void* connection, sd_bus_error* error) {
  const bool is_ours = sd_bus_message_get_interface(call) == nullptr ||
                       sd_bus_message_is_method_call(call, kHostInterface, nullptr) > 0 ||
                       sd_bus_message_is_method_call(call, kDescriptorsInterface, nullptr) > 0;
  return is_ours ? Connection::TakeUp(call, connection, error) : 0;
}

/// A tool's window as the stand-in holds it: its routines are calls over the bus.
class RemoteForm final : public FormObject {
 public:
  RemoteForm(StandIn& holder, Connection& connection, std::string tool, std::string path)
      : holder_(holder), connection_(connection), tool_(std::move(tool)), path_(std::move(path)) {}
  ~RemoteForm() override { holder_.DropForm(*this); }

  /// The call that handed the window over: it is answered when the window has come up.
  void AnswerWhenShown(const Message& call) { handing_over_ = call; }

  std::string FormName() const override { return path_.substr(1); }
  void ShowForm() override {
    // The tool calls back while its window loads, so its call is answered later, from the event loop.
    CallTool(kShow, [call = std::move(handing_over_)](const Message& answer) {
      const sd_bus_error* failure = sd_bus_message_get_error(answer.get());
      failure == nullptr ? sd_bus_reply_method_return(call.get(), "")
                         : sd_bus_reply_method_error(call.get(), failure);
    });
  }
  void RunPrefsCallback() override { CallTool(kPrefsCallback, nullptr); }

 private:
  void CallTool(const char* routine, std::function<void(const Message&)> answered) {
    connection_.Call(connection_.MakeCall(tool_, path_, kFormInterface, routine), std::move(answered));
  }

  StandIn& holder_;
  Connection& connection_;
  std::string tool_, path_;
  Message handing_over_;
};

class BusService {
  Q_DECLARE_TR_FUNCTIONS(host::BusService)

 public:
  BusService(std::shared_ptr<StandIn> stand_in, std::optional<QString>& problem)
      : stand_in_(std::move(stand_in)), connection_(Connection::Open()) {
    static const auto bytes = Describe(Planes::AsBytes), descriptors = Describe(Planes::AsDescriptors);
    if (!connection_) {
      problem = tr("There is no session bus, so no tool can reach these frames.");
      return;
    }
    connection_->WatchForLeaving("");
    connection_->AddObject(kHostPath, kHostInterface, bytes.data(), TakeUpMember);
    connection_->AddObject(kHostPath, kDescriptorsInterface, descriptors.data());
    // The name comes last, so that whoever finds it gets answers.
    connection_->Listen([this](const Message& message) { Take(message); }, [] {});
    if (!connection_->TakeName(kHostService))
      problem = tr("Another host is running already; tools go on working with that one.");
  }

 private:
  void Take(const Message& message) {
    if (sd_bus_message_is_method_call(message.get(), nullptr, nullptr) <= 0) return ForgetTool(message);
    try {
      RunMember(message);
    } catch (const HostError& failure) {
      // Only the reason: the tool adds the member's name itself.
      connection_->Refuse(message, failure.Reason());
    } catch (const std::exception& failure) {
      connection_->Refuse(message, failure.what());
    }
  }

  /// Runs the stand-in's member and sends its result.
  void RunMember(const Message& call) {
    const std::string name = sd_bus_message_get_member(call.get());
    const bool shares = sd_bus_message_is_method_call(call.get(), kDescriptorsInterface, nullptr) > 0;
    std::vector<Variant> arguments;
    if (const char* path = nullptr; sd_bus_message_read_basic(call.get(), 'o', &path) > 0)
      arguments.emplace_back(KeepForm(call, path));
    for (Variant value; wire_.ReadNext(call, value);) arguments.push_back(value);
    const Member& member = CheckedMember(name, arguments);
    if (shares && !member.PassesPlane()) throw HostError(name, "there is no such member with descriptors");
    if (name == "vel_StatusOpen") status_owner_ = sd_bus_message_get_sender(call.get());
    const Variant result = stand_in_->Invoke(name, arguments);
    if (member.arguments[0] == ValueKind::Window) return;
    sd_bus_message* answer = nullptr;
    if (sd_bus_message_new_method_return(call.get(), &answer) < 0) return;
    const Message owned = Owned(answer);
    wire_.Write(answer, member, member.result, result, shares ? Planes::AsDescriptors : Planes::AsBytes);
    sd_bus_message_send(answer);
  }

  /// The window of the calling tool, made and kept for its later calls.
  FormObject* KeepForm(const Message& call, const std::string& path) {
    const std::string tool = sd_bus_message_get_sender(call.get());
    auto& form = forms_[{tool, path}];
    if (!form) form = std::make_unique<RemoteForm>(*stand_in_, *connection_, tool, path);
    form->AnswerWhenShown(call);
    return form.get();
  }

  /// Drops the windows of a tool that has left the bus.
  void ForgetTool(const Message& leaving) {
    const char* tool = "";
    sd_bus_message_read(leaving.get(), "s", &tool);
    std::erase_if(forms_, [&](const auto& entry) { return entry.first.first == tool; });
    // A tool that died during its work can't close its status display any more.
    if (status_owner_ == tool && stand_in_->Status()) stand_in_->StatusClose();
  }

  std::shared_ptr<StandIn> stand_in_;
  std::unique_ptr<Connection> connection_;
  Wire wire_;
  /// By tool and object path.
  std::map<std::pair<std::string, std::string>, std::unique_ptr<RemoteForm>> forms_;
  /// The tool that has opened the status display.
  std::string status_owner_;
};

}  // namespace

std::shared_ptr<void> ServeOnBus(std::shared_ptr<StandIn> stand_in, std::optional<QString>& problem) {
  return std::make_shared<BusService>(std::move(stand_in), problem);
}

}  // namespace host
