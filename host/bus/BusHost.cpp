#include "host/bus/BusHost.h"

#include <QCoreApplication>
#include <map>
#include <optional>

#include "host/bus/Connection.h"
#include "host/bus/Introspection.h"
#include "host/bus/Wire.h"
#include "host/bus/bus_names.h"
#include "host/members.h"
#include "platform/Application.h"
#include "platform/LongWork.h"

namespace host {
namespace {

constexpr const char* kGone = "the host is no longer running";
constexpr const char* kGivenUp = "the host was given up, as it didn't answer";
constexpr const char* kQuestion =
    "The host doesn't answer. The exposure sheet waits for it and can do nothing else meanwhile.\n\n"
    "Without the host the exposure sheet ends, and what isn't saved is lost.";

/// Milliseconds between two looks at the user's side of a wait.
constexpr int kOneLook = 50;

class BusHost final : public HostObject {
 public:
  BusHost(std::unique_ptr<Connection> connection, std::string service);

  Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;

 private:
  std::string Offer(FormObject& form);
  Message CallHost(const Message& call, std::string_view member);
  Message AnswerTo(std::uint64_t number, std::string_view member);
  /// The interface in which the host passes this member's planes by descriptor; none if it passes bytes.
  const char* DescriptorInterface(const Member& member);
  void Take(Message message);
  void TakeCall(const Message& call);
  bool AnswerStandardCall(const Message& call, const FormObject& form);
  void RunRoutine(const Message& call, const std::function<void()>& routine);
  void TakeAllThatCame();

  std::unique_ptr<Connection> connection_;
  std::string service_;
  bool given_up_ = false;
  Wire wire_;
  /// What the host has described; absent until a plane is first asked for.
  std::optional<std::map<std::string, std::string, std::less<>>> descriptor_members_;
  /// The answers that are waited for, by number. While the tool waits for one it runs what the host calls
  /// back, which may call the host in turn: so there can be several, and they come in any order.
  std::map<std::uint64_t, Message> awaited_;
  /// By object path.
  std::map<std::string, FormObject*> forms_;
  /// Windows that the host has and hasn't shown yet. The process waits for it, as no window of its own is
  /// loaded.
  std::map<FormObject*, platform::KeepAlive> unshown_;
};

BusHost::BusHost(std::unique_ptr<Connection> connection, std::string service)
    : connection_(std::move(connection)), service_(std::move(service)) {
  connection_->WatchForLeaving(",arg0='" + service_ + "'");
  connection_->OnArrival([this] { TakeAllThatCame(); });
}

void BusHost::TakeAllThatCame() {
  while (Message message = connection_->Next()) Take(std::move(message));
}

std::string BusHost::Offer(FormObject& form) {
  const std::string path = "/" + form.FormName();
  forms_[path] = &form;
  unshown_.try_emplace(&form);
  return path;
}

void BusHost::Take(Message message) {
  std::uint64_t number = 0;
  if (sd_bus_message_is_method_call(message.get(), nullptr, nullptr)) {
    TakeCall(message);
  } else if (sd_bus_message_get_reply_cookie(message.get(), &number) >= 0) {
    const auto waiting = awaited_.find(number);
    if (waiting != awaited_.end()) waiting->second = std::move(message);
  } else if (sd_bus_message_is_signal(message.get(), kBusService, "NameOwnerChanged")) {
    // A call that is waited for fails by itself. But nothing else would ever bring up a window that the host
    // was to show.
    if (awaited_.empty() && !unshown_.empty()) throw HostError("Vel_SendFormObject", kGone);
  }
}

void BusHost::TakeCall(const Message& call) {
  const auto form = forms_.find(sd_bus_message_get_path(call.get()));
  if (form == forms_.end())
    return connection_->Refuse(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "There is no such window.");
  if (AnswerStandardCall(call, *form->second)) return;
  const char* interface = sd_bus_message_get_interface(call.get());
  const std::string member = sd_bus_message_get_member(call.get());
  if ((interface != nullptr && std::string_view(interface) != kFormInterface) ||
      (member != kShow && member != kPrefsCallback))
    return connection_->Refuse(call, SD_BUS_ERROR_UNKNOWN_METHOD, "A window has no such routine.");
  // Nothing but the host's own calls may run while the tool waits for the host.
  if (sd_bus_message_get_sender(call.get()) != service_)
    return connection_->Refuse(call, SD_BUS_ERROR_ACCESS_DENIED, "Only the host may call this.");
  RunRoutine(call, [this, &form = *form->second, shows = member == kShow] {
    if (!shows) return form.RunPrefsCallback();
    form.ShowForm();
    unshown_.erase(&form);
  });
}

bool BusHost::AnswerStandardCall(const Message& call, const FormObject& form) {
  const std::string name = form.FormName();
  if (sd_bus_message_is_method_call(call.get(), kIntrospectable, "Introspect"))
    return sd_bus_reply_method_return(call.get(), "s", FormIntrospection().c_str()) >= 0;
  if (sd_bus_message_is_method_call(call.get(), kProperties, "GetAll"))
    return sd_bus_reply_method_return(call.get(), "a{sv}", 1, "Name", "s", name.c_str()) >= 0;
  const char *interface = nullptr, *property = nullptr;
  if (sd_bus_message_is_method_call(call.get(), kProperties, "Get") &&
      sd_bus_message_read(call.get(), "ss", &interface, &property) > 0 &&
      std::string_view(property) == "Name")
    return sd_bus_reply_method_return(call.get(), "v", "s", name.c_str()) >= 0;
  return false;
}

/// Runs the routine and answers the host, with an error if the routine fails. The failure then goes on its
/// way through the tool.
void BusHost::RunRoutine(const Message& call, const std::function<void()>& routine) {
  try {
    routine();
  } catch (const std::exception& failure) {
    connection_->Refuse(call, failure.what());
    throw;
  }
  connection_->Answer(call);
}

std::string FailureText(sd_bus_message* answer) {
  const sd_bus_error* error = sd_bus_message_get_error(answer);
  // Of a host that has gone the bus has only a number to give.
  if (sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
      sd_bus_error_has_name(error, SD_BUS_ERROR_SERVICE_UNKNOWN))
    return kGone;
  return error->message != nullptr && *error->message != '\0' ? error->message : error->name;
}

Message BusHost::AnswerTo(std::uint64_t number, std::string_view member) {
  struct Awaited {
    ~Awaited() { all.erase(entry); }
    std::map<std::uint64_t, Message>& all;
    std::map<std::uint64_t, Message>::iterator entry;
  };
  const Awaited awaited{awaited_, awaited_.try_emplace(number).first};
  Message& answer = awaited.entry->second;
  platform::Patience patience(kQuestion, "Give up the host");
  while (!answer) {
    if (Message message = connection_->Next()) {
      patience.Restart();
      Take(std::move(message));
    } else if (!connection_->IsOpen()) {
      throw HostError(member, "the session bus has gone");
    } else if (!connection_->Wait(kOneLook) && !patience.Lasts()) {
      given_up_ = true;
    }
    // A call that the host has made meanwhile may have been where the user had enough.
    if (given_up_) throw HostError(member, kGivenUp);
  }
  return std::move(answer);
}

Message BusHost::CallHost(const Message& call, std::string_view member) {
  Message answer = AnswerTo(connection_->Send(call), member);
  connection_->PassOnTheRest();
  return answer;
}

const char* BusHost::DescriptorInterface(const Member& member) {
  if (!PassesPlane(member)) return nullptr;
  if (!descriptor_members_) {
    const Message description =
        CallHost(connection_->MakeCall(service_, kHostPath, kIntrospectable, "Introspect"), member.name);
    const char* xml = "";
    sd_bus_message_read(description.get(), "s", &xml);
    descriptor_members_ = DescriptorMembers(xml);
  }
  const auto found = descriptor_members_->find(member.name);
  return found == descriptor_members_->end() ? nullptr : found->second.c_str();
}

Variant BusHost::Invoke(std::string_view name, std::span<const Variant> arguments) {
  const Member& member = CheckedMember(name, arguments);
  if (given_up_) throw HostError(name, kGivenUp);
  if (QCoreApplication::instance() == nullptr || QCoreApplication::closingDown())
    throw HostError(name, "the program is ending");
  const char* interface = DescriptorInterface(member);
  const Message call = connection_->MakeCall(
      service_, kHostPath, interface != nullptr ? interface : kHostInterface, std::string(name));
  wire_.WriteArguments(call.get(), member, arguments,
                       interface != nullptr ? Planes::AsDescriptors : Planes::AsBytes,
                       [this](FormObject& form) { return Offer(form); });
  const Message answer = CallHost(call, name);
  if (sd_bus_message_is_method_error(answer.get(), nullptr)) throw HostError(name, FailureText(answer.get()));
  return wire_.ReadResult(member, answer.get());
}

}  // namespace

std::shared_ptr<HostObject> ConnectToBusHost() {
  auto connection = Connection::Open();
  if (!connection) return nullptr;
  std::string owner = connection->OwnerOf(kHostService);
  if (owner.empty()) return nullptr;
  return std::make_shared<BusHost>(std::move(connection), std::move(owner));
}

}  // namespace host
