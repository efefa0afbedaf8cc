// What assistive technology is told of widgets that the toolkit knows nothing about. For toolkit code only.
#pragma once

#include <QAccessible>

class QWidget;

namespace platform {

/// A widget that draws itself counts as a filler until it is said what it is.
void SetAccessibleRole(QWidget* widget, QAccessible::Role role);

/// Makes the roles above known to the toolkit; once, before the first window.
void InstallAccessibleRoles();

}  // namespace platform
