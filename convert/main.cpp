// The program exposure-sheet-convert: the sheet's data and sounds, out to other programs and back.
#include <QCoreApplication>
#include <QGuiApplication>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include "convert/Conversion.h"
#include "convert/command_line.h"
#include "convert/message.h"
#include "convert/shape_table.h"
#include "platform/Translation.h"
#include "platform/version.h"

namespace convert {
namespace {

void PrintHelp() {
  const Message texts[] = {
      {QT_TRANSLATE_NOOP("convert",
                         "Usage: exposure-sheet-convert [OPTION]... INPUT OUTPUT\n"
                         "Takes an exposure sheet to other programs and back, prints it, lays a text along "
                         "its sound.\nINPUT and OUTPUT may be -, the standard input and output."),
       {}},
      {QT_TRANSLATE_NOOP("convert",
                         "Formats, by the ending of the name or by --from and --to:\n"
                         "  exp    the exposure sheet itself\n"
                         "  dat    switch data, for Moho, OpenToonz, Blender and Synfig\n"
                         "  tsv    Rhubarb Lip Sync's cues; xml and json are read too\n"
                         "  pgo    Papagayo's project\n"
                         "  xdts   exchange digital time sheet\n"
                         "  csv    table with one row a frame\n"
                         "  pdf    the sheet on paper, written only; svg likewise\n"
                         "  wav    a sound that the tool opens, from any sound that can be read\n"
                         "  txt    words to lay along a sound, read only"),
       {}},
      {QT_TRANSLATE_NOOP(
           "convert",
           "Options:\n"
           "  --from FORMAT, --to FORMAT   the format of the input, of the output\n"
           "  --rate NUMBER    frames per second of the sheet; a sheet at another rate is re-timed\n"
           "  --sound FILE     the sheet's sound: its name, its length, its waveform\n"
           "  --shapes FILE    a table of names in place of the one built in\n"
           "  --print-shapes   prints the table built in, to begin one's own with\n"
           "  --paper A4|Letter    for pdf and svg\n"
           "  --language NAME  of a text's words, as the speech synthesizer names it (en-us)\n"
           "  --rules          spells words by the rules for English, without the synthesizer\n"
           "  --force          replaces an output that is there already\n"
           "  --help, --version"),
       {}},
      {QT_TRANSLATE_NOOP("convert",
                         "What a format can't hold is said on the error output.\n"
                         "The exit status is 0 if all went well, 1 if a file can't be read or written, 2 "
                         "if the command line isn't understood."),
       {}}};
  for (std::size_t i = 0; i < std::size(texts); ++i)
    std::printf("%s%s\n", i ? "\n" : "", Translated(texts[i]).c_str());
}

int Answer(Request request) {
  switch (request.kind) {
    case Request::Kind::kHelp:
      PrintHelp();
      return kDone;
    case Request::Kind::kVersion:
      std::printf("%s %s\n", kProgram, platform::kVersion);
      return kDone;
    case Request::Kind::kShapes:
      std::printf("%s", std::string(ShapeTable::DefaultText()).c_str());
      return kDone;
    case Request::Kind::kFault:
      Say(Translated(request.fault));
      Say(Translated({QT_TRANSLATE_NOOP("convert", "--help tells more"), {}}));
      return kMisused;
    case Request::Kind::kConvert:
      break;
  }
  return RunConversion(std::move(request));
}

int Run(int argument_count, char** arguments) {
  // A file that may not grow any further is a failed write, to be told like another.
  std::signal(SIGXFSZ, SIG_IGN);
  // Fonts and printing need the toolkit's windowing half, but no display. What it warns of, such as a folder
  // that only windows need, would stand between this program's own words.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  int own_name_only = 1;
  const QGuiApplication application(own_name_only, arguments);
  QCoreApplication::setApplicationName(kProgram);
  platform::Translate("convert");
  try {
    return Answer(ReadCommandLine(argument_count, arguments));
  } catch (const std::bad_alloc&) {
    Say(Translated({QT_TRANSLATE_NOOP("convert", "not enough memory"), {}}));
  } catch (const std::exception& failure) {
    Say(failure.what());
  }
  return kFailed;
}

}  // namespace
}  // namespace convert

int main(int argument_count, char** arguments) { return convert::Run(argument_count, arguments); }
