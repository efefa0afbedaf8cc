#include "sheet/sheet_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "sheet/text_encoding.h"

namespace sheet {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

std::string Golden(const std::string& name) {
  std::ifstream file(SOURCE_DIR "/tests/sheet/golden/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes down each call in order: "rate 12", "cell 1 0 0", ...
class Recorder : public SheetTarget {
 public:
  void SetFrameRateText(std::string_view text) override { Say("rate " + std::string(text)); }
  bool OpenSound(std::string_view name) override {
    Say("sound " + std::string(name));
    return sound_present;
  }
  std::int32_t RowsOfSound() override { return rows_of_sound; }
  void SetRowCount(std::int32_t count) override { Say("rows " + std::to_string(count)); }
  void SetColumnCount(std::int32_t columns) override { Say("columns " + std::to_string(columns)); }
  void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) override {
    Say("cell " + std::to_string(row) + " " + std::to_string(column) + " " + std::string(text));
  }
  void SetLock(bool on) override { Say(on ? "lock on" : "lock off"); }
  void SetTrackVisible(int channel, bool visible) override {
    Say((visible ? "show " : "hide ") + std::to_string(channel));
  }
  std::int32_t ResetTracks() override {
    Say("reset");
    return track_frames;
  }
  void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) override {
    Say("value " + std::to_string(frame) + " " + std::to_string(channel) + " " + std::to_string(value));
  }
  void PaintTracks() override { Say("paint"); }

  void Say(std::string call) { calls.push_back(std::move(call)); }

  std::vector<std::string> calls;
  std::int32_t rows_of_sound = 1;
  std::int32_t track_frames = 2;
  bool sound_present = true;
};

std::string Joined(const std::vector<std::string>& lines, const std::string& between = "\n") {
  std::string text;
  for (const std::string& line : lines) text += line + between;
  return text;
}

/// The lines of a good file of one frame, to be spoilt.
std::vector<std::string> GoodLines() {
  return {"ExposureSheet02",
          "12",
          "frog.wav",
          "Reserved",
          "Reserved",
          " 2 ",
          " 3 ",
          "Reserved",
          "Reserved",
          "0",
          "A ",
          "hello, frog",
          "Reserved",
          "Reserved",
          "Reserved",
          "Reserved",
          "True",
          "Velocity",
          "True",
          "True",
          "False",
          "True",
          " 1 ",
          " 1 ",
          " 2 ",
          " 3 ",
          " 4 "};
}

std::string GoodLinesWith(std::size_t line, const std::string& text) {
  auto lines = GoodLines();
  lines[line - 1] = text;
  return Joined(lines);
}

TEST(SheetFileText, IsTheLayoutByteForByte) {
  SheetFileContent empty;
  empty.frame_rate_text = "12";
  empty.lock = true;
  empty.track_visible = {true, true, true, true};
  EXPECT_EQ(SheetFileText(empty), Golden("empty.exp"));

  SheetFileContent filled;
  filled.frame_rate_text = "29.97";
  filled.wave_file_name = "/home/\xc3\xa4nnika/Voices, take 2/frog \"one\".wav";
  filled.rows = {{"0", "A ", "He says \"frog\", then, quietly, leaves"},
                 {"1", "", ""},
                 {"2", "Closed ", " lips, shut \xe5\xa3\xb0 "}};
  filled.track_visible = {true, false, true, false};
  filled.track_values = {{0, 1, 32, 255}, {64, 63, 9, 10}};
  EXPECT_EQ(SheetFileText(filled), Golden("filled.exp"));
}

TEST(SheetFileText, ALineBreakMovesNoField) {
  SheetFileContent content;
  content.wave_file_name = "two\r\nlines\n.wav";
  EXPECT_THAT(SheetFileText(content), HasSubstr("\r\ntwo  lines .wav\r\nReserved\r\n"));
}

TEST(ApplySheet, RestoresInOrder) {
  Recorder sheet;
  EXPECT_EQ(ApplySheet(Golden("filled.exp"), sheet), "");
  EXPECT_THAT(
      sheet.calls,
      ElementsAre("rate 29.97", "sound /home/\xc3\xa4nnika/Voices, take 2/frog \"one\".wav", "rows 4",
                  "columns 3", "cell 1 0 0", "cell 1 1 A", "cell 1 2 He says \"frog\", then, quietly, leaves",
                  "cell 2 0 1", "cell 2 1 ", "cell 2 2 ", "cell 3 0 2", "cell 3 1 Closed",
                  "cell 3 2 lips, shut \xe5\xa3\xb0", "lock off", "show 0", "hide 1", "show 2", "hide 3",
                  "reset", "value 0 0 0", "value 0 1 1", "value 0 2 32", "value 0 3 255", "value 1 0 64",
                  "value 1 1 63", "value 1 2 9", "value 1 3 10", "paint"));
  Recorder empty;
  EXPECT_EQ(ApplySheet(Golden("empty.exp"), empty), "");
  EXPECT_THAT(empty.calls, ElementsAre("rate 12", "sound ", "rows 1", "columns 3", "lock on", "show 0",
                                       "show 1", "show 2", "show 3", "reset", "paint"));
}

TEST(ApplySheet, AnEarlierEditionEndsWithItsCells) {
  const std::string text = DecodedText(Golden("older.exp"));
  const std::vector<std::string> calls = {"rate 12",
                                          "sound C:\\T\xc3\xb6ne\\frosch.wav",
                                          "rows 3",
                                          "columns 3",
                                          "cell 1 0 0",
                                          "cell 1 1 \xc3\x96",
                                          "cell 1 2 gr\xc3\xb6\xc3\x9f"
                                          "er",
                                          "cell 2 0 1",
                                          "cell 2 1 B",
                                          "cell 2 2 "};
  Recorder sheet;
  EXPECT_EQ(ApplySheet(text, sheet), "");
  EXPECT_EQ(sheet.calls, calls);
  Recorder longer;
  EXPECT_EQ(ApplySheet(text + "False\r\nVelocity\r\n", longer), "");
  EXPECT_EQ(longer.calls, calls);
}

TEST(ApplySheet, ReadsByFieldsWhatDoesNotFitTheLines) {
  const std::vector<std::string> cells = {"cell 1 0 0", "cell 1 1 A", "cell 1 2 hello", "value 0 3 4"};
  auto lines = GoodLines();
  lines[11] = "hello";
  const std::string one_line = Joined(lines, ",");
  std::string some_lines = Joined(lines);
  some_lines.replace(some_lines.find("0\nA \nhello\n"), 11, "0, A ,  hello\r\n");
  std::string track_lines = Joined(lines);
  track_lines.replace(track_lines.find(" 1 \n 2 \n 3 "), 11, "1,2,3");
  std::string header_line = Joined(lines);
  header_line.replace(header_line.find("02\n12\nfrog.wav\n"), 15, "02\n12,frog.wav\n");
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"all on one line", one_line},
      {"a row on a line", some_lines},
      {"tracks on a line", track_lines},
      {"rate and name on a line", header_line},
      {"other words", GoodLinesWith(4, "x").replace(GoodLinesWith(4, "x").find("hello, frog"), 11, "hello")},
      {"byte order mark", DecodedText("\xef\xbb\xbf" + Joined(lines))},
      {"no line end at the end", Joined(lines).substr(0, Joined(lines).size() - 2)},
  };
  for (const auto& c : cases) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(c.text, sheet), "") << c.what;
    EXPECT_THAT(sheet.calls, IsSupersetOf(cells)) << c.what;
    EXPECT_THAT(sheet.calls, testing::Contains("sound frog.wav")) << c.what;
  }
}

TEST(ApplySheet, ACutFileGivesWhatItHasAndNamesTheLine) {
  const auto lines = GoodLines();
  for (std::size_t kept = 0; kept < lines.size(); ++kept) {
    Recorder sheet;
    sheet.rows_of_sound = 2;
    const std::string report =
        ApplySheet(Joined({lines.begin(), lines.begin() + static_cast<long>(kept)}), sheet);
    const std::string end = "Line " + std::to_string(kept + 1) + ": expected ";
    // A count that the file doesn't bear out is told first.
    EXPECT_THAT(report, testing::AnyOf(testing::StartsWith(end), HasSubstr("a row count of at most")))
        << kept;
    EXPECT_THAT(report, testing::AnyOf(testing::EndsWith(", but the file ends."),
                                       testing::EndsWith("\n1 more like it.")))
        << kept;
    if (kept >= 12) {
      EXPECT_THAT(sheet.calls, testing::Contains("cell 1 2 hello, frog")) << kept;
    }
  }
  Recorder sheet;
  EXPECT_EQ(ApplySheet(Joined({lines.begin(), lines.end() - 2}), sheet),
            "Line 26: expected the green track's value of frame 0, but the file ends.");
}

TEST(ApplySheet, AFileCutWithinAWordIsStillReadByItsLines) {
  const std::string good = Joined(GoodLines());
  for (const char* word : {"Reserved\nReserved\nTrue", "Velocity"}) {
    Recorder sheet;
    ApplySheet(good.substr(0, good.find(word) + 4), sheet);
    EXPECT_THAT(sheet.calls, testing::Contains("cell 1 2 hello, frog")) << word;
  }
}

TEST(ApplySheet, SpoiltFieldsAreNamedAndReadingStaysInStep) {
  const std::string last = "value 0 3 4";
  const struct {
    std::size_t line;
    const char* text;
    const char* report;
    const char* kept;  // a call that is still made
  } cases[] = {
      {6, "many", "Line 6: expected the row count, a number from 1 to 2147483647, found \"many\".",
       "value 0 3 4"},
      {6, " 0 ", "Line 6: expected the row count, a number from 1 to 2147483647, found \"0\".",
       "value 0 3 4"},
      {6, "99999999999",
       "Line 6: expected the row count, a number from 1 to 2147483647, found \"99999999999\".",
       "cell 1 2 hello, frog"},
      {6, " 1 ", "Line 6: expected a row count of 2, which is what the file holds, found \"1\".",
       "cell 1 2 hello, frog"},
      {6, " 7 ", "Line 6: expected a row count of 2, which is what the file holds, found \"7\".",
       "value 0 3 4"},
      {7, " 4 ", "Line 7: expected the column count, 3, found \"4\".", "value 0 3 4"},
      {17, "Maybe", "Line 17: expected the audio/frame lock, True or False, found \"Maybe\".", "value 0 3 4"},
      {20, "", "Line 20: expected the red track's visibility, True or False, found \"\".", "hide 2"},
      {23, " 5 ",
       "Line 23: expected tracks of at most 2 frames, which is the length of the sound at this rate, found "
       "\"5\".\n1 more like it.",
       "value 0 3 4"},
      {23, " 2147483647 ",
       "Line 23: expected tracks of at most 2 frames, which is the length of the sound at this rate, found "
       "\"2147483647\".\n1 more like it.",
       "paint"},
      {23, "x", "Line 23: expected the number of track frames, a number from 0 to 2147483647, found \"x\".",
       "show 3"},
      {24, " 256 ",
       "Line 24: expected the yellow track's value of frame 0, a number from 0 to 255, found \"256\".",
       "value 0 3 4"},
      {25, "-1", "Line 25: expected the red track's value of frame 0, a number from 0 to 255, found \"-1\".",
       "value 0 3 4"},
      {26, "12 fps",
       "Line 26: expected the green track's value of frame 0, a number from 0 to 255, found \"12 fps\".",
       "value 0 3 4"},
      {26, "nan",
       "Line 26: expected the green track's value of frame 0, a number from 0 to 255, found \"nan\".",
       "value 0 3 4"},
  };
  for (const auto& c : cases) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(GoodLinesWith(c.line, c.text), sheet), c.report);
    EXPECT_THAT(sheet.calls, testing::Contains(c.kept)) << c.report;
  }
}

TEST(ApplySheet, OtherFormsOfFlagsAndNumbers) {
  Recorder sheet;
  EXPECT_EQ(ApplySheet(GoodLinesWith(17, "TRUE"), sheet), "");
  EXPECT_THAT(sheet.calls, testing::Contains("lock on"));
  Recorder numbers;
  EXPECT_EQ(ApplySheet(GoodLinesWith(19, "0"), numbers), "");
  EXPECT_THAT(numbers.calls, testing::Contains("hide 0"));
  Recorder fraction;
  EXPECT_EQ(ApplySheet(GoodLinesWith(24, "2.5"), fraction), "");
  EXPECT_THAT(fraction.calls, testing::Contains("value 0 0 2"));
}

TEST(ApplySheet, AMillionRowsInAFileOfTenLines) {
  auto lines = GoodLines();
  lines.resize(10);
  lines[5] = " 1000000 ";
  Recorder sheet;
  EXPECT_EQ(ApplySheet(Joined(lines), sheet),
            "Line 6: expected a row count of at most 2, which is what the file holds, found \"1000000\".\n"
            "1 more like it.");
  EXPECT_THAT(sheet.calls, ElementsAre("rate 12", "sound frog.wav", "rows 2", "columns 3", "cell 1 0 0"));
}

TEST(ApplySheet, ACutFileKeepsTheRowsThatTheSoundGives) {
  auto lines = GoodLines();
  lines.resize(12);
  lines[5] = " 40 ";
  Recorder sheet;
  sheet.rows_of_sound = 37;
  ApplySheet(Joined(lines), sheet);
  EXPECT_THAT(sheet.calls, IsSupersetOf({"rows 37", "cell 1 2 hello, frog"}));
}

TEST(ApplySheet, TracksWithoutASoundAreNotToldTwice) {
  Recorder sheet;
  sheet.sound_present = false;
  sheet.track_frames = 0;
  EXPECT_EQ(ApplySheet(Joined(GoodLines()), sheet), "");
  EXPECT_EQ(sheet.calls.back(), "paint");
  for (const std::string& call : sheet.calls) EXPECT_FALSE(call.starts_with("value")) << call;
}

TEST(ApplySheet, AFoundTextIsCutBetweenCharacters) {
  std::string field;
  for (int i = 0; i < 30; ++i) field += "\xe5\xa3\xb0";
  Recorder sheet;
  EXPECT_TRUE(IsUtf8(ApplySheet(GoodLinesWith(17, "x" + field), sheet)));
}

TEST(DecodedText, TakesAnythingButUtf8ForWindows1252) {
  const struct {
    std::string bytes, text;
  } cases[] = {
      {"", ""},
      {"\xc3\xa4", "\xc3\xa4"},
      {"\xf0\x9f\x90\xb8", "\xf0\x9f\x90\xb8"},
      {"\xe4", "\xc3\xa4"},
      {"\x80\x9f", "\xe2\x82\xac\xc5\xb8"},
      {"\x81", "\xc2\x81"},
      {"\xc3\xa4 \xe4 ", "\xc3\x83\xc2\xa4 \xc3\xa4 "},  // one bad byte speaks for the whole file
      {"\xc0\xaf", "\xc3\x80\xc2\xaf"},                  // overlong
      {"\xed\xa0\x80", "\xc3\xad\xc2\xa0\xe2\x82\xac"},  // surrogate
      {"\xf4\x90\x80\x80", "\xc3\xb4\xc2\x90\xe2\x82\xac\xe2\x82\xac"},  // above U+10FFFF
      {"\xe5\xa3", "\xc3\xa5\xc2\xa3"},    // nothing before it tells a cut from two letters
      {"\xc3\xa4 \xe5\xa3", "\xc3\xa4 "},  // cut within a character
      {"\xef\xbb\xbf"
       "a",
       "a"},
  };
  for (const auto& c : cases) EXPECT_EQ(DecodedText(c.bytes), c.text) << testing::PrintToString(c.bytes);
}

}  // namespace
}  // namespace sheet
