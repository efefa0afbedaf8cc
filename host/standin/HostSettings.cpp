#include "host/standin/HostSettings.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Settings.h"

namespace host {
namespace {

constexpr const char* kApplication = "vellumark";
constexpr const char* kThemeSection = "Startup";
constexpr const char* kWallpaperKey = "Host/Wallpaper";
constexpr const char* kNoWallpaper = "none";
constexpr const char* kFirstWallpaper = "slate";
const QString kWallpaperResources = ":/assets/wallpapers/";

/// The store, or nothing where no file can be.
std::unique_ptr<QSettings> OpenStore() {
  const std::string file = platform::SettingsFile(kApplication);
  if (!platform::MayOpenSettings(file)) return nullptr;
  return std::make_unique<QSettings>(QString::fromStdString(file), QSettings::IniFormat);
}

bool Written(QSettings& store) {
  store.sync();
  return store.status() == QSettings::NoError;
}

QString WallpaperFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/vellumark/wallpapers";
}

}  // namespace

std::optional<Theme> CurrentTheme() {
  return ThemeInStore([](std::string_view key) {
    return platform::ReadSetting(kApplication, kThemeSection, std::string(key));
  });
}

bool StoreTheme(Theme theme) {
  const auto store = OpenStore();
  if (!store) return false;
  store->beginGroup(kThemeSection);
  for (const ThemeRow& row : ThemeRows()) {
    const QString key = QString::fromUtf8(row.key.data(), static_cast<qsizetype>(row.key.size()));
    if (const auto text = ThemeText(row, theme))
      store->setValue(key, QString::fromStdString(*text));
    else
      store->remove(key);
  }
  store->endGroup();
  return Written(*store);
}

QStringList WallpaperNames() {
  QStringList names;
  for (const QFileInfo& file : QDir(kWallpaperResources).entryInfoList({"*.png"}, QDir::Files, QDir::Name))
    names << file.completeBaseName();
  return names;
}

QString ChosenWallpaper() {
  const auto store = OpenStore();
  const QString chosen = store ? store->value(kWallpaperKey, kFirstWallpaper).toString() : kFirstWallpaper;
  return chosen == kNoWallpaper ? QString() : chosen;
}

bool StoreWallpaper(const QString& name_or_path) {
  const auto store = OpenStore();
  if (!store) return false;
  store->setValue(kWallpaperKey, name_or_path.isEmpty() ? QString(kNoWallpaper) : name_or_path);
  return Written(*store);
}

QString WallpaperFile(const QString& name_or_path) {
  if (!WallpaperNames().contains(name_or_path)) return name_or_path;
  QString target = WallpaperFolder() + "/" + name_or_path + ".png";
  QFile resource(kWallpaperResources + name_or_path + ".png");
  if (QFileInfo(target).size() == resource.size()) return target;
  QDir().mkpath(WallpaperFolder());
  QFile::remove(target);
  if (!resource.copy(target)) return {};
  // A copy of a resource is read-only; the next version must be able to replace it.
  QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
  return target;
}

}  // namespace host
