// Windows of each border, and what each of their controls does under a user's hands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <map>
#include <sstream>

#include "platform/Lifetime.h"
#include "platform/Menu.h"
#include "platform/Picture.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {
namespace {

using support::Key;
using support::Press;
using support::Release;

QImage Plain(QColor color, int side = 4) {
  QImage image(side, side, QImage::Format_RGB32);
  image.fill(color);
  return image;
}

/// Writes down what the user's hands have set off.
struct Bench : Window {
  explicit Bench(Border border = Border::Sizable, Start start = Start::SystemDefault)
      : Window({"Bench", "A bench", border, start, 400, 300, {":/assets/icons/app-16.png"}}) {
    int left = 0;
    for (Control* control : Controls()) control->Move(left, 40, 40, 40), left += 44;
    list.SetHeight(200);
    bar.SetMin(5);
    bar.SetMax(500);
    bar.SetLargeChange(50);
    label.Click = Told("label");
    text.Change = [this] { log << "text " << text.Text() << ','; };
    text.Entered = Told("entered");
    text.LostFocus = Told("left");
    text.PressedElsewhere = Told("elsewhere");
    list.Click = [this] { log << "list " << list.Text() << ','; };
    bar.Change = [this] { log << "bar " << bar.Value() << ','; };
    bar.Scroll = [this] { log << "dragged " << bar.Value() << ','; };
    check.Click = [this] { log << "check " << check.Value() << ','; };
    button.Click = Told("button");
    ticked.Click = [this] { log << (ticked.Checked() ? "ticked," : "unticked,"); };
    canvas.MouseDown = canvas.MouseUp = [this](int pressed, int keys, float x, float y) {
      log << "canvas " << pressed << keys << ' ' << x << ' ' << y << ',';
    };
    canvas.Wheel = [this](float notches, int keys, float x) {
      log << "wheel " << notches << ' ' << keys << ' ' << x << ',';
    };
  }
  std::function<void()> Told(const std::string& what) {
    return [this, what] { log << what << ','; };
  }
  void Form_Load() override { log << "load,"; }
  void Form_Paint() override {
    if (tile) TilePicture(*tile);
  }
  void Form_Resize() override { log << "resize " << ScaleWidth() << ','; }
  void Form_Unload(Flag& cancel) override {
    log << "unload,";
    EXPECT_TRUE(Unload()) << "it is under way";
    cancel = stays;
  }
  void Form_Terminate() override { log << "end,"; }
  bool Form_KeyDown(const KeyPress& press) override {
    log << "key " << static_cast<int>(press.key) << press.text << (press.control ? " Ctrl" : "")
        << (press.alt ? " Alt" : "") << (press.shift ? " Shift" : "") << ',';
    return true;
  }
  /// What was set off by this.
  std::string After(const std::function<void()>& hands) {
    support::HandleEvents();
    log.str({});
    hands();
    support::HandleEvents();
    return log.str();
  }
  QRgb Shown(int x, int y) { return ContainerWidget()->grab(QRect(x, y, 1, 1)).toImage().pixel(0, 0); }

  Menu menu{*this, "menu", "&Menu"};
  MenuItem ticked{menu, "ticked", "Tick", "Ctrl+T"};
  Label label{*this, "label", "Words", Label::Align::Center};
  TextBox text{*this, "text", "12"};
  ListBox list{*this, "list", {"ant", "bee", "bug", "cat"}};
  HScrollBar bar{*this, "bar"};
  CheckBox check{*this, "check"};
  CommandButton button{*this, "button", "Go"};
  PictureBox canvas{*this, "canvas"};
  std::ostringstream log;
  Flag stays = kFalse;
  std::optional<Picture> tile;
};

TEST(Windows, AreWhatTheirBorderSays) {
  const struct {
    Window::Border border;
    Qt::WindowType type;
    bool fixed;
  } cases[] = {{Window::Border::Sizable, Qt::Window, false},
               {Window::Border::SizableToolWindow, Qt::Tool, false},
               {Window::Border::FixedToolWindow, Qt::Tool, true},
               {Window::Border::FixedDialog, Qt::Dialog, true}};
  for (const auto& c : cases) {
    Bench bench(c.border);
    const QWidget& top = *bench.TopWidget();
    const int before = LoadedWindowCount();
    EXPECT_EQ(bench.After([&] { bench.Show(); }), "load,resize 400,") << c.type;
    EXPECT_EQ(LoadedWindowCount(), before + 1);
    EXPECT_EQ(top.windowType(), c.type);
    EXPECT_EQ(top.windowFlags().testFlag(Qt::WindowMaximizeButtonHint), c.border == Window::Border::Sizable);
    EXPECT_EQ(top.windowTitle() + top.objectName(), "A benchBench");
    EXPECT_FALSE(top.windowIcon().isNull());
    EXPECT_EQ(top.minimumSize() == top.maximumSize(), c.fixed);
    EXPECT_EQ(bench.ScaleHeight(), 300) << "below the menu bar";
    const int width = c.fixed ? 400 : 300;
    EXPECT_EQ(bench.After([&] { bench.ResizeClient(width, 300); }), c.fixed ? "" : "resize 300,");
    bench.LimitClient(200, 100, 500, 400);
    const int menu = top.height() - bench.ScaleHeight();
    EXPECT_EQ(std::pair(top.minimumSize(), top.maximumSize()),
              std::pair(QSize(200, 100 + menu), QSize(500, 400 + menu)));
    bench.LimitClient(0, 0, 0, 0);
    EXPECT_EQ(std::pair(top.minimumSize(), top.maximumSize()),
              std::pair(QSize(0, 0), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)));
    bench.stays = kTrue;
    const auto escape = [&] { Key(bench.TopWidget(), Qt::Key_Escape); };
    EXPECT_EQ(bench.After(escape), c.fixed ? "unload," : "key 2,");
    EXPECT_TRUE(bench.Visible());
    bench.stays = kFalse;
    EXPECT_EQ(bench.After([&] { bench.TopWidget()->close(); }), "unload,end,");
    EXPECT_FALSE(bench.Visible() || bench.Loaded());
    EXPECT_EQ(LoadedWindowCount(), before);
  }
}

TEST(Windows, StartInTheMiddleOfWhatTheyBelongTo) {
  Bench middle(Window::Border::FixedDialog, Window::Start::CenterScreen),
      over(Window::Border::FixedDialog, Window::Start::CenterOwner);
  const auto center = [](Window& window) { return window.TopWidget()->geometry().center(); };
  middle.Show();
  EXPECT_LE((center(middle) - middle.TopWidget()->screen()->availableGeometry().center()).manhattanLength(),
            4);
  middle.TopWidget()->move(100, 50);
  while (!middle.TopWidget()->isActiveWindow()) QApplication::processEvents();
  over.Show();
  EXPECT_LE((center(over) - center(middle)).manhattanLength(), 4);
}

TEST(Windows, LayTilesFromTheLeftTopAndDarkenWithThem) {
  Bench bench;
  bench.Show();
  for (const auto& [side, shade, dark] :
       {std::tuple(4, 90, true), {4, 120, false}, {8, 80, true}, {3, 40, true}}) {
    // Darker on its left.
    QImage tile = Plain(QColor(shade + 20, shade + 20, shade + 20), side);
    QPainter(&tile).fillRect(0, 0, side / 2, side, QColor(shade, shade, shade));
    bench.tile.emplace(tile);
    bench.Repaint();
    support::HandleEvents();
    EXPECT_EQ(bench.GroundIsDark(), dark);
    EXPECT_NEAR(qGray(bench.Shown(40 * side, 4 * side)), shade, 6) << side;
    EXPECT_NEAR(qGray(bench.Shown(41 * side - 1, 4 * side)), shade + 20, 6) << side;
  }
  bench.tile.reset();
  bench.SetBackColor(Rgb(130, 131, 132));
  support::HandleEvents();
  EXPECT_FALSE(bench.GroundIsDark());
  EXPECT_EQ(bench.Shown(399, 299), qRgb(130, 131, 132));
}

TEST(Controls, TellWhatTheUsersHandsDo) {
  Bench bench;
  bench.Show();
  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  bench.button.SetFocus();
  QWidget *text = bench.text.Widget(), *list = bench.list.Widget(), *bar = bench.bar.Widget(),
          *canvas = bench.canvas.Widget(), *label = bench.label.Widget(), *check = bench.check.Widget();
  const struct {
    QWidget* at;
    int key;
    const char *letter, *told;
    Qt::KeyboardModifiers with = Qt::NoModifier;
  } keys[] = {{text, Qt::Key_End, "", ""},
              {text, Qt::Key_3, "3", "text 123,"},
              {text, Qt::Key_Return, "", "entered,key 0,"},
              {text, Qt::Key_Escape, "", "key 2,"},
              {list, Qt::Key_C, "c", ""},
              {list, Qt::Key_Return, "", "list cat,key 0,"},
              {list, Qt::Key_Up, "", "key 3 Ctrl,", Qt::ControlModifier},
              {list, Qt::Key_Up, "", ""},
              {list, Qt::Key_Enter, "", "list bug,key 0,"},
              {list, Qt::Key_Space, " ", "list bug,"},
              {list, Qt::Key_Comma, ",", "key 0, Shift,", Qt::ShiftModifier},
              {bar, Qt::Key_PageDown, "", "bar 55,"},
              {bar, Qt::Key_Right, "", "bar 71,"},
              {bar, Qt::Key_Left, "", "bar 55,"},
              {bar, Qt::Key_End, "", "bar 500,"},
              {bar, Qt::Key_Home, "", "bar 5,"},
              {check, Qt::Key_Space, " ", "check 1,"},
              {bench.button.Widget(), Qt::Key_Return, "", "button,"},
              {bench.TopWidget(), Qt::Key_Z, "", "key 9 Ctrl,", Qt::ControlModifier},
              {bench.TopWidget(), Qt::Key_Home, "", "key 7 Alt,", Qt::AltModifier}};
  for (const auto& k : keys)
    EXPECT_EQ(bench.After([&] { Key(k.at, k.key, k.with, k.letter); }), k.told) << k.told;

  const auto* view = static_cast<QListWidget*>(list);
  const QPointF bee = view->visualItemRect(view->item(1)).center();
  const struct {
    QWidget* at;
    QPointF press, release;
    const char* told;
    Qt::MouseButton button = Qt::LeftButton;
  } clicks[] = {{text, {5, 5}, {5, 5}, ""},
                {label, {5, 5}, {5, 5}, "elsewhere,label,"},
                {label, {5, 5}, {5, 45}, "elsewhere,"},
                {view->viewport(), bee, bee, "elsewhere,list bee,"},
                {view->viewport(), bee, bee, "elsewhere,", Qt::RightButton},
                {view->viewport(), {5, 195}, {5, 195}, "elsewhere,"},
                {check, {39, 1}, {39, 1}, "elsewhere,check 0,"},
                {bench.button.Widget(), {9, 9}, {9, 9}, "elsewhere,button,"},
                {canvas, {6, 7}, {8, 9}, "elsewhere,canvas 40 6 7,canvas 40 8 9,", Qt::MiddleButton},
                {canvas, {6, 7}, {6, 7}, "elsewhere,canvas 20 6 7,canvas 20 6 7,", Qt::RightButton}};
  for (const auto& c : clicks)
    EXPECT_EQ(bench.After([&] { Press(c.at, c.press, c.button), Release(c.at, c.release, c.button); }),
              c.told);

  const auto leave = [&](Qt::FocusReason reason) {
    QFocusEvent event(QEvent::FocusOut, reason);
    QApplication::sendEvent(text, &event);
  };
  for (const auto reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::TabFocusReason})
    EXPECT_EQ(bench.After([&] { leave(reason); }), reason == Qt::TabFocusReason ? "left," : "");
  EXPECT_EQ(bench.After([&] { bench.bar.SetValue(99), bench.bar.SetMax(90); }), "bar 99,bar 90,");
  static_cast<QScrollBar*>(bar)->setSliderDown(true);
  EXPECT_EQ(bench.After([&] { bench.bar.SetValue(9); }), "dragged 9,");
  EXPECT_EQ(bench.After([&] { support::Wheel(canvas, -60); }), "wheel -0.5 0 19,");
  bench.ticked.SetChecked(true);
  EXPECT_EQ(bench.After([&] { bench.MenuBar()->actions()[0]->menu()->actions()[0]->trigger(); }), "ticked,");
  bench.text.SetText(std::string(40'000, '5'));
  bench.text.SelectAll();
  EXPECT_EQ(static_cast<QLineEdit*>(text)->selectedText().size(), 40'000);
  bench.text.Escaped = bench.Told("escaped");
  EXPECT_EQ(bench.After([&] { Key(text, Qt::Key_Escape), text->hide(), Press(label, {5, 5}); }), "escaped,");
}

TEST(Controls, ShowTheirStateInTheirRoom) {
  Bench bench;
  bench.Show();
  const auto picture = [](const Control& control) { return control.Widget()->grab().toImage(); };
  // The tick goes from 0.24 to 0.78 of the box's width and from 0.27 to 0.72 of its height, in a pen of 6
  // pixels.
  const QImage empty = picture(bench.check);
  bench.check.SetValue(1);
  const QImage ticked = picture(bench.check);
  QRect tick;
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 40; ++x)
      if (qGray(ticked.pixel(x, y)) < qGray(empty.pixel(x, y)) - 100) tick |= QRect(x, y, 1, 1);
  EXPECT_LE((tick.topLeft() - QPoint(7, 8)).manhattanLength(), 3);
  EXPECT_LE((tick.bottomRight() - QPoint(34, 31)).manhattanLength(), 3);
  LineControl rule(bench, "rule", 90, 9, 90, 2, Rgb(9, 9, 9));
  EXPECT_EQ(rule.Widget()->geometry(), QRect(90, 2, 1, 8));
  EXPECT_TRUE(rule.Widget()->testAttribute(Qt::WA_TransparentForMouseEvents));
  EXPECT_EQ(picture(rule).pixel(0, 7), 0xFF090909u);
  rule.SetX(95);
  rule.SetForeColor(Rgb(8, 8, 8));
  EXPECT_EQ(std::pair(rule.X1(), rule.ForeColor()), std::pair(95, Rgb(8, 8, 8)));
  ImageHolder holder(bench, "holder");
  const auto held = std::make_shared<Picture>(Plain(Qt::red, 7));
  holder.SetPicture(held);
  EXPECT_EQ(std::tuple(holder.Width(), holder.Visible(), holder.Picture()), std::tuple(7, false, held));
  EXPECT_EQ(bench.text.Text(), "12");
  const QAction& item = *bench.MenuBar()->actions()[0]->menu()->actions()[0];
  EXPECT_EQ(item.objectName() + item.text() + item.shortcut().toString(), "tickedTickCtrl+T");
  EXPECT_FALSE(item.isCheckable()) << "there is no place for a tick";

  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  QPalette palette;
  palette.setColor(QPalette::Highlight, Qt::blue);
  palette.setColor(QPalette::Base, Qt::white);
  const auto across = [&](const Control& control, int y) {
    const std::map<QRgb, char> signs = {
        {0xFFFF0000, '|'}, {0xFF0000FF, '='}, {0xFFFFFFFF, '-'}, {0xFFFFFF00, '.'}};
    const QImage shown = picture(control);
    std::string row;
    for (int x = 0; x < 40; ++x) row += signs.contains(shown.pixel(x, y)) ? signs.at(shown.pixel(x, y)) : '#';
    return row;
  };
  bench.canvas.Widget()->setPalette(palette);
  bench.canvas.SetBackColor(Rgb(255, 255, 0));
  bench.canvas.TakeKeyboard();
  bench.canvas.FrameColumns(3, 30);
  bench.canvas.ShowRules({1, 34}, Rgb(255, 0, 0));
  bench.canvas.SetFocus();
  EXPECT_EQ(across(bench.canvas, 20), ".|.#==-...................-==#....|.....");
  bench.text.SetText("");
  bench.text.SetReadOnly(true);
  bench.check.SetValue(0);
  for (Control* control : std::initializer_list<Control*>{&bench.text, &bench.check})
    for (const bool focused : {false, true}) {
      control->Widget()->setPalette(palette);
      (focused ? *control : bench.button).SetFocus();
      const std::string between(36, '-'), edge(40, focused ? '=' : '#');
      for (const int y : {2, 37})
        EXPECT_EQ(across(*control, y), focused ? "==" + between + "==" : "#-" + between + "-#");
      for (const int y : {0, 39}) EXPECT_EQ(across(*control, focused ? std::clamp(y, 1, 38) : y), edge);
    }
  // A text that can't be edited is made to fit.
  const QString wide = "twice as wide as its room";
  const double natural = QFontMetricsF(QApplication::font()).horizontalAdvance(wide);
  bench.text.Move(0, 0, static_cast<int>(natural / 2), 40);
  bench.text.SetText(wide.toStdString());
  EXPECT_LE(QFontMetricsF(bench.text.Widget()->font()).horizontalAdvance(wide), natural * 0.6);

  // Letters: where they stand, and whether they are brighter than the ground.
  const auto ink = [&](const QRect& place) {
    support::HandleEvents();
    const QImage shown = bench.ContainerWidget()->grab(place).toImage();
    QRect covered;
    int brightest = 0;
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x)
        if (shown.pixel(x, y) != shown.pixel(0, 0)) {
          covered |= QRect(x, y, 1, 1);
          brightest = std::max(brightest, qGray(shown.pixel(x, y)));
        }
    return std::pair(covered, brightest > 200);
  };
  Label left(bench, "left", "Ill"), right(bench, "right", "Ill", Label::Align::Right);
  int top = 250;
  for (Label* label : {&left, &bench.label, &right}) {
    label->Move(100, top, 200, 16);
    label->SetVisible(true);
    label->SetForeColor(label == &right ? Rgb(255, 255, 255) : 0);
    const auto [covered, bright] = ink(QRect(100, top, 200, 16));
    const double half = covered.width() / 2.0;
    const double expected = label == &left ? half : label == &right ? 199 - half : 100;
    EXPECT_NEAR(covered.center().x(), expected, 4) << label->Name();
    EXPECT_EQ(bright, label == &right);
    top += 16;
  }
  bench.canvas.Move(0, 0, 300, 40);
  bench.canvas.FrameColumns(0, 0);
  bench.canvas.ShowRules({}, 0);
  bench.canvas.SetFont({"", 15});
  bench.canvas.SetForeColor(Rgb(255, 255, 255));
  bench.canvas.MovePen(100, 5);
  for (int i = 0; i < 2; ++i) bench.canvas.Print("H");
  // 15 points are 20 pixels: an H is between half and all of that high, and less wide.
  const QRect letters = ink(QRect(0, 0, 300, 40)).first;
  EXPECT_TRUE(QRect(99, 5, 41, 24).contains(letters)) << letters.x() << ' ' << letters.y();
  EXPECT_TRUE(letters.width() > 18 && letters.height() > 10) << letters.width() << ' ' << letters.height();
}

TEST(Pictures, AreReadByWhatTheyHoldAndShownAtEachScale) {
  const std::string file = support::ScratchFolder() + "/a@2x.bmp";
  QImage clear(3, 2, QImage::Format_ARGB32);
  clear.fill(QColor(1, 2, 3, 128));
  for (const QImage& image : {Plain(Qt::red), clear}) {
    ASSERT_TRUE(image.save(QString::fromStdString(file), "PNG"));
    const auto read = Picture::Load(file);
    EXPECT_EQ(QSize(read->Width(), read->Height()), image.size());
    EXPECT_EQ(read->Image().devicePixelRatio(), 1);
    EXPECT_EQ(read->Image().format(),
              image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  }
  for (const auto& [path, told] :
       {std::pair(std::string("/"), "Can't read the picture \"/\": Not a regular file"),
        {std::string("/gone.png"), "Can't read the picture \"/gone.png\": "}})
    EXPECT_THAT([&] { Picture::Load(path); },
                testing::ThrowsMessage<std::runtime_error>(testing::StartsWith(told)));
  const Picture twin(Plain(Qt::red, 4), Plain(Qt::blue, 8)), lone(Plain(Qt::red, 4));
  for (const auto& [scale, side, dense] :
       {std::tuple(1.0, 4, false), {1.5, 6, true}, {2.0, 8, true}, {3.0, 12, true}, {0.5, 2, false}}) {
    EXPECT_EQ(twin.ImageAt(scale), Plain(dense ? Qt::blue : Qt::red, side)) << scale;
    EXPECT_EQ(lone.ImageAt(scale), Plain(Qt::red, side)) << scale;
  }
}

}  // namespace
}  // namespace platform
