#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "convert/document.h"
#include "convert/formats/JsonText.h"
#include "convert/formats/ToolkitFormats.h"
#include "convert/lines.h"
#include "convert/message.h"
#include "convert/shape_table.h"
#include "sheet/shape_names.h"
#include "timeline/mouth_names.h"

namespace convert {
namespace {

constexpr std::string_view kFirstLine = "exchangeDigitalTimeSheet Save Data";
constexpr int kVersion = 5;
constexpr int kCellField = 0, kDialogueField = 3;
constexpr const char* kMouthColumn = "Mouth";
constexpr const char* kCommentColumn = "Comment";
constexpr const char* kEmptyCell = "SYMBOL_NULL_CELL";
/// Marks such as SYMBOL_HYPHEN and the ticks of inbetweens: the cell before stays.
constexpr const char* kMarkStart = "SYMBOL_";

/// What stands at one frame of a column.
struct Cell {
  std::int64_t frame;
  QString value;
};

struct Column {
  QString name;
  std::vector<Cell> cells;
};

/// The sheet's name for a cell: the name itself, one of the tables' names, or the number of a mouth's
/// drawing.
std::optional<std::string> ShapeOfCell(const std::string& value, const ShapeTable& names) {
  if (IsShape(value)) return std::string(WithoutTrailingBlank(value));
  if (auto shape = names.Shape(value, Naming::kSwitchData)) return shape;
  const auto number = WholeInteger(value);
  if (!number) return std::nullopt;
  for (const std::string& name : sheet::ShapeNames()) {
    if (timeline::MouthNumber(name) == *number) return std::string(WithoutTrailingBlank(name));
  }
  return std::nullopt;
}

Message PlaceOf(const Column& column, const Cell& cell) {
  return {QT_TRANSLATE_NOOP("convert", "column %1, frame %2"),
          {Quoted(column.name.toStdString()), std::to_string(cell.frame)}};
}

/// Reads one time table. After the first fault nothing more is taken.
class TimeTable {
 public:
  explicit TimeTable(const QJsonObject& table) : table_(table) {}

  std::vector<Column> Columns(int field_id) {
    std::vector<Column> columns;
    const QJsonArray names =
        Member(table_.value("timeTableHeaders").toArray(), field_id).value("names").toArray();
    const QJsonArray tracks = Member(table_.value("fields").toArray(), field_id).value("tracks").toArray();
    for (const auto& track : tracks) {
      const int number = track.toObject().value("trackNo").toInt(static_cast<int>(columns.size()));
      Column column{names.at(number).toString(QString::number(number + 1)), {}};
      for (const auto& frame : track.toObject().value("frames").toArray()) AddCell(frame, column);
      columns.push_back(std::move(column));
    }
    return columns;
  }

  const Message& Failure() const { return failure_; }

 private:
  static QJsonObject Member(const QJsonArray& list, int field_id) {
    for (const auto& value : list) {
      if (value.toObject().value("fieldId").toInt(-1) == field_id) return value.toObject();
    }
    return {};
  }

  void AddCell(const QJsonValue& frame, Column& column) {
    const double number = frame.toObject().value("frame").toDouble(-1);
    if (!(number >= 0 && number <= static_cast<double>(kMostFrames))) {
      if (failure_.Empty()) {
        failure_ = {QT_TRANSLATE_NOOP("convert", "column %1, entry %2: expected a \"frame\" from 0 to %3"),
                    {Quoted(column.name.toStdString()), std::to_string(column.cells.size() + 1),
                     std::to_string(kMostFrames)}};
      }
      return;
    }
    QString text;
    for (const auto& data : frame.toObject().value("data").toArray()) {
      if (data.toObject().value("id").toInt(-1) != 0) continue;
      for (const auto& value : data.toObject().value("values").toArray())
        text += (text.isEmpty() ? "" : " ") + value.toString();
    }
    column.cells.push_back({static_cast<std::int64_t>(number), text.trimmed()});
  }

  QJsonObject table_;
  Message failure_;
};

const Column* MouthColumn(const std::vector<Column>& columns, const ShapeTable& names) {
  if (columns.empty()) return nullptr;
  for (const Column& column : columns) {
    if (column.name.compare(kMouthColumn, Qt::CaseInsensitive) == 0) return &column;
  }
  for (const Column& column : columns) {
    const bool all_mouths = std::all_of(column.cells.begin(), column.cells.end(), [&](const Cell& cell) {
      return cell.value.startsWith(kMarkStart) || ShapeOfCell(cell.value.toStdString(), names);
    });
    if (all_mouths && !column.cells.empty()) return &column;
  }
  return &columns.front();
}

void AddMouths(const Column& column, const Context& context, Entries& found, Messages& notes) {
  bool shown = false;
  for (const Cell& cell : column.cells) {
    if (cell.value == kEmptyCell) {
      // A column without a cell shows nothing; the sheet's nearest is the mouth at rest. At the end of the
      // sheet it only marks the end.
      if (shown && cell.frame < found.frames.value_or(cell.frame + 1))
        found.entries.push_back({cell.frame, "Closed", {}});
      shown = false;
      continue;
    }
    if (cell.value.isEmpty() || cell.value.startsWith(kMarkStart)) continue;
    const std::string value = cell.value.toStdString();
    const auto shape = ShapeOfCell(value, *context.names);
    if (!shape) notes.push_back(UnknownMouth(PlaceOf(column, cell), value));
    found.entries.push_back({cell.frame, shape.value_or(""), shape ? "" : value});
    shown = true;
  }
}

QJsonObject FrameOf(std::int64_t frame, const QString& value) {
  return {{"frame", qint64{frame}},
          {"data", QJsonArray{QJsonObject{{"id", 0}, {"values", QJsonArray{value}}}}}};
}

QJsonObject FieldOf(int id, const QJsonArray& frames) {
  return {{"fieldId", id}, {"tracks", QJsonArray{QJsonObject{{"trackNo", 0}, {"frames", frames}}}}};
}

QJsonObject HeaderOf(int id, const char* name) { return {{"fieldId", id}, {"names", QJsonArray{name}}}; }

}  // namespace

Reading ReadXdts(std::string_view bytes, const Context& context) {
  const std::size_t line_end = bytes.find('\n');
  const std::string_view first = Trimmed(bytes.substr(0, line_end));
  if (!first.starts_with(kFirstLine)) {
    return Refused(QT_TRANSLATE_NOOP("convert", "line 1: expected %1, found %2"),
                   {std::string(kFirstLine), Quoted(std::string(first))});
  }
  // Some writers put the JSON on the first line too.
  const bool on_first = first.find('{') != std::string_view::npos;
  const std::size_t begin = on_first ? bytes.find('{') : std::min(line_end, bytes.size() - 1) + 1;
  const JsonObject json = ParseJsonObject(bytes.substr(begin), on_first ? 1 : 2);
  if (!json.object) return {std::nullopt, json.failure, {}};
  const QJsonArray tables = json.object->value("timeTables").toArray();
  if (tables.isEmpty()) return Refused(QT_TRANSLATE_NOOP("convert", "the file has no time table"));

  Messages notes;
  if (tables.size() > 1) {
    notes.push_back({QT_TRANSLATE_NOOP("convert", "of %1 time tables only the first, %2, is taken"),
                     {std::to_string(tables.size()), Quoted(tables.at(0)["name"].toString().toStdString())}});
  }
  Entries found;
  const double duration = tables.at(0)["duration"].toDouble(-1);
  if (duration > static_cast<double>(kMostFrames)) {
    return Refused(QT_TRANSLATE_NOOP("convert", "a \"duration\" above %1 can't be used"),
                   {std::to_string(kMostFrames)});
  }
  if (duration >= 0) found.frames = static_cast<std::int64_t>(duration);
  TimeTable table(tables.at(0).toObject());
  const auto cells = table.Columns(kCellField), dialogue = table.Columns(kDialogueField);
  if (!table.Failure().Empty()) return {std::nullopt, table.Failure(), {}};
  if (const Column* mouths = MouthColumn(cells, *context.names)) {
    AddMouths(*mouths, context, found, notes);
    if (cells.size() > 1) {
      notes.push_back({QT_TRANSLATE_NOOP("convert", "of %1 columns of cells only %2 is taken"),
                       {std::to_string(cells.size()), Quoted(mouths->name.toStdString())}});
    }
  }
  for (const Column& column : dialogue) {
    for (const Cell& cell : column.cells) {
      if (!cell.value.isEmpty() && !cell.value.startsWith(kMarkStart))
        found.entries.push_back({cell.frame, {}, cell.value.toStdString()});
    }
  }
  return SheetOf(std::move(found), context, std::move(notes));
}

Writing WriteXdts(const Document& document) {
  QJsonArray mouths, dialogue;
  for (std::int64_t frame = 0; frame < FramesOf(document); ++frame) {
    const std::string_view shape = ShapeOf(document, frame);
    if (!shape.empty())
      mouths.append(FrameOf(frame, QString::fromUtf8(shape.data(), static_cast<qsizetype>(shape.size()))));
    if (!CommentOf(document, frame).empty())
      dialogue.append(FrameOf(frame, QString::fromStdString(CommentOf(document, frame))));
  }
  const QJsonObject table{
      {"duration", qint64{FramesOf(document)}},
      {"name", "sheet1"},
      {"timeTableHeaders",
       QJsonArray{HeaderOf(kDialogueField, kCommentColumn), HeaderOf(kCellField, kMouthColumn)}},
      {"fields", QJsonArray{FieldOf(kDialogueField, dialogue), FieldOf(kCellField, mouths)}}};
  const QJsonObject all{{"version", kVersion},
                        {"header", QJsonObject{{"cut", "1"}, {"scene", "1"}}},
                        {"timeTables", QJsonArray{table}}};
  Messages notes;
  NoteWhatIsLeftOut(document, {.comments = true}, notes);
  return {
      std::string(kFirstLine) + "\n" + QJsonDocument(all).toJson(QJsonDocument::Compact).toStdString() + "\n",
      {},
      std::move(notes)};
}

}  // namespace convert
