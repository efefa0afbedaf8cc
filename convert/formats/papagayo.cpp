#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "convert/document.h"
#include "convert/formats/formats.h"
#include "convert/lines.h"
#include "convert/message.h"
#include "convert/shape_table.h"
#include "platform/numbers.h"

namespace convert {
namespace {

constexpr const char* kFirstLine = "lipsync version 1";
/// A word for mouths that stand before the first comment.
constexpr const char* kNoWord = "-";
constexpr std::int64_t kMostItems = kMostFrames;

struct Word {
  std::string text;
  std::int64_t start = 0, end = 0;  // frames, both included
  std::vector<Entry> mouths;
};

std::vector<std::string_view> Split(std::string_view line) {
  std::vector<std::string_view> parts;
  while (!(line = Trimmed(line)).empty()) {
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    parts.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return parts;
}

/// Reads on line by line. After the first fault every read gives nothing.
class Reader {
 public:
  Reader(std::string_view text, const Context& context) : lines_(text), context_(context) {}

  Reading Read() {
    if (Text() != kFirstLine) Expect(kFirstLine);
    found_.sound_name = Text();
    found_.rate_text = Text();
    const auto rate = WholeNumber(found_.rate_text);
    if (!rate || *rate <= 0) Expect(QT_TRANSLATE_NOOP("convert", "a frame rate above 0"));
    found_.frames = Count(QT_TRANSLATE_NOOP("convert", "the number of frames"));
    const std::int64_t voices = Count(QT_TRANSLATE_NOOP("convert", "the number of voices"));
    if (voices > 0) ReadVoice();
    if (voices > 1) {
      notes_.push_back({QT_TRANSLATE_NOOP("convert", "of %1 voices only the first, %2, is taken"),
                        {std::to_string(voices), Quoted(voice_)}});
    }
    if (!failure_.Empty()) return {std::nullopt, failure_, {}};
    AddRests();
    return SheetOf(std::move(found_), context_, std::move(notes_));
  }

 private:
  bool Failed() const { return !failure_.Empty(); }

  std::string Text() {
    if (Failed()) return {};
    line_ = lines_.Next();
    return line_ ? std::string(Trimmed(*line_)) : std::string();
  }

  void Expect(const char* what) {
    if (Failed()) return;
    failure_ = line_ ? Message{QT_TRANSLATE_NOOP("convert", "line %1: expected %3, found %2"),
                               {std::to_string(lines_.Number()), Quoted(std::string(*line_))},
                               {{what}}}
                     : Message{QT_TRANSLATE_NOOP("convert", "line %1: expected %2, but the file ends"),
                               {std::to_string(lines_.Number() + 1)},
                               {{what}}};
  }

  std::int64_t Count(const char* what) {
    const auto count = WholeInteger(Text());
    if (count && *count >= 0 && *count <= kMostItems) return *count;
    Expect(what);
    return 0;
  }

  void ReadVoice() {
    voice_ = Text();
    Text();  // the words as one text; the words themselves follow
    const std::int64_t phrases = Count(QT_TRANSLATE_NOOP("convert", "the number of phrases"));
    for (std::int64_t i = 0; i < phrases && !Failed(); ++i) ReadPhrase();
  }

  void ReadPhrase() {
    Text();
    Count(QT_TRANSLATE_NOOP("convert", "the phrase's first frame"));
    Count(QT_TRANSLATE_NOOP("convert", "the phrase's last frame"));
    const std::int64_t words = Count(QT_TRANSLATE_NOOP("convert", "the number of words"));
    for (std::int64_t i = 0; i < words && !Failed(); ++i) ReadWord();
  }

  void ReadWord() {
    const std::string line = Text();
    const auto parts = Split(line);
    const auto number = [&](std::size_t from_end) {
      return parts.size() < 4 ? std::nullopt : WholeInteger(parts[parts.size() - from_end]);
    };
    const auto start = number(3), end = number(2), count = number(1);
    if (!start || !end || !count || *start < 0 || *start > kMostFrames || *end > kMostFrames || *count < 0 ||
        *count > kMostItems) {
      return Expect(
          QT_TRANSLATE_NOOP("convert", "a word, its first and last frame and its number of mouths"));
    }
    std::string text;
    for (std::size_t i = 0; i + 3 < parts.size(); ++i) text += (i ? " " : "") + std::string(parts[i]);
    std::replace(text.begin(), text.end(), '_', ' ');
    if (text != kNoWord) found_.entries.push_back({*start, {}, text});
    spans_.push_back({*start, *end});
    for (std::int64_t i = 0; i < *count && !Failed(); ++i) ReadMouth();
  }

  void ReadMouth() {
    const std::string line = Text();
    const auto parts = Split(line);
    const auto frame = parts.size() == 2 ? WholeInteger(parts[0]) : std::nullopt;
    if (!frame || *frame < 0 || *frame > kMostFrames)
      return Expect(QT_TRANSLATE_NOOP("convert", "a frame and a mouth"));
    const std::string name(parts[1]);
    const auto shape = context_.names->Shape(name, Naming::kSwitchData);
    if (!shape) notes_.push_back(UnknownMouth(LineNumbered(lines_.Number()), name));
    found_.entries.push_back({*frame, shape.value_or(""), shape ? "" : "(" + name + ")"});
  }

  /// Where a word ends and no other goes on, the mouth comes to rest.
  void AddRests() {
    const auto rest = context_.names->Shape("rest", Naming::kSwitchData);
    if (!rest) return;
    std::sort(spans_.begin(), spans_.end());
    std::int64_t covered_up_to = -1;
    for (const auto& [start, end] : spans_) {
      if (covered_up_to >= 0 && start > covered_up_to + 1)
        found_.entries.push_back({covered_up_to + 1, *rest, {}});
      covered_up_to = std::max(covered_up_to, end);
    }
    if (covered_up_to >= 0 && covered_up_to + 1 < found_.frames)
      found_.entries.push_back({covered_up_to + 1, *rest, {}});
  }

  Lines lines_;
  const Context& context_;
  std::optional<std::string_view> line_;
  Message failure_;
  Messages notes_;
  Entries found_;
  std::string voice_;
  std::vector<std::pair<std::int64_t, std::int64_t>> spans_;
};

std::string OneWord(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t' || c == '\r'; }, '_');
  return text;
}

/// The sheet's mouths, gathered into words: each comment begins one.
std::vector<Word> WordsOf(const Document& document, const std::vector<std::string>& mouths) {
  std::vector<Word> words;
  for (std::int64_t frame = 0; frame < FramesOf(document); ++frame) {
    const std::string& comment = CommentOf(document, frame);
    const std::string& mouth = mouths[static_cast<std::size_t>(frame)];
    if (!comment.empty()) {
      words.push_back({OneWord(comment), frame, frame, {}});
    } else if (words.empty() && !mouth.empty()) {
      words.push_back({kNoWord, frame, frame, {}});
    }
    if (!mouth.empty()) words.back().mouths.push_back({frame, mouth, {}});
  }
  // A word is held until the next one shows a mouth of its own: readers take the first word that holds a
  // frame.
  std::int64_t end = FramesOf(document) - 1;
  for (auto word = words.rbegin(); word != words.rend(); ++word) {
    word->end = std::max(end, word->start);
    if (!word->mouths.empty()) end = word->mouths.front().frame - 1;
  }
  return words;
}

}  // namespace

Reading ReadPapagayo(std::string_view text, const Context& context) { return Reader(text, context).Read(); }

Writing WritePapagayo(const Document& document, const ShapeTable& names) {
  const double rate = RateOf(document);
  const std::int64_t whole_rate = std::max<std::int64_t>(platform::RoundToInt64(rate), 1);
  Messages notes;
  if (static_cast<double>(whole_rate) != rate) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the frame rate, %1, is written as %2: the format has whole "
                                       "numbers"),
                     {document.frame_rate_text, std::to_string(whole_rate)}});
  }
  const auto words = WordsOf(document, ForeignShapes(document, names, Naming::kSwitchData, notes));
  std::string all_words;
  for (const Word& word : words) all_words += (all_words.empty() ? "" : " ") + word.text;
  if (all_words.find('_') != std::string::npos) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "blanks within a comment are written as _, since a word of "
                                       "this format has none"),
                     {}});
  }

  std::string text = std::string(kFirstLine) + "\n" + document.wave_file_name + "\n" +
                     std::to_string(whole_rate) + "\n" + std::to_string(FramesOf(document)) + "\n1\n";
  text += "\tMouth\n\t" + all_words + "\n\t" + (words.empty() ? "0" : "1") + "\n";
  if (!words.empty()) {
    text += "\t\t" + all_words + "\n\t\t" + std::to_string(words.front().start) + "\n\t\t" +
            std::to_string(FramesOf(document) - 1) + "\n\t\t" + std::to_string(words.size()) + "\n";
  }
  for (const Word& word : words) {
    text += "\t\t\t" + word.text + " " + std::to_string(word.start) + " " + std::to_string(word.end) + " " +
            std::to_string(word.mouths.size()) + "\n";
    for (const Entry& mouth : word.mouths)
      text += "\t\t\t\t" + std::to_string(mouth.frame) + " " + mouth.shape + "\n";
  }
  NoteWhatIsLeftOut(document, {.rate = true, .sound = true, .comments = true}, notes);
  return {std::move(text), {}, std::move(notes)};
}

}  // namespace convert
