#include "platform/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>

namespace platform {
namespace {

/// How many ToolkitInUsersLanguage live.
int wishes = 0;

/// Installed once, before there is a window: to install and remove it around each dialog would have every
/// window take its texts anew.
class TranslatorWhereAsked final : public QTranslator {
 public:
  using QTranslator::QTranslator;
  QString translate(const char* context, const char* text, const char* meaning, int count) const override {
    return wishes > 0 ? QTranslator::translate(context, text, meaning, count) : QString();
  }
};

bool Install(std::unique_ptr<QTranslator> translator, const QString& name, const QString& folder,
             const QStringList& languages) {
  for (const QString& language : languages) {
    const QLocale locale(language);
    if (locale.language() == QLocale::English || locale.language() == QLocale::C) break;
    if (!translator->load(locale, name, "_", folder)) continue;
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
  }
  return false;
}

}  // namespace

bool Translate(const QString& catalogue, const QStringList& languages) {
  return Install(std::make_unique<QTranslator>(), catalogue, ":/translations", languages);
}

bool TranslateToolkit(ToolkitSpeaks when, const QStringList& languages) {
  std::unique_ptr<QTranslator> translator;
  if (when == ToolkitSpeaks::UsersLanguage)
    translator = std::make_unique<QTranslator>();
  else
    translator = std::make_unique<TranslatorWhereAsked>();
  return Install(std::move(translator), "qtbase", QLibraryInfo::path(QLibraryInfo::TranslationsPath),
                 languages);
}

ToolkitInUsersLanguage::ToolkitInUsersLanguage() { ++wishes; }
ToolkitInUsersLanguage::~ToolkitInUsersLanguage() { --wishes; }

}  // namespace platform
