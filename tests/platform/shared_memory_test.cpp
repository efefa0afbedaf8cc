#include "platform/shared_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;
constexpr std::array<std::uint8_t, 3> kBytes = {1, 2, 3};

/// How many descriptors and mappings of such memory this process holds.
std::array<int, 2> Held() {
  std::array<int, 2> held = {};
  std::error_code gone;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
    held[0] += std::filesystem::read_symlink(entry, gone).string().starts_with("/memfd:shared-bytes");
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) held[1] += line.find("/memfd:shared-bytes") != line.npos;
  return held;
}

TEST(SharedMemory, IsGivenBackWithItsOwnerAndWhenItsSizeChanges) {
  {
    SharedMemory own;
    own.Fill(kBytes);
    own.Fill({kBytes.data(), 2});
    EXPECT_THAT(Held(), ElementsAre(1, 1));
    MappedMemory others;
    const auto seen = others.View(own.Descriptor());
    EXPECT_THAT(Held(), ElementsAre(1, 2)) << "the descriptor stays the caller's";
  }
  EXPECT_THAT(Held(), ElementsAre(0, 0));
}

TEST(SharedMemory, KeepsItsPlaceWhileItsSizeStaysAndTellsOfTooMuch) {
  SharedMemory own;
  MappedMemory others;
  own.Fill(kBytes);
  const auto seen = others.View(own.Descriptor());
  own.Fill({{9, 8, 7}});
  EXPECT_THAT(seen.bytes, ElementsAre(9, 8, 7));
  EXPECT_THAT(
      [&] {
        own.Fill({kBytes.data(), SIZE_MAX});
      },
      ThrowsMessage<std::runtime_error>(
          HasSubstr("no shared memory for a plane of 18446744073709551615 bytes: Invalid")));
  EXPECT_EQ(own.Descriptor(), -1);
  own.Fill(kBytes);
  EXPECT_THAT(others.View(own.Descriptor()).bytes, ElementsAre(1, 2, 3));
  EXPECT_THAT([&] { others.View(-1); }, ThrowsMessage<std::runtime_error>(HasSubstr("can't be read")));
}

TEST(MappedMemory, KeepsTheEightPiecesThatWereSeenLast) {
  std::array<SharedMemory, 9> memory;
  for (auto& piece : memory) piece.Fill(kBytes);
  MappedMemory others;
  const auto see = [&](int piece) {
    return others.View(memory[static_cast<std::size_t>(piece)].Descriptor());
  };
  const std::weak_ptr<const void> first = see(0).owner, second = see(1).owner;
  for (const int piece : {2, 3, 4, 5, 6, 7, 0, 8}) see(piece);
  EXPECT_EQ(see(0).owner, first.lock());
  EXPECT_TRUE(second.expired());
}

}  // namespace
}  // namespace platform
