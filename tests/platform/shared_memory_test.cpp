#include "platform/shared_memory.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <string>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;
constexpr std::array<std::uint8_t, 3> kBytes = {1, 2, 3};

int Mappings() {
  int count = 0;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) count += line.find("/memfd:shared-bytes") != line.npos;
  return count;
}

TEST(SharedMemory, KeepsItsPlaceAsLongAsItsSizeAndIsGivenBack) {
  int descriptor = -1;
  {
    SharedMemory own;
    own.Fill(kBytes);
    descriptor = own.Descriptor();
    const auto seen = MappedMemory().View(descriptor);
    own.Fill({{9, 8, 7}});
    EXPECT_THAT(seen.bytes, ElementsAre(9, 8, 7));
    own.Fill({kBytes.data(), 2});
    EXPECT_EQ(own.Descriptor(), descriptor) << "the lowest that is free";
    EXPECT_EQ(MappedMemory().View(descriptor).bytes.size(), 2U);
    EXPECT_EQ(Mappings(), 2) << "one is still seen";
  }
  EXPECT_EQ(Mappings(), 0);
  EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}

TEST(SharedMemory, TellsOfTooMuch) {
  SharedMemory own;
  const std::span<const std::uint8_t> too_much(kBytes.data(), SIZE_MAX);
  EXPECT_THAT([&] { own.Fill(too_much); },
              ThrowsMessage<std::runtime_error>(
                  HasSubstr("no shared memory for a plane of 18446744073709551615 bytes: Invalid")));
  EXPECT_EQ(own.Descriptor(), -1);
  own.Fill(kBytes);
  EXPECT_THAT(MappedMemory().View(own.Descriptor()).bytes, ElementsAre(1, 2, 3));
  EXPECT_THAT([&] { MappedMemory().View(-1); },
              ThrowsMessage<std::runtime_error>(HasSubstr("can't be read")));
}

TEST(MappedMemory, KeepsTheEightPiecesThatWereSeenLast) {
  std::array<SharedMemory, 9> memory;
  for (auto& piece : memory) piece.Fill(kBytes);
  MappedMemory others;
  const auto see = [&](std::size_t piece) { return others.View(memory[piece].Descriptor()); };
  const std::weak_ptr<const void> first = see(0).owner, second = see(1).owner;
  for (const std::size_t piece : {2U, 3U, 4U, 5U, 6U, 7U, 0U, 8U}) see(piece);
  EXPECT_EQ(see(0).owner, first.lock());
  EXPECT_TRUE(second.expired());
}

}  // namespace
}  // namespace platform
