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
using testing::HasSubstr;

Context Plain() {
  Context context;
  context.names = &ShapeTable::Default();
  return context;
}

Document Frogs() {
  return *convert::ReadExposureSheet(support::FileBytes(SOURCE_DIR "/samples/frogs.exp")).sheet;
}

/// Which shape each shape comes back as when it goes out and in by one of the foreign sets of names.
const std::map<std::string, std::string> kBackFromSwitchData = {
    {"A", "A"}, {"I", "A"}, {"E", "E"}, {"O", "O"}, {"U", "U"},  {"W", "W"},          {"B", "M"}, {"M", "M"},
    {"P", "M"}, {"F", "F"}, {"V", "F"}, {"L", "L"}, {"Th", "L"}, {"Ch", "S"},         {"D", "S"}, {"G", "S"},
    {"K", "S"}, {"N", "S"}, {"R", "S"}, {"S", "S"}, {"T", "S"},  {"Closed", "Closed"}};

Document WithShapesBack(Document sheet, bool cues) {
  for (auto& row : sheet.rows) {
    if (!row[1].empty()) row[1] = cues && row[1] == "W" ? "U" : kBackFromSwitchData.at(row[1]);
  }
  return sheet;
}

Document WithoutComments(Document sheet) {
  for (auto& row : sheet.rows) row[2].clear();
  return sheet;
}

std::string Told(const convert::Messages& notes) {
  std::string all;
  for (const auto& note : notes) all += InEnglish(note) + "\n";
  return all;
}

TEST(Formats, TheSampleSheetGoesOutAndBack) {
  const Document frogs = Frogs();
  const ShapeTable& names = ShapeTable::Default();
  Context known_length = Plain();
  known_length.sound_seconds = 71.0 / 24;

  EXPECT_EQ(*convert::WriteExposureSheet(frogs).bytes, support::FileBytes(SOURCE_DIR "/samples/frogs.exp"));
  const Document csv = *convert::ReadCsv(*convert::WriteCsv(frogs).bytes, Plain()).sheet;
  EXPECT_EQ(CellsOf(csv), CellsOf(frogs));
  EXPECT_EQ(csv.track_values, frogs.track_values);
  EXPECT_EQ(CellsOf(*convert::ReadXdts(*convert::WriteXdts(frogs).bytes, Plain()).sheet), CellsOf(frogs));
  const Document papagayo =
      *convert::ReadPapagayo(*convert::WritePapagayo(frogs, names).bytes, Plain()).sheet;
  EXPECT_EQ(CellsOf(papagayo), CellsOf(WithShapesBack(frogs, false)));
  EXPECT_EQ(papagayo.wave_file_name, "frogs.wav");
  EXPECT_EQ(papagayo.frame_rate_text, "24");
  EXPECT_EQ(
      CellsOf(*convert::ReadSwitchData(*convert::WriteSwitchData(frogs, names).bytes, known_length).sheet),
      CellsOf(WithoutComments(WithShapesBack(frogs, false))));
  EXPECT_EQ(CellsOf(*convert::ReadCueTable(*convert::WriteCueTable(frogs, names).bytes, Plain()).sheet),
            CellsOf(WithoutComments(WithShapesBack(frogs, true))));
}

TEST(Formats, TimesFindTheirFramesAgainAtAnyRate) {
  for (const char* rate : {"12", "23.976", "29.97", "60", "120", "999"}) {
    Document sheet = SheetWith(500, "0:M");
    for (auto& row : sheet.rows) row[1] = "M";
    sheet.frame_rate_text = rate;
    Context context = Plain();
    context.rate_text = rate;
    const Writing written = convert::WriteCueTable(sheet, ShapeTable::Default());
    EXPECT_EQ(CellsOf(*convert::ReadCueTable(*written.bytes, context).sheet), CellsOf(sheet)) << rate;
  }
}

TEST(Formats, AHeldMouthIsWrittenOnceAndARepeatedOneTwice) {
  const Document sheet = SheetWith(9, "2:M 4:P 6:M 7:Closed");
  EXPECT_EQ(*convert::WriteSwitchData(sheet, ShapeTable::Default()).bytes,
            "MohoSwitch1\n1 rest\n3 MBP\n5 MBP\n7 MBP\n8 rest\n");
  EXPECT_EQ(*convert::WriteCueTable(sheet, ShapeTable::Default()).bytes,
            "0.00\tX\n0.08\tA\n0.16\tA\n0.25\tA\n0.29\tX\n0.37\tX\n");
}

TEST(Formats, APapagayoWordHoldsItsMouthUntilTheNextWordShowsOne) {
  Document sheet = SheetWith(12, "0:A 6:M");
  sheet.rows[0][2] = "one";
  sheet.rows[4][2] = "two words";
  const Writing written = convert::WritePapagayo(sheet, ShapeTable::Default());
  EXPECT_THAT(*written.bytes,
              HasSubstr("\t\t\tone 0 5 1\n\t\t\t\t0 AI\n\t\t\ttwo_words 4 11 1\n\t\t\t\t6 MBP\n"));
  EXPECT_EQ(CellsOf(*convert::ReadPapagayo(*written.bytes, Plain()).sheet), CellsOf(sheet));
  EXPECT_THAT(Told(written.notes), HasSubstr("blanks within a comment are written as _"));
  for (const char* rate : {"23.976", "24.4"}) {
    sheet.frame_rate_text = rate;
    EXPECT_THAT(InEnglish(convert::WritePapagayo(sheet, ShapeTable::Default()).notes.at(0)),
                HasSubstr(std::string(rate) + ", is written as 24"));
  }
}

TEST(Formats, SaysWhatAFormatCantCarry) {
  Document sheet = SheetWith(5, "0:A 1:smile 2:grin 3:V 4:I");
  sheet.rows[1][2] = "note";
  sheet.wave_file_name = "voice.wav";
  sheet.track_visible[2] = false;
  sheet.track_values = {{32, 32, 32, 31}};
  EXPECT_EQ(Told(convert::WriteSwitchData(sheet, ShapeTable::Default()).notes),
            "2 mouths that the table of names doesn't know are left out, the first at frame 1: \"smile\"\n"
            "mouths that share a name in this format come back as the one in brackets: I (A), V (F)\n"
            "the comments are left out: the format has none\n"
            "the velocity tracks are left out: the format has none\n"
            "the lock and the tracks' visibility are left out: the format has none\n"
            "the name of the sound, \"voice.wav\", is left out: the format has no place for it\n"
            "the frame rate, 24, is left out: the format has no place for it\n");
  EXPECT_TRUE(convert::WriteExposureSheet(sheet).notes.empty());
  EXPECT_THAT(Told(convert::WriteCueTable(SheetWith(2, "0:A 1:smile"), ShapeTable::Default()).notes),
              HasSubstr("a mouth that the table of names doesn't know is left out, at frame 1: \"smile\"\n"));
}

/// Files as other programs write them, made by hand from their published forms.
using Reader = Reading (*)(std::string_view, const Context&);
struct Foreign {
  const char* name;
  Reader read;
  const char* bytes;
  const char* cells;
  const char* said = "";
};
constexpr Foreign kForeign[] = {
    {"switch data with a frame 0 and two ends of line", convert::ReadSwitchData,
     "MohoSwitch1\r\n0 rest\r\n5 MBP\n\n9 smile\n", "0:Closed 4:M 8\"smile\" /9",
     "line 5: the table of names has no mouth \"smile\"; it goes into the comment\n"
     "switch data doesn't tell its length"},
    {"cues as a table, the end told by X", convert::ReadCueTable, "0.00\tX\n0.50\tD\n0.52\tB\n1.00\tX\n",
     "0:Closed 12:S /24", "a mouth shorter than a frame is left out, at frame 12\n"},
    {"cues as JSON", convert::ReadCueJson,
     R"({"metadata":{"soundFile":"v.wav","duration":1.0},"mouthCues":[{"start":0.00,"end":0.25,"value":"X"},)"
     R"({"start":0.25,"end":1.0,"value":"G"}]})",
     "0:Closed 6:F /24"},
    {"cues as XML", convert::ReadCueXml,
     "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rhubarbResult>\n<metadata><soundFile>v.wav</soundFile>"
     "<duration>0.5</duration></metadata>\n<mouthCues>\n<mouthCue start=\"0.00\" end=\"0.25\">H</mouthCue>\n"
     "<mouthCue start=\"0.25\" end=\"0.5\">F</mouthCue>\n</mouthCues></rhubarbResult>",
     "0:L 6:U /12"},
    {"cues as JSON and as XML that end with their last one", convert::ReadCueJson,
     R"({"mouthCues":[{"start":0.00,"end":0.5,"value":"B"}]})", "0:S /12"},
    {"the same as XML", convert::ReadCueXml,
     "<rhubarbResult><mouthCue start='0' end='0.5'>B</mouthCue></rhubarbResult>", "0:S /12"},
    {"two voices, a pause between the words", convert::ReadPapagayo,
     "lipsync version 1\nv.wav\n24\n20\n2\n\tAnn\n\tHi|you\n\t1\n\t\tHi you\n\t\t2\n\t\t15\n\t\t2\n\t\t\tHi "
     "2 5 1\n"
     "\t\t\t\t2 AI\n\t\t\tyou\t10 15 3\n\t\t\t\t10 etc\n\t\t\t\t12 U\n\t\t\t\t30 O\n\tBob\n\t\n\t0\n",
     "2:A 2\"Hi\" 6:Closed 10:S 10\"you\" 12:U 16:Closed /20",
     "of 2 voices only the first, \"Ann\", is taken\n"
     "an entry behind the sheet's end, which is at frame 20, is left out\n"},
    {"a time sheet with marks, an empty cell and drawings by number", convert::ReadXdts,
     "exchangeDigitalTimeSheet Save Data\n"
     R"({"timeTables":[{"duration":10,"name":"t","timeTableHeaders":[{"fieldId":3,"names":["Ann"]},)"
     R"({"fieldId":0,"names":["BODY","MOUTH"]}],"fields":[{"fieldId":0,"tracks":[{"trackNo":0,"frames":[)"
     R"({"frame":0,"data":[{"id":0,"values":["1"]}]}]},{"trackNo":1,"frames":[)"
     R"({"frame":1,"data":[{"id":0,"values":["2"]}]},{"frame":2,"data":[{"id":0,"values":["SYMBOL_HYPHEN"]}]},)"
     R"({"frame":4,"data":[{"id":0,"values":["Th"]}]},{"frame":6,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},)"
     R"({"frame":7,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},)"
     R"({"frame":8,"data":[{"id":0,"values":["AI"]}]},{"frame":10,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]}]}]},)"
     R"({"fieldId":3,"tracks":[{"trackNo":0,"frames":[{"frame":1,"data":[{"id":0,"values":["hello"]}]}]}]}]}],"version":5})",
     "1:B 1\"hello\" 4:Th 6:Closed 8:A /10"},
    {"a table with semicolons, quotes, other columns and decimals", convert::ReadCsv,
     "sep=;\r\nTake;Comment;Frame;Shape;Blue\r\n1;\"a;\"\"b\"\"\r\nc\";0;A ;\"32,0\"\r\n2;;3;M;0\r\n;;;;\r\n",
     "0:A 0\"a;\"b\" c\" 3:M /4"},
    {"a heading twice", convert::ReadCsv, "Frame,Shape,SHAPE\n0,A,M\n", "0:A /1"},
    {"a table without headings", convert::ReadCsv, "0,A,\"x, y\"\n1,,5\" nail;;;;;;;;\n2,grin,\n",
     "0:A 0\"x, y\" 1\"5\" nail;;;;;;;;\" 2\"grin\" /3", "line 3: the table of names has no mouth \"grin\""},
};

TEST(Formats, ReadsWhatOtherProgramsWrite) {
  for (const Foreign& file : kForeign) {
    const Reading reading = file.read(file.bytes, Plain());
    ASSERT_TRUE(reading.sheet) << file.name << ": " << InEnglish(reading.failure);
    EXPECT_EQ(CellsOf(*reading.sheet), file.cells) << file.name;
    EXPECT_THAT(Told(reading.notes), HasSubstr(file.said)) << file.name;
  }
  const Reading two = convert::ReadXdts(
      "exchangeDigitalTimeSheet Save "
      "Data\n{\"timeTables\":[{\"name\":\"take\",\"fields\":[{\"fieldId\":0,\"tracks\":"
      "[{\"frames\":[{\"frame\":3,\"data\":[{\"id\":0,\"values\":[\"M\"]}]}]}]}]},{\"name\":\"other\"}]}",
      Plain());
  EXPECT_EQ(CellsOf(*two.sheet), "3:M /4") << "as long as what stands in it";
  EXPECT_THAT(Told(two.notes), HasSubstr("of 2 time tables only the first, \"take\", is taken"));
  Context one_second = Plain();
  one_second.rate_text = "2";
  one_second.sound_seconds = 1;
  const Reading longer = convert::ReadCsv("Frame,Shape,Comment,Yellow\n0,A,,5\n7,,,9\n", one_second);
  EXPECT_EQ(longer.sheet->track_values.size(), 2U) << "no tracks behind the end of the sound";
}

struct Fault {
  Reader read;
  std::string bytes;
  const char* message;
};

TEST(Formats, NamesTheLineOrThePlaceOfAFault) {
  const Reader sheet = [](std::string_view text, const Context&) { return convert::ReadExposureSheet(text); };
  const std::string first = "exchangeDigitalTimeSheet Save Data\n";
  const Fault faults[] = {
      {convert::ReadSwitchData, "", "line 1: expected MohoSwitch1, found \"\""},
      {convert::ReadSwitchData, "MohoSwitch1\n1 AI\n2\n", "line 3: expected a frame"},
      {convert::ReadSwitchData, "MohoSwitch1\n-1 AI\n", "line 2: expected a frame"},
      {convert::ReadSwitchData, "MohoSwitch1\n99999999999999999999 AI\n", "line 2: expected a frame"},
      {convert::ReadSwitchData, "MohoSwitch1\n9999999 AI\n", "at most 1000000 are believed"},
      {convert::ReadCueTable, "0.0\tA\n0,5\tB\n", "line 2: expected seconds"},
      {convert::ReadCueTable, "-1\tA\n", "line 1: a start of -1 seconds"},
      {convert::ReadCueTable, "1e300\tA\n", "line 1: a start of 1e+300 seconds"},
      {convert::ReadCueTable, "nan\tA\n", "line 1: expected seconds"},
      {convert::ReadCueJson, "{\n\"mouthCues\":[\n{]}", "line 3: "},
      {convert::ReadCueJson, "[]", "expected a JSON object"},
      {convert::ReadCueJson, R"({"mouthCues":[{"start":0,"value":"A"},{"start":"0"}]})", "cue 2: expected"},
      {convert::ReadCueJson, R"({"mouthCues":[{"start":0,"value":7}]})", "cue 1: expected"},
      {convert::ReadCueXml, "<rhubarbResult>\n<mouthCue start=\"x\">A</mouthCue>",
       "line 2: the cue has no start"},
      {convert::ReadCueXml, "<rhubarbResult>\n<mouthCues>", "line 2: "},
      {convert::ReadCueXml, "<html/>", "line 1: expected the element rhubarbResult"},
      {convert::ReadPapagayo, "lipsync version 2\n", "line 1: expected lipsync version 1"},
      {convert::ReadPapagayo, "lipsync version 1\nv\n0\n", "line 3: expected a frame rate above 0"},
      {convert::ReadPapagayo, "lipsync version 1\nv\n24\n5\n1\n\tA\n\tx\n\t9999999\n\t\tx\n",
       "line 10: expected"},
      {convert::ReadXdts, "{}", "line 1: expected exchange"},
      {convert::ReadXdts, first + "{\n,", "line 3: "},
      {convert::ReadXdts, first + "{}", "no time table"},
      {convert::ReadXdts,
       first + R"({"timeTables":[{"fields":[{"fieldId":0,"tracks":[{"frames":[{"frame":-1}]}]}]}]})",
       "column \"1\", entry 1: expected a \"frame\""},
      {convert::ReadCsv, "Frame,Shape\n0,A\nx,B\n", "line 3, column Frame: expected"},
      {convert::ReadCsv, "Frame,Comment,Red\n0,\"a\nb\",32\n1,,256\n", "line 4, column Red: expected"},
      {convert::ReadCsv, "9999999,A\n", "line 1, column Frame"},
      {convert::ReadCsv, "0,A\n1,\"B\n2,C\n", "line 2: a quotation mark opens a cell"},
      {convert::ReadCsv, "\n,,\n", "the table has no rows"},
      {sheet, "ExposureSheet02\r\n24\r\n", "Line 3: expected the wave file's name"},
  };
  for (const Fault& fault : faults) {
    const Reading reading = fault.read(fault.bytes, Plain());
    EXPECT_FALSE(reading.sheet) << fault.bytes;
    EXPECT_THAT(InEnglish(reading.failure), HasSubstr(fault.message)) << fault.bytes;
  }
}

TEST(Formats, TheSoundDecidesTheLengthAndTheRateMovesEntries) {
  Context context = Plain();
  context.sound_seconds = 2.0;
  context.rate_text = "12";
  const Reading reading = convert::ReadPapagayo(
      "lipsync version 1\nv\n24\n60\n1\n\tA\n\tx\n\t1\n\t\tx\n\t\t0\n\t\t59\n\t\t1\n"
      "\t\t\tx 0 59 4\n\t\t\t\t10 AI\n\t\t\t\t11 E\n\t\t\t\t50 O\n\t\t\t\t55 U\n",
      context);
  Document sheet = *reading.sheet;
  convert::Messages notes;
  convert::Fit(sheet, context, notes);
  EXPECT_EQ(sheet.frame_rate_text, "12");
  // Frame 11 lies halfway between two and goes to the even one; 50 and 55 are behind the end.
  EXPECT_EQ(CellsOf(sheet), "0\"x\" 5:A 6:E /24");
  EXPECT_EQ(sheet.track_values.size(), 24u);
  notes.insert(notes.end(), reading.notes.begin(), reading.notes.end());
  EXPECT_THAT(Told(notes), HasSubstr("2 entries behind the sheet's end, which is at frame 48, are left out"));
}

TEST(Formats, AnotherRateTakesTheTracksAlong) {
  Document sheet = Frogs();
  Context context = Plain();
  context.rate_text = "12";
  convert::Messages notes;
  convert::Fit(sheet, context, notes);
  EXPECT_EQ(sheet.track_values.size(), 36U);
  for (const auto& [frame, value] : {std::pair{0, 56}, {4, 57}, {16, 57}, {35, 51}})
    EXPECT_EQ(sheet.track_values[static_cast<std::size_t>(frame)][0], value) << frame;
}

TEST(ShapeTable, ATableOfOnesOwnReplacesTheNames) {
  const auto own = ShapeTable::Parse("# mine\nA E | open | D\nClosed M | shut | -  # remark\n");
  ASSERT_TRUE(own.table) << InEnglish(own.failure);
  EXPECT_EQ(own.table->Foreign("E ", convert::Naming::kSwitchData), "open");
  EXPECT_EQ(own.table->Foreign("M", convert::Naming::kCues), std::nullopt);
  EXPECT_EQ(own.table->Shape("shut", convert::Naming::kSwitchData), "Closed");
  for (const auto& [text, message] : std::map<std::string, std::string>{
           {"A | AI\n", "line 1: expected names"},
           {"\nA | A I | D\n", "line 2: expected names"},
           {"A | AI | D\nE A | E | C\n", "line 2: \"A\" stands in the table a second time"},
           {"a | AI | D\n", "line 1: \"a\" is no mouth"},
           {"# nothing\n", "the table of names is empty"}}) {
    EXPECT_THAT(InEnglish(ShapeTable::Parse(text).failure), HasSubstr(message)) << text;
  }
}

}  // namespace
