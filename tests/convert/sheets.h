// Sheets in one line, as the converter's tests tell them.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

#include "convert/document.h"

namespace support {

inline std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// "0:M 4:Closed 4\"word" and the number of frames: what stands in the sheet's cells.
inline std::string CellsOf(const convert::Document& sheet) {
  std::string cells;
  for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
    const std::string frame = std::to_string(i);
    EXPECT_EQ(sheet.rows[i][0], frame);
    if (!sheet.rows[i][1].empty()) cells += frame + ":" + sheet.rows[i][1] + " ";
    if (!sheet.rows[i][2].empty()) cells += frame + "\"" + sheet.rows[i][2] + "\" ";
  }
  return cells + "/" + std::to_string(sheet.rows.size());
}

/// A sheet at 24 frames a second from shapes such as "0:M 4:A", all else as a new sheet has it.
inline convert::Document SheetWith(std::size_t frames, const std::string& shapes) {
  convert::Document sheet;
  sheet.frame_rate_text = "24";
  sheet.lock = true;
  sheet.track_visible.fill(true);
  sheet.rows.resize(frames);
  for (std::size_t i = 0; i < frames; ++i) sheet.rows[i][0] = std::to_string(i);
  std::istringstream words(shapes);
  for (std::string word; words >> word;) sheet.rows[std::stoul(word)][1] = word.substr(word.find(':') + 1);
  return sheet;
}

}  // namespace support
