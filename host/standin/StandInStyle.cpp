#include "host/standin/StandInStyle.h"

#include <QWidget>

#include "platform/QuietLook.h"

namespace host {

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
