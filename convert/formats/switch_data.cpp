#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "convert/document.h"
#include "convert/formats/formats.h"
#include "convert/lines.h"
#include "convert/message.h"
#include "convert/shape_table.h"

namespace convert {
namespace {

constexpr std::string_view kFirstLine = "MohoSwitch1";
constexpr const char* kRest = "rest";

}  // namespace

Reading ReadSwitchData(std::string_view text, const Context& context) {
  Lines lines(text);
  const auto first = lines.Next();
  if (!first || Trimmed(*first) != kFirstLine) {
    return Refused(QT_TRANSLATE_NOOP("convert", "line 1: expected %1, found %2"),
                   {std::string(kFirstLine), Quoted(std::string(first.value_or("")))});
  }
  Entries found;
  Messages notes;
  while (const auto line = lines.Next()) {
    const std::string_view pair = Trimmed(*line);
    if (pair.empty()) continue;
    const std::size_t blank = pair.find_first_of(" \t");
    const auto frame = WholeInteger(pair.substr(0, blank));
    if (blank == std::string_view::npos || !frame || *frame < 0 || *frame > kMostFrames) {
      return Refused(
          QT_TRANSLATE_NOOP("convert",
                            "line %1: expected a frame from 1 to %2, a blank and a name, "
                            "found %3"),
          {std::to_string(lines.Number()), std::to_string(kMostFrames), Quoted(std::string(pair))});
    }
    const std::string name(Trimmed(pair.substr(blank)));
    Entry entry{std::max<std::int64_t>(*frame - 1, 0),
                context.names->Shape(name, Naming::kSwitchData).value_or(""),
                {}};
    if (entry.shape.empty()) {
      notes.push_back(UnknownMouth(LineNumbered(lines.Number()), name));
      entry.comment = name;
    }
    found.entries.push_back(std::move(entry));
  }
  if (!context.sound_seconds) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "switch data doesn't tell its length: the sheet ends with "
                                       "the last mouth (see --sound)"),
                     {}});
  }
  return SheetOf(std::move(found), context, std::move(notes));
}

Writing WriteSwitchData(const Document& document, const ShapeTable& names) {
  Messages notes;
  const auto shapes = ForeignShapes(document, names, Naming::kSwitchData, notes);
  std::string text = std::string(kFirstLine) + "\n";
  if (shapes.empty() || shapes[0].empty()) {
    text += std::string("1 ") + kRest + "\n";
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the sheet has no mouth on its first frame; %1 is written "
                                       "there, since readers need one"),
                     {kRest}});
  }
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    if (!shapes[i].empty()) text += std::to_string(i + 1) + " " + shapes[i] + "\n";
  }
  NoteWhatIsLeftOut(document, {}, notes);
  return {std::move(text), {}, std::move(notes)};
}

}  // namespace convert
