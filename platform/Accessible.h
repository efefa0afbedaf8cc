// What assistive technology is told of widgets that the toolkit knows nothing about. For toolkit code only.
#pragma once

#include <QAccessible>

class QWidget;

namespace platform {

/// A widget that draws itself has no meaning to assistive technology until its role is set.
void SetAccessibleRole(QWidget* widget, QAccessible::Role role);

/// Makes a widget a list that tells of one item: the one that its keys stand on. What changes is spoken while
/// the widget has the keyboard, which a name or a description of the widget's own isn't.
void SetAccessibleItem(QWidget* widget, const QString& text);
/// The widget has got the keyboard, and the item is what is spoken.
void TellAccessibleItem(QWidget* widget);

/// Has a screen reader say what has changed where the keyboard stays: it takes a new name, text or
/// description of what it has told already for no news.
void Announce(QWidget* widget, const QString& text);

/// Makes the roles above known to the toolkit; once, before the first window.
void InstallAccessibleRoles();

}  // namespace platform
