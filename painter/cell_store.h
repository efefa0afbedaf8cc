// The tool's copy of the host's frames, and the new roll of film.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "painter/planes.h"

namespace painter {

/// The frames of the last retrieval, uncompressed: the sample of (x, y, cell) lies at
/// (cell * rows + y) * columns + x of its array. Knows the shape it was made for, which after a retrieval
/// that found too few frames is no longer that of the host's numbers.
struct CellStore {
  PlaneShape shape;
  std::int32_t count = 0;
  std::unique_ptr<std::uint8_t[]> CellR, CellG, CellB;
};

/// More than any desktop machine holds: such sizes are nonsense and are not even tried.
inline constexpr double kMostStoreBytes = 1e12;

/// Bytes of the three arrays together; as a double, since absurd sizes must not overflow.
double StoreBytes(const PlaneShape& shape, std::int32_t count);

/// Why there are no frames of a size that the host has given; empty if there can be.
std::string RefusalOfSize(const PlaneShape& shape);

/// A store of that shape, its samples not yet set to anything; nothing if it can't be had.
std::optional<CellStore> MakeCellStore(const PlaneShape& shape, std::int32_t count);

/// The planes of one cell, 0 to count - 1.
Planes CellPlanes(CellStore& store, std::int32_t cell);
ConstPlanes CellPlanes(const CellStore& store, std::int32_t cell);

/// What the last retrieval gave: the host's numbers as read then, and the store. Process-wide.
struct Retrieval {
  std::int32_t FrameWidth = 0;
  std::int32_t FrameHeight = 0;
  std::int32_t CellCount = 0;
  CellStore cells;
};
Retrieval& TheRetrieval();

inline PlaneShape FrameShape(const Retrieval& retrieval) {
  return {retrieval.FrameWidth, retrieval.FrameHeight};
}

/// The planes of a cell that is there and fits the host's numbers; nothing otherwise. The one way in which
/// painting and shooting reach the store, so that it is never read outside its arrays.
std::optional<ConstPlanes> FindCell(const Retrieval& retrieval, std::int32_t cell);

inline constexpr std::int16_t kBlankFrame = -1;
/// The highest cell that an entry of the roll can hold.
inline constexpr std::int32_t kLastUsableCell = INT16_MAX;

/// The new roll: one cell index per frame, kBlankFrame for a blank one. Process-wide.
struct FilmRoll {
  std::vector<std::int16_t> entries;

  std::int32_t RollLength() const { return static_cast<std::int32_t>(entries.size()); }
};
FilmRoll& TheRoll();

/// A roll of blank frames in place of the old one. False, the old roll kept, if there is no memory for it.
bool StartRoll(FilmRoll& roll, std::int32_t length);

/// What RollLength can count.
inline constexpr double kLongestRoll = INT32_MAX;

/// Bytes of a roll of that length; as a double, since any number can be asked for.
double RollBytes(double length);

/// The length that a text asks for, whatever it is: rounded to nearest, ties to even; 0 if it has no number.
double RollLengthFromText(const std::string& text);

}  // namespace painter
