// The tool with a user made of words: each argument is one step of a session, done in an event of its own.
// What the user would see goes to the standard output, a line each.
#include <dlfcn.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
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
#include "sheet/Form3.h"
#include "timeline/velocity_values.h"

namespace {

/// A file that exists from the moment on at which the host answers no more.
std::string silence_file;

using Step = std::function<void(const std::string& value)>;

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/// What stands in the controls and the tracks, a line each.
void SaySheet() {
  Form1* const form = form1.IfLoaded();
  if (form == nullptr) return;
  Say("held rate " + form3.Hold().Text7.Text());
  Say("held sound " + form->CommonDialog1.FileName);
  for (int row = 1; row < form->Grid1.Rows(); ++row)
    for (int column = 0; column < 3; ++column) Say("held cell " + form->Grid1.TextMatrix(row, column));
  for (const look::vl_button* toggle :
       {&form->vl_button18, &form->vl_button13, &form->vl_button14, &form->vl_button15, &form->vl_button16})
    Say(std::string("held toggle ") + (toggle->value() ? "True" : "False"));
  const auto& tracks = timeline::Tracks().VelocityValues;
  for (int frame = 0; frame < tracks.Frames(); ++frame)
    for (int channel = 0; channel < 4; ++channel)
      Say("held value " + std::to_string(tracks.At(frame, channel)));
}

/// "2,1,A , b" as row, column and text.
void PutCell(const std::string& words) {
  int row = 0, column = 0, text = 0;
  std::sscanf(words.c_str(), "%d,%d,%n", &row, &column, &text);
  form1->Grid1.SetRow(row);
  form1->Grid1.SetCol(column);
  form1->Grid1.SetText(words.substr(static_cast<std::size_t>(text)));
}

/// "1,2,9" as frame, channel and value.
void PutTrackValue(const std::string& words) {
  int frame = 0, channel = 0, value = 0;
  std::sscanf(words.c_str(), "%d,%d,%d", &frame, &channel, &value);
  timeline::Tracks().VelocityValues.Set(frame, channel, static_cast<std::uint8_t>(value));
}

/// Runs the routine again and again, an event each, until it says true.
void Until(std::function<bool()> done, std::function<void()> then) {
  if (done()) return then();
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  platform::RunLater([done = std::move(done), then = std::move(then)] { Until(done, then); });
}

template <typename Routine>
Routine* FaultRoutine(const char* name) {
  return reinterpret_cast<Routine*>(dlsym(RTLD_DEFAULT, name));
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
      {"cell", PutCell},
      {"track", PutTrackValue},
      {"hide", [](const std::string&) { form1->vl_button14.SetValue(false); }},
      {"save",
       [](const std::string& path) {
         platform::AnswerFileDialogsWith([path](const platform::FileQuestion&) { return path; });
         form1->MenuSave_Click();
         Say("saved");
       }},
      {"held", [](const std::string&) { SaySheet(); }},
      {"throw", [](const std::string& text) { throw std::runtime_error(text); }},
      // These two routines are in a library that is loaded in front of the system's.
      {"arm",
       [](const std::string& words) {
         const auto comma = words.find(',');
         FaultRoutine<void(int, int)>("ArmFaults")(std::stoi(words), std::stoi(words.substr(comma + 1)));
       }},
      {"disarm",
       [](const std::string&) { Say("calls " + std::to_string(FaultRoutine<int()>("DisarmFaults")())); }},
      {"shell",
       [](const std::string& command) { [[maybe_unused]] const int status = std::system(command.c_str()); }},
      {"touch", [](const std::string& path) { std::ofstream(path).put('x'); }},
      {"signal", [](const std::string& number) { kill(getpid(), std::stoi(number)); }},
      {"wait", [](const std::string&) {}},
      {"exit", [](const std::string&) { std::exit(7); }},
      {"terminate",
       [](const std::string& text) {
         try {
           throw std::runtime_error(text);
         } catch (const std::exception&) {
           std::terminate();
         }
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

void RunFrom(const std::vector<std::string>& steps, std::size_t next) {
  if (next == steps.size()) return;
  platform::RunLater([steps, next] { Run(steps[next], [steps, next] { RunFrom(steps, next + 1); }); });
}

platform::Answer AnswerAndSay(const platform::Message& message) {
  // The question comes at once and again and again; the file says when to give the host up.
  if (message.text.starts_with("The host doesn't answer."))
    return std::filesystem::exists(silence_file) ? platform::Answer::No : platform::Answer::Yes;
  Say("message " + message.text);
  if (message.text.ends_with("can't go on and ends.")) SaySheet();
  return message.buttons == platform::Buttons::YesNo ? platform::Answer::Yes : platform::Answer::Ok;
}

}  // namespace

int main(int argument_count, char** arguments) {
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
