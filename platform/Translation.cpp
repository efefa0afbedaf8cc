#include "platform/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace platform {
namespace {

bool Install(const QString& name, const QString& folder, const QStringList& languages) {
  auto* translator = new QTranslator(QCoreApplication::instance());
  for (const QString& language : languages) {
    const QLocale locale(language);
    if (locale.language() == QLocale::English || locale.language() == QLocale::C) break;
    if (translator->load(locale, name, "_", folder)) return QCoreApplication::installTranslator(translator);
  }
  delete translator;
  return false;
}

}  // namespace

bool Translate(const QString& catalogue, const QStringList& languages) {
  return Install(catalogue, ":/translations", languages);
}

bool TranslateToolkit(const QStringList& languages) {
  return Install("qtbase", QLibraryInfo::path(QLibraryInfo::TranslationsPath), languages);
}

}  // namespace platform
