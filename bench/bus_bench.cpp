// What a host in a process of its own costs beside the embedded one: a call's round trip, saving a long sheet
// with the lock on, retrieving and shooting frames. Argument 0 is the embedded host, 1 the one over the bus.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>
#include <fstream>

#include "app/Form1.h"
#include "app/Program.h"
#include "host/HostSession.h"
#include "host/bus/BusHost.h"
#include "host/standin/BusService.h"
#include "host/standin/EmbeddedHost.h"
#include "host/standin/StandInWindow.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/strip_state.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"

namespace {

using host::HostSession;

constexpr host::FrameSize kSize{1280, 720};
constexpr int kFrames = 100;
constexpr int kRows = 14'400;

QTemporaryDir folder;

/// The host's side: the stand-in over the bus.
int RunHost(int argument_count, char** arguments) {
  QApplication application(argument_count, arguments);
  const auto stand_in = std::make_shared<host::StandIn>(host::Animation(kSize, kFrames));
  stand_in->SetAppDir("/");
  host::StandInWindow window(stand_in, host::Place::Apart);
  host::BusService service(stand_in);
  if (service.Start()) return 1;
  window.show();
  return QApplication::exec();
}

QProcess* StartHost() {
  auto* process = new QProcess(qApp);
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process->start(QCoreApplication::applicationFilePath(), {"--host"});
  while (host::ConnectToBusHost() == nullptr) usleep(10'000);
  return process;
}

/// Makes the tool work with one of the two hosts.
void UseHost(bool over_bus) {
  static const auto remote = host::ConnectToBusHost();
  static const auto embedded = host::MakeEmbeddedHost();
  HostSession.Hold(over_bus ? remote : embedded);
}

/// Writes every plane of a new animation, as shooting does.
void FillFrames() {
  const std::vector<std::uint8_t> plane(kSize.PlaneBytes(), 90);
  HostSession.Call("vel_CreateAnimAdv", std::int32_t{kFrames}, std::int16_t{2});
  for (std::int32_t f = 0; f < kFrames; ++f) {
    HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    for (const char* setter : {"vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer"})
      HostSession.Call(setter, host::ByteTable{plane, nullptr});
  }
}

void RoundTrip(benchmark::State& state) {
  UseHost(state.range(0) != 0);
  for (auto _ : state) benchmark::DoNotOptimize(HostSession.Call("vel_GetTotalFrames"));
}
BENCHMARK(RoundTrip)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->UseRealTime();

void PlaneRoundTrip(benchmark::State& state) {
  UseHost(state.range(0) != 0);
  FillFrames();
  for (auto _ : state) benchmark::DoNotOptimize(HostSession.Call("vel_GetRbuffer"));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kSize.PlaneBytes()));
}
BENCHMARK(PlaneRoundTrip)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// A silent sound of kRows frames at 12 a second.
std::string WriteSound() {
  const auto little = [](std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
    return text;
  };
  const std::string path = folder.filePath("long.wav").toStdString();
  const std::uint32_t samples = kRows / 12 * 1000;
  std::ofstream(path, std::ios::binary)
      << "RIFF" << little(samples + 36, 4) << "WAVEfmt " << little(16, 4) << little(1, 2) << little(1, 2)
      << little(1000, 4) << little(1000, 4) << little(1, 2) << little(8, 2) << "data" << little(samples, 4)
      << std::string(samples, '\x80');
  return path;
}

void SaveSheet(benchmark::State& state) {
  UseHost(state.range(0) != 0);
  form1->CommonDialog1.FileName = WriteSound();
  form1->OpenWaveFile(form1->CommonDialog1.FileName);
  if (form1->Grid1.Rows() != kRows + 1) return state.SkipWithError("the sheet has another length");
  for (auto _ : state) form1->MenuSave_Click();
}
BENCHMARK(SaveSheet)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void Retrieve(benchmark::State& state) {
  UseHost(state.range(0) != 0);
  FillFrames();
  for (auto _ : state) painter::RetrieveFrames();
  if (painter::TheRetrieval().CellCount != kFrames) state.SkipWithError("frames are missing");
}
BENCHMARK(Retrieve)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void Shoot(benchmark::State& state) {
  UseHost(state.range(0) != 0);
  FillFrames();
  painter::RetrieveFrames();
  painter::StartRoll(painter::TheRoll(), kFrames);
  std::ranges::fill(painter::TheRoll().entries, std::int16_t{1});
  for (auto _ : state) painter::frame_painter->vl_button2_Click();
}
BENCHMARK(Shoot)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

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
    UseHost(false);
    form1->Grid1.SetRow(0);
    form1.Hold().Show();
    benchmark::RunSpecifiedBenchmarks();
    remote->kill();
    remote->waitForFinished();
    std::_Exit(0);  // whatever the windows would ask
  });
}
