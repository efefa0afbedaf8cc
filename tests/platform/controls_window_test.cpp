// What each control does under a user's hands, what it shows, and what a screen reader is told of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QScrollBar>
#include <QTableView>
#include <map>

#include "platform/Accessible.h"
#include "platform/Application.h"
#include "platform/ControlsBench.h"
#include "platform/Picture.h"
#include "platform/QuietLook.h"

namespace platform {
namespace {

using support::Key;
using support::Press;
using support::Release;

/// What a screen reader was told of that is no widget.
std::vector<std::string> told;

}  // namespace
}  // namespace platform

// Without a screen the toolkit has nobody to tell, so it is told here.
void QAccessible::updateAccessibility(QAccessibleEvent* event) {
  QAccessibleInterface* const thing = event->accessibleInterface();
  if (thing == nullptr || thing->object() != nullptr) return;
  const bool item = event->type() == Focus && thing->role() == ListItem && thing->state().focused;
  const bool notice = event->type() == ObjectShow && thing->role() == Notification;
  const QString name = thing->text(Name) + " in " + thing->parent()->text(Name);
  platform::told.push_back((item ? "focus: " : notice ? "notice: " : "?") + name.toStdString());
}

namespace platform {
namespace {

QImage Plain(QColor color, int side) {
  QImage image(side, side, QImage::Format_RGB32);
  image.fill(color);
  return image;
}

struct ShownControls : testing::Test {
  ControlsBench bench;
  PictureBox& canvas = bench.canvas;
  QWidget *text = bench.text.Widget(), *label = bench.label.Widget();
};

TEST_F(ShownControls, TellWhatKeysDo) {
  bench.list.SetListIndex(1), bench.list.SetFocus(), bench.button.SetFocus();
  EXPECT_EQ(bench.list.Text(), "bee") << "as before";
  QWidget *list = bench.list.Widget(), *bar = bench.bar.Widget(), *top = bench.TopWidget(),
          *push = bench.push.Widget(), *toggle = bench.toggle.Widget(), *glide = bench.glide.Widget();
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
              {bench.check.Widget(), Qt::Key_Space, " ", "check 1,"},
              {bench.button.Widget(), Qt::Key_Return, "", "button,"},
              {push, Qt::Key_Space, " ", "push,"},
              {push, Qt::Key_Return, "", "push,"},
              {push, Qt::Key_Enter, "", "push,"},
              {push, Qt::Key_A, "a", "key 0a,"},
              {toggle, Qt::Key_Space, " ", "mouse 10 20 20 on,"},
              {toggle, Qt::Key_Return, "", "mouse 10 20 20,"},
              {toggle, Qt::Key_Enter, "", "mouse 10 20 20 on,"},
              {glide, Qt::Key_Right, "", "at 1,"},
              {glide, Qt::Key_Down, "", "at 2,"},
              {glide, Qt::Key_Left, "", "at 1,"},
              {glide, Qt::Key_Up, "", "at 0,"},
              {glide, Qt::Key_Left, "", ""},
              {glide, Qt::Key_End, "", "at 10,"},
              {glide, Qt::Key_PageUp, "", "at 6,"},
              {glide, Qt::Key_Home, "", "at 0,"},
              {glide, Qt::Key_PageDown, "", "at 4,"},
              {glide, Qt::Key_Space, " ", "key 1 ,"},
              {top, Qt::Key_Z, "", "key 9 Ctrl,", Qt::ControlModifier},
              {top, Qt::Key_Home, "", "key 7 Alt,", Qt::AltModifier}};
  for (const auto& k : keys)
    EXPECT_EQ(bench.After([&] { Key(k.at, k.key, k.with, k.letter); }), k.told) << k.told;
  const auto held = [&](QWidget* at, Qt::Key key) {
    QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, "", true);
    return bench.After([&] { QApplication::sendEvent(at, &again); });
  };
  EXPECT_EQ(held(top, Qt::Key_Down), "key 4 again,");
  EXPECT_EQ(held(push, Qt::Key_Return), "key 0 again,");
  const auto leave = [&](Qt::FocusReason reason) {
    QFocusEvent event(QEvent::FocusOut, reason);
    QApplication::sendEvent(text, &event);
  };
  for (const auto reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::TabFocusReason})
    EXPECT_EQ(bench.After([&] { leave(reason); }), reason == Qt::TabFocusReason ? "left," : "");
  bench.text.Escaped = bench.Told("escaped");
  EXPECT_EQ(bench.After([&] { Key(text, Qt::Key_Escape), text->hide(), Press(label, {5, 5}); }), "escaped,");
}

TEST_F(ShownControls, TellWhatTheMouseDoes) {
  bench.text.SetFocus();
  const auto* list = static_cast<QListWidget*>(bench.list.Widget());
  const QPointF bee = list->visualItemRect(list->item(1)).center();
  QWidget *push = bench.push.Widget(), *toggle = bench.toggle.Widget();
  const struct {
    QWidget* at;
    QPointF press, release;
    const char* told;
    Qt::MouseButton button = Qt::LeftButton;
    Qt::KeyboardModifiers keys = Qt::NoModifier;
  } clicks[] = {{text, {5, 5}, {5, 5}, ""},
                {label, {5, 5}, {5, 5}, "elsewhere,label,"},
                {label, {5, 5}, {5, 45}, "elsewhere,"},
                // A press that the label lets through is one on what lies below it, too.
                {label, {5, 5}, {5, 5}, "elsewhere,elsewhere,elsewhere,", Qt::RightButton},
                {list->viewport(), bee, bee, "elsewhere,list bee,"},
                {list->viewport(), bee, bee, "elsewhere,", Qt::RightButton},
                {list->viewport(), {5, 195}, {5, 195}, "elsewhere,"},
                {bench.check.Widget(), {39, 1}, {39, 1}, "elsewhere,check 1,"},
                {bench.button.Widget(), {9, 9}, {9, 9}, "elsewhere,button,"},
                {canvas.Widget(), {6, 7}, {8, 9}, "elsewhere,mouse 40 6 7,mouse 40 8 9,", Qt::MiddleButton},
                {canvas.Widget(), {6, 7}, {6, 7}, "elsewhere,mouse 20 6 7,mouse 20 6 7,", Qt::RightButton},
                {push,
                 {5, 6},
                 {5, 6},
                 "elsewhere,push,mouse 15 5 6,",
                 Qt::LeftButton,
                 Qt::ShiftModifier | Qt::AltModifier},
                {push, {5, 6}, {5, 45}, "elsewhere,mouse 10 5 45,"},
                {push, {5, 6}, {5, 6}, "elsewhere,mouse 20 5 6,", Qt::RightButton},
                {toggle, {5, 6}, {5, 6}, "elsewhere,mouse 10 5 6 on,"},
                {toggle, {5, 6}, {60, 6}, "elsewhere,mouse 10 60 6 on,"}};
  for (const auto& c : clicks)
    EXPECT_EQ(
        bench.After([&] { Press(c.at, c.press, c.button), Release(c.at, c.release, c.button, c.keys); }),
        c.told);
  EXPECT_EQ(bench.After([&] { Key(toggle, Qt::Key_Space), bench.toggle.SetValue(true); }), "mouse 10 20 20,")
      << "a key after the mouse, and code says nothing";
  EXPECT_EQ(bench.After([&] { bench.bar.SetValue(99), bench.bar.SetMax(90); }), "bar 99,bar 90,");
  static_cast<QScrollBar*>(bench.bar.Widget())->setSliderDown(true);
  EXPECT_EQ(bench.After([&] { bench.bar.SetValue(9); }), "dragged 9,");
  EXPECT_EQ(bench.After([&] { support::Wheel(canvas.Widget(), -60); }), "wheel -0.5 0 19,");
  QWheelEvent aside({19, 9}, {19, 9}, {}, {120, 30}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  EXPECT_EQ(bench.After([&] { QApplication::sendEvent(canvas.Widget(), &aside); }), "wheel 1 0 19,");
  bench.ticked.SetChecked(true);
  EXPECT_EQ(bench.After([&] { bench.Item().trigger(); }), "ticked,");
}

TEST_F(ShownControls, RaiseOnlyTheLastOfQueuedMovesAndThatBeforeARelease) {
  canvas.MouseMove = [this](int pressed, int, float x, float) {
    bench.log << "move " << pressed << ' ' << x << ',';
  };
  const auto drag = [this](int x, Qt::MouseButton button = Qt::LeftButton) {
    support::DragTo(canvas.Widget(), QPointF(x, 5), button);
  };
  EXPECT_EQ(bench.After([&] { drag(10), drag(30); }), "move 1 30,");
  EXPECT_EQ(bench.After([&] {
    drag(20), drag(15), Release(canvas.Widget(), {12, 5});
  }),
            "move 1 15,mouse 10 12 5,");
  EXPECT_EQ(bench.After([&] {
    drag(25, Qt::RightButton), Press(canvas.Widget(), {26, 5});
  }),
            "elsewhere,move 2 25,mouse 10 26 5,");
}

TEST_F(ShownControls, DrawWhatWasPutOffOnceAndBeforeItIsRead) {
  int drawings = 0;
  canvas.Draw = [&] {
    ++drawings;
    PlotPoint(canvas.Pixels(), 3, 4, Rgb(10, 20, 30));
  };
  for (int i = 0; i < 1000; ++i) canvas.DrawLater();
  EXPECT_EQ(drawings, 0);
  EXPECT_EQ(canvas.Point(3, 4), Rgb(10, 20, 30));
  support::HandleEvents();
  EXPECT_EQ(drawings, 1);
  canvas.DrawLater();
  {
    const RefreshPause pause;
    canvas.Refresh();
    EXPECT_EQ(drawings, 1);
  }
  canvas.Refresh();
  EXPECT_EQ(drawings, 2);
}

TEST_F(ShownControls, KeepACanvasPictureWhenItGrows) {
  canvas.SetBackColor(Rgb(9, 9, 9));
  FillBox(canvas.Pixels(), {0, 0, 5, 5}, Rgb(200, 0, 0));
  canvas.SetWidth(80);
  EXPECT_EQ(canvas.Point(4, 4), Rgb(200, 0, 0));
  EXPECT_EQ(canvas.Point(5, 5), Rgb(9, 9, 9));
  EXPECT_EQ(canvas.Point(70, 2), Rgb(9, 9, 9));
  EXPECT_THROW(canvas.SetWidth(-1), ControlError);
}

TEST_F(ShownControls, HaveTheirNameRoomAndColour) {
  EXPECT_THROW(bench.bar.Move(0, 0, -1, 5), ControlError);
  EXPECT_THROW(bench.bar.Move(0, 0, 5, -1), ControlError);
  bench.bar.MoveTwips(15, 30, 0, 0);
  EXPECT_EQ(bench.bar.Widget()->geometry(), QRect(1, 2, 0, 0));
  EXPECT_THROW(bench.bar.BackColor(), ControlError);
  EXPECT_THROW(bench.bar.SetForeColor(0), ControlError);
  const auto controls = bench.Controls();
  const QPointer gone = TextBox(bench, "gone").Widget();
  EXPECT_EQ(gone, nullptr);
  EXPECT_EQ(bench.Controls(), controls);
  LineControl rule(bench, "rule", 90, 9, 90, 2, Rgb(9, 9, 9));
  EXPECT_EQ(bench.Controls().back(), &rule);
  EXPECT_EQ(rule.Widget()->objectName(), "rule");
  EXPECT_EQ(rule.Widget()->geometry(), QRect(90, 2, 1, 8));
  EXPECT_TRUE(rule.Widget()->testAttribute(Qt::WA_TransparentForMouseEvents));
  ImageHolder holder(bench, "holder");
  holder.SetPicture(std::make_shared<Picture>(Plain(Qt::red, 7)));
  EXPECT_EQ(std::pair(holder.Width(), holder.Visible()), std::pair(7, false));
  EXPECT_EQ(bench.Item().objectName() + bench.Item().text() + bench.Item().shortcut().toString(),
            "tickedTickCtrl+T");
  EXPECT_FALSE(bench.Item().isCheckable()) << "there is no place for a tick";
}

TEST_F(ShownControls, ShowTexts) {
  auto* edit = static_cast<QLineEdit*>(text);
  EXPECT_EQ(bench.text.Text(), "12");
  bench.text.SetText(std::string(40'000, '5'));
  bench.text.SelectAll();
  EXPECT_EQ(edit->selectedText().size(), 40'000);
  // A text that can't be edited is made to fit, and seen from its start.
  const QString wide = "twice as wide as its room";
  const double natural = QFontMetricsF(QApplication::font()).horizontalAdvance(wide);
  bench.text.SetReadOnly(true);
  bench.text.Move(0, 0, static_cast<int>(natural / 2), 40);
  bench.text.SetText(wide.toStdString());
  EXPECT_LE(QFontMetricsF(text->font()).horizontalAdvance(wide), natural * 0.6);
  EXPECT_EQ(edit->cursorPosition(), 0);

  const auto ink = [this](const Control& control) {
    support::HandleEvents();
    const QImage shown = control.Widget()->grab().toImage();
    QRect covered;
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x)
        if (shown.pixel(x, y) != shown.pixel(0, 0)) covered |= QRect(x, y, 1, 1);
    return QTransform::fromScale(1 / canvas.Scale(), 1 / canvas.Scale()).mapRect(covered);
  };
  Label left(bench, "left", "Ill"), right(bench, "right", "Ill", Label::Align::Right);
  for (Label* one : {&left, &bench.label, &right}) one->Move(0, 200, 200, 16);
  EXPECT_LT(ink(left).left(), 4);
  EXPECT_NEAR(ink(bench.label).center().x(), 100, 4);
  EXPECT_GT(ink(right).right(), 195);
  Label tight(bench, "tight", "Velocity track");
  tight.Move(0, 0, left.Widget()->fontMetrics().horizontalAdvance("Velocity track") * 4 / 5, 17);
  EXPECT_GT(ink(tight).width(), tight.Width() * 0.7);
  EXPECT_LT(ink(tight).right(), tight.Width() - 4) << "a caption is set in letters that are small enough";
  // 15 points are 20 pixels: an H is between half and all of that high, and less wide.
  canvas.Move(0, 0, 300, 40);
  canvas.SetBackColor(0);
  canvas.SetFont({"", 15});
  canvas.SetForeColor(Rgb(255, 255, 255));
  canvas.MovePen(100, 5);
  for (int i = 0; i < 2; ++i) canvas.Print("H");
  const QRect letters = ink(canvas);
  EXPECT_TRUE(QRect(99, 5, 41, 24).contains(letters) && letters.width() > 18 && letters.height() > 10);
  canvas.Cls();
  canvas.MovePen(100, 5);
  canvas.Print("HH");
  EXPECT_NEAR(ink(canvas).right(), letters.right(), 2) << "at any scale";
}

TEST_F(ShownControls, ShowAtOnceWhatTheyAreTold) {
  const Color one = Rgb(200, 60, 90), other = Rgb(60, 90, 200);
  const std::string picture = support::ScratchFolder() + "/red";
  ASSERT_TRUE(Plain(Qt::red, 9).save(QString::fromStdString(picture + ".png")));
  ControlsBench& b = bench;
  const std::function<void()> steps[] = {
      [&] {
        b.label.SetCaption("Other"), b.text.SetText("345"), b.list.SetListIndex(1), b.bar.SetLargeChange(900);
        b.check.SetValue(1), canvas.SetBackColor(one), b.grid.SetRow(1), b.push.SetBackColor(one);
        b.toggle.SetValue(true), b.small.SetValue(true), b.glide.SetRange(1), b.dial.SetValue(17);
        b.rule.SetForeColor(one);
      },
      [&] {
        b.label.SetForeColor(one), b.text.SetBackColor(one), b.list.SetBackColor(one), b.bar.SetMin(90);
        b.check.SetValue(0), canvas.Print("Words"), b.grid.SetText("né"), b.push.SetHighlight(one);
        b.toggle.SetBackColor(one), b.small.SetBackColor(one), b.glide.SetPosition(1);
      },
      [&] {
        b.label.SetLeft(2), b.text.SetForeColor(other), b.list.SetForeColor(other), b.bar.SetValue(400);
        b.grid.SetCol(1), b.push.SetShadow(other), b.toggle.SetGradient(2), b.glide.SetBackColor(one);
        b.rule.SetX(590);
        for (const int left : {3, 14, 26, 33}) {
          FillBox(canvas.Pixels(), {left, 4, left + 5, 12}, other);
          canvas.Changed({left, 4, left + 5, 12});
        }
      },
      [&] {
        b.bar.SetMax(450), canvas.ShowRules({20, 30}, other), b.grid.Clear(), b.push.SetGradient(2);
        b.toggle.SetBorderless(true), b.glide.SetForeColor(other);
      },
      [&] {
        canvas.ShowRules({20}, other), b.grid.SetColWidth(0, 300), b.push.SetCaption("Go");
        b.glide.SetHighlight(one);
      },
      [&] {
        canvas.SetPicture(Picture::Load(picture + ".png")), b.grid.SetRows(9), b.push.SetPicture(picture);
        b.glide.SetShadow(other);
      },
      [&] {
        canvas.Draw = [&] {
          FillBox(canvas.Pixels(), {9, 9, 14, 19}, other), canvas.Changed({9, 9, 14, 19});
        };
        canvas.DrawLater(), b.grid.SetRow(0), b.glide.SetWidth(30), Press(b.push.Widget(), {5, 5});
      },
      [&] {
        canvas.Cls(), b.grid.SetCols(1), b.push.SetVisible(false), b.dial.Widget()->setEnabled(false);
        b.toggle.Widget()->setEnabled(false);
      },
      [&] { canvas.FrameColumns(5, 20), canvas.SetFocus(), b.grid.SetText("né"); },
      [&] { canvas.FrameColumns(5, 30); },
      [&] { canvas.FrameColumns(10, 30); },
      [&] { canvas.ShowRules({20}, one); },
      [&] { b.SetBackColor(Rgb(20, 20, 20)); },
      [&] { b.label.SetCaption("A"); },
      [&] { b.label.SetCaption("Other"); },
      [&] { b.label.SetVisible(false); },
      [&] { b.label.SetVisible(true); },
  };
  // How many controls each changes; 0 where that depends on the theme.
  constexpr int counts[] = {13, 11, 10, 6, 4, 4, 4, 5, 3, 1, 1, 1, 0, 1, 1, 1, 1};
  canvas.TakeKeyboard();
  b.button.SetFocus();
  for (std::size_t step = 0; step < std::size(steps); ++step) {
    support::HandleEvents();
    std::map<const Control*, std::pair<QRect, QImage>> places;
    for (const Control* control : b.Controls()) {
      const QRect place = control->Widget()->geometry();
      places[control] = {place, b.ContainerWidget()->grab(place).toImage()};
    }
    steps[step]();
    const QImage shown = support::OnScreen(b.TopWidget());
    EXPECT_EQ(shown, support::PaintedAnew(b.TopWidget())) << step;
    std::string changed;
    for (const auto& [control, before] : places)
      if (b.ContainerWidget()->grab(before.first).toImage() != before.second)
        changed += control->Name() + " ";
    EXPECT_TRUE(counts[step] == 0 || std::ranges::count(changed, ' ') == counts[step])
        << step << ": " << changed;
  }
  for (const bool focused : {true, false}) {
    (focused ? static_cast<Control&>(b.bar) : b.button).SetFocus();
    const QColor edge = b.bar.Widget()->grab().toImage().pixelColor(0, 5);
    EXPECT_EQ(edge == b.bar.Widget()->palette().color(QPalette::Highlight), focused);
  }
}

/// Other alphabets would spoil it, quotes, and the marks of menus and of formatted text.
constexpr const char* kWords = "Łódź \"née\" & 'ßé' <b>…</b>";

TEST_F(ShownControls, KeepAnyWords) {
  ControlsBench& b = bench;
  const CheckBox ticked(b, "ticked", kWords);
  const CommandButton pressed(b, "pressed", kWords);
  ListBox listed(b, "listed", {kWords});
  const Menu named(b, "named", kWords);
  const MenuItem item(b.menu, "item", kWords);
  listed.SetListIndex(0), b.label.SetCaption(kWords), b.text.SetText(kWords);
  b.push.SetToolTip("Redo"), b.push.SetCaption(kWords);
  b.SetCaption(kWords), b.grid.SetText(kWords), b.grid.SetRow(1), b.grid.SetText(kWords);
  b.rule.SetToolTip(kWords, kWords), b.rule.SetToolTip("Redo"), b.glide.SetToolTip(kWords, kWords);
  b.glide.SetAccessibleDescription(kWords), canvas.TakeKeyboard(), canvas.SetAccessibleItem(kWords);
  b.button.SetFocus();
  support::HandleEvents();
  told.clear();
  canvas.SetFocus();
  support::HandleEvents();
  EXPECT_THAT(told, testing::ElementsAre(testing::StartsWith("focus: " + std::string(kWords) + " in ")));
  const auto* model = static_cast<QTableView*>(b.grid.Widget())->model();
  const auto spoken = [](const Control& of) { return QAccessible::queryAccessibleInterface(of.Widget()); };
  for (const std::string& kept : {listed.Text(), b.label.Caption(), b.text.Text(), b.push.caption(),
                                  b.Caption(), b.grid.TextMatrix(0, 0), b.grid.TextMatrix(1, 0)})
    EXPECT_EQ(kept, kWords);
  for (const QString& kept :
       {ticked.Widget()->property("text").toString(), pressed.Widget()->property("text").toString(),
        text->property("text").toString(), b.MenuBar()->actions().back()->text(),
        b.menu.Widget()->actions().back()->text(), b.TopWidget()->windowTitle(),
        b.push.Widget()->accessibleName(), b.rule.Widget()->accessibleName(),
        spoken(b.label)->text(QAccessible::Name), spoken(b.glide)->text(QAccessible::Name),
        spoken(b.glide)->text(QAccessible::Description), spoken(canvas)->child(0)->text(QAccessible::Name),
        model->headerData(0, Qt::Horizontal).toString(), model->index(0, 0).data().toString()})
    EXPECT_EQ(kept, kWords);
  EXPECT_EQ(b.glide.Widget()->toolTip(), QString("%1 (%1)").arg(kWords));
  EXPECT_LT(MaskOf({"", 20}, "éé", 1).advance, 1.2 * MaskOf({"", 20}, "ee", 1).advance) << "on a canvas";
}

TEST(Accessible, AReaderIsToldOfTheItemWithTheFocusAndOfANotice) {
  QWidget window;
  window.setAccessibleName("window");
  auto* list = new QWidget(&window);
  list->setGeometry(10, 20, 30, 40);
  list->setFocusPolicy(Qt::StrongFocus);
  list->setAccessibleName("list");
  SetAccessibleRole(list, QAccessible::List);
  const QAccessibleInterface* const strip = QAccessible::queryAccessibleInterface(list);
  TellAccessibleItem(list);
  EXPECT_EQ(strip->childCount(), 0);
  SetAccessibleItem(list, "Cell 1");
  ASSERT_EQ(strip->childCount(), 1);
  EXPECT_EQ(strip->indexOfChild(strip->child(0)), 0);
  EXPECT_EQ(strip->focusChild(), nullptr);
  EXPECT_TRUE(strip->child(0)->state().focusable && strip->child(0)->state().invisible);
  EXPECT_FALSE(strip->child(0)->state().focused);
  window.show();
  list->setFocus();
  support::HandleEvents();
  EXPECT_EQ(strip->focusChild(), strip->child(0));
  const auto first = QAccessible::uniqueId(strip->child(0));
  for (const char* item : {"Cell 1", "Cell 2"}) SetAccessibleItem(list, item);
  EXPECT_NE(QAccessible::accessibleInterface(first), nullptr) << "a reader may look back";
  Announce(list, "Stamped");
  EXPECT_THAT(told, testing::ElementsAre("focus: Cell 2 in list", "notice: Stamped in window"));
  const QAccessibleInterface* const cell = strip->child(0);
  EXPECT_EQ(cell->rect(), strip->rect());
  EXPECT_FALSE(cell->state().invisible);
  delete list;
  EXPECT_FALSE(cell->isValid());
  EXPECT_EQ(cell->rect(), QRect());
}

TEST(Pictures, AreReadByWhatTheyHoldAndShownAtEachScale) {
  const std::string file = support::ScratchFolder() + "/a@2x.bmp";
  QImage clear(3, 2, QImage::Format_ARGB32);
  clear.fill(QColor(1, 2, 3, 128));
  for (const QImage& image : {Plain(Qt::red, 4), clear}) {
    ASSERT_TRUE(image.save(QString::fromStdString(file), "PNG"));
    const auto read = Picture::Load(file);
    EXPECT_EQ(QSize(read->Width(), read->Height()), image.size());
    EXPECT_EQ(read->Image().devicePixelRatio(), 1);
    EXPECT_EQ(read->Image().format(),
              image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  }
  EXPECT_THAT([] { Picture::Load("/"); },
              testing::ThrowsMessage<std::runtime_error>("Can't read the picture \"/\": Not a regular file"));
  EXPECT_NE(ProgramIcon("recorder").pixmap(32).toImage(), ProgramIcon("app").pixmap(32).toImage());
  const Picture twin(Plain(Qt::red, 4), Plain(Qt::blue, 8)), lone(Plain(Qt::red, 4));
  for (const auto& [scale, side, dense] :
       {std::tuple(1.0, 4, false), {1.5, 6, true}, {2.0, 8, true}, {3.0, 12, true}, {0.5, 2, false}}) {
    EXPECT_EQ(twin.ImageAt(scale), Plain(dense ? Qt::blue : Qt::red, side)) << scale;
    EXPECT_EQ(lone.ImageAt(scale), Plain(Qt::red, side)) << scale;
  }
}

}  // namespace
}  // namespace platform
