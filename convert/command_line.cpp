#include "convert/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <utility>

#include "convert/lines.h"
#include "convert/streams.h"

namespace convert {
namespace {

enum Option {
  kFrom = 256,
  kTo,
  kRate,
  kSound,
  kShapes,
  kPaper,
  kLanguage,
  kRules,
  kForce,
  kHelp,
  kVersion,
  kPrint
};

constexpr option kOptions[] = {{"from", required_argument, nullptr, kFrom},
                               {"to", required_argument, nullptr, kTo},
                               {"rate", required_argument, nullptr, kRate},
                               {"sound", required_argument, nullptr, kSound},
                               {"shapes", required_argument, nullptr, kShapes},
                               {"paper", required_argument, nullptr, kPaper},
                               {"language", required_argument, nullptr, kLanguage},
                               {"rules", no_argument, nullptr, kRules},
                               {"force", no_argument, nullptr, kForce},
                               {"help", no_argument, nullptr, kHelp},
                               {"version", no_argument, nullptr, kVersion},
                               {"print-shapes", no_argument, nullptr, kPrint},
                               {nullptr, 0, nullptr, 0}};

/// Endings of file names beside the formats' own names.
struct Ending {
  const char* text;
  Format format;
};
constexpr Ending kOtherEndings[] = {
    {"sheet", Format::kSheet}, {"wave", Format::kWave}, {"flac", Format::kWave}, {"ogg", Format::kWave},
    {"oga", Format::kWave},    {"opus", Format::kWave}, {"mp3", Format::kWave},  {"aif", Format::kWave},
    {"aiff", Format::kWave},   {"aifc", Format::kWave}, {"au", Format::kWave},   {"snd", Format::kWave},
    {"caf", Format::kWave},    {"w64", Format::kWave},  {"rf64", Format::kWave}, {"bwf", Format::kWave},
    {"voc", Format::kWave},    {"sound", Format::kWave}};

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return text;
}

std::optional<Format> FormatNamed(const std::string& name) {
  const std::string wanted = Lower(name);
  for (const FormatFacts& facts : Formats()) {
    if (wanted == facts.name) return facts.format;
  }
  for (const Ending& ending : kOtherEndings) {
    if (wanted == ending.text) return ending.format;
  }
  return std::nullopt;
}

std::optional<Format> FormatOfFile(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string::npos || name.find('/', dot) != std::string::npos) return std::nullopt;
  return FormatNamed(name.substr(dot + 1));
}

const FormatFacts& FactsOf(Format format) {
  return *std::find_if(Formats().begin(), Formats().end(),
                       [format](const FormatFacts& facts) { return facts.format == format; });
}

Request Fault(const char* text, std::vector<std::string> arguments = {}) {
  Request request;
  request.kind = Request::Kind::kFault;
  request.fault = {text, std::move(arguments)};
  return request;
}

/// The formats that the options or the names tell, and whether they go together.
Request WithFormats(Request request, std::optional<Format> from, std::optional<Format> to) {
  if (!from) from = FormatOfFile(request.input);
  if (!to) to = FormatOfFile(request.output);
  if (!from) {
    return Fault(QT_TRANSLATE_NOOP("convert", "can't tell the format of %1 by its name (see --from)"),
                 {Quoted(request.input)});
  }
  if (!to) {
    return Fault(QT_TRANSLATE_NOOP("convert", "can't tell the format of %1 by its name (see --to)"),
                 {Quoted(request.output)});
  }
  if (!FactsOf(*from).in)
    return Fault(QT_TRANSLATE_NOOP("convert", "%1 can only be written"), {FactsOf(*from).name});
  if (!FactsOf(*to).out)
    return Fault(QT_TRANSLATE_NOOP("convert", "%1 can only be read"), {FactsOf(*to).name});
  if ((*from == Format::kWave) != (*to == Format::kWave))
    return Fault(QT_TRANSLATE_NOOP("convert", "a sound becomes a sound (.wav), a sheet a sheet"));
  if (*from == Format::kWords && request.sound.empty())
    return Fault(QT_TRANSLATE_NOOP("convert", "a text can only be laid along a sound (see --sound)"));
  request.from = *from;
  request.to = *to;
  return request;
}

/// As a sheet holds it: a decimal number without an exponent.
bool IsRate(const std::string& text) {
  if (text.find_first_not_of("0123456789.") != std::string::npos) return false;
  const auto rate = WholeNumber(text);
  return rate && *rate > 0;
}

}  // namespace

const std::vector<FormatFacts>& Formats() {
  static const std::vector<FormatFacts> formats = {
      {Format::kSheet, "exp", true, true},     {Format::kSwitchData, "dat", true, true},
      {Format::kCueTable, "tsv", true, true},  {Format::kCueXml, "xml", true, false},
      {Format::kCueJson, "json", true, false}, {Format::kPapagayo, "pgo", true, true},
      {Format::kXdts, "xdts", true, true},     {Format::kCsv, "csv", true, true},
      {Format::kPdf, "pdf", false, true},      {Format::kSvg, "svg", false, true},
      {Format::kWave, "wav", true, true},      {Format::kWords, "txt", true, false}};
  return formats;
}

Request ReadCommandLine(int argument_count, char** arguments) {
  Request request;
  std::optional<Format> from, to;
  opterr = 0;
  optind = 0;
  int option = 0;
  while ((option = getopt_long(argument_count, arguments, ":hV", kOptions, nullptr)) != -1) {
    const std::string value = optarg ? optarg : "";
    switch (option) {
      case kFrom:
      case kTo:
        (option == kFrom ? from : to) = FormatNamed(value);
        if (!FormatNamed(value))
          return Fault(QT_TRANSLATE_NOOP("convert", "there is no format %1"), {Quoted(value)});
        break;
      case kRate:
        if (!IsRate(value)) {
          return Fault(QT_TRANSLATE_NOOP("convert", "--rate: expected a number above 0, found %1"),
                       {Quoted(value)});
        }
        request.rate_text = value;
        break;
      case kSound:
        request.sound = value;
        break;
      case kShapes:
        request.shapes = value;
        break;
      case kPaper:
        if (Lower(value) != "a4" && Lower(value) != "letter")
          return Fault(QT_TRANSLATE_NOOP("convert", "--paper: expected A4 or Letter, found %1"),
                       {Quoted(value)});
        request.paper = Lower(value) == "a4" ? Paper::kA4 : Paper::kLetter;
        break;
      case kLanguage:
        request.language = value;
        break;
      case kRules:
        request.synthesizer = false;
        break;
      case kForce:
        request.force = true;
        break;
      case 'h':
      case kHelp:
        request.kind = Request::Kind::kHelp;
        return request;
      case 'V':
      case kVersion:
        request.kind = Request::Kind::kVersion;
        return request;
      case kPrint:
        request.kind = Request::Kind::kShapes;
        return request;
      case ':':
        return Fault(QT_TRANSLATE_NOOP("convert", "%1 needs a value"), {arguments[optind - 1]});
      default:
        return Fault(QT_TRANSLATE_NOOP("convert", "there is no option %1"), {arguments[optind - 1]});
    }
  }
  if (argument_count - optind != 2)
    return Fault(QT_TRANSLATE_NOOP("convert", "expected an input and an output"));
  request.input = arguments[optind];
  request.output = arguments[optind + 1];
  if (request.input == kStandardStream && request.sound == kStandardStream)
    return Fault(QT_TRANSLATE_NOOP("convert", "input and sound can't both come from the standard input"));
  return WithFormats(std::move(request), from, to);
}

}  // namespace convert
