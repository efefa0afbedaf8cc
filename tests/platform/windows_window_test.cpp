// Windows and the boxes that stand over them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/DarkGround.h"
#include "platform/Dialogs.h"
#include "platform/Lifetime.h"
#include "platform/LongWork.h"
#include "platform/Menu.h"
#include "platform/Picture.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {
namespace {

using testing::ElementsAre;

/// Writes down its own events.
struct Sample : Window {
  explicit Sample(Border border = Border::Sizable, Start start = Start::SystemDefault)
      : Window({"Sample", "A sample", border, start, 400, 300, {":/assets/icons/app-16.png"}}) {}
  void Form_Load() override { log += "load,"; }
  void Form_Paint() override {
    painted = true;
    if (tile) TilePicture(*tile);
  }
  void Form_Resize() override { log += "resize " + std::to_string(ScaleWidth()) + ","; }
  void Form_Unload(Flag& cancel) override {
    log += "unload,";
    EXPECT_TRUE(Unload()) << "it is under way";
    cancel = stays;
  }
  void Form_Terminate() override { log += "end,"; }
  bool Form_KeyDown(const KeyPress& press) override {
    log += "key " + std::to_string(static_cast<int>(press.key)) + ",";
    return true;
  }
  template <typename Routine>
  std::string After(const Routine& routine) {
    log.clear();
    routine();
    support::HandleEvents();
    return log;
  }

  Menu menu{*this, "menu", "&Menu"};
  std::string log;
  Flag stays = kFalse;
  bool painted = false;
  std::optional<Picture> tile;
};

WindowInstance<Sample> sample;

TEST(Windows, LoadOnTheFirstTouchAndAnewAfterAnUnload) {
  EXPECT_EQ(sample.Hold().log, "") << "holding a window doesn't load it";
  EXPECT_EQ(sample.IfLoaded(), nullptr);
  sample->stays = kTrue;
  EXPECT_EQ(sample->log, "load,");
  EXPECT_EQ(LoadedWindowCount(), 1);
  EXPECT_FALSE(sample.Unload());
  EXPECT_EQ(sample->log, "load,unload,");
  sample->stays = kFalse;
  Sample beside;
  beside.Show();
  for (const bool loads : {false, true}) {
    support::HandleEvents();
    beside.painted = false;
    // Touched again it starts afresh.
    EXPECT_TRUE(loads ? sample->log == "load," : sample.Unload());
    support::HandleEvents();
    EXPECT_TRUE(beside.painted) << "its picture may be seen there";
  }
}

TEST(Windows, GoAllTogetherAtTheEnd) {
  Sample another;
  WindowInstance<Sample> held, shown, unloaded;
  const std::vector<QPointer<QWidget>> tops = {held.Hold().TopWidget(), shown->TopWidget(),
                                               unloaded->TopWidget()};
  shown->Show();
  EXPECT_TRUE(unloaded.Unload());
  EXPECT_EQ(VisibleWindow(), tops[1]) << "not an elder one that isn't on the screen";
  DestroyAllWindows();
  EXPECT_THAT(tops, testing::Each(testing::IsNull()));
  EXPECT_EQ(LoadedWindowCount(), 0);
}

TEST(Windows, AskOnceBeforeTheProcessEndsWithTheLastOfThem) {
  int questions = 0;
  AskBeforeEnd([&questions] {
    ++questions;
    support::HandleEvents();
    return false;
  });
  const auto end_with_the_window = [](bool told_twice) {
    sample->Show();
    QTimer::singleShot(0, [told_twice] {
      sample.Unload();
      QTimer::singleShot(50, [] { QCoreApplication::exit(7); });
      if (told_twice) return WindowCountHasChanged();
      QTimer::singleShot(10, [kept = std::make_shared<KeepAlive>()] {});
    });
    return QCoreApplication::exec();
  };
  EXPECT_EQ(end_with_the_window(true), 7);
  EXPECT_EQ(questions, 1);
  AskBeforeEnd(nullptr);
  EXPECT_EQ(end_with_the_window(false), 0);
}

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
    Sample window(c.border);
    QWidget& top = *window.TopWidget();
    const int before = LoadedWindowCount();
    EXPECT_EQ(window.After([&] { window.Show(); }), "load,resize 400,") << c.type;
    EXPECT_EQ(LoadedWindowCount(), before + 1);
    EXPECT_EQ(top.windowType(), c.type);
    EXPECT_EQ(top.windowFlags().testFlag(Qt::WindowMaximizeButtonHint), c.border == Window::Border::Sizable);
    EXPECT_EQ(top.windowTitle() + top.objectName(), "A sampleSample");
    EXPECT_FALSE(top.windowIcon().isNull());
    EXPECT_EQ(top.minimumSize() == top.maximumSize(), c.fixed);
    EXPECT_EQ(window.ScaleHeight(), 300) << "below the menu bar";
    const int width = c.fixed ? 400 : 300;
    EXPECT_EQ(window.After([&] { window.ResizeClient(width, 300); }), c.fixed ? "" : "resize 300,");
    const QSize menu(0, top.height() - window.ScaleHeight());
    window.LimitClient(200, 100, 500, 400);
    EXPECT_EQ(top.minimumSize() - menu, QSize(200, 100));
    EXPECT_EQ(top.maximumSize() - menu, QSize(500, 400));
    window.LimitClient(0, 0, 0, 0);
    EXPECT_EQ(top.minimumSize(), QSize(0, 0));
    EXPECT_EQ(top.maximumWidth(), QWIDGETSIZE_MAX);
    window.stays = kTrue;
    EXPECT_EQ(window.After([&] { support::Key(&top, Qt::Key_Escape); }), c.fixed ? "unload," : "key 2,");
    EXPECT_TRUE(window.Visible());
    window.stays = kFalse;
    Timer timer(window, "timer", 1);
    timer.Tick = [&window] { window.log += "tick,"; };
    timer.SetEnabled(true);
    EXPECT_EQ(window.After([&] { top.close(), Sleep(5); }), "unload,end,");
    EXPECT_FALSE(window.Visible() || window.Loaded());
    EXPECT_EQ(LoadedWindowCount(), before);
  }
}

TEST(Windows, StandOverWhatTheyBelongToAndComeBackWhenShown) {
  Sample middle(Window::Border::FixedDialog, Window::Start::CenterScreen),
      over(Window::Border::FixedDialog, Window::Start::CenterOwner), beside;
  QWidget& top = *middle.TopWidget();
  const auto from_center = [](Window& window, const QRect& of) {
    return (window.TopWidget()->geometry().center() - of.center()).manhattanLength();
  };
  middle.Show();
  EXPECT_LE(from_center(middle, top.screen()->availableGeometry()), 4);
  top.move(100, 50);
  while (!top.isActiveWindow()) QApplication::processEvents();
  over.Show();
  EXPECT_LE(from_center(over, top.geometry()), 4);
  beside.ShowOwnedBy(middle);
  EXPECT_TRUE(beside.Visible());
  EXPECT_EQ(beside.TopWidget()->windowHandle()->transientParent(), top.windowHandle());
  EXPECT_EQ(beside.TopWidget()->pos() - top.frameGeometry().topLeft(), QPoint(48, 72));
  beside.TopWidget()->move(300, 200);
  beside.ShowOwnedBy(middle);
  EXPECT_EQ(beside.TopWidget()->pos(), QPoint(300, 200)) << "where the user has put it";
  top.showMinimized();
  support::HandleEvents();
  middle.Show();
  support::HandleEvents();
  EXPECT_FALSE(top.isMinimized());
}

TEST(Windows, LayTilesFromTheLeftTopAndDarkenWithThem) {
  Sample window;
  window.Show();
  const auto shown = [&window](int x, int y) {
    support::HandleEvents();
    return window.ContainerWidget()->grab(QRect(x, y, 1, 1)).toImage().pixel(0, 0);
  };
  for (const auto& [side, shade, dark] :
       {std::tuple(4, 90, true), {4, 104, false}, {8, 80, true}, {3, 40, true}}) {
    // Darker on its left.
    QImage tile(side, side, QImage::Format_RGB32);
    tile.fill(QColor(shade + 20, shade + 20, shade + 20));
    QPainter(&tile).fillRect(0, 0, side / 2, side, QColor(shade, shade, shade));
    window.tile.emplace(tile);
    window.Repaint();
    support::HandleEvents();
    EXPECT_EQ(window.GroundIsDark(), dark);
    EXPECT_NEAR(qGray(shown(40 * side, 4 * side)), shade, 6) << side;
    EXPECT_NEAR(qGray(shown(41 * side - 1, 4 * side)), shade + 20, 6) << side;
  }
  window.tile.reset();
  window.SetBackColor(Rgb(130, 131, 132));
  EXPECT_EQ(shown(399, 299), qRgb(130, 131, 132));
  EXPECT_FALSE(window.GroundIsDark());
}

TEST(Windows, PutAPlateBehindWhatALabelSaysOnDarkGround) {
  Sample window;
  Label spoken(window, "spoken", "Velocity"), mute(window, "mute", ""), hidden(window, "hidden", "Velocity");
  int top = 20;
  for (Label* label : {&spoken, &mute, &hidden}) label->Move(20, top, 200, 20), top += 40;
  hidden.SetVisible(false);
  window.Show();
  for (const int shade : {20, 200}) {
    window.SetBackColor(Rgb(shade, shade, shade));
    for (int i = 0; i < 2; ++i) support::HandleEvents();
    const QImage shown = window.ContainerWidget()->grab().toImage();
    const QRgb ground = qRgb(shade, shade, shade), plate = shade == 20 ? qRgb(166, 171, 180) : ground;
    EXPECT_EQ(shown.pixel(18, 30), plate) << "the text begins at 20";
    for (const auto& [x, y] : {std::pair(15, 30), {210, 30}, {18, 70}, {18, 110}})
      EXPECT_EQ(shown.pixel(x, y), ground) << x << ' ' << y;
  }
}

/// A box as its reader has it.
std::vector<std::string> Seen(const QMessageBox& box) {
  const QPushButton* first = box.defaultButton();
  return {box.windowTitle().toStdString(),
          (box.textFormat() == Qt::PlainText ? "" : "?") + box.text().toStdString(),
          box.icon() == QMessageBox::Question ? "asks" : "says",
          box.isModal() && box.parentWidget() == sample->TopWidget() ? "over the window" : "anywhere",
          qGray(box.palette().color(QPalette::Button).rgb()) < 80 ? "dark" : "bright",
          first ? first->text().toStdString() : "",
          QApplication::overrideCursor()->shape() == Qt::ArrowCursor ? "arrow" : "hourglass"};
}

TEST(MessageBox, ClosedWithoutAnAnswerIsNoCancelOrOk) {
  const struct {
    Buttons buttons;
    QMessageBox::StandardButton pressed;
    Answer answer;
  } cases[] = {{Buttons::YesNo, QMessageBox::NoButton, Answer::No},
               {Buttons::OkCancel, QMessageBox::NoButton, Answer::Cancel},
               {Buttons::Ok, QMessageBox::NoButton, Answer::Ok},
               {Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
               {Buttons::YesNo, QMessageBox::No, Answer::No},
               {Buttons::OkCancel, QMessageBox::Ok, Answer::Ok}};
  WindowInstance<Sample> eldest;
  eldest->Show();
  sample->Show();
  support::HandleEvents();
  const BusyPointer busy;
  for (const auto& c : cases) {
    const bool dark = c.answer == Answer::Ok;
    NoteDarkGround(*sample->TopWidget(), dark);
    // As right after another dialog, when none is active yet.
    if (dark) QApplication::setActiveWindow(nullptr);
    RunLater([&c, dark] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      EXPECT_THAT(Seen(*box), ElementsAre("Exposure Sheet", "Go <b>on</b>, née?", "asks", "over the window",
                                          dark ? "dark" : "bright", "", "arrow"));
      c.pressed == QMessageBox::NoButton ? box->done(c.pressed) : box->button(c.pressed)->click();
    });
    EXPECT_EQ(MsgBox("Go <b>on</b>, née?", c.buttons, Icon::Question), c.answer);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    support::HandleEvents();
    EXPECT_EQ(QApplication::activeWindow(), sample->TopWidget()) << "it has the keyboard again";
  }
  sample->Hide();
  QApplication::setActiveWindow(nullptr);
  RunLater([&eldest] {
    EXPECT_EQ(QApplication::activeModalWidget()->parentWidget(), eldest->TopWidget());
    QApplication::activeModalWidget()->close();
  });
  MsgBox("And now?");
}

TEST(WorkingFolder, ThatCantBeIsTold) {
  EXPECT_THAT([] { ChangeDirectory("/no/folder"); },
              testing::ThrowsMessage<std::runtime_error>(
                  "Can't make \"/no/folder\" the working folder: No such file or directory"));
}

TEST(FileDialog, BeginsWhereTheLastOneEndedAndGivesTheEnding) {
  CommonDialog dialog("Select an exposure sheet", "Exposure sheet|*.exp");
  sample->Show();
  const std::string home = support::ScratchFolder(), folder = home + "/für Łódź";
  setenv("HOME", home.c_str(), 1);
  std::filesystem::create_directory(folder);
  const std::string old = support::WriteScratch("für Łódź/old.exp", "");
  const struct {
    bool save;
    std::string before, begins, proposal, stands, typed, chosen;  // nothing typed: Cancel
  } cases[] = {{false, "", home, "", "", old, old},
               {true, old, folder, "frog.exp", "frog.exp", "", old},
               {true, old, folder, "frog.exp", "frog.exp", "toad", folder + "/toad.exp"},
               {true, "/gone/toad.exp", folder, "", "toad.exp", "newt.txt", folder + "/newt.txt"},
               {true, home + "/toad.exp", home, "", "toad.exp", "frog.exp", home + "/frog.exp"},
               {false, "", home, "", "", "", ""}};
  for (const auto& c : cases) {
    dialog.FileName = c.before;
    RunLater([&] {
      auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      auto* name = box->findChild<QLineEdit*>("fileNameEdit");
      EXPECT_EQ(box->windowTitle(), "Select an exposure sheet");
      EXPECT_EQ(box->parentWidget(), sample->TopWidget());
      EXPECT_EQ(box->nameFilters(), QStringList({"Exposure sheet (*.exp *.EXP)", "All files (*)"}));
      EXPECT_EQ(box->acceptMode(), c.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
      EXPECT_EQ(box->fileMode(), c.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
      EXPECT_EQ(box->directory().path().toStdString(), c.begins);
      EXPECT_EQ(name->text().toStdString(), c.stands);
      const int letter = box->fontMetrics().averageCharWidth();
      EXPECT_GE(box->width(), (22 + 40 + 14 + 22 + 27 + 8) * letter)
          << "room for folders, names, sizes and dates";
      EXPECT_EQ(box->findChild<QTreeView*>("treeView")->header()->sectionSize(1), 14 * letter);
      if (c.typed.empty()) return box->reject();
      name->setText(QString::fromStdString(c.typed));
      static_cast<QDialog*>(box)->accept();
    });
    EXPECT_EQ(c.save ? dialog.ShowSave(c.proposal) : dialog.ShowOpen(), !c.typed.empty());
    EXPECT_EQ(dialog.FileName, c.chosen);
  }
}

TEST(StandingQuestion, EscapeStaysAndOnlyItsOwnButtonLeaves) {
  sample->Show();
  NoteDarkGround(*sample->TopWidget(), true);
  support::HandleEvents();
  const BusyPointer busy;
  for (const bool stays : {true, false}) {
    StandingQuestion question("It doesn't <i>answer</i>.", "Keep waiting", "Give up");
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(Seen(*box), ElementsAre("Exposure Sheet", "It doesn't <i>answer</i>.", "asks",
                                        "over the window", "dark", "Keep waiting", "arrow"));
    int inside = 0, outside = 0;
    QTimer beats[2];
    for (QTimer& beat : beats) beat.start(1);
    beats[0].setParent(box->defaultButton());
    beats[0].callOnTimeout([&] { ++inside; });
    beats[1].callOnTimeout([&] { ++outside; });
    Sleep(5);
    EXPECT_EQ(question.Answer(), std::nullopt);
    EXPECT_GT(inside, 0) << "the box lives";
    EXPECT_EQ(outside, 0) << "nothing else does";
    for (auto* button : box->findChildren<QPushButton*>())
      if (!stays && button->text() == "Give up") button->click();
    if (stays) support::Key(box, Qt::Key_Escape);
    EXPECT_EQ(question.Answer(), stays);
    support::HandleEvents();
  }
  AskAfter(std::chrono::milliseconds(0));
  Patience patience("It doesn't answer.", "Give up");
  EXPECT_TRUE(patience.Lasts());
  EXPECT_NE(QApplication::activeModalWidget(), nullptr);
  patience.Restart();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the answer has come";
}

}  // namespace
}  // namespace platform
