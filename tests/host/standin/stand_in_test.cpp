#include "host/standin/stand_in.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/members.h"
#include "host/standin/frame_pixels.h"
#include "platform/memory.h"

namespace host {
namespace {

using Values = std::vector<Variant>;

Variant Call(StandIn& host, std::string_view member, const Values& values = {}) {
  return host.Invoke(member, values);
}

ByteTable Filled(std::size_t count, std::uint8_t value) {
  return OwnTable(std::vector<std::uint8_t>(count, value));
}

/// Frames of 3 by 2: planes of 4 by 3 bytes.
StandIn MakeSmall(int frames = 4) { return StandIn(Animation({3, 2}, frames)); }

std::string FailureOf(StandIn& host, std::string_view member, const Values& values = {}) {
  try {
    host.Invoke(member, values);
  } catch (const HostError& error) {
    EXPECT_EQ(error.Member(), member);
    return error.what();
  }
  return "";
}

TEST(Members, RefuseWhatDoesNotFit) {
  StandIn host = MakeSmall();
  FormObject* no_form = nullptr;
  const std::vector<std::tuple<std::string_view, Values, std::string>> cases = {
      {"vel_SetGbuffer", {Filled(12, 1)}, "letter case counts: vel_SetGBuffer"},
      {"Vel_Nonsense", {}, "no member of this name"},
      {"Vel_GotoFrame", {}, "takes 1 arguments, not 0"},
      {"vel_StatusClose", {1.0}, "takes 0 arguments, not 1"},
      {"vel_StatusOpen", {std::int32_t{3}}, "can't be an integer"},
      {"vel_StatusOpen", {std::int16_t{3}}, "can't be a short integer"},
      {"vel_StatusOpen", {3.5f}, "can't be a single"},
      {"vel_StatusOpen", {3.5}, "can't be a double"},
      {"vel_SetRbuffer", {std::string("x")}, "can't be a text"},
      {"vel_SetRbuffer", {Filled(11, 0)}, "a table of 11 bytes doesn't fit frames of 3 by 2"},
      {"Vel_SendFormObject", {no_form, std::int16_t{0}}, "can't be a window"},
      {"vel_CreateAnimAdv", {std::int32_t{0}, std::int16_t{2}}, "can't have 0 frames"},
      {"vel_CreateAnimAdv", {std::int32_t{2147483647}, std::int16_t{2}}, "can't have 2147483647 frames"},
  };
  for (const auto& [member, values, words] : cases)
    EXPECT_THAT(FailureOf(host, member, values), testing::HasSubstr(words)) << member;
}

TEST(StandIn, GoesToTheNearestFrameForAnyNumericType) {
  StandIn host = MakeSmall(4);
  const std::vector<std::pair<Variant, int>> cases = {
      {std::int32_t{2}, 2}, {std::int16_t{1}, 1},  {1.5f, 2}, {2.5f, 2},
      {std::int32_t{4}, 3}, {std::int32_t{-1}, 0}, {3e9f, 3}, {std::int32_t{-2147483647}, 0}};
  for (const auto& [frame, expected] : cases) {
    Call(host, "Vel_GotoFrame", {frame});
    EXPECT_EQ(host.CurrentFrame(), expected);
  }
}

TEST(StandIn, BuffersReachTheFrameOfTheLastAdvancedMove) {
  StandIn host = MakeSmall();
  Call(host, "Vel_GotoFrameAdv", {std::int32_t{2}, std::int16_t{3}});
  host.GotoFrame(0);  // a user at the stand-in's own window
  Call(host, "vel_SetGBuffer", {Filled(12, 77)});
  EXPECT_EQ(host.CurrentAnimation().Plane(2, Channel::Green).bytes[11], 77);
  EXPECT_EQ(host.CurrentAnimation().Plane(0, Channel::Green).bytes[11], 255);
  EXPECT_EQ(std::get<ByteTable>(Call(host, "vel_GetGbuffer")).bytes[0], 77);
  EXPECT_EQ(std::get<ByteTable>(Call(host, "vel_GetRbuffer")).bytes[0], 255);
}

TEST(StandIn, AnotherAnimationBeginsWithItsFirstFrame) {
  StandIn host = MakeSmall(4);
  Call(host, "Vel_GotoFrameAdv", {std::int32_t{2}, std::int16_t{3}});
  Call(host, "vel_SetRbuffer", {Filled(12, 7)});
  EXPECT_TRUE(host.Unsaved());
  Call(host, "vel_GetRbuffer");
  EXPECT_EQ(host.Counts().written + host.Counts().read, 2);
  Call(host, "vel_StatusOpen", {std::string("Retrieving frames...")});
  EXPECT_EQ(host.Counts().written + host.Counts().read, 0);
  Call(host, "vel_GetRbuffer");
  EXPECT_EQ(host.Counts().read, 1) << "the same frame for another run";
  host.TakeAnimation(Animation(host.CurrentAnimation().Size(), 3));
  EXPECT_FALSE(host.Unsaved());
  EXPECT_EQ(host.Counts().written + host.Counts().read, 0);
  Call(host, "vel_SetGBuffer", {Filled(12, 77)});
  EXPECT_EQ(host.CurrentAnimation().Plane(0, Channel::Green).bytes[0], 77);
}

TEST(StandIn, APlaneThatWasHandedOutKeepsItsBytes) {
  StandIn host = MakeSmall();
  std::vector<std::uint8_t> mine(12, 5);
  Call(host, "vel_SetRbuffer", {ByteTable{mine, nullptr}});
  mine.assign(12, 6);
  const auto before = std::get<ByteTable>(Call(host, "vel_GetRbuffer"));
  Call(host, "vel_SetRbuffer", {ByteTable{mine, nullptr}});
  Call(host, "vel_CreateAnimAdv", {std::int32_t{1}, std::int16_t{2}});
  EXPECT_THAT(before.bytes, testing::Each(5));
}

TEST(StandIn, AFrameThatIsDrawnLaterKeepsWhatWasWritten) {
  Animation animation({3, 2}, 1, [](int) {
    return Animation::Frame{Filled(12, 1), Filled(12, 2), Filled(12, 3)};
  });
  animation.SetPlane(0, Channel::Red, Filled(12, 9));
  EXPECT_EQ(animation.Plane(0, Channel::Blue).bytes[0], 3);
  EXPECT_EQ(animation.Plane(0, Channel::Red).bytes[0], 9);
}

TEST(StandIn, UnwrittenFramesShareOneWhitePlane) {
  StandIn host = MakeSmall(1);
  Call(host, "vel_CreateAnimAdv", {std::int32_t{200}, std::int16_t{2}});
  const ByteTable first = host.CurrentAnimation().Plane(0, Channel::Red);
  EXPECT_EQ(first.bytes.data(), host.CurrentAnimation().Plane(199, Channel::Blue).bytes.data());
  EXPECT_THAT(first.bytes, testing::Each(255));
}

TEST(StandIn, FramesThatTheMemoryCantHoldAreRefusedAndTheOldOnesStay) {
  StandIn host = MakeSmall();
  Call(host, "vel_SetRbuffer", {Filled(12, 1)});
  // Frames of 36 bytes, and 12 that come free.
  for (const auto& [free, frames] : {std::pair{59.0, 2}, {60.0, 3}, {60.0, 1'036'800}}) {
    platform::ReadFreeMemoryFrom([free = free] { return free; });
    const std::string failure = FailureOf(host, "vel_CreateAnimAdv", {std::int32_t{frames}, std::int16_t{2}});
    EXPECT_THAT(failure, testing::HasSubstr("not enough memory for " + std::to_string(frames) + " frames. "));
    EXPECT_EQ(host.CurrentAnimation().FrameCount(), 4);
  }
  Call(host, "vel_CreateAnimAdv", {std::int32_t{2}, std::int16_t{2}});
  EXPECT_EQ(host.CurrentAnimation().FrameCount(), 2);
  // What came free stays in the heap.
  platform::ReadFreeMemoryFrom([] { return 0.0; });
  EXPECT_EQ(FailureOf(host, "vel_SetRbuffer", {Filled(12, 1)}), "");
  platform::ReadFreeMemoryFrom(nullptr);
}

TEST(StandIn, FramesThatTheirFirstPlaneMakesTooLargeAreRefused) {
  StandIn host(Animation({320, 240}, 2));
  Call(host, "vel_BufferWidth");
  host.TakeAnimation(Animation({3, 2}, 2));
  platform::ReadFreeMemoryFrom([] { return 200.0; });
  Call(host, "vel_CreateAnimAdv", {std::int32_t{3}, std::int16_t{2}});
  EXPECT_THAT(FailureOf(host, "vel_SetRbuffer", {Filled(321 * 241, 9)}),
              testing::HasSubstr("0.7 MB would be needed, 0 MB are free"));
  EXPECT_EQ(FailureOf(host, "vel_SetRbuffer", {Filled(12, 9)}), "");
  platform::ReadFreeMemoryFrom(nullptr);
}

TEST(StandIn, ANewAnimationTakesTheSizeOfItsFirstPlane) {
  StandIn host(Animation({30, 10}, 2));
  EXPECT_EQ(AsLong(Call(host, "vel_BufferWidth"), "") * 100 + AsLong(Call(host, "vel_BufferHeight"), ""),
            3010);
  // By its proportions alone a plane of this length would be an upright one.
  host.TakeAnimation(Animation({60, 80}, 2));
  Call(host, "vel_CreateAnimAdv", {std::int32_t{3}, std::int16_t{2}});
  Call(host, "vel_GetRbuffer");
  Call(host, "vel_SetRbuffer", {Filled(31 * 11, 9)});
  EXPECT_EQ(host.CurrentAnimation().Size(), (FrameSize{30, 10}));
  EXPECT_EQ(host.CurrentAnimation().Plane(2, Channel::Red).bytes.size(), 31u * 11u);
  EXPECT_THAT(FailureOf(host, "vel_SetGBuffer", {Filled(61 * 81, 9)}), testing::HasSubstr("30 by 10"));
}

TEST(FrameSize, IsFoundFromThePlaneLength) {
  struct Case {
    std::size_t byte_count;
    std::vector<FrameSize> known;
    FrameSize similar;
    std::optional<FrameSize> expected;
  };
  const std::vector<Case> cases = {
      {641 * 481, {}, {320, 240}, FrameSize{640, 480}},
      {12, {{2, 3}, {3, 2}}, {30, 20}, FrameSize{2, 3}},  // read later stands first
      {12, {{5, 5}}, {30, 20}, FrameSize{3, 2}},
      {12, {}, {20, 30}, FrameSize{2, 3}},
      {36, {}, {0, 0}, FrameSize{5, 5}},  // the proportions count with the column and row more
      {26, {}, {3, 2}, FrameSize{12, 1}},
      {2 * 32, {}, {31, 1}, FrameSize{31, 1}},
      {2 * 34, {}, {33, 1}, FrameSize{16, 3}},
      {32768 * 2048, {}, {32767, 2047}, FrameSize{32767, 2047}},
      {32769 * 2731, {}, {32768, 2730}, FrameSize{30040, 2978}},  // 3 * 3 * 11 * 331 * 2731 bytes
      {13, {}, {3, 2}, std::nullopt},  // a prime number of bytes is a line, not a frame
      {2 * 33, {}, {3, 2}, FrameSize{10, 5}},
      {2 * 37, {}, {3, 2}, std::nullopt},  // 37 by 2 is too long
      {0, {}, {3, 2}, std::nullopt},
      {1, {}, {0, 0}, std::nullopt},
  };
  for (const Case& one : cases)
    EXPECT_EQ(SizeFromPlaneBytes(one.byte_count, one.known, one.similar), one.expected) << one.byte_count;
}

TEST(StandIn, KeepsTheRateAndTheStatusDisplay) {
  StandIn host = MakeSmall();
  EXPECT_EQ(AsText(Call(host, "Vel_GetFrameRate"), ""), "12");
  Call(host, "vel_SetFrameRate", {29.97});
  Call(host, "vel_SetFrameRate", {-3.0});
  EXPECT_EQ(AsText(Call(host, "Vel_GetFrameRate"), ""), "29.97");

  Call(host, "vel_Status", {50.0});
  EXPECT_FALSE(host.Status());
  Call(host, "vel_StatusOpen", {std::string("Saving...")});
  Call(host, "vel_Status", {30.5f});
  EXPECT_EQ(host.Status()->percent, 30.5);
  Call(host, "vel_StatusOpen", {std::string("Developing...")});
  EXPECT_EQ(host.Status()->text, "Developing...");
  EXPECT_EQ(host.Status()->percent, 0);
  for (const auto& [percent, shown] : {std::pair{140, 100}, {-5, 0}}) {
    Call(host, "vel_Status", {std::int32_t{percent}});
    EXPECT_EQ(host.Status()->percent, shown);
  }
  Call(host, "vel_StatusClose");
  EXPECT_FALSE(host.Status());
}

TEST(StandIn, WithoutFramesTheBuffersFail) {
  StandIn host{Animation()};
  Call(host, "Vel_GotoFrameAdv", {std::int32_t{5}, std::int16_t{3}});
  EXPECT_EQ(host.CurrentFrame(), 0);
  EXPECT_EQ(AsLong(Call(host, "vel_GetTotalFrames"), ""), 0);
  EXPECT_THAT(FailureOf(host, "vel_GetRbuffer"), testing::HasSubstr("no frames"));
  EXPECT_THAT(FailureOf(host, "vel_SetRbuffer", {Filled(1, 0)}), testing::HasSubstr("no frames"));
}

TEST(FramePixels, LeaveOutTheLastColumnAndRow) {
  Animation animation({2, 2}, 1);
  animation.SetPlane(0, Channel::Red, OwnTable({0x11, 0x12, 90, 0x21, 0x22, 91, 92, 93, 94}));
  animation.SetPlane(0, Channel::Green, OwnTable({3, 4, 90, 5, 6, 91, 92, 93, 94}));
  animation.SetPlane(0, Channel::Blue, OwnTable({7, 8, 90, 9, 10, 91, 92, 93, 94}));
  const std::uint32_t a = 0xFF110307, b = 0xFF120408, c = 0xFF210509, d = 0xFF22060A;
  EXPECT_THAT(FramePixels(animation, 0).pixels, testing::ElementsAre(a, b, c, d));
  EXPECT_THAT(SampleFramePixels(animation, 0, 4, 2).pixels, testing::ElementsAre(a, a, b, b, c, c, d, d));
  EXPECT_THAT(SampleFramePixels(animation, 0, 1, 1).pixels, testing::ElementsAre(d));
}

}  // namespace
}  // namespace host
