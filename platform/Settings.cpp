#include "platform/Settings.h"

#include <QSettings>
#include <QStandardPaths>

namespace platform {

std::string SettingsFile(const std::string& application) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return folder.toStdString() + "/" + application + ".ini";
}

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const QSettings store(QString::fromStdString(SettingsFile(application)), QSettings::IniFormat);
  const QVariant value = store.value(QString::fromStdString(section + "/" + key));
  if (!value.isValid()) return std::nullopt;
  return value.toString().toStdString();
}

}  // namespace platform
