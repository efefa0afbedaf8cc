// The formats of text, each with its reader and writer. Texts are UTF-8.
//
// A reader takes any bytes: what isn't of its format is refused with the line or the place. A held mouth
// stays an empty row; a mouth that equals the one before is written only if the sheet has it twice.
#pragma once

#include <string_view>

#include "convert/document.h"
#include "convert/shape_table.h"

namespace convert {

/// The exposure sheet (.exp). Refused where the tool would open it only in part.
Reading ReadExposureSheet(std::string_view text);
Writing WriteExposureSheet(const Document& document);

/// Switch data (.dat): "MohoSwitch1", then "FRAME NAME" with one blank between, frames from 1. Frame 0, which
/// stands before the start, counts as the first. The length isn't told.
Reading ReadSwitchData(std::string_view text, const Context& context);
/// Begins with a mouth at the first frame, which readers need: rest, if the sheet has none there.
Writing WriteSwitchData(const Document& document, const ShapeTable& names);

/// Rhubarb Lip Sync's tab-separated cues (.tsv): seconds, tab, letter. A last line with X or A is the end of
/// the sound, as that program writes it.
Reading ReadCueTable(std::string_view text, const Context& context);
/// Begins with X at 0 if the sheet has no mouth on its first frame; ends with X at the end.
Writing WriteCueTable(const Document& document, const ShapeTable& names);

/// Papagayo's project (.pgo): text, tabs for depth, frames from 0. Of several voices the first is taken. A
/// word holds its last mouth to its end; behind the end, where no other word goes on, the mouth is at rest.
Reading ReadPapagayo(std::string_view text, const Context& context);
/// Comments become words. A word begins where its comment stands and the word before goes on until the first
/// mouth of the next, so that a held mouth is held.
Writing WritePapagayo(const Document& document, const ShapeTable& names);

/// Comma-separated values (RFC 4180; .csv): a heading, then for each frame its number, shape, comment and
/// four tracks. Read with commas, semicolons or tabs, as spreadsheets write them, the columns found by their
/// headings; without headings in the order above.
Reading ReadCsv(std::string_view text, const Context& context);
Writing WriteCsv(const Document& document);

}  // namespace convert
