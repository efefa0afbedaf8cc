// Any bytes as each of the plain formats: a sheet within bounds or a reason why not; and a sheet that was
// read can be written in every format and read again with its mouths and length.
#include <cstdlib>

#include "convert/draft/phrases.h"
#include "convert/draft/speech_sounds.h"
#include "convert/formats/formats.h"
#include "sheet/text_encoding.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

convert::Context Plain() {
  convert::Context context;
  context.names = &convert::ShapeTable::Default();
  return context;
}

std::size_t Mouths(const convert::Document& sheet) {
  std::size_t mouths = 0;
  for (const auto& row : sheet.rows) mouths += convert::IsShape(row[1]);
  return mouths;
}

void CheckSheet(const convert::Document& sheet) {
  const convert::ShapeTable& names = convert::ShapeTable::Default();
  Check(sheet.rows.size() <= static_cast<std::size_t>(convert::kMostFrames));
  // Long sheets only cost time here.
  if (sheet.rows.size() > 2000) return;
  const auto again = convert::ReadCsv(*convert::WriteCsv(sheet).bytes, Plain());
  Check(again.sheet && again.sheet->rows.size() == sheet.rows.size() &&
        Mouths(*again.sheet) == Mouths(sheet));
  const auto papagayo = convert::ReadPapagayo(*convert::WritePapagayo(sheet, names).bytes, Plain());
  Check(papagayo.sheet && papagayo.sheet->rows.size() == sheet.rows.size());
  Check(convert::ReadSwitchData(*convert::WriteSwitchData(sheet, names).bytes, Plain()).sheet.has_value());
  const auto cues = convert::WriteCueTable(sheet, names);
  if (cues.bytes) Check(convert::ReadCueTable(*cues.bytes, Plain()).sheet.has_value());
  const auto own = convert::ReadExposureSheet(*convert::WriteExposureSheet(sheet).bytes);
  Check(own.sheet && own.sheet->rows.size() == sheet.rows.size());
}

void CheckReading(convert::Reading reading) {
  Check(reading.sheet.has_value() == reading.failure.Empty());
  for (const auto& note : reading.notes) InEnglish(note);
  if (!reading.sheet) return;
  CheckSheet(*reading.sheet);
  convert::Context other_rate = Plain();
  other_rate.rate_text = "30";
  convert::Messages notes;
  convert::Fit(*reading.sheet, other_rate, notes);
  CheckSheet(*reading.sheet);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text = sheet::DecodedText({reinterpret_cast<const char*>(data) + 1, size - 1});
  switch (data[0] % 7) {
    case 0:
      CheckReading(convert::ReadSwitchData(text, Plain()));
      break;
    case 1:
      CheckReading(convert::ReadCueTable(text, Plain()));
      break;
    case 2:
      CheckReading(convert::ReadPapagayo(text, Plain()));
      break;
    case 3:
      CheckReading(convert::ReadCsv(text, Plain()));
      break;
    case 4:
      CheckReading(convert::ReadExposureSheet(text));
      break;
    case 5:
      for (const auto& phrase : convert::ParsePhrases(text).phrases) {
        for (const auto& word : phrase.words) convert::EnglishSounds(word);
      }
      break;
    default:
      const auto parsed = convert::ShapeTable::Parse(text);
      Check(parsed.table.has_value() == parsed.failure.Empty());
  }
  return 0;
}
