#include "host/bus/BusHost.h"

#include <QCoreApplication>
#include <QScopeGuard>
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
constexpr const char* kBusGone = "the session bus has gone";
constexpr const char* kGivenUp = "the host was given up, as it didn't answer";
constexpr const char* kQuestion =
    "The host doesn't answer. The exposure sheet waits for it and can do nothing else meanwhile.\n\n"
    "Without the host the exposure sheet ends. What isn't saved is then written to a file of its own.";

/// Milliseconds between two checks, during a wait, for what the user does.
constexpr int kOneLook = 50;

int GiveName(sd_bus*, const char* path, const char*, const char*, sd_bus_message* reply, void*,
             sd_bus_error*) {
  return sd_bus_message_append(reply, "s", path + 1);
}

/// What a window answers to, under "/" and its name.
const sd_bus_vtable kFormTable[] = {SD_BUS_VTABLE_START(0),
                                    SD_BUS_METHOD(kShow, "", "", Connection::TakeUp, 0),
                                    SD_BUS_METHOD(kPrefsCallback, "", "", Connection::TakeUp, 0),
                                    SD_BUS_PROPERTY("Name", "s", GiveName, 0, 0), SD_BUS_VTABLE_END};

class BusHost final : public HostObject {
 public:
  BusHost(std::unique_ptr<Connection> connection, std::string service);

  Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;

 private:
  std::string Offer(FormObject& form);
  Message CallHost(const Message& call, std::string_view member);
  /// The interface in which the host passes this member's planes by descriptor; none if it passes bytes.
  const char* DescriptorInterface(const Member& member);
  void Take(Message message);
  void TakeCall(const Message& call);
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
  if (!connection_->IsOpen() && !unshown_.empty()) throw HostError("Vel_SendFormObject", kBusGone);
}

std::string BusHost::Offer(FormObject& form) {
  std::string path = "/" + form.FormName();
  if (forms_.try_emplace(path, &form).second) connection_->AddObject(path, kFormInterface, kFormTable);
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
    // If a call is being waited for, that call fails by itself. Otherwise a window that the host was still to
    // show would never come up, so this is the tool's end.
    if (awaited_.empty() && !unshown_.empty()) throw HostError("Vel_SendFormObject", kGone);
  }
}

/// Runs a window's routine and answers the host, with an error if the routine fails. The failure then goes on
/// its way through the tool.
void BusHost::TakeCall(const Message& call) {
  const auto form = forms_.find(sd_bus_message_get_path(call.get()));
  if (form == forms_.end())
    return connection_->Refuse(call, "There is no such window.", SD_BUS_ERROR_UNKNOWN_OBJECT);
  // Nothing but the host's own calls may run while the tool waits for the host.
  if (sd_bus_message_get_sender(call.get()) != service_)
    return connection_->Refuse(call, "Only the host may call this.", SD_BUS_ERROR_ACCESS_DENIED);
  try {
    if (sd_bus_message_is_method_call(call.get(), nullptr, kShow)) {
      form->second->ShowForm();
      unshown_.erase(form->second);
    } else {
      form->second->RunPrefsCallback();
    }
  } catch (const std::exception& failure) {
    connection_->Refuse(call, failure.what());
    throw;
  }
  connection_->Answer(call);
}

std::string FailureText(sd_bus_message* answer) {
  const sd_bus_error* error = sd_bus_message_get_error(answer);
  // For a host that has gone the bus's error text holds only the number of its connection.
  if (sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
      sd_bus_error_has_name(error, SD_BUS_ERROR_SERVICE_UNKNOWN))
    return kGone;
  return error->message != nullptr && *error->message != '\0' ? error->message : error->name;
}

Message BusHost::CallHost(const Message& call, std::string_view member) {
  const std::uint64_t number = connection_->Send(call);
  Message& answer = awaited_[number];
  const auto forget = qScopeGuard([&] { awaited_.erase(number); });
  platform::Patience patience(kQuestion, "Give up the host");
  while (!answer) {
    if (Message message = connection_->Next()) {
      patience.Restart();
      Take(std::move(message));
    } else if (!connection_->IsOpen()) {
      throw HostError(member, kBusGone);
    } else if (!connection_->Wait(kOneLook) && !patience.Lasts()) {
      given_up_ = true;
    }
    // The user may have given the host up in a call nested in this one.
    if (given_up_) throw HostError(member, kGivenUp);
  }
  connection_->PassOnTheRest();
  return std::move(answer);
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
