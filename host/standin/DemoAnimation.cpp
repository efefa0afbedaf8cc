#include "host/standin/DemoAnimation.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <cmath>
#include <numbers>

#include "host/standin/PictureFiles.h"

namespace host {
namespace {

constexpr FrameSize kSize{320, 240};
constexpr int kFrames = 48;
constexpr int kFramesPerHop = 12;
constexpr double kGround = 196;
constexpr double kRadius = 40;

constexpr QColor kInk = QColor(52, 43, 61);
constexpr QColor kSkin = QColor(242, 140, 92);
constexpr QColor kBelly = QColor(250, 190, 140);

void FillEllipse(QPainter& painter, QPointF center, QPointF radii, QColor color, double opacity = 1) {
  color.setAlphaF(static_cast<float>(opacity));
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(center, radii.x(), radii.y());
}

/// A line with round ends.
void DrawStroke(QPainter& painter, QPointF from, QPointF to, double thickness, const QColor& color) {
  painter.setPen(QPen(color, thickness, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(from, to);
}

/// The painter's picture has the planes' size, which is a pixel more each way than the frame's.
QImage DrawMeadow() {
  QImage meadow(kSize.width + 1, kSize.height + 1, QImage::Format_RGB32);
  QPainter painter(&meadow);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, kSize.height);
  sky.setColorAt(0, QColor(122, 178, 214));
  sky.setColorAt(1, QColor(236, 236, 214));
  painter.fillRect(meadow.rect(), sky);
  FillEllipse(painter, {258, 52}, {30, 30}, QColor(255, 240, 190), 0.45);
  FillEllipse(painter, {258, 52}, {22, 22}, QColor(255, 246, 214));
  FillEllipse(painter, {70, 250}, {170, 100}, QColor(150, 190, 150));
  FillEllipse(painter, {280, 260}, {150, 96}, QColor(134, 178, 138));
  FillEllipse(painter, {160, 420}, {420, 236}, QColor(108, 158, 108));
  return meadow;
}

void DrawCloud(QPainter& painter, QPointF at) {
  const QColor white(250, 252, 252);
  FillEllipse(painter, at + QPointF(-22, 5), {20, 10}, white, 0.9);
  FillEllipse(painter, at + QPointF(4, -3), {24, 16}, white, 0.9);
  FillEllipse(painter, at + QPointF(28, 5), {20, 9}, white, 0.9);
}

/// Where the fellow is in a frame: the middle of his body, how far he is off the ground (0 to 1), how much
/// taller than wide he is stretched.
struct Pose {
  QPointF body;
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

void DrawMouth(QPainter& painter, QPointF at, int frame) {
  // How far the mouth opens, in pixels, as in a line of talk.
  static constexpr int openings[] = {2, 6, 11, 7, 3, 9, 12, 8, 4, 1, 1, 5};
  const double open = openings[frame / 2 % 12];
  const double wide = 15 - open / 3;
  FillEllipse(painter, at, {wide, open + 1}, kInk);
  if (open > 4)
    FillEllipse(painter, {at.x(), at.y() + open * 0.45}, {wide * 0.6, open * 0.45}, QColor(214, 84, 92));
}

void DrawFace(QPainter& painter, const Pose& pose, int frame) {
  const double side = std::sin(2 * std::numbers::pi * frame / kFrames) > 0 ? 5 : -5;
  const bool blinks = frame % 24 == 20 || frame % 24 == 21;
  for (const double eye : {-14.0, 14.0}) {
    const QPointF at{pose.body.x() + eye + side, pose.body.y() - 12 * pose.stretch};
    FillEllipse(painter, at, {9, blinks ? 1.5 : 11}, blinks ? kInk : QColor(255, 255, 255));
    if (!blinks) FillEllipse(painter, {at.x() + side * 0.6, at.y() + 1}, {4, 5}, kInk);
  }
  DrawMouth(painter, {pose.body.x() + side, pose.body.y() + 14 * pose.stretch}, frame);
}

void DrawFellow(QPainter& painter, const Pose& pose, int frame) {
  const double high = kRadius * pose.stretch, wide = kRadius / pose.stretch;
  const double lift = 22 * pose.height;
  FillEllipse(painter, {pose.body.x(), kGround + 5}, {wide * (1 - 0.4 * pose.height), 6}, kInk,
              0.28 - 0.16 * pose.height);
  for (const double foot : {-15.0, 15.0}) {
    const QPointF hip{pose.body.x() + foot, pose.body.y() + high * 0.8};
    DrawStroke(painter, hip, {hip.x() + foot * 0.3, pose.body.y() + high + 3 - lift * 0.2}, 9, kInk);
  }
  for (const double arm : {-1.0, 1.0})
    DrawStroke(painter, {pose.body.x() + arm * wide * 0.9, pose.body.y()},
               {pose.body.x() + arm * (wide + 18), pose.body.y() + 14 - 34 * pose.height}, 8, kInk);
  FillEllipse(painter, pose.body, {wide + 2, high + 2}, kInk);
  FillEllipse(painter, pose.body, {wide, high}, kSkin);
  FillEllipse(painter, {pose.body.x(), pose.body.y() + high * 0.4}, {wide * 0.62, high * 0.5}, kBelly);
  DrawFace(painter, pose, frame);
}

Animation::Frame DrawFrame(const QImage& meadow, int frame) {
  QImage picture = meadow;
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const double drift = 14 * std::sin(2 * std::numbers::pi * frame / kFrames);
  DrawCloud(painter, {70 + drift, 46});
  DrawCloud(painter, {176 - drift * 0.6, 78});
  DrawFellow(painter, PoseAt(frame), frame);
  painter.end();
  return PlanesOf(picture, kSize);
}

}  // namespace

Animation DrawDemoAnimation() {
  return {kSize, kFrames, [](int frame) {
            static const QImage meadow = DrawMeadow();
            return DrawFrame(meadow, frame);
          }};
}

}  // namespace host
