// Any bytes as the formats of JSON and XML, which the toolkit parses: a sheet within bounds or a reason why
// not; and an XDTS sheet that was written is the same sheet when it is read.
#include <cstdlib>

#include "convert/formats/ToolkitFormats.h"
#include "sheet/text_encoding.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  convert::Context context;
  context.names = &convert::ShapeTable::Default();
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string text = sheet::DecodedText(std::string(bytes));
  convert::Reading reading;
  switch (data[0] % 3) {
    case 0:
      reading = convert::ReadCueJson(text, context);
      break;
    case 1:
      reading = convert::ReadCueXml(bytes, context);
      break;
    default:
      reading = convert::ReadXdts(text, context);
  }
  Check(reading.sheet.has_value() == reading.failure.Empty());
  if (!reading.sheet || reading.sheet->rows.size() > 2000) return 0;
  const auto again = convert::ReadXdts(*convert::WriteXdts(*reading.sheet).bytes, context);
  Check(again.sheet && again.sheet->rows.size() == reading.sheet->rows.size());
  for (std::size_t i = 0; i < again.sheet->rows.size(); ++i)
    Check(again.sheet->rows[i][1] == reading.sheet->rows[i][1]);
  return 0;
}
