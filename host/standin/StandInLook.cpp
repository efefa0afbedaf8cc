#include "host/standin/StandInLook.h"

#include <QPainterPath>
#include <QWidget>

#include "platform/QuietLook.h"

namespace host {
namespace {

/// A triangle or bar within a square of side 24.
void AddTriangle(QPainterPath& path, double left, double right) {
  path.moveTo(left, 5);
  path.lineTo(right, 12);
  path.lineTo(left, 19);
  path.closeSubpath();
}
void AddBar(QPainterPath& path, double left) { path.addRect(left, 5, 2.5, 14); }

QPainterPath Shape(Transport which) {
  QPainterPath path;
  switch (which) {
    case Transport::First:
      AddTriangle(path, 18.5, 8.5);
      AddBar(path, 5);
      break;
    case Transport::Back:
      AddTriangle(path, 16, 6);
      break;
    case Transport::Play:
      AddTriangle(path, 7, 19);
      break;
    case Transport::Pause:
      path.addRect(7, 5, 3.5, 14);
      path.addRect(13.5, 5, 3.5, 14);
      break;
    case Transport::Forward:
      AddTriangle(path, 8, 18);
      break;
    case Transport::Last:
      AddTriangle(path, 5.5, 15.5);
      AddBar(path, 16.5);
      break;
  }
  return path;
}

}  // namespace

QIcon TransportIcon(Transport which) { return platform::QuietSign(Shape(which)); }

void DressStandIn(QWidget& window) {
  window.setStyleSheet(platform::QuietStyle() + R"(
    #FrameLabel { font-weight: 600; }
    #FactsLabel { color: #a3a8b1; }
    #StatusRow { background: #1f2226; border-top: 1px solid #15171a; }
    #StatusLabel { color: #a3a8b1; }
    QToolButton { background: transparent; border: 1px solid transparent; border-radius: 4px; padding: 4px; }
    QToolButton:hover { background: #363b43; }
    QToolButton:pressed { background: #17191c; }
    QToolButton:focus { border-color: #ecb25c; }
  )");
}

}  // namespace host
