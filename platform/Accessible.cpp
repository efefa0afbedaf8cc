#include "platform/Accessible.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace platform {
namespace {

constexpr const char* kRoleProperty = "accessible_role";

QAccessibleInterface* MakeInterface(const QString& /*class_name*/, QObject* object) {
  const QVariant role = object->property(kRoleProperty);
  if (!role.isValid() || !object->isWidgetType()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) {
  widget->setProperty(kRoleProperty, role);
  // Whoever was asked already, as a widget is that was made with its parent, would go on being what it was.
  if (QAccessibleInterface* known = QAccessible::queryAccessibleInterface(widget))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

void InstallAccessibleRoles() { QAccessible::installFactory(&MakeInterface); }

}  // namespace platform
