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

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) { widget->setProperty(kRoleProperty, role); }

void InstallAccessibleRoles() { QAccessible::installFactory(&MakeInterface); }

}  // namespace platform
