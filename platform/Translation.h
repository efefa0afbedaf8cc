// The user's language, for the programs whose texts are in a catalogue of translations.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace platform {

/// Installs the translation of that catalogue into the first of the languages that it has. English is what
/// the texts are written in: whatever stands behind it isn't wanted. True if there is one.
bool Translate(const QString& catalogue, const QStringList& languages = QLocale::system().uiLanguages());

/// When the toolkit's own texts, such as the buttons of message boxes, are the user's: where the exposure
/// sheet's windows stand, whose texts are given, only while a ToolkitInUsersLanguage lives.
enum class ToolkitSpeaks { UsersLanguage, UsersLanguageWhereAsked };
bool TranslateToolkit(ToolkitSpeaks when, const QStringList& languages = QLocale::system().uiLanguages());

class ToolkitInUsersLanguage {
 public:
  ToolkitInUsersLanguage();
  ~ToolkitInUsersLanguage();
  ToolkitInUsersLanguage(const ToolkitInUsersLanguage&) = delete;
  ToolkitInUsersLanguage& operator=(const ToolkitInUsersLanguage&) = delete;
};

}  // namespace platform
