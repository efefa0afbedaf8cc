#include "host/bus/BusHost.h"

#include <QCoreApplication>
#include <QXmlStreamReader>
#include <optional>

#include "host/bus/Connection.h"
#include "host/bus/Wire.h"
#include "host/members.h"
#include "platform/Application.h"
#include "platform/LongWork.h"

namespace host {
namespace {

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

/// By member, the interface in which a host's description lists it with a descriptor (`h`). Empty for a host
/// that passes bytes alone, and for what isn't such a description.
using DescriptorInterfaces = std::map<std::string, std::string, std::less<>>;

DescriptorInterfaces ReadDescription(const Message& description) {
  DescriptorInterfaces found;
  const char* text = "";
  sd_bus_message_read(description.get(), "s", &text);
  QXmlStreamReader xml(QString::fromUtf8(text));
  std::string interface, method;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const std::string name = xml.attributes().value("name").toString().toStdString();
    if (xml.name() == u"interface") interface = name;
    if (xml.name() == u"method") method = name;
    if (xml.name() == u"arg" && xml.attributes().value("type") == u"h") found.emplace(method, interface);
  }
  return found;
}

class BusHost final : public HostObject {
 public:
  BusHost(std::unique_ptr<Connection> connection, std::string service)
      : connection_(std::move(connection)), service_(std::move(service)) {
    connection_->WatchForLeaving(",arg0='" + service_ + "'");
    connection_->Listen([this](const Message& message) { Take(message); },
                        [this] {
                          // The window would never come up, so this is the tool's end.
                          if (!unshown_.empty()) RequireHost("Vel_SendFormObject");
                        });
  }

  Variant Invoke(std::string_view name, std::span<const Variant> arguments) override {
    const Member& member = CheckedMember(name, arguments);
    RequireHost(name);
    if (QCoreApplication::instance() == nullptr || QCoreApplication::closingDown())
      throw HostError(name, "the program is ending");
    const char* interface = DescriptorInterface(member);
    const Planes planes = interface != nullptr ? Planes::AsDescriptors : Planes::AsBytes;
    const Message call = connection_->MakeCall(
        service_, kHostPath, interface != nullptr ? interface : kHostInterface, std::string(name));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (member.arguments[i] == ValueKind::Window) Offer(*std::get<FormObject*>(arguments[i]));
      wire_.Write(call.get(), member, member.arguments[i], arguments[i], planes);
    }
    const Message answer = CallHost(call, name);
    if (const sd_bus_error* error = sd_bus_message_get_error(answer.get()))
      throw HostError(name,
                      error->message != nullptr && *error->message != '\0' ? error->message : error->name);
    return wire_.ReadResult(member, answer);
  }

 private:
  /// Fails the call if nobody can answer it any more.
  void RequireHost(std::string_view member) {
    if (!connection_->IsOpen()) gone_ = "the session bus has gone";
    if (gone_ != nullptr) throw HostError(member, gone_);
  }

  Message CallHost(const Message& call, std::string_view member) {
    const auto answer = std::make_shared<Message>();
    connection_->Call(call, [answer](const Message& came) { *answer = came; });
    platform::Patience patience(kQuestion, "Give up the host");
    // What the host calls back meanwhile may call the host in turn: several answers can be waited for.
    while (!*answer) {
      if (connection_->HandleNext())
        patience.Restart();
      else if (connection_->Wait(kOneLook); !patience.Lasts())
        gone_ = "the host was given up, as it didn't answer";
      if (!*answer) RequireHost(member);
    }
    connection_->LeaveTheRest();
    return *answer;
  }

  /// The interface in which the host passes this member's planes by descriptor; none if it passes bytes.
  const char* DescriptorInterface(const Member& member) {
    if (!member.PassesPlane()) return nullptr;
    if (!descriptor_interfaces_)
      descriptor_interfaces_ = ReadDescription(CallHost(
          connection_->MakeCall(service_, kHostPath, "org.freedesktop.DBus.Introspectable", "Introspect"),
          member.name));
    const auto found = descriptor_interfaces_->find(member.name);
    return found == descriptor_interfaces_->end() ? nullptr : found->second.c_str();
  }

  void Offer(FormObject& form) {
    const std::string path = "/" + form.FormName();
    if (forms_.try_emplace(path, &form).second) connection_->AddObject(path, kFormInterface, kFormTable);
    unshown_.try_emplace(&form);
  }

  /// The host has left the bus, or it calls a window's routine. That is run and answered, with an error if it
  /// fails; the failure then goes on its way through the tool.
  void Take(const Message& message) {
    if (sd_bus_message_is_method_call(message.get(), nullptr, nullptr) <= 0) {
      gone_ = "the host is no longer running";
      return;
    }
    // Nothing but the host's own calls may run while the tool waits for the host.
    if (sd_bus_message_get_sender(message.get()) != service_)
      return connection_->Refuse(message, "Only the host may call this.", SD_BUS_ERROR_ACCESS_DENIED);
    FormObject* const form = forms_.at(sd_bus_message_get_path(message.get()));
    try {
      if (sd_bus_message_is_method_call(message.get(), nullptr, kShow) > 0) {
        form->ShowForm();
        unshown_.erase(form);
      } else {
        form->RunPrefsCallback();
      }
    } catch (const std::exception& failure) {
      connection_->Refuse(message, failure.what());
      throw;
    }
    sd_bus_reply_method_return(message.get(), "");
  }

  std::unique_ptr<Connection> connection_;
  std::string service_;
  /// Why the host can't be called any more; null while it can.
  const char* gone_ = nullptr;
  Wire wire_;
  /// Absent until a plane is first asked for.
  std::optional<DescriptorInterfaces> descriptor_interfaces_;
  /// By object path.
  std::map<std::string, FormObject*> forms_;
  /// What the host hasn't shown yet. The process waits for it, as no window of its own may be loaded.
  std::map<FormObject*, platform::KeepAlive> unshown_;
};

}  // namespace

std::shared_ptr<HostObject> ConnectToBusHost() {
  auto connection = Connection::Open();
  if (!connection) return nullptr;
  std::string owner = connection->OwnerOf(kHostService);
  if (owner.empty()) return nullptr;
  return std::make_shared<BusHost>(std::move(connection), std::move(owner));
}

}  // namespace host
