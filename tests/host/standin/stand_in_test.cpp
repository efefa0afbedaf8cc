#include "host/standin/stand_in.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

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

template <typename Routine>
std::string FailureOf(Routine routine) {
  try {
    routine();
  } catch (const HostError& error) {
    return error.what();
  }
  return "";
}
std::string FailureOf(StandIn& host, std::string_view member, const Values& values = {}) {
  return FailureOf([&] { host.Invoke(member, values); });
}

TEST(Members, RefuseWhatDoesNotFit) {
  StandIn host = MakeSmall();
  FormObject* no_form = nullptr;
  const std::vector<std::tuple<std::string_view, Values, std::string>> cases = {
      {"vel_SetGbuffer", {}, "there is no member of this name (letter case counts: vel_SetGBuffer)"},
      {"Vel_Nonsense", {}, "there is no member of this name"},
      {"Vel_GotoFrame", {}, "it takes 1 arguments, not 0"},
      {"vel_StatusClose", {1.0}, "it takes 0 arguments, not 1"},
      {"vel_StatusOpen", {std::int32_t{3}}, "argument 1 can't be an integer"},
      {"Vel_GotoFrameAdv", {std::int16_t{3}, 3.5}, "argument 2 can't be a double"},
      {"vel_SetRbuffer", {std::string("x")}, "argument 1 can't be a text"},
      {"vel_SetRbuffer", {Filled(11, 0)}, "a table of 11 bytes doesn't fit frames of 3 by 2"},
      {"vel_SetGBuffer", {Filled(13, 0)}, "a table of 13 bytes doesn't fit frames of 3 by 2"},
      {"vel_SetBBuffer", {Filled(13, 0)}, "a table of 13 bytes doesn't fit frames of 3 by 2"},
      {"Vel_SendFormObject", {no_form, std::int16_t{0}}, "argument 1 can't be a window"},
      {"Vel_SendFormObject", {Filled(1, 0), std::int16_t{0}}, "argument 1 can't be a byte table"},
      {"vel_CreateAnimAdv", {std::int32_t{0}, std::int16_t{2}}, "an animation can't have 0 frames"},
      {"vel_CreateAnimAdv",
       {std::int32_t{1'036'801}, std::int16_t{2}},
       "an animation can't have 1036801 frames"},
  };
  for (const auto& [member, values, words] : cases)
    EXPECT_EQ(FailureOf(host, member, values),
              "The host's member " + std::string(member) + " failed: " + words);
}

TEST(Members, GiveWhatWasExpectedOrAreNamed) {
  const std::string gave = "The host's member m failed: it gave ";
  EXPECT_EQ(FailureOf([] { AsLong(std::string("3"), "m"); }), gave + "a text where a number was expected");
  EXPECT_EQ(FailureOf([] { AsText(3.5, "m"); }), gave + "a double where a text was expected");
  EXPECT_EQ(FailureOf([] { AsTable({}, 1, "m"); }), gave + "nothing where a byte table was expected");
  EXPECT_EQ(AsLong(2.6, "m") * 10 + AsLong(-1.6f, "m") + AsLong(std::int16_t{-3}, "m"), 25);
  // Only memory that is shared may be longer than the table.
  for (const auto& [size, shared, fits] :
       {std::tuple{12, false, true}, {13, false, false}, {11, true, false}, {13, true, true}}) {
    ByteTable table = Filled(static_cast<std::size_t>(size), 7);
    table.shared = shared;
    EXPECT_EQ(FailureOf([&] { EXPECT_EQ(AsTable(table, 12, "m").size(), 12u); }),
              fits ? "" : gave + "a table of " + std::to_string(size) + " bytes where 12 were expected");
  }
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

TEST(StandIn, BuffersReachTheFrameOfTheLastAdvancedMoveAndInAnotherAnimationTheFirst) {
  StandIn host = MakeSmall();
  Call(host, "Vel_GotoFrameAdv", {std::int32_t{9}, std::int16_t{3}});  // of four
  host.GotoFrame(0);                                                   // a user at the stand-in's own window
  Call(host, "vel_SetRbuffer", {Filled(12, 7)});
  EXPECT_TRUE(host.Unsaved());
  EXPECT_EQ(std::get<ByteTable>(Call(host, "vel_GetRbuffer")).bytes[0], 7);
  EXPECT_EQ(host.CurrentAnimation().Plane(3, Channel::Red).bytes[0], 7);
  EXPECT_EQ(host.CurrentAnimation().Plane(0, Channel::Red).bytes[0], 255);
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
  const std::array setters = {"vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer"};
  const std::array getters = {"vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer"};
  std::vector<ByteTable> handed_out;
  for (std::uint8_t value = 0; value < 6; ++value) {
    const std::vector<std::uint8_t> lent(12, value);
    Call(host, setters[value / 2], {ByteTable{lent, nullptr}});
    handed_out.push_back(std::get<ByteTable>(Call(host, getters[value / 2])));
  }
  Call(host, "vel_CreateAnimAdv", {std::int32_t{1}, std::int16_t{2}});
  for (std::size_t i = 0; i < 6; ++i) EXPECT_THAT(handed_out[i].bytes, testing::Each(i)) << i;
  EXPECT_THAT(host.CurrentAnimation().Plane(0, Channel::Red).bytes, testing::Each(255));
}

TEST(StandIn, AFrameThatIsDrawnLaterKeepsWhatWasWritten) {
  Animation animation({3, 2}, 2, [](int frame) {
    const auto red = static_cast<std::uint8_t>(10 * frame);
    return Animation::Frame{Filled(12, red), Filled(12, red + 1), Filled(12, red + 2)};
  });
  animation.SetPlane(1, Channel::Red, Filled(12, 9));
  std::vector<int> seen;
  for (const int frame : {0, 1})
    for (const Channel channel : {Channel::Blue, Channel::Green, Channel::Red})
      seen.push_back(animation.Plane(frame, channel).bytes[11]);
  EXPECT_THAT(seen, testing::ElementsAre(2, 1, 0, 12, 11, 9));
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
  host.BufferWidth();
  host.TakeAnimation(Animation({3, 2}, 2));
  platform::ReadFreeMemoryFrom([] { return 200.0; });
  Call(host, "vel_CreateAnimAdv", {std::int32_t{3}, std::int16_t{2}});
  EXPECT_THAT(FailureOf(host, "vel_SetRbuffer", {Filled(321 * 241, 9)}),
              testing::HasSubstr("0.7 MB would be needed, 0 MB are free"));
  EXPECT_EQ(FailureOf(host, "vel_SetRbuffer", {Filled(12, 9)}), "");
  platform::ReadFreeMemoryFrom(nullptr);
}

TEST(StandIn, ANewAnimationTakesTheSizeOfItsFirstPlane) {
  for (const auto& [read, now, fresh, shared, bytes, expected] : {
           // By its proportions alone a plane of this length would be an upright one.
           std::tuple{FrameSize{30, 10}, FrameSize{60, 80}, true, false, std::size_t{31 * 11},
                      FrameSize{30, 10}},
           // Shared memory may be longer than the plane, so no size is guessed from it.
           {{5, 5}, {3, 2}, false, true, 36, {3, 2}},
           {{5, 5}, {3, 2}, true, true, 36, {5, 5}},
           {{5, 5}, {3, 2}, true, true, 40, {3, 2}},
       })
    for (const char* asked : {"vel_BufferWidth", "vel_BufferHeight"}) {
      StandIn host(Animation(read, 2));
      EXPECT_EQ(AsLong(Call(host, asked), ""), asked[10] == 'W' ? read.width : read.height);
      host.TakeAnimation(Animation(now, 2));
      if (fresh) Call(host, "vel_CreateAnimAdv", {std::int32_t{2}, std::int16_t{2}});
      Call(host, "vel_GetRbuffer");
      ByteTable given = Filled(bytes, 7);
      given.shared = shared;
      Call(host, "vel_SetGBuffer", {given});
      EXPECT_EQ(host.CurrentAnimation().Size(), expected) << bytes;
      for (const Channel channel : {Channel::Red, Channel::Green})
        EXPECT_EQ(host.CurrentAnimation().Plane(0, channel).bytes.size(), expected.PlaneBytes()) << bytes;
      EXPECT_NE(FailureOf(host, "vel_SetRbuffer", {Filled(77, 7)}), "") << "the size is settled now";
    }
}

/// Writes down what the stand-in tells, a word each.
struct LoggingView : StandInView, FormObject {
  void FrameMoved() override { log += "moved "; }
  void FrameKept() override { log += "kept "; }
  void FramePainted() override { log += "painted "; }
  void AnimationChanged() override { log += "animation "; }
  void RateChanged() override { log += "rate "; }
  void StatusChanged() override { log += "status "; }
  void FormSent(FormObject&) override { log += "sent "; }
  std::string FormName() const override { return "Form1"; }
  void ShowForm() override { log += "shown "; }
  void RunPrefsCallback() override {}
  std::string log;
};

TEST(StandIn, TellsItsViewOfEachChangeOnce) {
  StandIn host = MakeSmall();
  LoggingView view;
  const auto told = [&](std::string_view member, const Values& values = {}) {
    Call(host, member, values);
    return std::exchange(view.log, "");
  };
  const Values form = {static_cast<FormObject*>(&view), std::int16_t{0}};
  EXPECT_EQ(told("Vel_SendFormObject", form), "shown ");
  host.SetView(&view);
  EXPECT_EQ(told("Vel_SendFormObject", form), "shown sent ");
  EXPECT_THAT(host.Forms(), testing::ElementsAre(&view));
  host.DropForm(view);
  EXPECT_THAT(host.Forms(), testing::IsEmpty());
  EXPECT_EQ(told("Vel_GotoFrame", {2.0}), "moved ");
  EXPECT_EQ(told("Vel_GotoFrame", {2.0}), "kept ");
  EXPECT_EQ(told("vel_SetRbuffer", {Filled(12, 1)}), "") << "frame 0 isn't the one in view";
  EXPECT_EQ(told("Vel_GotoFrameAdv", {std::int32_t{1}, std::int16_t{3}}), "moved ");
  EXPECT_EQ(told("vel_SetRbuffer", {Filled(12, 1)}), "painted ");
  EXPECT_EQ(host.RateText(), "12");
  for (const double none : {0.0, -3.0, std::nan("")}) EXPECT_EQ(told("vel_SetFrameRate", {none}), "");
  for (const auto& [rate, text] : {std::pair{29.97, "29.97"}, {0.5, "0.5"}}) {
    EXPECT_EQ(told("vel_SetFrameRate", {rate}), "rate ");
    EXPECT_EQ(AsText(Call(host, "Vel_GetFrameRate"), ""), text);
  }
  EXPECT_EQ(told("vel_Status", {1.0}), "");
  EXPECT_EQ(told("vel_StatusOpen", {std::string("Saving...")}), "status ");
  EXPECT_EQ(told("vel_Status", {std::nan("")}), "");
  for (const auto& [given, percent] : {std::pair{30.5, 30.5}, {140, 100}, {-5, 0}}) {
    EXPECT_EQ(told("vel_Status", {given}), "status ");
    EXPECT_EQ(host.Status()->percent, percent);
  }
  Call(host, "vel_Status", {30.5f});
  EXPECT_EQ(told("vel_StatusOpen", {std::string("Developing...")}), "status status ");
  EXPECT_EQ(host.Status()->text + std::to_string(host.Status()->percent), "Developing...0.000000");
  EXPECT_EQ(told("vel_StatusClose"), "status ");
  EXPECT_FALSE(host.Status());
  EXPECT_EQ(told("vel_CreateAnimAdv", {std::int32_t{2}, std::int16_t{2}}), "animation ");
  EXPECT_EQ(told("vel_SetRbuffer", {Filled(25, 1)}), "animation painted ");
}

TEST(FrameSize, IsFoundFromThePlaneLength) {
  using Sizes = std::vector<FrameSize>;
  const std::vector<std::tuple<std::size_t, Sizes, FrameSize, std::optional<FrameSize>>> cases = {
      {641 * 481, {}, {320, 240}, FrameSize{640, 480}},
      {12, {{2, 3}, {3, 2}}, {30, 20}, FrameSize{2, 3}},  // read later stands first
      {12, {}, {20, 30}, FrameSize{2, 3}},
      {36, {}, {0, 0}, FrameSize{5, 5}},  // the proportions count with the column and row more
      {2 * 32, {}, {31, 1}, FrameSize{31, 1}},
      {2 * 34, {}, {33, 1}, FrameSize{16, 3}},
      {32768 * 2048, {}, {32767, 2047}, FrameSize{32767, 2047}},
      {32769 * 2731, {}, {32768, 2730}, FrameSize{30040, 2978}},  // 3 * 3 * 11 * 331 * 2731 bytes
      {13, {}, {3, 2}, std::nullopt},      // a prime number of bytes is a line, not a frame
      {2 * 37, {}, {3, 2}, std::nullopt},  // 37 by 2 is too long
      {0, {}, {3, 2}, std::nullopt},
  };
  for (const auto& [bytes, known, similar, expected] : cases)
    EXPECT_EQ(SizeFromPlaneBytes(bytes, known, similar), expected) << bytes;
}

TEST(StandIn, WithoutFramesTheBuffersFail) {
  StandIn host{Animation()};
  Call(host, "Vel_GotoFrameAdv", {std::int32_t{5}, std::int16_t{3}});
  EXPECT_EQ(host.CurrentFrame(), 0);
  for (const char* member : {"vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer", "vel_SetRbuffer"})
    EXPECT_EQ(FailureOf(host, member, member[4] == 'S' ? Values{Filled(1, 0)} : Values{}),
              "The host's member " + std::string(member) + " failed: there are no frames");
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
