#include "platform/Settings.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace platform {

std::string SettingsFile(const std::string& application) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return folder.toStdString() + "/" + application + ".ini";
}

bool MayOpenSettings(const std::string& file) {
  const QFileInfo there(QString::fromStdString(file));
  return !there.exists() || there.isFile();
}

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const std::string file = SettingsFile(application);
  if (!MayOpenSettings(file)) return std::nullopt;
  const QSettings store(QString::fromStdString(file), QSettings::IniFormat);
  const QVariant value = store.value(QString::fromStdString(section + "/" + key));
  if (!value.isValid()) return std::nullopt;
  return value.toString().toStdString();
}

}  // namespace platform
