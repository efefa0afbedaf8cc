#include "convert/ConvertProgram.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStringDecoder>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>

#include "convert/command_line.h"
#include "convert/draft/Draft.h"
#include "convert/formats/ToolkitFormats.h"
#include "convert/formats/formats.h"
#include "convert/paper/Paper.h"
#include "convert/sound/SoundFile.h"
#include "convert/streams.h"
#include "platform/Translation.h"
#include "platform/version.h"
#include "sheet/text_encoding.h"
#include "sheet/whole_file.h"

namespace convert {
namespace {

constexpr const char* kProgram = "exposure-sheet-convert";
constexpr std::int64_t kMostTextBytes = std::int64_t{64} << 20;
constexpr std::size_t kMostNotes = 20;

std::string Translated(const Message& message) {
  return Filled(QCoreApplication::translate("convert", message.text).toStdString(), message.arguments);
}

void Say(const std::string& text) { std::fprintf(stderr, "%s: %s\n", kProgram, text.c_str()); }

std::string InputNamed(const std::string& name) {
  return name == kStandardStream ? Translated({QT_TRANSLATE_NOOP("convert", "standard input"), {}}) : name;
}

std::string OutputNamed(const std::string& name) {
  return name == kStandardStream ? Translated({QT_TRANSLATE_NOOP("convert", "standard output"), {}}) : name;
}

int Fail(const std::string& name, const Message& failure) {
  Say(name + ": " + Translated(failure));
  return kFailed;
}

void SayNotes(const std::string& name, const Messages& notes) {
  for (std::size_t i = 0; i < std::min(notes.size(), kMostNotes); ++i)
    Say(name + ": " + Translated(notes[i]));
  if (notes.size() > kMostNotes) {
    Say(name + ": " +
        Translated(
            {QT_TRANSLATE_NOOP("convert", "%1 more like it"), {std::to_string(notes.size() - kMostNotes)}}));
  }
}

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

bool IsUtf16(std::string_view bytes) {
  return bytes.starts_with("\xff\xfe") || bytes.starts_with("\xfe\xff");
}

/// UTF-16 with its mark, as spreadsheets call Unicode, else what sheets are read as.
std::string Decoded(std::string bytes) {
  if (IsUtf16(bytes)) {
    QStringDecoder decoder(QStringConverter::Utf16);
    const QString text = decoder.decode(QByteArrayView(bytes));
    return text.toStdString();
  }
  return sheet::DecodedText(std::move(bytes));
}

Reading ReadAs(Format format, std::string bytes, const Context& context) {
  // XML tells its own encoding.
  if (format == Format::kCueXml) return ReadCueXml(bytes, context);
  const bool may_name_sound = format == Format::kSheet && !IsUtf16(bytes);
  const std::string text = may_name_sound ? sheet::DecodedSheet(std::move(bytes)) : Decoded(std::move(bytes));
  switch (format) {
    case Format::kSheet:
      return ReadExposureSheet(text);
    case Format::kSwitchData:
      return ReadSwitchData(text, context);
    case Format::kCueTable:
      return ReadCueTable(text, context);
    case Format::kCueJson:
      return ReadCueJson(text, context);
    case Format::kPapagayo:
      return ReadPapagayo(text, context);
    case Format::kXdts:
      return ReadXdts(text, context);
    default:
      return ReadCsv(text, context);
  }
}

/// One run of the program.
class Conversion {
 public:
  explicit Conversion(Request request) : request_(std::move(request)) {}

  int Run() {
    if (!request_.force && OutputExists(request_.output)) {
      return Fail(OutputNamed(request_.output),
                  {QT_TRANSLATE_NOOP("convert", "is there already (see --force)"), {}});
    }
    if (request_.from == Format::kWave) return ConvertSound();
    if (const int status = ReadTable(); status != kDone) return status;
    if (const int status = OpenSound(); status != kDone) return status;
    if (const int status = ReadSheet(); status != kDone) return status;
    return WriteSheet();
  }

 private:
  int ConvertSound() {
    const auto opened = SoundFile::Open(request_.input);
    if (!opened.sound) return Fail(InputNamed(request_.input), {"%1", {opened.reason}});
    Messages notes;
    const Message failure = WriteWave(*opened.sound, request_.output, notes);
    if (!failure.Empty()) return Fail(OutputNamed(request_.output), failure);
    SayNotes(OutputNamed(request_.output), notes);
    return kDone;
  }

  int ReadTable() {
    context_.names = &ShapeTable::Default();
    context_.rate_text = request_.rate_text;
    if (request_.shapes.empty()) return kDone;
    const InputBytes file = ReadInput(request_.shapes, kMostTextBytes);
    if (!file.bytes) return Fail(InputNamed(request_.shapes), {"%1", {file.reason}});
    auto parsed = ShapeTable::Parse(Decoded(*file.bytes));
    if (!parsed.table) return Fail(InputNamed(request_.shapes), parsed.failure);
    table_ = *std::move(parsed.table);
    context_.names = &table_;
    return kDone;
  }

  int OpenSound() {
    if (request_.sound.empty()) return kDone;
    auto opened = SoundFile::Open(request_.sound);
    if (!opened.sound) return Fail(InputNamed(request_.sound), {"%1", {opened.reason}});
    sound_ = std::move(opened.sound);
    context_.sound_seconds = static_cast<double>(sound_->ScanAll().frames) / sound_->SamplesPerSecond();
    if (request_.sound != kStandardStream) {
      std::error_code error;
      context_.sound_name = std::filesystem::absolute(request_.sound, error).lexically_normal().string();
    }
    if (request_.to == Format::kSheet && !sound_->IsPlainWave()) {
      SayNotes(InputNamed(request_.sound),
               {{QT_TRANSLATE_NOOP("convert",
                                   "the tool opens wave files of 8 or 16 bits; make one "
                                   "of this sound with exposure-sheet-convert first"),
                 {}}});
    }
    return kDone;
  }

  int ReadSheet() {
    const std::int64_t most = request_.from == Format::kSheet ? sheet::kMostSheetBytes : kMostTextBytes;
    InputBytes file = ReadInput(request_.input, most);
    if (!file.bytes) return Fail(InputNamed(request_.input), {"%1", {file.reason}});
    Reading reading;
    if (request_.from == Format::kWords) {
      reading = DraftOf(Decoded(*std::move(file.bytes)), *sound_, {request_.language, request_.synthesizer},
                        context_);
    } else {
      reading = ReadAs(request_.from, *std::move(file.bytes), context_);
    }
    if (!reading.sheet) return Fail(InputNamed(request_.input), reading.failure);
    sheet_ = *std::move(reading.sheet);
    Fit(sheet_, context_, reading.notes);
    SayNotes(InputNamed(request_.input), reading.notes);
    return kDone;
  }

  int WriteSheet() {
    Writing writing;
    switch (request_.to) {
      case Format::kSheet:
        writing = WriteExposureSheet(sheet_);
        break;
      case Format::kSwitchData:
        writing = WriteSwitchData(sheet_, *context_.names);
        break;
      case Format::kCueTable:
        writing = WriteCueTable(sheet_, *context_.names);
        break;
      case Format::kPapagayo:
        writing = WritePapagayo(sheet_, *context_.names);
        break;
      case Format::kXdts:
        writing = WriteXdts(sheet_);
        break;
      case Format::kCsv:
        writing = WriteCsv(sheet_);
        break;
      default:
        writing = WriteOnPaper();
    }
    if (!writing.bytes) return Fail(OutputNamed(request_.output), writing.failure);
    const std::string failure = WriteOutput(request_.output, *writing.bytes);
    if (!failure.empty()) return Fail(OutputNamed(request_.output), {"%1", {failure}});
    SayNotes(OutputNamed(request_.output), writing.notes);
    return kDone;
  }

  Writing WriteOnPaper() {
    Messages notes;
    if (!sound_ && !sheet_.wave_file_name.empty()) {
      const auto path = sheet::FindWaveFile(sheet_.wave_file_name, request_.input);
      if (path) sound_ = SoundFile::Open(*path).sound;
      if (!sound_) {
        notes.push_back({QT_TRANSLATE_NOOP("convert", "the sound %1 can't be read; its waveform is left out"),
                         {Quoted(sheet_.wave_file_name)}});
      }
    }
    const std::string name = request_.input == kStandardStream
                                 ? std::string()
                                 : std::filesystem::path(request_.input).stem().string();
    Writing writing = PrintSheet(sheet_, name, sound_.get(), request_.paper, request_.to == Format::kSvg);
    writing.notes.insert(writing.notes.begin(), notes.begin(), notes.end());
    return writing;
  }

  Request request_;
  ShapeTable table_;
  Context context_;
  std::unique_ptr<SoundFile> sound_;
  Document sheet_;
};

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
  return Conversion(std::move(request)).Run();
}

}  // namespace

int RunConvert(int argument_count, char** arguments) {
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

}  // namespace convert
