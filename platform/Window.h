// Windows that load on the first touch.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Control.h"
#include "platform/numbers.h"

class QMenuBar;

namespace platform {

class Picture;
class WindowWidget;

/// A key that no control had a use for.
struct KeyPress {
  enum class Key { Other, Space, Escape, Up, Down, Left, Right, Home, End, Undo };
  Key key = Key::Other;
  /// What the key writes, in UTF-8; empty for one that writes nothing.
  std::string text;
  bool control = false, alt = false, shift = false;
  /// The key is being held.
  bool repeated = false;
};

/// A window object. Making one doesn't load it: Load runs Form_Load once, on the first touch through its
/// WindowInstance or when it is shown. It counts toward the life of the process from Load to the end of
/// Unload.
class Window : public Container {
 public:
  enum class Border { Sizable, FixedToolWindow, SizableToolWindow, FixedDialog };
  enum class Start { SystemDefault, CenterOwner, CenterScreen };
  struct Design {
    std::string name;
    std::string caption;
    Border border = Border::Sizable;
    Start start = Start::SystemDefault;
    /// The client area in pixels, without menu bar and border.
    int client_width = 0, client_height = 0;
    /// Resource names of the icon's sizes.
    std::vector<std::string> icons;
  };

  explicit Window(const Design& design);
  ~Window() override;

  void Load();
  bool Loaded() const { return loaded_; }
  /// Loads and shows.
  void Show();
  /// The same, beside its owner and above it, not modal.
  void ShowOwnedBy(Window& owner);
  void Hide();
  bool Visible() const;
  /// Asks Form_Unload; false if that refuses. Then the window is gone: its object lives until the routine
  /// that is running has ended, and the next touch makes a new one. Does nothing to a window that isn't
  /// loaded.
  bool Unload();

  const std::string& Name() const { return name_; }
  std::string Caption() const;
  void SetCaption(const std::string& caption);
  /// The client area in pixels.
  int ScaleWidth() const;
  int ScaleHeight() const;
  void ResizeClient(int width, int height);
  /// The least and largest client size that the desktop lets a user drag to; 0 leaves a limit open.
  void LimitClient(int least_width, int least_height, int most_width, int most_height);
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color);
  /// Covers the client area with a picture at its own size, tile by tile from the left top; those at the
  /// right and lower edge overhang. Within Form_Paint only. Costs what is newly seen, whatever the tile's
  /// size.
  void TilePicture(const Picture& picture);
  /// Asks for a new Form_Paint.
  void Repaint();
  /// Whether black letters would be lost on what the client area showed last, picture or colour. The menu bar
  /// and the status bar darken with it; no setting has a colour for them.
  bool GroundIsDark() const { return ground_is_dark_; }
  /// Takes the object out of its WindowInstance and deletes it, without asking.
  void Forget();

  /// In the order in which they were made.
  const std::vector<Control*>& Controls() const { return controls_; }
  /// The order in which the Tab key visits them; it is the order of making if this isn't called.
  void TabThrough(const std::vector<const Control*>& order);

  /// Takes files that are dropped on the window: the routine is given the path of the first one, after the
  /// drop has ended. Nothing can be dropped while a dialog waits for its answer.
  void TakeDroppedFiles(std::function<void(const std::string& path)> take);

  QWidget* ContainerWidget() override;
  Window& OwnerWindow() override { return *this; }
  std::vector<Control*>& ControlList() override { return controls_; }
  QMenuBar* MenuBar();
  QWidget* TopWidget();

 protected:
  virtual void Form_Load() {}
  virtual void Form_Paint() {}
  virtual void Form_Resize() {}
  virtual void Form_Unload(Flag& /*cancel*/) {}
  virtual void Form_Terminate() {}
  /// Whether the window has a use for the key.
  virtual bool Form_KeyDown(const KeyPress& /*press*/) { return false; }
  /// The close box. A window that lives on hidden overrides this.
  virtual void CloseBox() { Unload(); }

 private:
  template <class T>
  friend class WindowInstance;

  void RaiseResize();
  void RaisePaint();
  void NoteGround(bool dark);

  std::string name_;
  Design design_;
  std::unique_ptr<WindowWidget> widget_;
  std::vector<Control*> controls_;
  Color back_color_ = Rgb(143, 149, 158);
  bool loaded_ = false;
  bool unloading_ = false;
  bool ground_is_dark_ = false;
  /// The tile that the paint that is running has laid, if any.
  const Picture* laid_tile_ = nullptr;
  /// Takes the object out of its WindowInstance; set by that.
  std::function<std::unique_ptr<Window>()> release_;
};

/// Asks every window for a new Form_Paint: some show the picture that another one holds, as long as that one
/// is loaded.
void RepaintWindows();

/// The one instance of a window: made on first use, loaded on first touch, made anew after it was unloaded.
template <class T>
class WindowInstance {
 public:
  /// The object, without loading it.
  T& Hold() {
    if (!window_) {
      window_ = std::make_unique<T>();
      static_cast<Window&>(*window_).release_ = [this] {
        return std::unique_ptr<Window>(std::move(window_));
      };
    }
    return *window_;
  }
  /// A touch of a control or property loads the window.
  T* operator->() {
    Hold().Load();
    return window_.get();
  }
  T& operator*() { return *operator->(); }
  /// The window if it is loaded, else null.
  T* IfLoaded() { return window_ && window_->Loaded() ? window_.get() : nullptr; }
  /// Unload of a window that isn't loaded does nothing.
  bool Unload() { return !IfLoaded() || window_->Unload(); }

 private:
  std::unique_ptr<T> window_;
};

}  // namespace platform
