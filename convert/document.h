// The sheet between two formats: how readers put one together and what writers ask of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/message.h"
#include "convert/shape_table.h"
#include "sheet/sheet_file.h"

namespace convert {

/// A sheet is what its own file holds. Shapes stand in it without the trailing blank of the tool's list.
using Document = sheet::SheetFileContent;

/// Frames that a sheet can have.
inline constexpr std::int64_t kMostFrames = 9'999'999;
/// Frames of a sheet whose length only a frame number in the file tells: eleven hours at 24 frames a second.
/// A greater number is taken for a fault in the file, since each frame of the sheet takes memory.
inline constexpr std::int64_t kMostFramesUnheard = 1'000'000;
inline constexpr const char* kDefaultRate = "24";

/// What the command line gives to a reader.
struct Context {
  const ShapeTable* names = nullptr;
  /// The rate as typed; none if the file is to tell it.
  std::optional<std::string> rate_text;
  /// The sound that --sound names: what goes into the sheet, and its length.
  std::string sound_name;
  std::optional<double> sound_seconds;

  /// Frames a second for files that count in seconds: the rate given or the default.
  double Rate() const;
};

/// A file as a sheet, or why it is none. The notes tell what the sheet doesn't hold of it.
struct Reading {
  std::optional<Document> sheet;
  Message failure;
  Messages notes;
};
Reading Refused(const char* text, std::vector<std::string> arguments = {}, Messages inner = {});

/// A sheet as the bytes of a file, or why it can't be one. The notes tell what the file doesn't hold.
struct Writing {
  std::optional<std::string> bytes;
  Message failure;
  Messages notes;
};

/// Something that begins at a frame; what is empty is as before.
struct Entry {
  std::int64_t frame = 0;
  std::string shape;
  std::string comment;
};

/// What a reader has found. Entries in any order.
struct Entries {
  std::vector<Entry> entries;
  /// The length, where the file tells it.
  std::optional<std::int64_t> frames;
  std::string rate_text;
  std::string sound_name;
};

/// Puts a sheet together. The length is the sound's, else the file's own, else up to the last entry. Of two
/// shapes on one frame the later one stays, and is noted, as are entries behind the end.
Reading SheetOf(Entries entries, const Context& context, Messages notes = {});

/// A mouth that the table of names doesn't know: the row stays as before, the name goes into its comment.
/// "line 7", to go into other messages.
Message LineNumbered(std::int64_t line);

/// place: "line 7".
Message UnknownMouth(const Message& place, const std::string& name);

/// Brings a whole sheet to the rate and the sound of the command line. Another rate moves every entry to the
/// frame nearest its time.
void Fit(Document& document, const Context& context, Messages& notes);

double RateOf(const Document& document);
/// Frames below the header.
std::int64_t FramesOf(const Document& document);
/// The row's shape without a trailing blank.
std::string_view ShapeOf(const Document& document, std::int64_t frame);
const std::string& CommentOf(const Document& document, std::int64_t frame);

/// What a format has room for.
struct Carries {
  bool rate = false, sound = false, comments = false, tracks = false, toggles = false;
};
/// One note on what of this sheet the format leaves out; none if nothing is lost.
void NoteWhatIsLeftOut(const Document& document, const Carries& carries, Messages& notes);

/// The foreign names of the sheet's shapes, frame by frame; empty where the shape is as before. Shapes that
/// the table doesn't know are left out and noted; so are names that don't come back as they were.
std::vector<std::string> ForeignShapes(const Document& document, const ShapeTable& names, Naming naming,
                                       Messages& notes);

}  // namespace convert
