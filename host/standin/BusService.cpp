#include "host/standin/BusService.h"

#include "host/bus/Introspection.h"
#include "host/bus/bus_names.h"
#include "host/members.h"

namespace host {

/// A tool's window as the stand-in holds it: its routines are calls over the bus.
class BusService::RemoteForm final : public FormObject {
 public:
  RemoteForm(BusService& service, std::string tool, std::string path)
      : service_(service), tool_(std::move(tool)), path_(std::move(path)) {}

  /// The call that handed the window over: it is answered when the window has come up.
  void AnswerWhenShown(const Message& call) { handing_over_.reset(sd_bus_message_ref(call.get())); }

  std::string FormName() const override { return path_.substr(1); }
  void ShowForm() override {
    // The tool calls back while its window loads, so its call is answered later, from the event loop.
    service_.handed_over_[CallTool(kShow)] = std::move(handing_over_);
  }
  void RunPrefsCallback() override { CallTool(kPrefsCallback); }

 private:
  std::uint64_t CallTool(const char* routine) {
    Connection& connection = *service_.connection_;
    return connection.Send(connection.MakeCall(tool_, path_, kFormInterface, routine));
  }

  BusService& service_;
  std::string tool_, path_;
  Message handing_over_;
};

BusService::BusService(std::shared_ptr<StandIn> stand_in) : stand_in_(std::move(stand_in)) {}

BusService::~BusService() {
  for (const auto& [name, form] : forms_) stand_in_->DropForm(*form);
}

std::optional<QString> BusService::Start() {
  connection_ = Connection::Open();
  if (!connection_) return tr("There is no session bus, so no tool can reach these frames.");
  connection_->WatchForLeaving("");
  // The handler is set before the name is taken, so that whoever finds the name gets answers.
  connection_->OnArrival([this] {
    while (const Message message = connection_->Next()) Take(message);
  });
  if (connection_->TakeName(kHostService)) return std::nullopt;
  return tr("Another host is running already; tools go on working with that one.");
}

void BusService::Take(const Message& message) {
  const char *name = nullptr, *old_owner = nullptr;
  if (sd_bus_message_is_method_call(message.get(), nullptr, nullptr)) {
    TakeCall(message);
  } else if (sd_bus_message_is_signal(message.get(), kBusService, "NameOwnerChanged")) {
    if (sd_bus_message_read(message.get(), "ss", &name, &old_owner) > 0) ForgetTool(name);
  } else {
    PassOnShown(message);
  }
}

void BusService::PassOnShown(const Message& answer) {
  std::uint64_t number = 0;
  if (sd_bus_message_get_reply_cookie(answer.get(), &number) < 0) return;
  const auto call = handed_over_.extract(number);
  if (call.empty()) return;
  const sd_bus_error* failure = sd_bus_message_get_error(answer.get());
  if (failure == nullptr) return connection_->Answer(call.mapped());
  connection_->Refuse(call.mapped(), failure->message != nullptr ? failure->message : failure->name);
}

FormObject* BusService::KeepForm(const Message& call, const std::string& path) {
  const std::string tool = sd_bus_message_get_sender(call.get());
  auto& form = forms_[{tool, path}];
  if (!form) form = std::make_unique<RemoteForm>(*this, tool, path);
  form->AnswerWhenShown(call);
  return form.get();
}

void BusService::ForgetTool(const std::string& tool) {
  std::erase_if(forms_, [&](const auto& entry) {
    if (entry.first.first != tool) return false;
    stand_in_->DropForm(*entry.second);
    return true;
  });
  // A tool that died during its work can't close its status display any more.
  if (status_owner_ == tool && stand_in_->Status()) stand_in_->StatusClose();
}

void BusService::TakeCall(const Message& call) {
  if (std::string_view(sd_bus_message_get_path(call.get())) != kHostPath)
    return connection_->Refuse(call, "There is no such object.", SD_BUS_ERROR_UNKNOWN_OBJECT);
  if (sd_bus_message_is_method_call(call.get(), kIntrospectable, "Introspect")) {
    sd_bus_reply_method_return(call.get(), "s", HostIntrospection().c_str());
    return;
  }
  const char* interface = sd_bus_message_get_interface(call.get());
  const bool by_descriptor = interface != nullptr && std::string_view(interface) == kDescriptorsInterface;
  if (interface != nullptr && std::string_view(interface) != kHostInterface && !by_descriptor)
    return connection_->Refuse(call, "There is no such interface.", SD_BUS_ERROR_UNKNOWN_INTERFACE);
  try {
    RunMember(call, by_descriptor ? Planes::AsDescriptors : Planes::AsBytes);
  } catch (const HostError& failure) {
    // Only the reason: the tool adds the member's name itself.
    connection_->Refuse(call, failure.Reason());
  } catch (const std::exception& failure) {
    connection_->Refuse(call, failure.what());
  }
}

void BusService::RunMember(const Message& call, Planes planes) {
  const std::string name = sd_bus_message_get_member(call.get());
  const std::vector<Variant> arguments =
      wire_.ReadArguments(call.get(), [&](const std::string& path) { return KeepForm(call, path); });
  const Member& member = CheckedMember(name, arguments);
  if (planes == Planes::AsDescriptors && !PassesPlane(member))
    throw HostError(name, "there is no such member with descriptors");
  if (name == "vel_StatusOpen") status_owner_ = sd_bus_message_get_sender(call.get());
  const Variant result = stand_in_->Invoke(name, arguments);
  if (member.arguments[0] == ArgumentKind::Window) return;
  sd_bus_message* answer = nullptr;
  if (sd_bus_message_new_method_return(call.get(), &answer) < 0) return;
  const Message owned(answer);
  wire_.WriteResult(answer, member, result, planes);
  connection_->Send(owned);
}

}  // namespace host
