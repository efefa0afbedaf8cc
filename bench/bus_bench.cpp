// What a host in another process costs beside a plain client of the same bus library, which asks it the same
// things and does nothing with the answers.
#include <benchmark/benchmark.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "app/Form1.h"
#include "bench/beside.h"
#include "host/HostSession.h"
#include "host/bus/BusHost.h"
#include "host/bus/Connection.h"
#include "host/standin/BusService.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/shared_memory.h"

namespace {

using bench::AtMost;
using bench::Seconds;
using host::HostSession;

constexpr host::FrameSize kSize{1280, 720};
constexpr std::int32_t kFrames = 100;
constexpr int kRows = 14'400, kCallsPerRound = 400, kPlanesPerRound = 30;
constexpr double kSecondsForHundredFrames = 0.25;
constexpr std::array kGetters = {"vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer"};
constexpr std::array kSetters = {"vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer"};

QTemporaryDir folder;

/// The host's side: the stand-in over the bus. It has no window, as what a host does to show a frame is not
/// what is measured here.
int RunHost(int argument_count, char** arguments) {
  QApplication application(argument_count, arguments);
  const auto stand_in = std::make_shared<host::StandIn>(host::Animation(kSize, kFrames));
  stand_in->SetAppDir("/");
  std::optional<QString> problem;
  const auto service = host::ServeOnBus(stand_in, problem);
  return problem ? 1 : QApplication::exec();
}

QProcess* StartHost() {
  auto* process = new QProcess(qApp);
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process->start(QCoreApplication::applicationFilePath(), {"--host"});
  while (host::ConnectToBusHost() == nullptr) usleep(10'000);
  return process;
}

/// A client of the bus library with nothing around it.
class PlainClient {
 public:
  PlainClient() { sd_bus_open_user(&bus_); }

  void Call(const char* member) { Finish(Make(member)); }
  void GotoFrame(std::int32_t frame) {
    sd_bus_message* call = Make("Vel_GotoFrame");
    sd_bus_message_append(call, "i", frame);
    Finish(call);
  }
  void SendBytes(const char* member, std::span<const std::uint8_t> bytes) {
    sd_bus_message* call = Make(member);
    sd_bus_message_append_array(call, 'y', bytes.data(), bytes.size());
    Finish(call);
  }
  void FetchBytes(const char* member, std::uint8_t* bytes) {
    Finish(Make(member), [bytes](sd_bus_message* answer) {
      const void* given = nullptr;
      std::size_t size = 0;
      sd_bus_message_read_array(answer, 'y', &given, &size);
      std::memcpy(bytes, given, size);
    });
  }

 private:
  sd_bus_message* Make(const char* member) {
    sd_bus_message* call = nullptr;
    sd_bus_message_new_method_call(bus_, &call, host::kHostService, host::kHostPath, host::kHostInterface,
                                   member);
    return call;
  }
  void Finish(sd_bus_message* call, const std::function<void(sd_bus_message*)>& take = {}) {
    sd_bus_message* answer = nullptr;
    if (sd_bus_call(bus_, call, 0, nullptr, &answer) < 0) std::abort();
    if (take) take(answer);
    sd_bus_message_unref(answer);
    sd_bus_message_unref(call);
  }

  sd_bus* bus_ = nullptr;
};

PlainClient& Plain() {
  static PlainClient client;
  return client;
}

const std::vector<std::uint8_t>& Plane() {
  static const std::vector<std::uint8_t> plane(kSize.PlaneBytes(), 90);
  return plane;
}

/// Where planes are copied to.
std::vector<std::uint8_t>& Target() {
  static std::vector<std::uint8_t> target(kSize.PlaneBytes(), 1);
  return target;
}

void FetchPlane(const char* getter) {
  const host::Variant plane = HostSession.Call(getter);
  std::ranges::copy(host::AsTable(plane, Target().size(), getter), Target().begin());
}
void SendPlane(const char* setter) { HostSession.Call(setter, host::ByteTable{Plane(), nullptr}); }

/// Writes every plane of a new animation, as shooting does.
void FillFrames() {
  HostSession.Call("vel_CreateAnimAdv", kFrames, std::int16_t{2});
  for (std::int32_t f = 0; f < kFrames; ++f) {
    HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    for (const char* setter : kSetters) SendPlane(setter);
  }
}

double SecondsOf(int times, const std::function<void()>& work) {
  return Seconds([&] {
           for (int i = 0; i < times; ++i) work();
         }) /
         times;
}

/// Runs first, before other work has taken memory.
void MemoryWithHundredFrames(benchmark::State& state) {
  FillFrames();
  const auto resident_mib = [] {
    std::ifstream status("/proc/self/statm");
    double all = 0, resident = 0;
    status >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
  };
  for (auto _ : state) painter::RetrieveFrames();
  bench::TellMegabytes(
      state, {"memory of the tool with 100 frames of 1280 by 720", "the store's 264 and 60 more", AtMost(1)},
      resident_mib(), 264 + 60);
}
BENCHMARK(MemoryWithHundredFrames)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void OneCall(benchmark::State& state) {
  bench::Beside(
      state, {"one call to a host over the bus", "plain sd-bus client", AtMost(1.3)},
      [] { return SecondsOf(kCallsPerRound, [] { HostSession.Call("vel_GetTotalFrames"); }); },
      [] { return SecondsOf(kCallsPerRound, [] { Plain().Call("vel_GetTotalFrames"); }); });
}
BENCHMARK(OneCall)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

double CopyPlusCall() {
  return SecondsOf(kPlanesPerRound, [] {
    Plain().Call("vel_GetTotalFrames");
    std::memcpy(Target().data(), Plane().data(), Plane().size());
    benchmark::ClobberMemory();
  });
}
double Fetch() {
  return SecondsOf(kPlanesPerRound, [] { FetchPlane(kGetters[0]); });
}
double Send() {
  return SecondsOf(kPlanesPerRound, [] { SendPlane(kSetters[0]); });
}

void PlaneToStore(benchmark::State& state) {
  bench::Beside(state, {"a plane of 1280 by 720, host to store", "a copy in memory plus one call", AtMost(3)},
                Fetch, CopyPlusCall);
}
BENCHMARK(PlaneToStore)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

void PlaneToHost(benchmark::State& state) {
  bench::Beside(state, {"a plane of 1280 by 720, roll to host", "a copy in memory plus one call", AtMost(3)},
                Send, CopyPlusCall);
}
BENCHMARK(PlaneToHost)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

void PlaneToStoreBesideBytes(benchmark::State& state) {
  bench::Beside(
      state, {"a plane of 1280 by 720, host to store", "plain sd-bus client, as bytes", {}}, Fetch,
      [] { return SecondsOf(kPlanesPerRound, [] { Plain().FetchBytes(kGetters[0], Target().data()); }); });
}
BENCHMARK(PlaneToStoreBesideBytes)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

void PlaneToHostBesideBytes(benchmark::State& state) {
  bench::Beside(state, {"a plane of 1280 by 720, roll to host", "plain sd-bus client, as bytes", {}}, Send,
                [] { return SecondsOf(kPlanesPerRound, [] { Plain().SendBytes(kSetters[0], Plane()); }); });
}
BENCHMARK(PlaneToHostBesideBytes)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

host::Variant Ask(host::HostObject& host, std::string_view member,
                  std::vector<host::Variant> arguments = {}) {
  return host.Invoke(member, arguments);
}

/// What the host itself does to give a hundred frames: find each plane, and copy it to where it is passed.
double GivingFrames() {
  static host::StandIn host(host::Animation(kSize, kFrames));
  static std::array<platform::SharedMemory, 3> memory;
  return Seconds([] {
    for (std::int32_t f = 0; f < kFrames; ++f) {
      Ask(host, "Vel_GotoFrameAdv", {f, std::int16_t{3}});
      for (std::size_t c = 0; c < memory.size(); ++c)
        memory[c].Fill(std::get<host::ByteTable>(Ask(host, kGetters[c])).bytes);
    }
  });
}

/// What it does to take them: keep a copy of each plane.
double TakingFrames() {
  static host::StandIn host(host::Animation(kSize, kFrames));
  return Seconds([] {
    Ask(host, "vel_CreateAnimAdv", {kFrames, std::int16_t{2}});
    for (std::int32_t f = 0; f < kFrames; ++f) {
      Ask(host, "Vel_GotoFrameAdv", {f, std::int16_t{3}});
      for (const char* setter : kSetters) Ask(host, setter, {host::ByteTable{Plane(), nullptr}});
    }
  });
}

/// The goal is a time and no ratio, so the time allowed stands where a peer's time would.
void HundredFrames(benchmark::State& state, const char* deed, const std::function<void()>& work,
                   double hosts_own_work()) {
  bench::Beside(
      state, {deed, "the goal of 0.25 s beyond the host's own work", AtMost(1)},
      [&] { return Seconds(work) - hosts_own_work(); }, [] { return kSecondsForHundredFrames; });
}

void Retrieve(benchmark::State& state) {
  FillFrames();
  HundredFrames(state, "retrieval of 100 frames of 1280 by 720", painter::RetrieveFrames, GivingFrames);
  if (painter::TheRetrieval().CellCount != kFrames) state.SkipWithError("frames are missing");
}
BENCHMARK(Retrieve)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void Shoot(benchmark::State& state) {
  FillFrames();
  painter::RetrieveFrames();
  painter::StartRoll(painter::TheRoll(), kFrames);
  std::ranges::fill(painter::TheRoll().entries, std::int16_t{1});
  HundredFrames(
      state, "shooting 100 frames of 1280 by 720", [] { painter::frame_painter->vl_button2_Click(); },
      TakingFrames);
}
BENCHMARK(Shoot)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Writes down which frames the host is sent to, and that it is asked for its count.
class NotingHost final : public host::HostObject {
 public:
  explicit NotingHost(std::shared_ptr<host::HostObject> host) : host_(std::move(host)) {}

  host::Variant Invoke(std::string_view member, std::span<const host::Variant> arguments) override {
    if (member == "Vel_GotoFrame") {
      frames.push_back(host::AsLong(arguments[0], member));
    } else {
      frames.push_back(kCount);
    }
    return host_->Invoke(member, arguments);
  }

  static constexpr std::int32_t kCount = INT32_MIN;
  std::vector<std::int32_t> frames;

 private:
  std::shared_ptr<host::HostObject> host_;
};

/// A silent sound of kRows frames at 12 a second.
std::string WriteSound() {
  const auto little = [](std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
    return text;
  };
  std::string path = folder.filePath("long.wav").toStdString();
  const std::uint32_t samples = kRows / 12 * 1000;
  std::ofstream(path, std::ios::binary)
      << "RIFF" << little(samples + 36, 4) << "WAVEfmt " << little(16, 4) << little(1, 2) << little(1, 2)
      << little(1000, 4) << little(1000, 4) << little(1, 2) << little(8, 2) << "data" << little(samples, 4)
      << std::string(samples, '\x80');
  return path;
}

/// A walk through a long sheet, beside the plain client making the very calls that it made.
void Walk(benchmark::State& state, const char* deed, const std::function<void()>& walk) {
  static const auto remote = host::ConnectToBusHost();
  const auto noting = std::make_shared<NotingHost>(remote);
  HostSession.Set(noting);
  walk();
  HostSession.Set(remote);
  bench::Beside(
      state, {deed, "plain sd-bus client, the same calls", AtMost(1.2), 3}, [&] { return Seconds(walk); },
      [&] {
        return Seconds([&] {
          for (const std::int32_t frame : noting->frames)
            frame == NotingHost::kCount ? Plain().Call("vel_GetTotalFrames") : Plain().GotoFrame(frame);
        });
      });
  state.counters["calls"] = static_cast<double>(noting->frames.size());
}

void SaveSheet(benchmark::State& state) {
  form1->CommonDialog1.FileName = WriteSound();
  form1->OpenWaveFile(form1->CommonDialog1.FileName);
  if (form1->Grid1.Rows() != kRows + 1) return state.SkipWithError("the sheet has another length");
  Walk(state, "saving 14,400 rows, lock on", [] { form1->MenuSave_Click(); });
}
BENCHMARK(SaveSheet)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void OpenSheet(benchmark::State& state) {
  Walk(state, "opening 14,400 rows, lock on", [] { form1->MenuOpen_Click(); });
}
BENCHMARK(OpenSheet)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void AnswerDialogs() {
  platform::AnswerMessagesWith([](const platform::Message&) { return platform::Answer::Yes; });
  platform::AnswerFileDialogsWith([](const platform::FileQuestion&) {
    return std::optional(folder.filePath("saved.exp").toStdString());
  });
}

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  if (argument_count > 1 && std::string(arguments[1]) == "--host") return RunHost(argument_count, arguments);
  if (getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr) {
    std::vector<const char*> command = {"dbus-run-session", "--"};
    command.insert(command.end(), arguments, arguments + argument_count + 1);
    execvp(command[0], const_cast<char**>(command.data()));
    return 1;
  }
  benchmark::Initialize(&argument_count, arguments);
  return platform::RunApplication([] {
    AnswerDialogs();
    QProcess* remote = StartHost();
    HostSession.Set(host::ConnectToBusHost());
    form1->Grid1.SetRow(0);
    form1.Hold().Show();
    benchmark::RunSpecifiedBenchmarks();
    remote->kill();
    remote->waitForFinished();
    std::_Exit(0);  // whatever the windows would ask
  });
}
