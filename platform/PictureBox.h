// A canvas: a control with a picture that persists.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Control.h"
#include "platform/numbers.h"
#include "platform/pixels.h"

namespace platform {

class Picture;

struct Font {
  std::string family;
  double points = 8.25;
};

/// The mask of a text in a font, its line's top edge at the position; on a screen of so many pixels to the
/// design's.
TextMask MaskOf(const Font& font, const std::string& text, double scale = 1);

/// A picture control. What is drawn lands in its persistent image, which has the screen's own pixels; places
/// and lengths are the design's, and at a scale of 1 both are the same. Refresh or the next paint event puts
/// the image on the screen. A change of size keeps what the image holds and fills the rest
/// with the background.
///
/// A routine that would repaint often can put the drawing off: it sets `Draw` once and calls DrawLater each
/// time; Draw then runs once, before the canvas is next shown, refreshed or read.
class PictureBox : public Control, public Container {
 public:
  PictureBox(Container& container, std::string name);
  ~PictureBox() override;
  /// Tells assistive technology that this is a container of controls and not a picture.
  void ActAsPanel();

  /// How many of the screen's pixels make up one of the design's, in each direction.
  double Scale() const;
  /// The inner size in design pixels.
  int ScaleWidth() const { return Width(); }
  int ScaleHeight() const { return Height(); }

  Color BackColor() const override;
  void SetBackColor(Color color) override;
  Color ForeColor() const override;
  void SetForeColor(Color color) override;
  void SetFont(const Font& font);
  const Font& TextFont() const;

  void Cls();
  void MovePen(double x, double y);
  /// At the pen, in the foreground colour.
  void Print(const std::string& text);
  /// Shows a picture unscaled at the top left corner, in place of all that was drawn; null empties the
  /// canvas.
  void SetPicture(std::shared_ptr<const Picture> picture);
  const std::shared_ptr<const Picture>& ShownPicture() const;

  /// Puts what was drawn on the screen at once, unless a RefreshPause lives.
  void Refresh() override;

  std::function<void()> Draw;
  void DrawLater();
  /// Runs a drawing that was put off.
  void DrawNow();
  /// The image for direct drawing, as it stands: a drawing put off is not run.
  PixelView Pixels();
  /// Says that pixels drawn directly have changed and are to be shown. The box is in the image's pixels.
  void Changed(const PixelBox& box);
  /// The colour at a point, after any drawing put off.
  Color Point(int x, int y);
  /// Upright hairlines that are seen over the picture, at columns in design pixels. They don't touch the
  /// image.
  void ShowRules(std::vector<int> columns, Color color);

  /// The Tab key and a press give it the keyboard. For assistive technology it is a list then.
  void TakeKeyboard();
  /// What the keys stand on, in words; spoken as it changes.
  void SetAccessibleItem(const std::string& text);
  /// The columns from left to right, in design pixels, that are framed while it has the keyboard. The frame
  /// is seen over the picture and doesn't touch the image.
  void FrameColumns(int left, int right);

  std::function<void()> Paint;
  /// The image has another size: the control was resized, or has come to a screen of another density.
  std::function<void()> Resize;
  /// After Resize, from the event loop, where it was the density.
  std::function<void()> Rescaled;
  /// Button (1 left, 2 right, 4 middle; all that are held, in a move), shift state (1 shift, 2 control, 4
  /// alt), x and y in the canvas's pixels.
  using MouseEvent = std::function<void(std::int16_t button, std::int16_t shift, float x, float y)>;
  MouseEvent MouseDown, MouseUp;
  /// Of moves that have queued up only the last is raised, before any press or release behind it.
  MouseEvent MouseMove;
  /// The wheel was turned by that many notches, above 0 away from the user or to the left; dense wheels send
  /// parts of one. Without a routine the wheel is the container's.
  std::function<void(float notches, std::int16_t shift, float x)> Wheel;

  QWidget* ContainerWidget() override { return Widget(); }
  Window& OwnerWindow() override { return Control::OwnerWindow(); }
  std::vector<Control*>& ControlList() override { return Control::ControlList(); }

 private:
  void FitSurface();
  void ShowPicture();

  struct Surface;
  friend class PictureWidget;
  std::unique_ptr<Surface> surface_;
  /// Routines queued for later hold this weakly.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace platform
