// Sheets in one line, as the converter's tests tell them, and sounds made by hand.
#pragma once

#include <cmath>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "convert/document.h"

namespace support {

inline std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Sounds of 16000 samples a second, told as "40. 12S 20V": hundredths of a second and which tone.
// The loudness and hertz of silence, a room's hum, a vowel, a hiss, a breath, and what is 35 decibels below
// the vowel.
inline const std::map<char, std::pair<double, double>> kTones = {
    {'_', {0, 0}},       {'.', {0.0005, 100}}, {'V', {0.5, 1000}},
    {'S', {0.07, 5500}}, {'B', {0.025, 2700}}, {'Q', {0.00889, 2000}}};

inline std::vector<double> Samples(const std::string& tones) {
  std::vector<double> samples;
  std::istringstream words(tones);
  for (auto [hops, name] = std::pair(0, '_'); words >> hops >> name;) {
    const auto [loudness, hertz] = kTones.at(name);
    for (int i = 0; i < 160 * hops; ++i)
      samples.push_back(loudness * std::sin(0.8 + i * hertz * std::numbers::pi / 8000));
  }
  return samples;
}

/// A file of 16 bits, the first byte the upper one.
inline void MakeSound(const std::string& path, const std::string& tones) {
  std::string bytes(".snd\0\0\0\x18\xff\xff\xff\xff\0\0\0\3\0\0\x3e\x80\0\0\0\1", 24);
  for (const double sample : Samples(tones)) {
    const auto value = std::lround(sample * 32767);
    bytes += {static_cast<char>(value >> 8), static_cast<char>(value & 0xff)};
  }
  std::ofstream(path, std::ios::binary) << bytes;
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
