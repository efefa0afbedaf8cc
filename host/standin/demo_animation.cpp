#include "host/standin/demo_animation.h"

#include <cmath>
#include <numbers>

#include "host/standin/soft_canvas.h"

namespace host {
namespace {

using platform::Rgb;

constexpr FrameSize kSize{320, 240};
constexpr int kFrames = 48;
constexpr int kFramesPerHop = 12;
constexpr double kGround = 196;
constexpr double kRadius = 40;

constexpr platform::Color kInk = Rgb(52, 43, 61);
constexpr platform::Color kSkin = Rgb(242, 140, 92);
constexpr platform::Color kBelly = Rgb(250, 190, 140);

SoftCanvas DrawMeadow() {
  SoftCanvas canvas(kSize);
  canvas.FillGradient(Rgb(122, 178, 214), Rgb(236, 236, 214));
  canvas.FillEllipse({258, 52}, {30, 30}, Rgb(255, 240, 190), 0.45);
  canvas.FillEllipse({258, 52}, {22, 22}, Rgb(255, 246, 214));
  canvas.FillEllipse({70, 250}, {170, 100}, Rgb(150, 190, 150));
  canvas.FillEllipse({280, 260}, {150, 96}, Rgb(134, 178, 138));
  canvas.FillEllipse({160, 420}, {420, 236}, Rgb(108, 158, 108));
  return canvas;
}

void DrawCloud(SoftCanvas& canvas, Spot at) {
  const auto white = Rgb(250, 252, 252);
  canvas.FillEllipse({at.x - 22, at.y + 5}, {20, 10}, white, 0.9);
  canvas.FillEllipse({at.x + 4, at.y - 3}, {24, 16}, white, 0.9);
  canvas.FillEllipse({at.x + 28, at.y + 5}, {20, 9}, white, 0.9);
}

/// Where the fellow is in a frame: the middle of his body, how far he is off the ground (0 to 1), how much
/// taller than wide he is stretched.
struct Pose {
  Spot body;
  double height = 0;
  double stretch = 1;
};

Pose PoseAt(int frame) {
  const double hop = static_cast<double>(frame % kFramesPerHop) / kFramesPerHop;
  Pose pose;
  pose.height = 4 * hop * (1 - hop);
  pose.stretch = frame % kFramesPerHop == 0 ? 0.78 : 1 + 0.16 * (1 - pose.height);
  // There and back along the meadow, so that the film closes.
  const double swing = std::cos(2 * std::numbers::pi * frame / kFrames);
  pose.body = {160 - 84 * swing, kGround - kRadius * pose.stretch - 84 * pose.height};
  return pose;
}

void DrawMouth(SoftCanvas& canvas, Spot at, int frame) {
  // How far the mouth opens, in pixels, as in a line of talk.
  static constexpr int openings[] = {2, 6, 11, 7, 3, 9, 12, 8, 4, 1, 1, 5};
  const double open = openings[frame / 2 % 12];
  const double wide = 15 - open / 3;
  canvas.FillEllipse(at, {wide, open + 1}, kInk);
  if (open > 4) canvas.FillEllipse({at.x, at.y + open * 0.45}, {wide * 0.6, open * 0.45}, Rgb(214, 84, 92));
}

void DrawFace(SoftCanvas& canvas, const Pose& pose, int frame) {
  const double side = std::sin(2 * std::numbers::pi * frame / kFrames) > 0 ? 5 : -5;
  const bool blinks = frame % 24 == 20 || frame % 24 == 21;
  for (const double eye : {-14.0, 14.0}) {
    const Spot at{pose.body.x + eye + side, pose.body.y - 12 * pose.stretch};
    canvas.FillEllipse(at, {9, blinks ? 1.5 : 11}, blinks ? kInk : Rgb(255, 255, 255));
    if (!blinks) canvas.FillEllipse({at.x + side * 0.6, at.y + 1}, {4, 5}, kInk);
  }
  DrawMouth(canvas, {pose.body.x + side, pose.body.y + 14 * pose.stretch}, frame);
}

void DrawFellow(SoftCanvas& canvas, const Pose& pose, int frame) {
  const double high = kRadius * pose.stretch, wide = kRadius / pose.stretch;
  const double lift = 22 * pose.height;
  canvas.FillEllipse({pose.body.x, kGround + 5}, {wide * (1 - 0.4 * pose.height), 6}, kInk,
                     0.28 - 0.16 * pose.height);
  for (const double foot : {-15.0, 15.0}) {
    const Spot hip{pose.body.x + foot, pose.body.y + high * 0.8};
    canvas.DrawStroke(hip, {hip.x + foot * 0.3, pose.body.y + high + 3 - lift * 0.2}, 9, kInk);
  }
  for (const double arm : {-1.0, 1.0})
    canvas.DrawStroke({pose.body.x + arm * wide * 0.9, pose.body.y},
                      {pose.body.x + arm * (wide + 18), pose.body.y + 14 - 34 * pose.height}, 8, kInk);
  canvas.FillEllipse(pose.body, {wide + 2, high + 2}, kInk);
  canvas.FillEllipse(pose.body, {wide, high}, kSkin);
  canvas.FillEllipse({pose.body.x, pose.body.y + high * 0.4}, {wide * 0.62, high * 0.5}, kBelly);
  DrawFace(canvas, pose, frame);
}

Animation::Frame DrawFrame(const SoftCanvas& meadow, int frame) {
  SoftCanvas canvas = meadow;
  const double drift = 14 * std::sin(2 * std::numbers::pi * frame / kFrames);
  DrawCloud(canvas, {70 + drift, 46});
  DrawCloud(canvas, {176 - drift * 0.6, 78});
  DrawFellow(canvas, PoseAt(frame), frame);
  return canvas.Planes();
}

}  // namespace

Animation DrawDemoAnimation() {
  return {kSize, kFrames, [](int frame) {
            static const SoftCanvas meadow = DrawMeadow();
            return DrawFrame(meadow, frame);
          }};
}

}  // namespace host
