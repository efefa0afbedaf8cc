#include "timeline/velocity_drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "canvas.h"
#include "timeline/highlight_box.h"

namespace timeline {
namespace {

using platform::Rgb;

// Letters of 3 by 5 pixels, each with its own strength, 4 pixels apart; a blank covers nothing. An M hangs
// over to the left, a ^ is so tall that it reaches into what stands above.
platform::TextMask BlockLetters(const std::string& text) {
  platform::TextMask mask;
  mask.left = text.starts_with('M') ? -12 : 0;
  mask.top = text.starts_with('^') ? -45 : 1;
  mask.width = static_cast<int>(text.size()) * 4;
  mask.height = 5;
  mask.advance = mask.width;
  for (int y = 0; y < mask.height; ++y)
    for (int x = 0; x < mask.width; ++x) {
      const char letter = text[static_cast<std::size_t>(x / 4)];
      const bool covered = letter != ' ' && x % 4 < 3;
      mask.coverage.push_back(static_cast<std::uint8_t>(covered ? 255 - letter : 0));
    }
  return mask;
}

VelocityScene Scene(int width, std::int32_t frames) {
  VelocityScene scene;
  scene.width = scene.wave_width = width;
  scene.height = 64;
  scene.ground = Rgb(192, 192, 192);
  scene.frames = frames;
  scene.tracks = {{{Rgb(255, 255, 192), true},
                   {Rgb(255, 192, 192), true},
                   {Rgb(192, 255, 192), true},
                   {Rgb(192, 192, 255), true}}};
  scene.values = VelocityTable(frames);
  scene.rows = frames + 1;
  return scene;
}

// The whole picture by the plain rule, layer after layer, with the general line and text calls.
void DrawPlainly(const platform::PixelView& view, const VelocityScene& scene,
                 const std::map<int, std::string>& shapes) {
  LayGround(view, scene.width, scene.height, scene.ground, 63);
  if (scene.frames == 0) return;
  const double step =
      scene.frames == 1 ? 0.0 : static_cast<float>(static_cast<double>(scene.width) / (scene.frames - 1));
  for (int channel = 0; channel < 4; ++channel) {
    if (!scene.tracks[static_cast<std::size_t>(channel)].visible) continue;
    platform::DrawPen(view, 0, 32, 0, 32, 0);
    double x = 0, y = 32;
    for (int i = 0; i < std::min(scene.frames, scene.values.Frames()); ++i) {
      const double to_y = scene.values.At(i, channel);
      platform::DrawPen(view, x, y, step * i, to_y, scene.tracks[static_cast<std::size_t>(channel)].color);
      x = step * i;
      y = to_y;
    }
  }
  const double width = static_cast<double>(scene.wave_width) / scene.frames;
  const auto px = [&view](double design) { return static_cast<int>(std::lrint(design * view.scale)); };
  for (int i = 0; i < scene.rows; ++i) {
    const int x = px(i * width);
    platform::BlendMask(view, x, px(2), BlockLetters(" " + std::to_string(i)), Rgb(34, 34, 34));
    if (shapes.contains(i))
      platform::BlendMask(view, x + px(4), px(12), BlockLetters(shapes.at(i)), Rgb(34, 68, 136));
    if (i == scene.marked_frame && !scene.comment.empty()) {
      const int pen = view.scale < 1.75 ? 1 : 2;
      platform::FillBox(view, {x, px(2), x + pen, px(52) + pen}, Rgb(136, 68, 34));
      platform::BlendMask(view, x + px(4), px(52), BlockLetters(scene.comment), Rgb(136, 68, 34));
    }
  }
}

void ChangeAtRandom(VelocityScene& scene, VelocityPicture& picture, std::map<int, std::string>& shapes,
                    Numbers& numbers) {
  const char* const names[] = {"", "M ", "Closed ", "^Th"};
  const char* const comments[] = {"", "a", "M: a long comment that reaches far", "^a"};
  const int frame = numbers.Below(std::max(1, scene.values.Frames()));
  const int what = numbers.Below(16);
  if (what <= 1)
    scene.frames =
        numbers.Below(numbers.Below(2) == 0 ? 3 : 50);  // with 0: a new rate, and the tracks not yet
  if (what == 1) {
    scene.values = VelocityTable(scene.frames);
    scene.rows = scene.frames + numbers.Below(3);
    scene.marked_frame = std::min(scene.marked_frame, scene.rows - 1);
    picture.ClearShapes(scene.rows + 1);
    shapes.clear();
  }
  if (what == 2) scene.tracks[static_cast<std::size_t>(numbers.Below(4))].visible = numbers.Below(2) == 0;
  if (what == 2) scene.ground = Rgb(numbers.Below(256), 192, 192);
  if (what == 3) scene.width = 40 + numbers.Below(120);
  if (what == 4) scene.wave_width = 40 + numbers.Below(120);
  if (what == 4) scene.values.Clear(numbers.Below(60));
  if ((what == 11 || (what >= 5 && what <= 7)) && scene.values.Frames() > 0)
    scene.values.Set(frame, numbers.Below(4), static_cast<std::uint8_t>(numbers.Below(90)));
  if (what >= 8 && what <= 10) picture.CaptureShape(frame, shapes[frame] = names[numbers.Below(4)]);
  if (what == 11 && numbers.Below(2) == 0) picture.ClearShapes(scene.rows + 1), shapes.clear();
  for (int i = 0; what == 11 && i < 60; ++i) picture.CaptureShape(i, shapes[i] = names[numbers.Below(4)]);
  if (what >= 12) {
    scene.marked_frame = numbers.Below(scene.rows + 1) - 1;
    scene.comment = comments[numbers.Below(4)];
  }
  picture.Capture(scene);
}

void FollowChanges(double scale, int steps) {
  Numbers numbers(11);
  VelocityScene scene = Scene(150, 24);
  VelocityPicture picture(BlockLetters);
  std::map<int, std::string> shapes;
  const auto pixels = [scale](int design) { return static_cast<int>(std::ceil(design * scale)); };
  Canvas canvas(pixels(160), pixels(64), 0, scale), screen(pixels(160), pixels(64), 0, scale);
  for (int step = 0; step < steps; ++step) {
    ChangeAtRandom(scene, picture, shapes, numbers);
    if (numbers.Below(3) == 0) continue;  // drawing put off
    ShowBoxes(picture.DrawOn(canvas.view), canvas, screen);
    EXPECT_TRUE(picture.DrawOn(canvas.view).empty()) << "nothing has changed since";
    Canvas wanted(pixels(scene.width), pixels(64), 0, scale);
    DrawPlainly(wanted.view, scene, shapes);
    ExpectSamePixels(screen, wanted, "step " + std::to_string(step));
    if (testing::Test::HasFailure()) return;
  }
}

TEST(VelocityDrawing, AKeptPictureIsTheWholePictureAfterEveryChange) {
  FollowChanges(1, 1500);
  FollowChanges(1.5, 300);
  FollowChanges(2, 300);
}

TEST(VelocityDrawing, AnotherScaleHasLettersOfItsOwn) {
  std::string made;
  VelocityPicture picture([&made](const std::string& text) { return made += text, BlockLetters(text); });
  Canvas plain(150, 64), dense(300, 128, 0, 2);
  VelocityScene scene = Scene(150, 24);
  scene.marked_frame = 2;
  scene.comment = "c";
  picture.Capture(scene);
  picture.CaptureShape(3, "M");
  for (const Canvas* canvas : {&plain, &dense}) {
    made.clear();
    picture.DrawOn(canvas->view);
    for (const char letter : std::string("Mc0123456789")) EXPECT_NE(made.find(letter), made.npos) << letter;
  }
}

}  // namespace
}  // namespace timeline
