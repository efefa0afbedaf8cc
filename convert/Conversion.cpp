#include "convert/Conversion.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "convert/document.h"
#include "convert/draft/Draft.h"
#include "convert/formats/ToolkitFormats.h"
#include "convert/formats/formats.h"
#include "convert/paper/Paper.h"
#include "convert/shape_table.h"
#include "convert/sound/SoundFile.h"
#include "convert/streams.h"
#include "sheet/sheet_file.h"
#include "sheet/text_encoding.h"
#include "sheet/whole_file.h"

namespace convert {

std::string Translated(const Message& message) {
  std::vector<std::string> arguments = message.arguments;
  for (const Message& inner : message.inner) arguments.push_back(Translated(inner));
  return Filled(QCoreApplication::translate("convert", message.text).toStdString(), arguments);
}

void Say(const std::string& text) { std::fprintf(stderr, "%s: %s\n", kProgram, text.c_str()); }

namespace {

constexpr std::int64_t kMostTextBytes = std::int64_t{64} << 20;
constexpr std::size_t kMostNotes = 20;

std::string InputNamed(const std::string& name) {
  return name == kStandardStream ? Translated({QT_TRANSLATE_NOOP("convert", "standard input"), {}}) : name;
}

std::string OutputNamed(const std::string& name) {
  return name == kStandardStream ? Translated({QT_TRANSLATE_NOOP("convert", "standard output"), {}}) : name;
}

ExitStatus Fail(const std::string& name, const Message& failure) {
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

  ExitStatus Run() {
    if (!request_.force && OutputExists(request_.output)) {
      return Fail(OutputNamed(request_.output),
                  {QT_TRANSLATE_NOOP("convert", "is there already (see --force)"), {}});
    }
    if (request_.from == Format::kWave) return ConvertSound();
    if (const ExitStatus status = ReadTable(); status != kDone) return status;
    if (const ExitStatus status = OpenSound(); status != kDone) return status;
    if (const ExitStatus status = ReadSheet(); status != kDone) return status;
    return WriteSheet();
  }

 private:
  ExitStatus ConvertSound() {
    const auto opened = SoundFile::Open(request_.input);
    if (!opened.sound) return Fail(InputNamed(request_.input), {"%1", {opened.reason}});
    Messages notes;
    const Message failure = WriteWave(*opened.sound, request_.output, notes);
    if (!failure.Empty()) return Fail(OutputNamed(request_.output), failure);
    SayNotes(OutputNamed(request_.output), notes);
    return kDone;
  }

  ExitStatus ReadTable() {
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

  ExitStatus OpenSound() {
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

  ExitStatus ReadSheet() {
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

  ExitStatus WriteSheet() {
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

}  // namespace

ExitStatus RunConversion(Request request) { return Conversion(std::move(request)).Run(); }

}  // namespace convert
