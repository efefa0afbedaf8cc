#include "convert/formats/formats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "convert/formats/ToolkitFormats.h"
#include "tests/convert/sheets.h"

namespace {

using convert::Context;
using convert::Document;
using convert::Reading;
using convert::ShapeTable;
using convert::Writing;
using support::CellsOf;
using support::SheetWith;
using testing::ContainsRegex;
using testing::HasSubstr;

Context Plain() {
  Context context;
  context.names = &ShapeTable::Default();
  return context;
}

Document Frogs() {
  return *convert::ReadExposureSheet(support::FileBytes(SOURCE_DIR "/samples/frogs.exp")).sheet;
}

std::string Told(const convert::Messages& notes) {
  std::string all;
  for (const auto& note : notes) all += InEnglish(note) + "\n";
  return all;
}

/// The rate, the sound, and of each frame that has tracks the first and the last value: "24 v.wav 32/255".
std::string RestOf(const Document& sheet) {
  std::string rest = sheet.frame_rate_text;
  if (!sheet.wave_file_name.empty()) rest += " " + sheet.wave_file_name;
  if (!sheet.lock || sheet.track_visible != Document(SheetWith(0, "")).track_visible) rest += " toggles";
  for (const auto& values : sheet.track_values)
    rest += " " + std::to_string(values[0]) + "/" + std::to_string(values[3]);
  return rest;
}

TEST(Formats, TheSampleSheetGoesOutAndBack) {
  Document frogs = Frogs();
  EXPECT_EQ(*convert::WriteExposureSheet(frogs).bytes, support::FileBytes(SOURCE_DIR "/samples/frogs.exp"));
  frogs.rows[0][2] = "\"\xc3\xa4, b; <c> & \\ # | 7\" %1 -";
  frogs.rows.back()[2] = "\"";
  const Document csv = *convert::ReadCsv(*convert::WriteCsv(frogs).bytes, Plain()).sheet;
  EXPECT_EQ(CellsOf(csv), CellsOf(frogs));
  EXPECT_EQ(csv.track_values, frogs.track_values);
  EXPECT_EQ(CellsOf(*convert::ReadXdts(*convert::WriteXdts(frogs).bytes, Plain()).sheet), CellsOf(frogs));
  frogs.lock = frogs.track_visible[2] = false;
  frogs.frame_rate_text = "29.97";
  frogs.wave_file_name = "/T\xc3\xb6ne, \"alle\"/a.wav";
  const Document own = *convert::ReadExposureSheet(*convert::WriteExposureSheet(frogs).bytes).sheet;
  EXPECT_EQ(CellsOf(own), CellsOf(frogs));
  EXPECT_EQ(RestOf(own), RestOf(frogs));
  EXPECT_FALSE(own.lock);
  EXPECT_EQ(own.track_visible, frogs.track_visible);
}

TEST(Formats, MouthsThatShareAForeignNameComeBackAsTheFirstOfThem) {
  const ShapeTable& names = ShapeTable::Default();
  for (const auto naming : {convert::Naming::kSwitchData, convert::Naming::kCues}) {
    std::string back;
    std::istringstream shapes("A I E O U W B M P F V L Th Ch D G K N R S T Closed");
    for (std::string shape; shapes >> shape;)
      back += *names.Shape(*names.Foreign(shape, naming), naming) + " ";
    const std::string of_w = naming == convert::Naming::kCues ? "U" : "W";
    EXPECT_EQ(back, "A A E O U " + of_w + " M M M F F L L S S S S S S S S Closed ");
  }
}

TEST(Formats, WhatOtherProgramsReadIsWrittenToTheByte) {
  // A held mouth stands there once, a repeated one twice; a word of Papagayo's holds its mouth until the next
  // word shows one.
  Document sheet = SheetWith(5, "1:A 3:M 4:P");
  sheet.rows[2][2] = "a, \"b\"";
  sheet.track_values = {{0, 1, 32, 255}, {32, 32, 32, 32}};
  const ShapeTable& names = ShapeTable::Default();
  const Writing papagayo = convert::WritePapagayo(sheet, names);
  const std::pair<Writing, std::string> files[] = {
      {convert::WriteSwitchData(sheet, names), "MohoSwitch1\n1 rest\n2 AI\n4 MBP\n5 MBP\n"},
      {convert::WriteCueTable(sheet, names), "0.00\tX\n0.04\tD\n0.12\tA\n0.16\tA\n0.20\tX\n"},
      {papagayo,
       "lipsync version 1\n\n24\n5\n1\n\tMouth\n\t- a,_\"b\"\n\t1\n\t\t- a,_\"b\"\n\t\t1\n\t\t4\n\t\t2\n"
       "\t\t\t- 1 2 1\n\t\t\t\t1 AI\n\t\t\ta,_\"b\" 2 4 2\n\t\t\t\t3 MBP\n\t\t\t\t4 MBP\n"},
      {convert::WriteCsv(sheet),
       "Frame,Shape,Comment,Yellow,Red,Green,Blue\r\n0,,,0,1,32,255\r\n1,A,,32,32,32,32\r\n"
       "2,,\"a, \"\"b\"\"\",,,,\r\n3,M,,,,,\r\n4,P,,,,,\r\n"},
      {convert::WriteXdts(sheet),
       "exchangeDigitalTimeSheet Save Data\n"
       R"({"header":{"cut":"1","scene":"1"},"timeTables":[{"duration":5,"fields":[{"fieldId":3,"tracks":[)"
       R"({"frames":[{"data":[{"id":0,"values":["a, \"b\""]}],"frame":2}],"trackNo":0}]},{"fieldId":0,)"
       R"("tracks":[{"frames":[{"data":[{"id":0,"values":["A"]}],"frame":1},{"data":[{"id":0,"values":)"
       R"(["M"]}],"frame":3},{"data":[{"id":0,"values":["P"]}],"frame":4}],"trackNo":0}]}],)"
       R"("name":"sheet1","timeTableHeaders":[{"fieldId":3,"names":["Comment"]},{"fieldId":0,)"
       R"("names":["Mouth"]}]}],"version":5})"
       "\n"}};
  for (const auto& [written, bytes] : files) EXPECT_EQ(*written.bytes, bytes);
  sheet.rows[4][1] = "M";  // as P comes back
  EXPECT_EQ(CellsOf(*convert::ReadPapagayo(*papagayo.bytes, Plain()).sheet), CellsOf(sheet));
  // Times are cut off behind as many decimals as it takes to find the frame again.
  Document short_one = SheetWith(30, "0:M 29:E");
  for (const auto& [rate, cues] :
       {std::pair{"25", "0.00\tA\n1.16\tC\n1.20\tX\n"}, {"540", "0.0000\tA\n0.0537\tC\n0.0555\tX\n"}}) {
    short_one.frame_rate_text = rate;
    EXPECT_EQ(*convert::WriteCueTable(short_one, names).bytes, cues);
  }
}

TEST(Formats, SaysWhatAFormatCantCarry) {
  Document sheet = SheetWith(5, "1:smile 2:grin 3:V 4:I");
  sheet.rows[1][2] = "two words";
  sheet.frame_rate_text = "0.2";
  sheet.wave_file_name = "voice.wav";
  sheet.lock = false;
  sheet.track_values.assign(6, {32, 32, 32, 31});
  const ShapeTable& names = ShapeTable::Default();
  const std::string
      shapes =
          "2 mouths that the table of names doesn't know are left out, the first at frame 1: \"smile\"\n"
          "mouths that share a name in this format come back as the one in brackets: I (A), V (F)\n",
      comments =
          " is written there, since readers need one\nthe comments are left out: the format has none\n",
      tracks = "the velocity tracks are left out: the format has none\n",
      rest =
          "the lock and the tracks' visibility are left out: the format has none\n"
          "the name of the sound, \"voice.wav\", is left out: the format has no place for it\n"
          "the frame rate, 0.2, is left out: the format has no place for it\n",
      first = "the sheet has no mouth on its first frame; ";
  EXPECT_EQ(Told(convert::WriteSwitchData(sheet, names).notes),
            shapes + first + "rest" + comments + tracks + rest);
  EXPECT_EQ(Told(convert::WriteCueTable(sheet, names).notes),
            shapes + first + "X" + comments + tracks + rest);
  EXPECT_EQ(Told(convert::WritePapagayo(sheet, names).notes),
            "the frame rate, 0.2, is written as 1: the format has whole numbers\n" + shapes +
                "blanks within a comment are written as _, since a word of this format has none\n" + tracks +
                rest.substr(0, rest.find('\n') + 1));
  EXPECT_EQ(Told(convert::WriteXdts(sheet).notes), tracks + rest);
  EXPECT_EQ(Told(convert::WriteCsv(sheet).notes),
            "the tracks are longer than the sheet; their end is left out\n" + rest);
  EXPECT_EQ(Told(convert::WriteExposureSheet(sheet).notes), "");
  Document one = SheetWith(2, "0:A 1:smile");
  one.track_values.assign(2, {32, 32, 32, 32});  // which nobody misses, nor a name that isn't there
  EXPECT_EQ(Told(convert::WriteCueTable(one, names).notes),
            "a mouth that the table of names doesn't know is left out, at frame 1: \"smile\"\n"
            "the frame rate, 24, is left out: the format has no place for it\n");
}

/// Files as other programs write them, made by hand from their published forms. In some of them the numbers
/// are marked: '#' where no other number may stand, '~' where one below 0 may, '^' where any above 0 may.
using Reader = Reading (*)(std::string_view, const Context&);
constexpr Reader kOwn = [](std::string_view text, const Context&) {
  return convert::ReadExposureSheet(text);
};
struct Foreign {
  const char* name;
  Reader read;
  const char* bytes;
  const char* cells;
  /// What is said besides that no rate is told.
  const char* said = "";
  const char* rest = "24";
};
constexpr Foreign kForeign[] = {
    {"an older sheet, which has neither toggles nor tracks, its frames numbered anew", kOwn,
     "ExposureSheet\r\n12\r\n\r\nReserved\r\nReserved\r\n 2 \r\n 3 "
     "\r\nReserved\r\nReserved\r\nx\r\nM\r\noh\r\n"
     "Reserved\r\nReserved\r\nReserved\r\nReserved\r\n",
     "0:M 0\"oh\" /1", "", "12"},
    {"switch data with a frame 0 and two ends of line", convert::ReadSwitchData,
     "MohoSwitch1\r\n#0 rest\r\n#5 MBP\n\n#9 smile\t\n", "0:Closed 4:M 8\"smile\" /9",
     "line 5: the table of names has no mouth \"smile\"; it goes into the comment\n"
     "switch data doesn't tell its length: the sheet ends with the last mouth (see --sound)\n"},
    {"cues as a table, the end told by X", convert::ReadCueTable,
     "#0.00\tX\n#0.50\tD\n \n#0.52\tB\n0.75\t-\n#1.00\tX\n", "0:Closed 12:S 18\"-\" /24",
     "line 5: the table of names has no mouth \"-\"; it goes into the comment\n"
     "a mouth shorter than a frame is left out, at frame 12\n"},
    {"a single cue, which is no end", convert::ReadCueTable, "0.00\tX\n", "0:Closed /1"},
    {"the end told by A", convert::ReadCueTable, "0.00\tB\n0.50\tA\n", "0:S /12"},
    {"cues as JSON", convert::ReadCueJson,
     R"({"metadata":{"soundFile":"v.wav","duration":1.25},"mouthCues":[{"start":#0.00,"end":0.25,"value":"X"},)"
     R"({"start":#0.25,"end":1.0,"value":"G"}]})",
     "0:Closed 6:F /30", "", "24 v.wav"},
    {"cues as XML", convert::ReadCueXml,
     "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rhubarbResult>\n<metadata><soundFile>v.wav</soundFile>"
     "<duration> 0.75\n</duration></metadata>\n<mouthCues>\n<mouthCue start=\"0.00\" end=\"0.25\"> H "
     "</mouthCue>\n"
     "<mouthCue start=\"#0.25\" end=\"0.5\">F</mouthCue>\n</mouthCues></rhubarbResult>",
     "0:L 6:U /18", "", "24 v.wav"},
    {"cues as JSON and as XML that end with their last one", convert::ReadCueJson,
     R"({"mouthCues":[{"start":0.00,"end":0.5,"value":"B"}]})", "0:S /12"},
    {"the same as XML, with a duration that is none", convert::ReadCueXml,
     "<rhubarbResult><duration>inf</duration><mouthCue start='0' end='0.5'>B</mouthCue></rhubarbResult>",
     "0:S /12"},
    {"two voices, words in any order, one frame between two of them", convert::ReadPapagayo,
     "lipsync version 1\nv.wav\n^1\n#20\n#2\n\tAnn \n\tHi|you\n\t#1\n\t\tHi you\n\t\t#0\n\t\t#15\n\t\t#4\n"
     "\t\t\tyou\t#10 ~15 #4\n\t\t\t\t#10 etc\n\t\t\t\t12 U\n\t\t\t\t13 huh\n\t\t\t\t20 O\n"
     "\t\t\toh 0 0 1\n\t\t\t\t0 O\n\t\t\tHi 2 5 1\n\t\t\t\t2 AI\n\t\t\tbye now 16 17 0\n\tBob\n\t\n\t0\n",
     "0:O 0\"oh\" 1:Closed 2:A 2\"Hi\" 6:Closed 10:S 10\"you\" 12:U 13\"(huh)\" 16\"bye now\" 18:Closed /20",
     "line 16: the table of names has no mouth \"huh\"; it goes into the comment\n"
     "of 2 voices only the first, \"Ann\", is taken\n"
     "an entry behind the sheet's end, which is at frame 20, is left out\n",
     "1 v.wav"},
    {"a word of one frame before the last one", convert::ReadPapagayo,
     "lipsync version 1\n\n24\n2\n1\n\tA\n\tx\n\t1\n\t\tx\n\t\t0\n\t\t0\n\t\t1\n\t\t\tx 0 0 1\n\t\t\t\t0 "
     "AI\n",
     "0:A 0\"x\" 1:Closed /2"},
    {"a time sheet with marks, an empty cell and drawings by number", convert::ReadXdts,
     "exchangeDigitalTimeSheet Save Data\n"
     R"({"timeTables":[{"duration":~10,"name":"t","timeTableHeaders":[{"fieldId":3,"names":["Ann"]},)"
     R"({"fieldId":0,"names":["BODY","MOUTH"]}],"fields":[{"fieldId":0,"tracks":[{"trackNo":0,"frames":[)"
     R"({"frame":#0,"data":[{"id":0,"values":["1"]}]}]},{"trackNo":1,"frames":[)"
     R"({"frame":0,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},)"
     R"({"frame":#1,"data":[{"id":1,"values":["x"]},{"id":0,"values":["2"]}]},{"frame":2,"data":[{"id":0,"values":["SYMBOL_HYPHEN"]}]},)"
     R"({"frame":4,"data":[{"id":0,"values":[" Th"]}]},{"frame":6,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},)"
     R"({"frame":7,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},)"
     R"({"frame":8,"data":[{"id":0,"values":["AI"]}]},{"frame":10,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]}]}]},)"
     R"({"fieldId":3,"tracks":[{"trackNo":0,"frames":[{"frame":1,"data":[{"id":0,"values":["oh","no"]}]},)"
     R"({"frame":2,"data":[{"id":0,"values":["SYMBOL_HYPHEN"]}]}]},)"
     R"({"trackNo":1,"frames":[{"frame":#1,"data":[{"id":0,"values":["yes"]}]}]}]}]}],"version":5})",
     "1:B 1\"oh no yes\" 4:Th 6:Closed 8:A /10", "of 2 columns of cells only \"MOUTH\" is taken\n"},
    {"mouths in a column of another name", convert::ReadXdts,
     "exchangeDigitalTimeSheet Save Data\n"
     R"({"timeTables":[{"fields":[{"fieldId":0,"tracks":[{"frames":[{"frame":0,"data":[{"id":0,"values":["hat"]}]}]},)"
     R"({"frames":[]},{"frames":[{"frame":1,"data":[{"id":0,"values":["SYMBOL_TICK_1"]}]},)"
     R"({"frame":2,"data":[{"id":0,"values":["M"]}]}]}]}]}]})",
     "2:M /3", "of 3 columns of cells only \"3\" is taken\n"},
    {"two time tables on the first line, the end told by an empty cell", convert::ReadXdts,
     R"(exchangeDigitalTimeSheet Save Data {"timeTables":[{"name":"take","fields":[{"fieldId":0,"tracks":[{"frames":[)"
     R"({"frame":3,"data":[{"id":0,"values":["M"]}]},{"frame":4,"data":[{"id":0,"values":["hat"]}]},)"
     R"({"frame":5,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]}]}]}]},{"name":"other"}]})",
     "3:M 4\"hat\" 5:Closed /6",
     "of 2 time tables only the first, \"take\", is taken\n"
     "column \"1\", frame 4: the table of names has no mouth \"hat\"; it goes into the comment\n"},
    {"a table with semicolons, quotes, other columns and decimals", convert::ReadCsv,
     "sep=;\r\nTake;Comment;Frame;Shape;Blue\r\n1;\"a;\"\"b\"\"\r\nc\";0;A "
     ";\"255,0\"\r\n2;;3;M;0\r\n4;;5;E;\r\n;;;;\r\n",
     "0:A 0\"a;\"b\" c\" 3:M 5:E /6", "", "24 32/255 32/32 32/32 32/0"},
    {"headings in capitals and twice, with tabs", convert::ReadCsv,
     "FRAME\tSHAPE\tFrame\tShape\tRed\n#0\tA\t7\tM\n#1\t\t\t\t#255\n", "0:A /2", "", "24 32/32 32/32"},
    {"a table without headings, nor an end of its last line", convert::ReadCsv,
     "0,A,\"x,\ty\"\n1,,5\" nail;;;;;;;;\n2,grin,oh", "0:A 0\"x, y\" 1\"5\" nail;;;;;;;;\" 2\"oh grin\" /3",
     "line 3: the table of names has no mouth \"grin\"; it goes into the comment\n"},
};

std::string Unmarked(std::string bytes) {
  std::erase_if(bytes, [](char c) { return c == '#' || c == '~' || c == '^'; });
  return bytes;
}

TEST(Formats, ReadsWhatOtherProgramsWrite) {
  for (const Foreign& file : kForeign) {
    Reading reading = file.read(Unmarked(file.bytes), Plain());
    ASSERT_TRUE(reading.sheet) << file.name << ": " << InEnglish(reading.failure);
    EXPECT_EQ(CellsOf(*reading.sheet), file.cells) << file.name;
    EXPECT_EQ(RestOf(*reading.sheet), file.rest) << file.name;
    std::erase_if(reading.notes,
                  [](const auto& note) { return InEnglish(note).starts_with("no frame rate"); });
    EXPECT_EQ(Told(reading.notes), file.said) << file.name;
  }
  Context one_second = Plain();
  one_second.rate_text = "2";
  one_second.sound_seconds = 1;
  const Reading longer = convert::ReadCsv("Frame,Shape,Comment,Yellow\n0,A,,5\n7,,,9\n", one_second);
  EXPECT_EQ(RestOf(*longer.sheet), "2 5/32 32/32") << "no tracks behind the end of the sound";
  EXPECT_EQ(Told(convert::ReadSwitchData("MohoSwitch1\n1 rest\n", one_second).notes), "")
      << "it has a length";
}

TEST(Formats, NamesTheLineOrThePlaceOfAFault) {
  const std::string first = "exchangeDigitalTimeSheet Save Data\n", most(59, 'x');
  const std::tuple<Reader, std::string, std::string> faults[] = {
      {convert::ReadSwitchData, "", "line 1: expected MohoSwitch1, found \"\""},
      {convert::ReadSwitchData, "MohoSwitch1\n1 AI\n2\n", "line 3: expected a frame"},
      // A long text is cut between characters.
      {convert::ReadSwitchData, most + "\xc3\xa4", "found \"" + most + "...\""},
      {convert::ReadSwitchData, most + "a", "found \"" + most + "a\""},
      {convert::ReadSwitchData, "%9 \x1f\x7f%", "found \"%9   %\""},
      {convert::ReadSwitchData, "MohoSwitch1\n9999999 AI\n", "at most 1000000 are believed"},
      {convert::ReadCueTable, "1e300\tA\n", "line 1: a start of 1e+300 seconds"},
      {convert::ReadCueJson, R"({"mouthCues":[{"start":0,"value":"A"},{"start":"0"}]})", "cue 2: expected"},
      {convert::ReadCueJson, "[1]", "expected a JSON object"},
      {convert::ReadCueXml, "<rhubarbResult>\n<mouthCue start=\"x\">A</mouthCue>",
       "line 2: the cue has no start"},
      {convert::ReadCueXml, "<html/>", "line 1: expected the element rhubarbResult"},
      {convert::ReadPapagayo, "lipsync version 2\n", "line 1: expected lipsync version 1"},
      {convert::ReadPapagayo, "lipsync version 1\nv\n24\n",
       "line 4: expected the number of frames, but the file ends"},
      {convert::ReadXdts, "exchangeDigitalTimeSheet Save Data {,", "line 1: "},
      {convert::ReadXdts, first + "{}", "no time table"},
      {convert::ReadCsv, "Frame,Comment,Red\n0,\"a\nb\",32\n1,,256\n", "line 4, column Red: expected"},
      {convert::ReadCsv, "0,A\n1,\"B\n2,C\n", "line 2: a quotation mark opens a cell"},
      {convert::ReadCsv, "\n,,\n", "the table has no rows"},
      {kOwn, "ExposureSheet02\r\n24\r\n", "Line 3: expected the wave file's name"},
  };
  for (const auto& [read, bytes, message] : faults) {
    const Reading reading = read(bytes, Plain());
    EXPECT_FALSE(reading.sheet) << bytes;
    EXPECT_THAT(InEnglish(reading.failure), HasSubstr(message)) << bytes;
  }
}

/// Places that aren't told by the line.
constexpr const char* kOtherPlaces =
    "|^cue [12]: |^column \"(BODY|MOUTH|2)\", entry |\"duration\"|^line 2: illegal|no rows|no cues";

TEST(Formats, WrongNumbersAndTheEndOfACutFileAreToldWithTheirPlace) {
  for (const Foreign& file : kForeign) {
    const std::string marked = file.bytes;
    if (marked.find('#') == std::string::npos) continue;
    const auto rows = [&](const std::string& bytes, std::size_t fault) {
      const Reading reading = file.read(Unmarked(bytes), Plain());
      if (reading.sheet) return static_cast<int>(reading.sheet->rows.size());
      const auto line = 1 + std::count(marked.begin(), marked.begin() + static_cast<long>(fault), '\n');
      EXPECT_THAT(InEnglish(reading.failure),
                  ContainsRegex("line " + std::to_string(line) + "|line " + std::to_string(line + 1) +
                                ": .*the file ends" + kOtherPlaces))
          << bytes;
      return -1;
    };
    const int whole = rows(marked, 0);
    for (std::size_t at = 0; at < marked.size(); ++at) {
      EXPECT_LE(rows(marked.substr(0, at), at), whole);
      const std::string behind =
          marked.substr(std::min(marked.find_first_not_of("0123456789.", at + 1), marked.size()));
      const std::vector<std::string> wrong = {"-1", "2147483648", "nan", "inf", "1e400", "0x10", "1,5", "+1"};
      for (std::size_t i = std::string("#~^").find(marked[at]); i < wrong.size(); ++i)
        EXPECT_EQ(rows(marked.substr(0, at) + wrong[i] + behind, at), -1) << at << wrong[i];
    }
  }
}

TEST(Formats, TheSoundDecidesTheLengthAndTheRateMovesEntries) {
  Context context = Plain();
  context.sound_seconds = 2.0;
  context.sound_name = "own.wav";
  context.rate_text = "12";
  const Reading reading = convert::ReadPapagayo(
      "lipsync version 1\nv\n24\n60\n1\n\tA\n\tx\n\t1\n\t\tx\n\t\t0\n\t\t59\n\t\t1\n"
      "\t\t\tx 0 59 4\n\t\t\t\t10 AI\n\t\t\t\t11 E\n\t\t\t\t50 O\n\t\t\t\t55 U\n",
      context);
  EXPECT_EQ(CellsOf(*reading.sheet), "0\"x\" 10:A 11:E /48") << "by the file's own rate";
  EXPECT_EQ(reading.sheet->wave_file_name, std::exchange(context.sound_name, ""));
  EXPECT_EQ(Told(reading.notes), "2 entries behind the sheet's end, which is at frame 48, are left out\n");
  // The sheet's rate, and rate and seconds of sound that are given. Halves of frames go to the even one.
  const std::string behind = "an entry behind the sheet's end, which is at frame ",
                    stays = "the sheet can't be brought to that rate; it stays at ";
  const std::tuple<const char*, std::optional<std::string>, std::optional<double>, std::string> fits[] = {
      {"24", {}, {}, "1:A 3:M /4 24 0/9 1/9 2/9 "},
      {"24", "12", {}, "0:A /2 12 0/9 2/9 " + behind + "2, is left out\n"},
      {"24", "12", 0.25, "0:A 2:M /3 12 0/9 2/9 32/32 "},
      {"24", {}, 0.125, "1:A /3 24 0/9 1/9 2/9 " + behind + "3, is left out\n"},
      {"24", "99999999", {}, "1:A 3:M /4 24 0/9 1/9 2/9 " + stays + "24\n"},
      {"0", {}, {}, "1:A 3:M /4 0 0/9 1/9 2/9 "},
      {"0", "24", {}, "1:A 3:M /4 24 0/9 1/9 2/9 "},
      {"-5", {}, {}, "1:A 3:M /4 -5 0/9 1/9 2/9 " + stays + "-5\n"},
  };
  for (const auto& [own, rate, seconds, fitting] : fits) {
    Document fitted = SheetWith(4, "1:A 3:M");
    fitted.frame_rate_text = own;
    fitted.track_values = {{0, 32, 32, 9}, {1, 32, 32, 9}, {2, 32, 32, 9}};
    context.rate_text = rate;
    context.sound_seconds = seconds;
    convert::Messages said;
    convert::Fit(fitted, context, said);
    EXPECT_EQ(CellsOf(fitted) + " " + RestOf(fitted) + " " + Told(said), fitting);
  }
}

TEST(ShapeTable, ATableOfOnesOwnReplacesTheNames) {
  const auto own = ShapeTable::Parse("# mine\nA\tE | open | D\nClosed M | shut | -  # remark\n");
  ASSERT_TRUE(own.table) << InEnglish(own.failure);
  EXPECT_EQ(own.table->Foreign("E ", convert::Naming::kSwitchData), "open");
  EXPECT_EQ(own.table->Foreign("M", convert::Naming::kCues), std::nullopt);
  EXPECT_EQ(own.table->Shape("-", convert::Naming::kCues), std::nullopt);
  EXPECT_EQ(own.table->Shape("shut", convert::Naming::kSwitchData), "Closed");
  Context context;
  context.names = &*own.table;
  EXPECT_EQ(CellsOf(*convert::ReadPapagayo("lipsync version 1\n\n24\n2\n1\n\tA\n\tx\n\t1\n\t\tx\n\t\t0\n"
                                           "\t\t0\n\t\t1\n\t\t\tx 0 0 1\n\t\t\t\t0 open\n",
                                           context)
                         .sheet),
            "0:A 0\"x\" /2")
      << "a table may have no rest";
  for (const auto& [text, message] : std::map<std::string, std::string>{
           {"A | AI\n", "line 1: expected names"},
           {"A | AI | D | x\n", "line 1: expected names"},
           {"A | AI | D E\n", "line 1: expected names"},
           {"A | AI |\n", "line 1: expected names"},
           {"\nA | A I | D\n", "line 2: expected names"},
           {"A | AI | D\nE A | E | C\n", "line 2: \"A\" stands in the table a second time"},
           {"a | AI | D\n", "line 1: \"a\" is no mouth"},
           {"# nothing\n", "the table of names is empty"}}) {
    EXPECT_THAT(InEnglish(ShapeTable::Parse(text).failure), HasSubstr(message)) << text;
  }
}

}  // namespace
