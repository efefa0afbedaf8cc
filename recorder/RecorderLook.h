// How the recorder's window looks: what it adds to the quiet look, and the signs on its buttons, drawn by
// code.
#pragma once

#include <QIcon>
#include <QString>

namespace recorder {

enum class Sign { Record, Stop, Listen, Save };

QIcon SignIcon(Sign sign);

/// The style sheet for the window and its dialogs.
QString RecorderStyle();

}  // namespace recorder
