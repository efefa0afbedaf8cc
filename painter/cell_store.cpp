#include "painter/cell_store.h"

#include <cmath>
#include <new>

#include "platform/large_pages.h"
#include "platform/numbers.h"

namespace painter {
namespace {

/// All of the store is about to be written.
std::unique_ptr<std::uint8_t[]> Unset(std::size_t bytes) {
  std::unique_ptr<std::uint8_t[]> array(new (std::nothrow) std::uint8_t[bytes]);
  if (array) platform::AskForLargePages(array.get(), bytes);
  return array;
}

std::size_t CellStart(const CellStore& store, std::int32_t cell) {
  return static_cast<std::size_t>(cell) * store.shape.Samples();
}

}  // namespace

double StoreBytes(const PlaneShape& shape, std::int32_t count) {
  return 3.0 * (shape.right + 1.0) * (shape.bottom + 1.0) * count;
}

std::string RefusalOfSize(const PlaneShape& shape) {
  if (shape.right >= 0 && shape.bottom >= 0) return {};
  return "The host gives its frames a size of " + std::to_string(shape.right) + " by " +
         std::to_string(shape.bottom) + ". No frame can have that.";
}

std::optional<CellStore> MakeCellStore(const PlaneShape& shape, std::int32_t count) {
  if (shape.right < 0 || shape.bottom < 0 || count < 0) return std::nullopt;
  if (StoreBytes(shape, count) > kMostStoreBytes) return std::nullopt;
  const std::size_t bytes = shape.Samples() * static_cast<std::size_t>(count);
  CellStore store{shape, count, Unset(bytes), Unset(bytes), Unset(bytes)};
  if (!store.CellR || !store.CellG || !store.CellB) return std::nullopt;
  return store;
}

Planes CellPlanes(CellStore& store, std::int32_t cell) {
  const std::size_t start = CellStart(store, cell);
  return {store.shape, store.CellR.get() + start, store.CellG.get() + start, store.CellB.get() + start};
}

ConstPlanes CellPlanes(const CellStore& store, std::int32_t cell) {
  const std::size_t start = CellStart(store, cell);
  return {store.shape, store.CellR.get() + start, store.CellG.get() + start, store.CellB.get() + start};
}

Retrieval& TheRetrieval() {
  static Retrieval retrieval;
  return retrieval;
}

std::optional<ConstPlanes> FindCell(const Retrieval& retrieval, std::int32_t cell) {
  const CellStore& store = retrieval.cells;
  if (cell < 0 || cell >= store.count || cell >= retrieval.CellCount) return std::nullopt;
  if (store.shape != FrameShape(retrieval)) return std::nullopt;
  return CellPlanes(store, cell);
}

FilmRoll& TheRoll() {
  static FilmRoll roll;
  return roll;
}

bool StartRoll(FilmRoll& roll, std::int32_t length) {
  try {
    roll.entries = std::vector<std::int16_t>(static_cast<std::size_t>(length), kBlankFrame);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

double RollBytes(double length) { return length * sizeof(std::int16_t); }

// The default rounding mode is to nearest, ties to even; nothing in this program changes it.
double RollLengthFromText(const std::string& text) { return std::nearbyint(platform::NumberAtStart(text)); }

}  // namespace painter
