// The quiet dark look of the programs that stand beside the sheet, so that nobody takes their windows for the
// tool's.
#pragma once

#include <QIcon>
#include <QPainterPath>
#include <QString>

namespace platform {

/// The style sheet of a window and its dialogs. What stands behind it in one style sheet overrides it.
QString QuietStyle();

/// What is written and drawn on the dark ground.
inline const QColor kQuietInk(222, 225, 230);
/// A sign on a button, given within a square of side 24; faint where the button is disabled.
QIcon QuietSign(const QPainterPath& sign, const QColor& ink = kQuietInk);

/// Gives the process the style that all our programs draw with.
void UseProgramStyle();

/// The icon of a program from the pictures that are built in: "app", "host" or "recorder".
QIcon ProgramIcon(const char* program);

}  // namespace platform
