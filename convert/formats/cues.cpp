#include "convert/formats/cues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <utility>

#include "convert/formats/formats.h"
#include "convert/lines.h"
#include "convert/message.h"
#include "convert/shape_table.h"

namespace convert {
namespace {

constexpr const char* kRestLetter = "X";

/// Hundredths, as that program writes them, or as many decimals as it takes to find the frame again.
int DecimalsAt(double rate) {
  int decimals = 2;
  for (double resolution = 50; resolution <= rate && decimals < 9; resolution *= 10) ++decimals;
  return decimals;
}

/// The frame's time, cut off behind these decimals and not rounded: readers show the last cue that has begun,
/// and one that begins a trifle late would be seen a frame late.
std::string TimeOf(std::size_t frame, double rate, int decimals) {
  constexpr double kWholeEnough = 1e-6;
  const double scale = std::pow(10, decimals);
  const double cut = std::floor(static_cast<double>(frame) / rate * scale + kWholeEnough) / scale;
  char buffer[400];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, cut, std::chars_format::fixed, decimals).ptr;
  return std::string(buffer, end);
}

/// For messages: a number out of all bounds stays short.
std::string ShortNumber(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", number);
  return text;
}

bool EndsSound(const Cue& cue) { return cue.letter == kRestLetter || cue.letter == "A"; }

}  // namespace

std::optional<Message> FaultOf(const Cue& cue, const Context& context) {
  const double last = cue.start_seconds * context.Rate();
  if (cue.start_seconds >= 0 && last <= static_cast<double>(kMostFrames)) return std::nullopt;
  return Message{QT_TRANSLATE_NOOP("convert", "%2: a start of %1 seconds can't be used"),
                 {ShortNumber(cue.start_seconds)},
                 {cue.place}};
}

Reading SheetOfCues(const std::vector<Cue>& cues, std::optional<double> duration_seconds,
                    const std::string& sound_name, const Context& context) {
  Entries found;
  Messages notes;
  found.sound_name = sound_name;
  const double rate = context.Rate();
  if (duration_seconds) found.frames = std::max<std::int64_t>(NearestFrame(*duration_seconds, rate), 0);
  for (const Cue& cue : cues) {
    const auto shape = context.names->Shape(cue.letter, Naming::kCues);
    if (!shape) notes.push_back(UnknownMouth(cue.place, cue.letter));
    found.entries.push_back(
        {NearestFrame(cue.start_seconds, rate), shape.value_or(""), shape ? "" : cue.letter});
  }
  return SheetOf(std::move(found), context, std::move(notes));
}

Reading ReadCueTable(std::string_view text, const Context& context) {
  std::vector<Cue> cues;
  Lines lines(text);
  while (const auto line = lines.Next()) {
    if (Trimmed(*line).empty()) continue;
    const std::size_t tab = line->find('\t');
    const auto start = WholeNumber(Trimmed(line->substr(0, tab)));
    const std::string letter(tab == std::string_view::npos ? "" : Trimmed(line->substr(tab)));
    if (!start || letter.empty() || letter.find('\t') != std::string::npos) {
      return Refused(QT_TRANSLATE_NOOP("convert", "line %1: expected seconds, a tab and a letter, found %2"),
                     {std::to_string(lines.Number()), Quoted(std::string(*line))});
    }
    cues.push_back({*start, letter, LineNumbered(lines.Number())});
    if (const auto fault = FaultOf(cues.back(), context)) return {std::nullopt, *fault, {}};
  }
  if (cues.empty()) return Refused(QT_TRANSLATE_NOOP("convert", "the file has no cues"));
  std::optional<double> end;
  if (cues.size() > 1 && EndsSound(cues.back())) {
    end = cues.back().start_seconds;
    cues.pop_back();
  }
  return SheetOfCues(cues, end, {}, context);
}

Writing WriteCueTable(const Document& document, const ShapeTable& names) {
  const double rate = RateOf(document);
  if (rate <= 0) {
    return {std::nullopt,
            {QT_TRANSLATE_NOOP("convert", "the sheet's rate, %1, gives no times (see --rate)"),
             {Quoted(document.frame_rate_text)}},
            {}};
  }
  Messages notes;
  const auto letters = ForeignShapes(document, names, Naming::kCues, notes);
  const int decimals = DecimalsAt(rate);
  std::string text;
  const auto add = [&](std::size_t frame, const std::string& letter) {
    text += TimeOf(frame, rate, decimals) + "\t" + letter + "\n";
  };
  if (letters.empty() || letters[0].empty()) {
    add(0, kRestLetter);
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the sheet has no mouth on its first frame; %1 is written "
                                       "there, since readers need one"),
                     {kRestLetter}});
  }
  for (std::size_t i = 0; i < letters.size(); ++i) {
    if (!letters[i].empty()) add(i, letters[i]);
  }
  add(letters.size(), kRestLetter);
  NoteWhatIsLeftOut(document, {}, notes);
  return {std::move(text), {}, std::move(notes)};
}

}  // namespace convert
