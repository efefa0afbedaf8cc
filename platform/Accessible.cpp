#include "platform/Accessible.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QVariant>
#include <QWidget>
#include <utility>

namespace platform {
namespace {

constexpr const char* kRoleProperty = "accessible_role";

constexpr const char* kItemProperty = "accessible_item";
constexpr const char* kLastItemProperty = "accessible_last_item";
constexpr const char* kNoticeProperty = "accessible_notice";
constexpr const char* kLastNoticeProperty = "accessible_last_notice";

/// A text in a widget. Another text is another item: who listens hears of it then.
class Item : public QAccessibleInterface {
 public:
  Item(QWidget* widget, QString text, QAccessible::Role role = QAccessible::ListItem)
      : widget_(widget), text_(std::move(text)), role_(role) {}
  bool isValid() const override { return !widget_.isNull(); }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(widget_.data());
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? text_ : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override { return widget_ ? parent()->rect() : QRect(); }
  QAccessible::Role role() const override { return role_; }
  QAccessible::State state() const override {
    QAccessible::State state;
    const bool takes_focus = role_ == QAccessible::ListItem;
    state.focusable = state.selectable = state.selected = takes_focus;
    state.focused = takes_focus && widget_ && widget_->hasFocus();
    state.invisible = !widget_ || !widget_->isVisible();
    return state;
  }

 private:
  QPointer<QWidget> widget_;
  QString text_;
  QAccessible::Role role_;
};

/// The toolkit knows items by numbers, which the widget keeps.
QAccessibleInterface* ItemOf(const QWidget& widget, const char* property = kItemProperty) {
  const QVariant id = widget.property(property);
  return id.isValid() ? QAccessible::accessibleInterface(id.value<QAccessible::Id>()) : nullptr;
}

/// The last one stays: who hears of the new one looks back at it, to tell only what is new, or is only now
/// about to read it.
void Keep(QWidget& widget, Item* item, const char* property, const char* last_property) {
  if (QAccessibleInterface* before = ItemOf(widget, last_property))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(before));
  widget.setProperty(last_property, widget.property(property));
  widget.setProperty(property, QVariant::fromValue(QAccessible::registerAccessibleInterface(item)));
}

class ItemHolder : public QAccessibleWidget {
 public:
  explicit ItemHolder(QWidget* widget) : QAccessibleWidget(widget, QAccessible::List) {}
  int childCount() const override { return child(0) != nullptr ? 1 : 0; }
  QAccessibleInterface* child(int index) const override { return index == 0 ? ItemOf(*widget()) : nullptr; }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child == this->child(0) ? 0 : -1;
  }
  QAccessibleInterface* focusChild() const override { return widget()->hasFocus() ? child(0) : nullptr; }
};

QAccessibleInterface* MakeInterface(const QString& /*class_name*/, QObject* object) {
  const QVariant role = object->property(kRoleProperty);
  if (!role.isValid() || !object->isWidgetType()) return nullptr;
  auto* widget = static_cast<QWidget*>(object);
  if (role.toInt() == QAccessible::List) return new ItemHolder(widget);
  return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) {
  widget->setProperty(kRoleProperty, role);
  // A widget whose role was asked for already, as happens when it is made with its parent, would keep the
  // role that it had then.
  if (QAccessibleInterface* known = QAccessible::queryAccessibleInterface(widget))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

void SetAccessibleItem(QWidget* widget, const QString& text) {
  QAccessibleInterface* known = ItemOf(*widget);
  if (known != nullptr && known->text(QAccessible::Name) == text) return;
  Keep(*widget, new Item(widget, text), kItemProperty, kLastItemProperty);
  if (widget->hasFocus()) TellAccessibleItem(widget);
}

void TellAccessibleItem(QWidget* widget) {
  QAccessibleInterface* item = ItemOf(*widget);
  if (item == nullptr) return;
  QAccessibleEvent event(item, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

void Announce(QWidget* widget, const QString& text) {
  // In the window: the widget may be one that knows of no children but its own cells.
  auto* notice = new Item(widget->window(), text, QAccessible::Notification);
  Keep(*widget, notice, kNoticeProperty, kLastNoticeProperty);
  QAccessibleEvent event(notice, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

void InstallAccessibleRoles() { QAccessible::installFactory(&MakeInterface); }

}  // namespace platform
