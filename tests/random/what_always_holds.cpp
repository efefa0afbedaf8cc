#include "random/what_always_holds.h"

#include <QApplication>
#include <QBackingStore>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "painter/thumbnails.h"
#include "platform/PictureBox.h"
#include "platform/pixels.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "timeline/MouthSets.h"
#include "timeline/mouth_names.h"
#include "timeline/velocity_drawing.h"
#include "timeline/velocity_values.h"
#include "timeline/waveform.h"
#include "timeline/zoom.h"

namespace random_events {
namespace {

using platform::PixelView;

/// What stands on the screen of a window, but for scroll bars: the toolkit leaves traces of their shadows.
QImage Screen(const QWidget& window) {
  QBackingStore* const store = window.backingStore();
  if (store == nullptr) return {};
  QImage screen = static_cast<const QImage*>(store->paintDevice())->copy();
  QPainter painter(&screen);
  for (const QScrollBar* bar : window.findChildren<QScrollBar*>())
    if (bar->isVisible()) painter.fillRect(QRect(bar->mapTo(&window, QPoint(0, 0)), bar->size()), Qt::black);
  return screen;
}

bool LookAlike(QRgb a, QRgb b) {
  constexpr int kAlmost = 8;
  return std::abs(qRed(a) - qRed(b)) <= kAlmost && std::abs(qGreen(a) - qGreen(b)) <= kAlmost &&
         std::abs(qBlue(a) - qBlue(b)) <= kAlmost;
}

/// Around all in which two screens differ. The toolkit draws the edges of a list's choice a little
/// differently each time, and on a fractional scale a smooth picture.
QRect Difference(const QImage& before, const QImage& after) {
  if (before.size() != after.size()) return after.rect();
  constexpr int kMostOfToolkits = 10;
  int pixels = 0;
  QRect around;
  for (int y = 0; y < after.height(); ++y) {
    const auto* const old_row = reinterpret_cast<const QRgb*>(before.constScanLine(y));
    const auto* const row = reinterpret_cast<const QRgb*>(after.constScanLine(y));
    if (std::equal(row, row + after.width(), old_row)) continue;
    for (int x = 0; x < after.width(); ++x)
      if (!LookAlike(old_row[x], row[x])) around |= QRect(x, y, 1, 1), ++pixels;
  }
  return pixels > kMostOfToolkits ? around : QRect();
}

std::string Place(QPoint place) { return std::to_string(place.x()) + ", " + std::to_string(place.y()); }

void Check(bool holds, const std::string& what) {
  if (!holds) Fail(what);
}

/// A canvas's picture as it would be if it were drawn now; nothing of the old one is left.
template <typename Draw>
void CheckPicture(platform::PictureBox& canvas, const Draw& draw) {
  canvas.DrawNow();
  const PixelView shown = canvas.Pixels();
  std::vector<platform::Pixel> pixels(
      static_cast<std::size_t>(shown.width) * static_cast<std::size_t>(shown.height), 0xFFFF00FF);
  const PixelView fresh =
      platform::MakeView(pixels.data(), shown.width, shown.height, shown.width, shown.scale);
  draw(fresh);
  for (int y = 0; y < shown.height; ++y)
    for (int x = 0; x < shown.width; ++x)
      Check(((shown.Row(y)[x] ^ fresh.Row(y)[x]) & 0xFFFFFF) == 0,
            canvas.Name() + " isn't what a new drawing gives at " + Place({x, y}));
}

void CheckWave(Form1& form) {
  timeline::WaveScene scene;
  scene.width = form.Picture2.ScaleWidth();
  scene.height = form.Picture2.ScaleHeight();
  scene.ground = form.List1.BackColor();
  scene.wave = platform::Rgb(0, 192, 0);
  scene.sound = audio::LoadedSound();
  scene.frames = sheet::TrackFramesNow();
  scene.current_frame = form.Grid1.Row() - 1;
  CheckPicture(form.Picture2, [&](const PixelView& view) { timeline::DrawWave(view, scene); });
}

void CheckTracks(Form1& form) {
  const platform::PictureBox& canvas = form.Picture4;
  timeline::VelocityScene scene;
  scene.width = canvas.ScaleWidth();
  scene.height = canvas.ScaleHeight();
  scene.ground = canvas.BackColor();
  scene.frames = sheet::TrackFramesNow();
  const auto buttons = form.VisibilityButtons();
  for (std::size_t i = 0; i < scene.tracks.size(); ++i)
    scene.tracks[i] = {buttons[i]->BackColor(), buttons[i]->value()};
  scene.values = timeline::Tracks().VelocityValues;
  scene.wave_width = form.Picture2.ScaleWidth();
  scene.rows = form.Grid1.Rows();
  scene.marked_frame = form.Grid1.Row() - 1;
  scene.comment = sheet::SheetCells.Text(scene.marked_frame, sheet::kCommentColumn);
  timeline::VelocityPicture fresh(
      [&](const std::string& text) { return platform::MaskOf(canvas.TextFont(), text, canvas.Scale()); });
  fresh.ClearShapes(sheet::SheetCells.LastFrame() + 1);
  for (std::int32_t frame = 0; frame <= sheet::SheetCells.LastFrame(); ++frame)
    fresh.CaptureShape(frame, sheet::SheetCells.Text(frame, sheet::kShapeColumn));
  fresh.Capture(scene);
  CheckPicture(form.Picture4, [&](const PixelView& view) { fresh.DrawOn(view); });
}

/// At a scale of 1, where no edge has to be rounded.
template <typename Draw>
void CheckStrip(platform::PictureBox& strip, std::int32_t offset, std::int32_t count, const Draw& draw) {
  const painter::Retrieval& retrieval = painter::TheRetrieval();
  const auto thumb =
      painter::MeasureThumbnails(retrieval.FrameWidth, retrieval.FrameHeight, strip.ScaleHeight());
  if (!thumb || strip.Scale() != 1 || retrieval.CellCount < 1) return;
  constexpr std::int64_t kLongest = 100'000;
  const std::int64_t length = std::int64_t{thumb->width} * count + strip.ScaleWidth() - offset;
  if (length > kLongest) return;
  painter::StripPlanes whole({static_cast<std::int32_t>(length), strip.ScaleHeight()});
  draw(painter::StripView{*thumb, 0, 1}, whole.View());
  CheckPicture(strip, [&](const PixelView& view) {
    for (int y = 0; y < view.height; ++y)
      for (int x = 0; x < view.width; ++x) {
        const auto at =
            static_cast<std::size_t>(y) * whole.shape.Columns() + static_cast<std::size_t>(x - offset);
        view.Row(y)[x] = platform::PixelFrom(platform::Rgb(whole.red[at], whole.green[at], whole.blue[at]));
      }
  });
}

void CheckStrips(painter::FramePainter& form) {
  const painter::Retrieval& retrieval = painter::TheRetrieval();
  const painter::StripState& strips = painter::TheStrips();
  const painter::FilmRoll& roll = painter::TheRoll();
  CheckStrip(form.Picture1, strips.CellScrollOffset, retrieval.CellCount,
             [&](const auto& view, const auto& planes) {
               painter::DrawCellsStrip(view, retrieval, strips.SelectedCell, planes);
             });
  CheckStrip(form.Picture2, strips.RollScrollOffset, roll.RollLength(),
             [&](const auto& view, const auto& planes) {
               for (std::int32_t frame = 0; frame < roll.RollLength(); ++frame)
                 painter::DrawRollFrame(view, retrieval, roll, frame, planes);
             });
}

void CheckEditor(const Form1& form) {
  const platform::Grid& grid = form.Grid1;
  if (!form.Text2.Visible()) return;
  Check(grid.Col() == sheet::kCommentColumn && form.Text2.Text() == grid.Text(),
        "the comment's editor is open over another cell");
  Check(form.Text2.Left() == grid.Left() + 2 + platform::PixelsFromTwips(grid.ColPos(grid.Col())) &&
            form.Text2.Top() == grid.Top() + 2 + platform::PixelsFromTwips(grid.RowPos(grid.Row())),
        "the comment's editor stands beside its cell");
}

void CheckMouth(const Form1& form) {
  Check(form.MySketch.Checked() != form.MYCartoon.Checked(), "not just one mouth set is ticked");
  const auto mouth = timeline::MouthNumber(form.Grid1.TextMatrix(form.Grid1.Row(), sheet::kShapeColumn));
  // A file that ends with a row's shape leaves it to be seen once the user goes on.
  if (!mouth || form.Grid1.Col() == sheet::kShapeColumn) return;
  timeline::MouthSet& set = form.MySketch.Checked() ? static_cast<timeline::MouthSet&>(*form5) : *form4;
  Check(form.Picture1.ShownPicture() == set.MouthPicture(*mouth), "the mouth isn't the row's");
}

void CheckTimeline(const Form1& form) {
  const float width = static_cast<float>(form.Picture3.Width()) * timeline::ZoomFactor;
  for (const platform::PictureBox* canvas : {&form.Picture2, &form.Picture4}) {
    Check(canvas->Width() == static_cast<int>(std::nearbyint(width)), canvas->Name() + " isn't zoomed");
    Check(canvas->Left() == -form.HScroll1.Value(), canvas->Name() + " isn't where it was scrolled to");
  }
  Check(std::strtof(form.Label2.Caption().c_str(), nullptr) == timeline::ZoomFactor * 100,
        "the zoom is another than the one in words");
  const char* const names[] = {"(Yellow)", "(Red)", "(Green)", "(Blue)"};
  Check(form.Label3.Caption() == names[timeline::Tracks().ActiveChannel],
        "the track is another than the one in words");
}

}  // namespace

void CheckState() {
  if (const auto* window = painter::frame_painter.IfLoaded())
    Check(window->HGlide2.Range() == painter::TheRoll().RollLength(), "the roll isn't scrolled to its end");
  const Form1* const form = form1.IfLoaded();
  if (form == nullptr) return;
  const platform::Grid& grid = form->Grid1;
  Check(grid.Row() >= 0 && grid.Row() < grid.Rows(), "the current row isn't there");
  Check(grid.Col() >= 0 && grid.Col() <= 2, "the current column isn't there");
  Check(sheet::SheetCells.LastFrame() >= grid.Rows() - 2, "a row has no entry in SheetCells");
  if (!form->Visible()) return;
  Check(form->Timer1.Enabled() == form->Line1.Visible(), "a run and its cursor part");
  CheckEditor(*form);
  CheckMouth(*form);
  CheckTimeline(*form);
}

void CheckMarks(Form1& form) {
  const int row = form.Grid1.Row();
  const std::string wanted =
      row == 0 ? "Before the first frame" : "Frame " + std::to_string(row - 1) + " of ";
  for (platform::PictureBox* canvas : {&form.Picture2, &form.Picture4}) {
    canvas->DrawNow();
    const std::string told = canvas->Widget()->accessibleDescription().toStdString();
    Check(told == "No frames" || told.starts_with(wanted), canvas->Name() + " marks another row: " + told);
  }
}

void CheckPictures() {
  if (auto* const form = form1.IfLoaded()) {
    CheckWave(*form);
    CheckTracks(*form);
  }
  if (auto* const window = painter::frame_painter.IfLoaded()) CheckStrips(*window);
}

void CheckGrid(const platform::Grid& grid) {
  const auto* const view = qobject_cast<const QTableView*>(grid.Widget());
  const QAbstractItemModel& model = *view->model();
  Check(model.rowCount() == grid.Rows() - 1 && view->currentIndex().row() == grid.Row() - 1,
        "the grid shows other rows than it has");
  for (int row = 0; row < grid.Rows(); ++row)
    for (int column = 0; column < model.columnCount(); ++column) {
      const QVariant shown =
          row == 0 ? model.headerData(column, Qt::Horizontal) : model.data(model.index(row - 1, column));
      Check(shown.toString().toStdString() == grid.TextMatrix(row, column), "the grid shows another text");
    }
}

void CheckScreen() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || window->isMinimized()) continue;
    const QImage before = Screen(*window);
    auto* const painter = painter::frame_painter.IfLoaded();
    if (painter != nullptr && painter->TopWidget() == window) {
      painter->Picture1_Paint();
      painter->Picture2_Paint();
      painter->Picture7_Paint();
      painter->Picture4_Paint();
    }
    for (QWidget* const part : window->findChildren<QWidget*>()) part->update();
    window->repaint();
    const QRect changed = Difference(before, Screen(*window));
    Check(changed.isEmpty(), window->objectName().toStdString() + " isn't what a new drawing gives from " +
                                 Place(changed.topLeft()) + " to " + Place(changed.bottomRight()));
  }
}

std::string SheetInWords() {
  std::string words;
  const auto add = [&](const std::string& text) {
    words += QString::fromStdString(text).trimmed().toStdString() + '\n';
  };
  add(form3->Text7.Text());
  add(form1->CommonDialog1.FileName);
  const platform::Grid& grid = form1->Grid1;
  for (int row = 1; row < grid.Rows(); ++row)
    for (int column = 0; column < 3; ++column) add(grid.TextMatrix(row, column));
  add(form1->vl_button18.value() ? "locked" : "free");
  for (const look::vl_button* button : form1->VisibilityButtons()) add(button->value() ? "seen" : "hidden");
  // Last, as there are more of them once a rate counts that was only typed.
  const timeline::VelocityTable& tracks = timeline::Tracks().VelocityValues;
  for (std::int32_t frame = 0; frame < std::min(tracks.Frames(), sheet::TrackFramesNow()); ++frame)
    for (int channel = 0; channel < timeline::kChannels; ++channel)
      add(std::to_string(tracks.At(frame, channel)));
  return words;
}

}  // namespace random_events
