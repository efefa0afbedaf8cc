#include "platform/Control.h"
#include "platform/Accessible.h"

#include <QPointer>
#include <QWidget>
#include <utility>

namespace platform {

Control::Control(Container& container, ControlKind kind, std::string name, QWidget* widget)
    : owner_(container.OwnerWindow()),
      list_(container.ControlList()),
      kind_(kind),
      name_(std::move(name)),
      widget_(widget) {
  widget_->setParent(container.ContainerWidget());
  widget_->setObjectName(QString::fromStdString(name_));
  list_.push_back(this);
}

Control::~Control() {
  std::erase(list_, this);
  delete widget_;
}

int Control::Left() const { return widget_->x(); }
int Control::Top() const { return widget_->y(); }
int Control::Width() const { return widget_->width(); }
int Control::Height() const { return widget_->height(); }

void Control::Move(int left, int top, int width, int height) {
  if (width < 0 || height < 0) throw ControlError(name_ + " can't take a size below 0");
  widget_->setGeometry(left, top, width, height);
}

void Control::MoveTwips(int left, int top, int width, int height) {
  Move(PixelsFromTwips(left), PixelsFromTwips(top), PixelsFromTwips(width), PixelsFromTwips(height));
}

void Control::SetLeft(int pixels) { widget_->move(pixels, Top()); }
void Control::SetTop(int pixels) { widget_->move(Left(), pixels); }
void Control::SetWidth(int pixels) { Move(Left(), Top(), pixels, Height()); }
void Control::SetHeight(int pixels) { Move(Left(), Top(), Width(), pixels); }

bool Control::Visible() const { return !widget_->isHidden(); }
void Control::SetVisible(bool visible) { widget_->setVisible(visible); }
void Control::BringToFront() { widget_->raise(); }

void Control::SetFocus() { widget_->setFocus(); }
bool Control::HasFocus() const { return widget_->hasFocus(); }

void Control::SetToolTip(const std::string& text, const std::string& key) {
  widget_->setToolTip(QString::fromStdString(key.empty() ? text : text + " (" + key + ")"));
  if (widget_->accessibleName().isEmpty()) SetAccessibleName(text);
}

void Control::SetAccessibleName(const std::string& text) {
  widget_->setAccessibleName(QString::fromStdString(text));
}

void Control::Announce(const std::string& text) { platform::Announce(widget_, QString::fromStdString(text)); }

void Control::SetAccessibleDescription(const std::string& text) {
  widget_->setAccessibleDescription(QString::fromStdString(text));
}

void Control::Lacks(const char* property) const {
  throw ControlError(name_ + " has no property " + property);
}

Color Control::BackColor() const { Lacks("BackColor"); }
void Control::SetBackColor(Color /*color*/) { Lacks("BackColor"); }
Color Control::ForeColor() const { Lacks("ForeColor"); }
void Control::SetForeColor(Color /*color*/) { Lacks("ForeColor"); }

void Control::Refresh() { widget_->repaint(); }

}  // namespace platform
