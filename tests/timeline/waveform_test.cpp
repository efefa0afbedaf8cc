#include "timeline/waveform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "canvas.h"
#include "timeline/highlight_box.h"

namespace timeline {
namespace {

using platform::Rgb;

audio::SampleStore Sound(int bits, std::int32_t samples, const std::function<int(int)>& value) {
  audio::SampleStore sound;
  sound.WaveFormat.wBitsPerSample = static_cast<std::int16_t>(bits);
  sound.WaveDataLength = bits == 16 ? samples * 2 : samples;
  if (bits == 8) sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(samples);
  if (bits == 16) sound.Samples16 = audio::SampleArray<std::int16_t>::Zeroed(samples * 2);
  for (std::int32_t i = 0; i <= samples; ++i) {
    if (bits == 8) sound.Samples8.Writable()[i] = static_cast<std::uint8_t>(value(i));
    if (bits == 16) sound.Samples16.Writable()[i] = static_cast<std::int16_t>(value(i));
  }
  return sound;
}

WaveScene Scene(int width, std::int32_t frames, std::int32_t current, audio::SampleStore sound = {}) {
  WaveScene scene;
  scene.width = width;
  scene.height = 64;
  scene.ground = Rgb(85, 85, 102);
  scene.wave = Rgb(0, 192, 0);
  scene.sound = std::move(sound);
  scene.frames = frames;
  scene.current_frame = current;
  return scene;
}

TEST(HighlightBox, BothEndsAreDrawnAndAFlatBoxIsNothing) {
  constexpr platform::Color kBare = Rgb(9, 9, 9);
  Canvas canvas(4, 4, kBare);
  HighlightBox(canvas.view, 1, 1, 2, 1, 200, 200, 200, 63);
  HighlightBox(canvas.view, 1, 3, 2, 1, 200, 200, 200, 63);
  EXPECT_EQ(canvas.At(1, 1), kBare);
  HighlightBox(canvas.view, 1, 1, 2, 2, 200, 200, 200, 45);
  // The sine of 45 degrees lights the second row: 100 + 0.707 x 100.
  const int lit[4][4] = {{9, 9, 9, 9}, {9, 100, 100, 9}, {9, 171, 171, 9}, {9, 9, 9, 9}};
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x)
      EXPECT_EQ(canvas.At(x, y), Rgb(lit[y][x], lit[y][x], lit[y][x])) << x << ',' << y;
}

TEST(Waveform, ColumnsAreThePixelsOfTheLineFromSampleToSample) {
  Numbers numbers(7);
  const std::function<int(int)> noise8 = [&](int) { return numbers.Below(256); };
  const std::function<int(int)> noise16 = [&](int) { return numbers.Below(65536) - 32768; };
  const std::function<int(int)> slow16 = [&](int i) { return static_cast<int>(30000 * std::sin(i * 0.01)); };
  struct Case {
    int bits, samples, width;
    const std::function<int(int)>& value;
  } const cases[] = {{8, 1000, 200, noise8},  {8, 100, 514, noise8}, {16, 5000, 300, noise16},
                     {16, 2500, 600, slow16}, {16, 3, 40, noise16},  {8, 1, 1, noise8}};
  for (const Case& c : cases) {
    const audio::SampleStore sound = Sound(c.bits, c.samples, c.value);
    WaveScene scene = Scene(c.width, 0, -1, sound);
    Canvas shown(c.width, 64), wanted(c.width, 64);
    DrawWave(shown.view, scene);

    LayGround(wanted.view, c.width, 64, scene.ground, 179);
    const float stride = static_cast<float>(static_cast<double>(c.samples) / c.width);
    double pen_x = 0, pen_y = 32;
    for (int i = 0; i <= c.width; ++i) {
      const auto index = std::lrint(i * static_cast<double>(stride));
      const double y =
          c.bits == 8 ? sound.Samples8.Data()[index] / 4.0 : sound.Samples16.Data()[index] / 512.0 + 32;
      platform::DrawLine(wanted.view, pen_x, pen_y, i, y, scene.wave);
      pen_x = i;
      pen_y = y;
    }
    ExpectSamePixels(shown, wanted, std::to_string(c.bits) + " bits, " + std::to_string(c.width));
  }
  // So long that the stride's rounding leads past the last sample.
  EXPECT_EQ(WaveColumns(Sound(8, 30'000'001, [](int) { return 128; }), 514, 1).back().top, 32);
}

/// Every other sample is loud: a canvas of one column for two samples doesn't see them, a dense one does.
TEST(Waveform, ADenseScreenHasAColumnForEachOfItsOwn) {
  const audio::SampleStore sound = Sound(8, 20, [](int i) { return i % 2 == 0 ? 128 : 40; });
  const WaveScene scene = Scene(10, 5, 1, sound);
  Canvas plain(10, 64), dense(20, 128, 0, 2.0);
  DrawWave(plain.view, scene);
  DrawWave(dense.view, scene);
  for (int x = 0; x < 10; ++x) EXPECT_NE(plain.At(x, 12), scene.wave) << x;
  for (int x = 11; x < 20; x += 2) {
    EXPECT_EQ(dense.At(x, 20), scene.wave) << x;  // 40 / 4 x 2
    EXPECT_NE(dense.At(x, 19), scene.wave) << x;
    EXPECT_EQ(dense.At(x - 1, 65), scene.wave) << "the line is two pixels high, " << x;
  }
  EXPECT_EQ(dense.At(9, 13), Rgb(32, 64, 128)) << "a tick is two pixels wide and 14 high";
  EXPECT_EQ(CurrentFrameBox(scene, 2.0), (platform::PixelBox{4, 0, 8, 128}));
  EXPECT_EQ(CurrentFrameBox(scene, 1.5), (platform::PixelBox{3, 0, 6, 96}));
}

TEST(Waveform, TicksStandAtTheFramesAtBothEdges) {
  Canvas canvas(514, 64);
  DrawWave(canvas.view, Scene(514, 30, -1));
  const auto tick = [&](int x, int y) { return canvas.At(x, y) == Rgb(32, 64, 128); };
  // 17.13 pixels apart: 0, 17.13, ..., 171.33, ..., 496.87; the 31st is just past the edge.
  for (const int x : {0, 17, 171, 497})
    EXPECT_TRUE(tick(x, 0) && tick(x, 6) && !tick(x, 7) && !tick(x, 57) && tick(x, 58) && tick(x, 63)) << x;
  int ticks = 0;
  for (int x = 0; x < 514; ++x) ticks += tick(x, 3);
  EXPECT_EQ(ticks, 30);
}

TEST(Waveform, TheCurrentFramesBoxIsOneFrameWideAndTurnsColoursRound) {
  struct Case {
    int width, frames, current, left, right;
  } const cases[] = {{514, 30, 3, 51, 69},           // 51.4 to 68.53
                     {514, 14400, 14399, 513, 514},  // far narrower than a pixel, still to be found
                     {514, 14400, 100, 4, 5},        // 3.57 to 3.61
                     {514, 30, 29, 497, 514},       {514, 30, 0, 0, 17}, {514, 1, 0, 0, 514},
                     {514, 30, 30, 514, 531},       {514, 0, 5, 0, 0}};
  for (const Case& c : cases) {
    Canvas shown(c.width, 64), below(c.width, 64);
    DrawWave(shown.view, Scene(c.width, c.frames, c.current));
    DrawWave(below.view, Scene(c.width, c.frames, -1));
    for (int x = 0; x < c.width; ++x)
      for (const int y : {0, 31, 63}) {
        const platform::Color under = below.At(x, y);
        const bool inside = x >= c.left && x < c.right;
        ASSERT_EQ(shown.At(x, y), inside ? 0xFFFFFF - under : under) << c.current << ": " << x << ',' << y;
      }
  }
}

TEST(Waveform, AKeptPictureIsTheWholePictureAfterEveryChange) {
  Numbers numbers(3);
  const auto noise = [&](int) { return numbers.Below(65536) - 32768; };
  const audio::SampleStore sounds[] = {Sound(8, 900, noise), Sound(8, 900, noise), Sound(16, 900, noise),
                                       Sound(16, 900, noise)};
  WavePicture picture;
  Canvas canvas(120, 64), screen(120, 64);
  WaveScene scene = Scene(120, 24, -1, sounds[0]);
  for (int step = 0; step < 300; ++step) {
    const int what = numbers.Below(12);
    if (what == 0) scene.frames = numbers.Below(40);
    if (what == 1) scene.sound = sounds[numbers.Below(4)];
    if (what == 2) scene.ground = Rgb(numbers.Below(256), 10, 10);
    if (what == 3) scene.width = 60 + numbers.Below(60);
    if (what == 4) canvas = Canvas(120, 64), picture.ForgetDrawn();
    if (what > 4) scene.current_frame = numbers.Below(42) - 1;
    picture.Capture(scene);
    if (numbers.Below(3) == 0) continue;  // drawing put off
    ShowBoxes(picture.DrawOn(canvas.view), canvas, screen);
    EXPECT_TRUE(picture.DrawOn(canvas.view).empty()) << "nothing has changed since";
    Canvas wanted(scene.width, 64);
    DrawWave(wanted.view, scene);
    ExpectSamePixels(screen, wanted, "step " + std::to_string(step));
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace timeline
