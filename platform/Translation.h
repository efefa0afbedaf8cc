// The user's language, for the programs whose texts are in a catalogue of translations.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace platform {

/// Installs the translation of that catalogue into the first of the languages that it has. English is what
/// the texts are written in: whatever stands behind it isn't wanted. True if there is one.
bool Translate(const QString& catalogue, const QStringList& languages = QLocale::system().uiLanguages());

/// Likewise for the toolkit's own texts, such as the buttons of message boxes. Not for a process in which the
/// exposure sheet's windows stand: their texts are given.
bool TranslateToolkit(const QStringList& languages = QLocale::system().uiLanguages());

}  // namespace platform
