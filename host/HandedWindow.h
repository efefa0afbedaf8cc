// A window as it is handed to the host.
#pragma once

#include <string>
#include <utility>

#include "host/variant.h"
#include "platform/Application.h"
#include "platform/Window.h"

namespace host {

/// Stands for a window toward the host. It refers to the window's instance, not to its present object: the
/// host may hold it for as long as it likes, while the user closes and reopens the window.
template <class T>
class HandedWindow : public FormObject {
 public:
  HandedWindow(std::string name, platform::WindowInstance<T>& instance)
      : name_(std::move(name)), instance_(instance) {}

  std::string FormName() const override { return name_; }
  void ShowForm() override { instance_.Hold().Show(); }
  /// A window that isn't loaded, or that has no such routine, is left alone: a change of colours brings
  /// nothing up. The wallpaper follows later, since the host, which is asked for it, still waits for this
  /// call to return.
  void RunPrefsCallback() override {
    if constexpr (requires(T & window) { window.PrefsCallback(window); }) {
      T* window = instance_.IfLoaded();
      if (window == nullptr) return;
      window->PrefsCallback(*window);
      if constexpr (requires { window->DressDialogs(); }) window->DressDialogs();
      platform::RunLater([this] {
        T* still = instance_.IfLoaded();
        if (still == nullptr) return;
        still->LoadWallpaper();
        platform::RepaintWindows();
      });
    }
  }

 private:
  std::string name_;
  platform::WindowInstance<T>& instance_;
};

}  // namespace host
