#include "convert/document.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "convert/lines.h"
#include "platform/numbers.h"
#include "sheet/timing.h"
#include "timeline/velocity_values.h"

namespace convert {
namespace {

std::size_t Index(std::int64_t frame) { return static_cast<std::size_t>(frame); }

/// Adds to a row's comment, which another entry may have begun. A comment is one line, whatever a table's
/// cell holds.
void AddComment(std::string& comment, std::string more) {
  const auto one_end = [](char a, char b) { return a == '\r' && b == '\n'; };
  more.erase(std::unique(more.begin(), more.end(), one_end), more.end());
  std::replace_if(
      more.begin(), more.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  const std::string_view text = Trimmed(more);
  if (!comment.empty() && !text.empty()) comment += ' ';
  comment += text;
}

/// Entries that had no place, told once with the first.
struct Lost {
  std::int64_t count = 0, first_frame = 0;
  void Add(std::int64_t frame) {
    if (count++ == 0) first_frame = frame;
  }
};

void PlaceEntries(const std::vector<Entry>& entries, Document& document, Messages& notes) {
  Lost crowded_out, behind_end;
  const std::int64_t frames = FramesOf(document);
  for (const Entry& entry : entries) {
    if (entry.frame >= frames) {
      behind_end.Add(entry.frame);
      continue;
    }
    auto& row = document.rows[Index(entry.frame)];
    if (!entry.shape.empty()) {
      if (!row[sheet::kShapeColumn].empty()) crowded_out.Add(entry.frame);
      row[sheet::kShapeColumn] = entry.shape;
    }
    AddComment(row[sheet::kCommentColumn], entry.comment);
  }
  if (crowded_out.count > 0) {
    notes.push_back(
        {crowded_out.count == 1
             ? QT_TRANSLATE_NOOP("convert", "a mouth shorter than a frame is left out, at frame %2")
             : QT_TRANSLATE_NOOP("convert",
                                 "%1 mouths shorter than a frame are left out, the first "
                                 "at frame %2"),
         {std::to_string(crowded_out.count), std::to_string(crowded_out.first_frame)}});
  }
  if (behind_end.count > 0) {
    notes.push_back({behind_end.count == 1
                         ? QT_TRANSLATE_NOOP("convert",
                                             "an entry behind the sheet's end, which is at frame %2, "
                                             "is left out")
                         : QT_TRANSLATE_NOOP("convert",
                                             "%1 entries behind the sheet's end, which is at frame %2, "
                                             "are left out"),
                     {std::to_string(behind_end.count), std::to_string(frames)}});
  }
}

/// Rows numbered and empty; tracks of the sound's length where there is a sound, else none.
void MakeRows(Document& document, std::int64_t frames, const Context& context) {
  document.rows.assign(Index(frames), {});
  for (std::size_t i = 0; i < document.rows.size(); ++i)
    document.rows[i][sheet::kFrameColumn] = std::to_string(i);
  document.track_values.clear();
  if (context.sound_seconds) {
    const auto track_frames = sheet::TrackFrames(RateOf(document), *context.sound_seconds);
    document.track_values.resize(Index(track_frames));
    for (auto& values : document.track_values) values.fill(timeline::kVelocityStart);
  }
}

/// What --rate and --sound make of the length.
struct Length {
  std::int64_t frames = 0;
  Message failure;
};

Length LengthOf(double rate, const Context& context, std::int64_t frames_without_sound) {
  if (rate < 0) return {0, {QT_TRANSLATE_NOOP("convert", "a frame rate must not be negative"), {}}};
  if (!context.sound_seconds) return {frames_without_sound, {}};
  const sheet::RowCount rows = sheet::GridRows(rate, *context.sound_seconds);
  if (!rows.rows) return {0, {"%1", {rows.reason}}};
  return {*rows.rows - 1, {}};
}

std::int64_t FramesUpToLast(const Entries& found) {
  std::int64_t frames = 0;
  for (const Entry& entry : found.entries) frames = std::max(frames, entry.frame + 1);
  return frames;
}

bool IsDefault(const std::vector<std::array<std::uint8_t, sheet::kTrackChannels>>& tracks) {
  return std::all_of(tracks.begin(), tracks.end(), [](const auto& values) {
    return std::all_of(values.begin(), values.end(), [](auto v) { return v == timeline::kVelocityStart; });
  });
}

bool TogglesAreDefault(const Document& document) {
  return document.lock && std::all_of(document.track_visible.begin(), document.track_visible.end(),
                                      [](bool visible) { return visible; });
}

}  // namespace

double Context::Rate() const { return platform::NumberAtStart(rate_text.value_or(kDefaultRate)); }

Reading Refused(const char* text, std::vector<std::string> arguments, Messages inner) {
  return {std::nullopt, {text, std::move(arguments), std::move(inner)}, {}};
}

double RateOf(const Document& document) { return platform::NumberAtStart(document.frame_rate_text); }

std::int64_t FramesOf(const Document& document) { return static_cast<std::int64_t>(document.rows.size()); }

std::string_view ShapeOf(const Document& document, std::int64_t frame) {
  return WithoutTrailingBlank(document.rows[Index(frame)][sheet::kShapeColumn]);
}

const std::string& CommentOf(const Document& document, std::int64_t frame) {
  return document.rows[Index(frame)][sheet::kCommentColumn];
}

Message LineNumbered(std::int64_t line) {
  return {QT_TRANSLATE_NOOP("convert", "line %1"), {std::to_string(line)}};
}

Message UnknownMouth(const Message& place, const std::string& name) {
  return {QT_TRANSLATE_NOOP("convert", "%2: the table of names has no mouth %1; it goes into the comment"),
          {Quoted(name)},
          {place}};
}

Reading SheetOf(Entries found, const Context& context, Messages notes) {
  Document document;
  document.lock = true;
  document.track_visible.fill(true);
  // A file that tells its rate counts its frames by it; Fit brings the sheet to another one.
  document.frame_rate_text = found.rate_text.empty() ? context.rate_text.value_or("") : found.rate_text;
  if (document.frame_rate_text.empty()) {
    document.frame_rate_text = kDefaultRate;
    notes.push_back({QT_TRANSLATE_NOOP("convert", "no frame rate is told; it is taken to be %1 (see --rate)"),
                     {kDefaultRate}});
  }
  document.wave_file_name = context.sound_name.empty() ? found.sound_name : context.sound_name;

  std::stable_sort(found.entries.begin(), found.entries.end(),
                   [](const Entry& a, const Entry& b) { return a.frame < b.frame; });
  const std::int64_t told = found.frames.value_or(FramesUpToLast(found));
  const Length length = LengthOf(RateOf(document), context, told);
  if (!length.failure.Empty()) return {std::nullopt, length.failure, {}};
  if (!context.sound_seconds && length.frames > kMostFramesUnheard) {
    return Refused(QT_TRANSLATE_NOOP("convert",
                                     "it would make a sheet of %1 frames; without a sound that "
                                     "bears it out (see --sound) at most %2 are believed"),
                   {std::to_string(length.frames), std::to_string(kMostFramesUnheard)});
  }
  MakeRows(document, std::max<std::int64_t>(length.frames, 0), context);
  PlaceEntries(found.entries, document, notes);
  return {std::move(document), {}, std::move(notes)};
}

void Fit(Document& document, const Context& context, Messages& notes) {
  if (!context.sound_name.empty()) document.wave_file_name = context.sound_name;
  const double before = RateOf(document);
  if (context.rate_text) document.frame_rate_text = *context.rate_text;
  const double rate = RateOf(document);
  const bool other_rate = rate != before && rate > 0 && before > 0;
  const double factor = other_rate ? rate / before : 1;
  const std::int64_t frames = NearestFrame(static_cast<double>(FramesOf(document)), factor);
  const Length length = LengthOf(rate, context, frames);
  if (!length.failure.Empty() || length.frames > kMostFrames) {
    // The rate or the sound is refused where it is read; a sheet at a wild multiple stays as it was.
    document.frame_rate_text = platform::NumberText(before);
    notes.push_back({QT_TRANSLATE_NOOP("convert", "the sheet can't be brought to that rate; it stays at %1"),
                     {document.frame_rate_text}});
    return;
  }
  if (!other_rate && length.frames == FramesOf(document)) return;

  std::vector<Entry> entries;
  for (std::int64_t frame = 0; frame < FramesOf(document); ++frame) {
    const std::string_view shape = ShapeOf(document, frame);
    if (shape.empty() && CommentOf(document, frame).empty()) continue;
    entries.push_back(
        {NearestFrame(static_cast<double>(frame), factor), std::string(shape), CommentOf(document, frame)});
  }
  const auto tracks = document.track_values;
  MakeRows(document, length.frames, context);
  PlaceEntries(entries, document, notes);
  if (!context.sound_seconds && !tracks.empty())
    document.track_values.resize(Index(NearestFrame(static_cast<double>(tracks.size()), factor)));
  for (std::size_t i = 0; i < document.track_values.size() && !tracks.empty(); ++i) {
    const auto from = static_cast<std::size_t>(static_cast<double>(i) / factor);
    if (from < tracks.size()) document.track_values[i] = tracks[from];
  }
}

void NoteWhatIsLeftOut(const Document& document, const Carries& carries, Messages& notes) {
  const bool has_comments = std::any_of(document.rows.begin(), document.rows.end(),
                                        [](const auto& row) { return !row[sheet::kCommentColumn].empty(); });
  if (!carries.comments && has_comments)
    notes.push_back({QT_TRANSLATE_NOOP("convert", "the comments are left out: the format has none"), {}});
  if (!carries.tracks && !IsDefault(document.track_values)) {
    notes.push_back(
        {QT_TRANSLATE_NOOP("convert", "the velocity tracks are left out: the format has none"), {}});
  }
  if (!carries.toggles && !TogglesAreDefault(document)) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the lock and the tracks' visibility are left out: the "
                                       "format has none"),
                     {}});
  }
  if (!carries.sound && !document.wave_file_name.empty()) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the name of the sound, %1, is left out: the format has "
                                       "no place for it"),
                     {Quoted(document.wave_file_name)}});
  }
  if (!carries.rate) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the frame rate, %1, is left out: the format has no place "
                                       "for it"),
                     {document.frame_rate_text}});
  }
}

std::vector<std::string> ForeignShapes(const Document& document, const ShapeTable& names, Naming naming,
                                       Messages& notes) {
  std::vector<std::string> foreign(document.rows.size());
  Lost unknown;
  std::string first_unknown;
  std::set<std::string> changed;
  for (std::int64_t frame = 0; frame < FramesOf(document); ++frame) {
    const std::string shape(ShapeOf(document, frame));
    if (shape.empty()) continue;
    const auto name = names.Foreign(shape, naming);
    if (!name) {
      if (unknown.count == 0) first_unknown = shape;
      unknown.Add(frame);
      continue;
    }
    foreign[Index(frame)] = *name;
    const std::string back = names.Shape(*name, naming).value_or("");
    if (back != shape) changed.insert(std::string(shape).append(" (").append(back).append(")"));
  }
  if (unknown.count > 0) {
    notes.push_back(
        {unknown.count == 1
             ? QT_TRANSLATE_NOOP("convert",
                                 "a mouth that the table of names doesn't know is left out, at "
                                 "frame %2: %3")
             : QT_TRANSLATE_NOOP("convert",
                                 "%1 mouths that the table of names doesn't know are left "
                                 "out, the first at frame %2: %3"),
         {std::to_string(unknown.count), std::to_string(unknown.first_frame), Quoted(first_unknown)}});
  }
  if (!changed.empty()) {
    std::string list;
    for (const std::string& shape : changed) {
      if (!list.empty()) list += ", ";
      list += shape;
    }
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "mouths that share a name in this format come back as the "
                                       "one in brackets: %1"),
                     {list}});
  }
  return foreign;
}

}  // namespace convert
