#include "sheet/sheet_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "sheet/text_encoding.h"
#include "support/sheet_lines.h"

namespace sheet {
namespace {

using support::Fields;
using support::Joined;
using support::Split;
using support::With;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::StartsWith;

std::string Golden(const std::string& name) {
  std::ifstream file(SOURCE_DIR "/tests/sheet/golden/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes down each call in order: "rate 12", "cell 1 0 0", ...
struct Recorder : SheetTarget {
  void SetFrameRateText(std::string_view text) override { Say("rate", text); }
  bool OpenSound(std::string_view name) override {
    Say("sound", name);
    return true;
  }
  std::int32_t RowsOfSound() override { return rows_of_sound; }
  void SetRowCount(std::int32_t count) override { Say("rows", count); }
  void SetColumnCount(std::int32_t columns) override { Say("columns", columns); }
  void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) override {
    Say("cell", row, column, text);
  }
  void SetLock(bool on) override { Say("lock", on); }
  void SetTrackVisible(int channel, bool visible) override { Say("show", channel, visible); }
  std::int32_t ResetTracks() override {
    Say("reset");
    return track_frames;
  }
  void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) override {
    Say("value", frame, channel, int{value});
  }
  void PaintTracks() override { Say("paint"); }

  template <typename... Parts>
  void Say(const char* what, const Parts&... parts) {
    std::ostringstream call;
    call << what;
    ((call << ' ' << parts), ...);
    calls.push_back(call.str());
  }

  Fields calls;
  std::int32_t rows_of_sound = 1;
  std::int32_t track_frames = 2;
};

/// A good file of one frame, to be spoilt.
const Fields kGood = Split(
    "ExposureSheet02|12|frog.wav|Reserved|Reserved| 2 | 3 |Reserved|Reserved|0|A |hello, frog|Reserved|"
    "Reserved|Reserved|Reserved|True|Velocity|True|True|False|True| 1 | 1 | 2 | 3 | 4 ");

TEST(SheetFileText, ALineBreakMovesNoField) {
  SheetFileContent content;
  content.wave_file_name = "two\r\nlines\n.wav";
  EXPECT_THAT(SheetFileText(content), HasSubstr("\r\ntwo  lines .wav\r\nReserved\r\n"));
}

TEST(ApplySheet, RestoresInOrder) {
  Recorder sheet, empty;
  EXPECT_EQ(ApplySheet(Golden("filled.exp"), sheet), "");
  EXPECT_EQ(sheet.calls,
            Split("rate 29.97|sound /home/\xc3\xa4nnika/Voices, take 2/frog \"one\".wav|rows 4|columns 3|"
                  "cell 1 0 0|cell 1 1 A|cell 1 2 He says \"frog\", then, quietly, leaves|"
                  "cell 2 0 1|cell 2 1 |cell 2 2 |cell 3 0 2|cell 3 1 Closed|"
                  "cell 3 2 lips, shut \xe5\xa3\xb0|lock 0|show 0 1|show 1 0|show 2 1|show 3 0|reset|"
                  "value 0 0 0|value 0 1 1|value 0 2 32|value 0 3 255|"
                  "value 1 0 64|value 1 1 63|value 1 2 9|value 1 3 10|paint"));
  EXPECT_EQ(ApplySheet(Golden("empty.exp"), empty), "");
  EXPECT_EQ(empty.calls, Split("rate 12|sound |rows 1|columns 3|lock 1|show 0 1|show 1 1|show 2 1|show 3 1|"
                               "reset|paint"));
}

TEST(ApplySheet, AnEarlierEditionEndsWithItsCells) {
  const std::string text = DecodedText(Golden("older.exp"));
  for (const char* behind : {"", "False\r\nVelocity\r\n"}) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(text + behind, sheet), "");
    EXPECT_EQ(sheet.calls, Split("rate 12|sound C:\\T\xc3\xb6ne\\frosch.wav|rows 3|columns 3|cell 1 0 0|"
                                 "cell 1 1 \xc3\x96|cell 1 2 gr\xc3\xb6\xc3\x9f"
                                 "er|cell 2 0 1|cell 2 1 B|cell 2 2 "));
  }
}

TEST(ApplySheet, ReadsByFieldsWhatDoesNotFitTheLines) {
  Fields fields = kGood;
  fields[11] = "hello";
  const std::string good = Joined(fields, "\n");
  const auto replaced = [&good](const std::string& lines, const char* by) {
    return std::string(good).replace(good.find(lines), lines.size(), by);
  };
  for (const std::string& text :
       {Joined(fields, ","), replaced("0\nA \nhello\n", "0, A ,  hello\r\n"),
        replaced(" 2 \n 3 \n 4 ", "2,3,4"), replaced("True\nVel", "True,Vel"),
        replaced("Velocity\nTrue", "Velocity,True"), replaced("12\nfrog", "12,frog"),
        replaced("Reserved", "x"), DecodedText("\xef\xbb\xbf" + good), good.substr(0, good.size() - 1)}) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(text, sheet), "") << text;
    EXPECT_THAT(sheet.calls, IsSupersetOf(Split("sound frog.wav|cell 1 0 0|cell 1 1 A|cell 1 2 hello|"
                                                "value 0 3 4")))
        << text;
  }
  EXPECT_EQ(WhyNoSheet("a,12,b.wav,x,x,1,3"), "");
}

TEST(ApplySheet, ACutFileGivesWhatItHasAndNamesTheLine) {
  for (std::size_t kept = 0; kept < kGood.size(); ++kept) {
    Recorder sheet;
    sheet.rows_of_sound = 2;
    const std::string report =
        ApplySheet(Joined({kGood.begin(), kGood.begin() + static_cast<long>(kept)}), sheet);
    // A count of more rows than the file has is told first.
    EXPECT_THAT(report, AnyOf(StartsWith("Line " + std::to_string(kept + 1) + ": expected "),
                              HasSubstr("a row count of at most")));
    EXPECT_THAT(report, AnyOf(EndsWith(", but the file ends."), EndsWith("\n1 more like it."))) << kept;
  }
  for (const auto& [kept, told] : {std::pair{25L, "Line 26: expected the green track's value of frame 0"},
                                   {10L, "Line 11: expected the shape of frame 0"}}) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(Joined({kGood.begin(), kGood.begin() + kept}), sheet),
              told + std::string(", but the file ends."));
  }
  // Wherever the cut is, within a word or not, the comma stays in the comment.
  const std::string good = Joined(kGood), comment = "hello, frog\r\n";
  for (std::size_t size = good.find(comment) + comment.size(); size <= good.size(); ++size) {
    Recorder cut;
    ApplySheet(good.substr(0, size), cut);
    EXPECT_THAT(cut.calls, Contains("cell 1 2 hello, frog")) << size;
  }
}

TEST(ApplySheet, ACutWithinTheLastNumberIsTold) {
  const std::string whole = With(kGood, 27, " 255 ");
  for (std::size_t missing = 0; missing <= 5; ++missing) {
    Recorder sheet;
    EXPECT_EQ(ApplySheet(std::string_view(whole).substr(0, whole.size() - missing), sheet),
              missing < 3 ? ""
                          : "Line 27: expected the line's end behind the blue track's value of frame 0, "
                            "but the file ends.")
        << missing;
  }
  Recorder sheet;
  EXPECT_EQ(ApplySheet(Joined({kGood.begin(), kGood.begin() + 22}) + " 0", sheet), "") << "no track frames";
}

TEST(ApplySheet, SpoiltFieldsAreNamedAndReadingStaysInStep) {
  const struct {
    std::size_t line;
    std::string text, expected;  // nothing: the text is taken
    const char* kept;            // a call that is still made
  } cases[] = {
      {6, "many", "the row count, a number from 1 to 2147483647", "value 0 3 4"},
      {6, "0", "the row count, a number from 1 to 2147483647", "value 0 3 4"},
      {6, "99999999999", "the row count, a number from 1 to 2147483647", "cell 1 2 hello, frog"},
      {6, "1", "a row count of 2, which is what the file holds", "cell 1 2 hello, frog"},
      {6, "7", "a row count of 2, which is what the file holds", "value 0 3 4"},
      {7, "4", "the column count, 3", "value 0 3 4"},
      {7, "0", "the column count, 3", "cell 1 2 hello, frog"},
      {12, "  ", "", "cell 1 2 "},
      {17, "Maybe", "the audio/frame lock, True or False", "value 0 3 4"},
      {17, "TRUE", "", "lock 1"},
      {19, "0", "", "show 0 0"},
      {19, "-1", "", "show 0 1"},
      {19, "fALSE", "", "show 0 0"},
      {20, "", "the red track's visibility, True or False", "show 2 0"},
      {23, "x", "the number of track frames, a number from 0 to 2147483647", "show 3 1"},
      {24, "2.5", "", "value 0 0 2"},
      {24, "256", "the yellow track's value of frame 0, a number from 0 to 255", "value 0 3 4"},
      {25, "-1", "the red track's value of frame 0, a number from 0 to 255", "value 0 3 4"},
      {26, "12 fps", "the green track's value of frame 0, a number from 0 to 255", "value 0 3 4"},
      {26, "nan", "the green track's value of frame 0, a number from 0 to 255", "value 0 3 4"},
  };
  for (const auto& c : cases) {
    Recorder sheet;
    const std::string report =
        "Line " + std::to_string(c.line) + ": expected " + c.expected + ", found \"" + c.text + "\".";
    EXPECT_EQ(ApplySheet(With(kGood, c.line, c.text), sheet), c.expected.empty() ? "" : report);
    EXPECT_THAT(sheet.calls, Contains(c.kept)) << report;
  }
}

TEST(ApplySheet, BelievesCountsAsFarAsTheFileBearsThemOut) {
  Recorder tracks, rows, sound;
  EXPECT_EQ(ApplySheet(With(kGood, 23, "2147483647"), tracks),
            "Line 23: expected tracks of at most 2 frames, which is the length of the sound at this rate, "
            "found \"2147483647\".\n1 more like it.");
  EXPECT_THAT(tracks.calls, IsSupersetOf({"value 0 3 4", "paint"}));
  Recorder one_more;
  EXPECT_THAT(ApplySheet(With(kGood, 23, "3") + "1\n2\n3\n4\n5\n6\n7\n8\n", one_more),
              HasSubstr("tracks of at most 2 frames"));
  EXPECT_EQ(Fields(one_more.calls.end() - 2, one_more.calls.end()), Split("value 1 3 4|paint"));
  for (const int kept : {8, 9, 12, 10}) {
    rows.calls.clear();
    const std::string most = kept < 10 ? "1" : "2",
                      cut = With({kGood.begin(), kGood.begin() + kept}, 6, " 1000000 ");
    for (const std::string& text : {cut.substr(0, cut.size() - 2), cut})
      EXPECT_THAT(ApplySheet(text, rows), StartsWith("Line 6: expected a row count of at most " + most +
                                                     ", which is what the file holds, found \"1000000\".\n"));
  }
  EXPECT_EQ(Fields(rows.calls.end() - 5, rows.calls.end()),
            Split("rate 12|sound frog.wav|rows 2|columns 3|cell 1 0 0"));
  sound.rows_of_sound = 37;
  for (const auto& [told, taken] : {std::pair{" 30 ", "rows 30"}, {" 40 ", "rows 37"}}) {
    EXPECT_THAT(ApplySheet(With({kGood.begin(), kGood.begin() + 12}, 6, told), sound),
                StartsWith("Line 6: expected a row count of at most 2, which is"));
    EXPECT_THAT(sound.calls, IsSupersetOf({taken, "cell 1 2 hello, frog"}));
  }
}

TEST(ApplySheet, AFoundTextIsCutBetweenCharacters) {
  std::string field = "x";
  for (int i = 0; i < 30; ++i) field += "\xe5\xa3\xb0";
  Recorder sheet;
  EXPECT_THAT(ApplySheet(With(kGood, 17, field), sheet), EndsWith("\xe5\xa3\xb0...\"."));
}

TEST(DecodedSheet, KeepsTheBytesOfASoundsNameWhereAllElseIsUtf8) {
  const auto file = [](const std::string& name, const std::string& comment) {
    Fields fields = kGood;
    fields[2] = name;
    fields[11] = comment;
    return Joined(fields);
  };
  // The last name ends as UTF-8 that was cut would.
  for (const char* name : {"/T\xf6ne/a, \xe4.wav", "j\xc3\xb6rg-fr\xf6"})
    for (const char* comment : {"frog", "gr\xc3\xbc\xc3\x9f", "a, b"})
      EXPECT_EQ(DecodedSheet(file(name, comment)), file(name, comment));
  EXPECT_EQ(DecodedSheet("\xef\xbb\xbf" + file("\xf6.wav", "\xc3\xbc")), file("\xf6.wav", "\xc3\xbc"));
  EXPECT_EQ(DecodedSheet(file("\xf6.wav", "\xfc")), file("\xc3\xb6.wav", "\xc3\xbc")) << "an old machine's";
}

TEST(DecodedText, TakesAnythingButUtf8ForWindows1252) {
  const struct {
    std::string bytes, text;
  } cases[] = {
      // The first and the last character of each length, and those around the surrogates.
      {"\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xf0\x90\x80\x80\xf4\x8f\xbf\xbf",
       "\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"},
      {"\xe4", "\xc3\xa4"},
      {"\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8a\x8b\x8c\x8e\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9a\x9b\x9c"
       "\x9e\x9f",
       "€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ"},
      {"\x81", "\xc2\x81"},
      {"\xc3\xa4 \xe4 ", "\xc3\x83\xc2\xa4 \xc3\xa4 "},  // one bad byte speaks for all
      {"\xc0\xaf", "\xc3\x80\xc2\xaf"},                  // overlong
      {"\xe0\x82\xaf", "\xc3\xa0\xe2\x80\x9a\xc2\xaf"},
      {"\xed\xa0\x80", "\xc3\xad\xc2\xa0\xe2\x82\xac"},                  // the first surrogate
      {"\xed\xbf\xbf", "\xc3\xad\xc2\xbf\xc2\xbf"},                      // the last one
      {"\xf4\x90\x80\x80", "\xc3\xb4\xc2\x90\xe2\x82\xac\xe2\x82\xac"},  // above U+10FFFF
      {"\xe5\xa3", "\xc3\xa5\xc2\xa3"},    // nothing before it tells a cut from two letters
      {"\xc3\xa4 \xe5\xa3", "\xc3\xa4 "},  // cut within a character
      {"\xef\xbb\xbf-", "-"},
  };
  for (const auto& c : cases) EXPECT_EQ(DecodedText(c.bytes), c.text) << testing::PrintToString(c.bytes);
}

}  // namespace
}  // namespace sheet
