// The tool with a user made of words: each argument is one step of a session, done in an event of its own.
// What the user would see goes to the standard output, a line each.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "app/Form1.h"
#include "app/Program.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"

namespace {

/// Stands once the host won't answer any more.
std::string silence_file;

using Step = std::function<void(const std::string& value)>;

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/// Runs the routine again and again, an event each, until it says true.
void Until(std::function<bool()> done, std::function<void()> then) {
  if (done()) return then();
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  platform::RunLater([done = std::move(done), then = std::move(then)] { Until(done, then); });
}

const std::map<std::string, Step>& Steps() {
  static const std::map<std::string, Step> steps = {
      {"wave",
       [](const std::string& path) {
         form1->CommonDialog1.FileName = path;
         form1->OpenWaveFile(path);
       }},
      {"row", [](const std::string& row) { form1->Grid1.SetRow(std::stoi(row)); }},
      {"rate", [](const std::string& rate) { form1->ChooseRate(rate); }},
      {"play", [](const std::string&) { form1->vl_button1_Click(); }},
      {"frame-painter", [](const std::string&) { form1->FramePainterM_Click(); }},
      {"retrieve", [](const std::string&) { painter::frame_painter->vl_button1_Click(); }},
      {"length",
       [](const std::string& frames) {
         painter::fp_options->Text1.SetText(frames);
         painter::fp_options->Command1_Click();
       }},
      {"stamp", [](const std::string& frame) { painter::frame_painter->SetRollFrame(std::stoi(frame), 1); }},
      {"shoot", [](const std::string&) { painter::frame_painter->vl_button2_Click(); }},
      {"done", [](const std::string&) { painter::frame_painter->vl_button3_Click(); }},
      // An event is due while the row's host calls are under way.
      {"row-amid-events",
       [](const std::string& row) {
         platform::RunLater([] { Say("event"); });
         form1->Grid1.SetRow(std::stoi(row));
         Say("moved");
       }},
      {"quit", [](const std::string&) { form1->QuitMouth_Click(); }},
  };
  return steps;
}

void Run(const std::string& step, std::function<void()> then) {
  const auto equals = step.find('=');
  const std::string name = step.substr(0, equals);
  const std::string value = equals == std::string::npos ? "" : step.substr(equals + 1);
  if (name == "shown") return Until([] { return form1.IfLoaded() != nullptr; }, std::move(then));
  if (name == "played") return Until([] { return !form1->Timer1.Enabled(); }, std::move(then));
  Steps().at(name)(value);
  then();
}

void RunFrom(std::vector<std::string> steps, std::size_t next) {
  if (next == steps.size()) return;
  platform::RunLater([steps, next] { Run(steps[next], [steps, next] { RunFrom(steps, next + 1); }); });
}

platform::Answer AnswerAndSay(const platform::Message& message) {
  // Asked at once and again and again, whoever has the file's name knows when to give up.
  if (message.text.starts_with("The host doesn't answer."))
    return std::filesystem::exists(silence_file) ? platform::Answer::No : platform::Answer::Yes;
  Say("message " + message.text);
  return message.buttons == platform::Buttons::YesNo ? platform::Answer::Yes : platform::Answer::Ok;
}

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("SDL_AUDIODRIVER", "dummy", 0);
  platform::AnswerMessagesWith(AnswerAndSay);
  std::vector<std::string> steps(arguments + 1, arguments + argument_count);
  constexpr std::string_view give_up = "give-up-when=";
  if (!steps.empty() && steps[0].starts_with(give_up)) {
    silence_file = steps[0].substr(give_up.size());
    platform::AskAfter(std::chrono::milliseconds(20));
    steps.erase(steps.begin());
  }
  return platform::RunApplication([&steps] {
    app::Main();
    RunFrom(steps, 0);
  });
}
