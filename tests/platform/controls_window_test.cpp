// Windows that load on the first touch, the grid's events, the canvas that keeps its picture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <filesystem>

#include "platform/Application.h"
#include "platform/Grid.h"
#include "platform/Lifetime.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

struct Sample : Window {
  Sample()
      : Window({.name = "Sample", .caption = "", .client_width = 300, .client_height = 200, .icons = {}}) {
    grid.Move(0, 0, 200, 150);
    canvas.Move(200, 0, 50, 40);
  }
  void Form_Load() override { ++loads; }
  void Form_Unload(Flag& cancel) override { cancel = refuses ? kTrue : kFalse; }

  Grid grid{*this, "grid", 5, 3};
  PictureBox canvas{*this, "canvas"};
  bool refuses = false;
  static inline int loads = 0;
};

WindowInstance<Sample> sample;

TEST(Windows, LoadOnTheFirstTouchAndAnewAfterAnUnload) {
  sample.Hold();
  EXPECT_EQ(Sample::loads, 0) << "holding a window doesn't load it";
  EXPECT_EQ(sample.IfLoaded(), nullptr);
  sample->grid.SetRow(2);
  EXPECT_EQ(LoadedWindowCount(), 1);
  sample->refuses = true;
  EXPECT_FALSE(sample.Unload());
  EXPECT_EQ(sample->grid.Row(), 2);
  EXPECT_EQ(Sample::loads, 1);
  sample->refuses = false;
  EXPECT_TRUE(sample.Unload());
  EXPECT_EQ(LoadedWindowCount(), 0);
  EXPECT_EQ(sample->grid.Row(), 0) << "a window touched again starts afresh";
  EXPECT_EQ(Sample::loads, 2);
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
      if (told_twice) WindowCountHasChanged();
      QTimer::singleShot(50, [] { QCoreApplication::exit(7); });
    });
    return QCoreApplication::exec();
  };
  EXPECT_EQ(end_with_the_window(true), 7);
  EXPECT_EQ(questions, 1);
  AskBeforeEnd(nullptr);
  EXPECT_EQ(end_with_the_window(false), 0);
}

/// The sample window on the screen, and what its grid raised, with the cell that was current at that time.
struct ShownSample : testing::Test {
  ShownSample() {
    sample->Show();
    support::HandleEvents();
    grid.LeaveCell = [this] { Note("leave "); };
    grid.SelChange = [this] { Note("reach "); };
    grid.Click = [this] { Note("click "); };
  }
  void Note(const char* what) {
    seen.push_back(what + std::to_string(grid.Row()) + "," + std::to_string(grid.Col()));
  }
  Texts Take() { return std::exchange(seen, {}); }

  Grid& grid = sample->grid;
  QTableView* view = static_cast<QTableView*>(grid.Widget());
  PictureBox& canvas = sample->canvas;
  Texts seen;
};

TEST_F(ShownSample, ComesBackFromAmongTheMinimisedWindows) {
  view->window()->showMinimized();
  support::HandleEvents();
  sample->Show();
  support::HandleEvents();
  EXPECT_FALSE(view->window()->isMinimized());
}

TEST_F(ShownSample, RaisesTheGridsEventsInsideTheMoveAndOnlyWhenTheCellChanges) {
  grid.SetRow(2);
  EXPECT_THAT(Take(), ElementsAre("leave 0,0", "reach 2,0"));
  grid.SetRow(2);
  grid.SetCol(0);
  EXPECT_THROW(grid.SetRow(5), ControlError);
  EXPECT_THROW(grid.SetRow(-1), ControlError);
  EXPECT_THROW(grid.SetCol(3), ControlError);
  EXPECT_THAT(Take(), IsEmpty());
  grid.SetRow(3);
  Take();
  grid.SetRows(3);
  EXPECT_THAT(Take(), ElementsAre("leave 3,0", "reach 2,0")) << "the current row was cut off";
  const int row_1 = PixelsFromTwips(grid.RowPos(2) - grid.RowPos(1)) / 2;
  const int col_1 = PixelsFromTwips(grid.ColPos(1)) + 3;
  for (const QPoint at : {QPoint(col_1, row_1), QPoint(3, 140)}) {
    support::Press(view->viewport(), at);
    const QModelIndex before = view->currentIndex();
    support::DragTo(view->viewport(), QPointF(col_1, 2 * row_1 + 3));
    EXPECT_EQ(view->currentIndex(), before) << "a drag is no more than its press";
    support::Release(view->viewport(), at);
  }
  EXPECT_THAT(Take(), ElementsAre("leave 2,0", "reach 1,1", "click 1,1", "click 1,1"))
      << "below the last row nothing is left or reached";
}

TEST_F(ShownSample, APressOnARowThatHasJustGoneIsPassedOver) {
  grid.SetRows(6);
  support::HandleEvents();
  const QPoint last = view->visualRect(view->model()->index(4, 0)).center();
  grid.SetRows(3);
  support::Press(view->viewport(), last);
  support::HandleEvents();
  support::Press(view->viewport(), view->visualRect(view->model()->index(1, 0)).center(), Qt::RightButton);
  EXPECT_EQ(grid.Row(), 0) << "nor does the right button choose a cell";
}

TEST_F(ShownSample, KeepsTheTextsOfTheRowsThatRemain) {
  grid.SetRow(1);
  grid.SetText("kept");
  grid.SetRow(4);
  grid.SetText("lost");
  grid.SetRows(2);
  grid.SetRows(6);
  grid.SetCols(2);
  EXPECT_EQ(grid.TextMatrix(1, 0), "kept");
  EXPECT_EQ(grid.TextMatrix(4, 0), "");
  EXPECT_THROW(grid.SetRows(0), ControlError);
  grid.Clear();
  EXPECT_EQ(grid.TextMatrix(1, 0), "");
}

TEST_F(ShownSample, LetsKeysWalkTheGrid) {
  grid.SetRows(100);
  grid.SetCol(1);
  const struct {
    int key, row, col;
  } steps[] = {{Qt::Key_Down, 1, 1}, {Qt::Key_Up, 1, 1},   {Qt::Key_Down, 2, 1}, {Qt::Key_Right, 2, 2},
               {Qt::Key_End, 99, 2}, {Qt::Key_Home, 1, 2}, {Qt::Key_Left, 1, 1}};
  for (const auto& step : steps) {
    support::Key(view, step.key);
    EXPECT_EQ(grid.Row(), step.row) << step.key;
    EXPECT_EQ(grid.Col(), step.col) << step.key;
  }
  support::Key(view, Qt::Key_PageDown);
  EXPECT_GT(grid.Row(), 4);
  int let_go = 0;
  grid.KeyUp = [&](int, int) { ++let_go; };
  for (const bool repeats : {true, false}) {
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Delete, Qt::NoModifier, {}, repeats);
    QApplication::sendEvent(view, &up);
    EXPECT_EQ(let_go, repeats ? 0 : 1) << "a held key is let go once";
  }
}

TEST_F(ShownSample, ShowsWhereTheCurrentCellIs) {
  QScrollBar& bar = *view->verticalScrollBar();
  grid.SetRows(100);
  grid.SetRow(50);
  // Six rows are seen, 19 pixels each, below a header of 21; a step leaves a third of them ahead.
  EXPECT_EQ(grid.RowPos(50), TwipsFromPixels(21 + 3 * 19));
  EXPECT_EQ(std::pair(bar.value(), grid.RowPos(0)), std::pair(46, 0));
  grid.SetRow(49);
  grid.Refresh();
  EXPECT_EQ(view->currentIndex().row(), 48);
  support::Press(view->viewport(), {5, 5 * 19 + 5});
  support::HandleEvents();
  EXPECT_EQ(std::pair(bar.value(), grid.Row()), std::pair(46, 52)) << "a clicked row stays where it is";
  static int scrolled = 0;
  grid.Scroll = [&] { ++scrolled; };
  bar.setValue(90);
  EXPECT_EQ(scrolled, 1);
  grid.BringIntoView();
  EXPECT_EQ(bar.value(), 51);
  bar.setValue(20);
  grid.SetText("M ");
  support::HandleEvents();
  EXPECT_EQ(bar.value(), 46) << "a text is no step";
  for (const int seen_from : {0, 30}) {
    grid.SetRow(0);
    grid.SetText("Frame");
    support::HandleEvents();
    EXPECT_EQ(bar.value(), seen_from) << "only going there shows the first rows";
    bar.setValue(30);
  }
}

TEST_F(ShownSample, DrawsLinesBetweenCellsAndAFrameAroundTheCurrentOne) {
  for (int col = 0; col < 3; ++col) grid.SetColWidth(col, TwipsFromPixels(40));
  const QColor line(214, 218, 224), row(226, 232, 240), grey(140, 148, 160);
  const QColor marked = view->palette().color(QPalette::Highlight);
  const auto drawn = [&](QWidget* widget, std::initializer_list<int> ys) {
    support::HandleEvents();
    const QImage image = widget->grab().toImage();
    std::string all;
    for (const int y : ys) {
      for (const int x : {0, 1, 2, 37, 38, 39, 40, 78, 79}) {
        const QColor at = image.pixelColor(x, y);
        all += at == line ? '+' : at == row ? '=' : at == marked ? 'F' : at == grey ? 'f' : '.';
      }
      all += ' ';
    }
    return all;
  };
  view->setFocus();
  grid.SetRow(2);
  EXPECT_EQ(drawn(view->viewport(), {9, 17, 18, 19, 20, 21, 35, 36, 37}),
            ".....+..+ .....+..+ +++++++++ FFFFFF==+ FFFFFF==+ FF==FF==+ FF==FF==+ FFFFFF==+ FFFFFF+++ ");
  view->clearFocus();
  EXPECT_EQ(drawn(view->viewport(), {20}), "ffffff==+ ") << "the keyboard is elsewhere";
  grid.SetRow(0);
  grid.SetCol(1);
  EXPECT_EQ(drawn(view->horizontalHeader(), {18, 19, 20}), "......... ......FF. ......FF. ");
  // Nothing of the sheet's form is the user's to change.
  const QHeaderView &rows = *view->verticalHeader(), &cols = *view->horizontalHeader();
  EXPECT_TRUE(rows.isHidden() && !cols.highlightSections() && !view->wordWrap() &&
              !view->tabKeyNavigation() && cols.sectionResizeMode(0) == QHeaderView::Fixed &&
              view->editTriggers() == QAbstractItemView::NoEditTriggers &&
              view->selectionMode() == QAbstractItemView::SingleSelection);
}

TEST_F(ShownSample, RaisesOnlyTheLastOfQueuedMovesAndThatBeforeARelease) {
  const auto note = [this](const char* what) {
    return [this, what](std::int16_t button, std::int16_t, float x, float) {
      seen.push_back(what + std::to_string(button) + " at " + std::to_string(static_cast<int>(x)));
    };
  };
  canvas.MouseMove = note("move ");
  canvas.MouseUp = note("up ");
  for (const int x : {10, 20, 30}) support::DragTo(canvas.Widget(), QPointF(x, 5));
  support::HandleEvents();
  EXPECT_THAT(Take(), ElementsAre("move 1 at 30"));
  for (const int x : {20, 15}) support::DragTo(canvas.Widget(), QPointF(x, 5));
  support::Release(canvas.Widget(), {12, 5});
  support::HandleEvents();
  EXPECT_THAT(Take(), ElementsAre("move 1 at 15", "up 1 at 12"));
  canvas.MouseDown = note("down ");
  support::DragTo(canvas.Widget(), {25, 5}, Qt::RightButton);
  support::Press(canvas.Widget(), {26, 5});
  EXPECT_THAT(seen, ElementsAre("move 2 at 25", "down 1 at 26"));
}

TEST_F(ShownSample, RefusesSizesBelowNothingAndShowsAFieldFromItsStart) {
  for (const auto& [width, height] : {std::pair(-1, 5), {5, -1}})
    EXPECT_THROW(grid.Move(0, 0, width, height), ControlError) << width;
  TextBox field(*sample, "field");
  field.Move(0, 0, 30, 20);
  field.SetReadOnly(true);
  field.SetText("a text that is wider than its field");
  EXPECT_EQ(static_cast<QLineEdit*>(field.Widget())->cursorPosition(), 0);
  // A caption is set in letters small enough to end before the label does.
  Label label(*sample, "label", "Velocity track");
  label.Move(0, 0, label.Widget()->fontMetrics().horizontalAdvance("Velocity track") * 4 / 5, 17);
  const QImage caption = label.Widget()->grab().toImage();
  EXPECT_EQ(caption.copy(caption.width() - 4, 0, 4, 17), caption.copy(0, 0, 1, 1).scaled(4, 17));
}

TEST_F(ShownSample, IsTheOwnerOfAWindowShownBesideIt) {
  WindowInstance<Sample> other;
  other->ShowOwnedBy(*sample);
  const QWidget* owned = other->grid.Widget()->window();
  EXPECT_EQ(owned->windowHandle()->transientParent(), view->window()->windowHandle());
  EXPECT_EQ(owned->pos() - view->window()->frameGeometry().topLeft(), QPoint(48, 72));
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
  for (const auto& c : cases) {
    RunLater([&c] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      EXPECT_EQ(box->text(), "Go <b>on</b>?");
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      c.pressed == QMessageBox::NoButton ? box->done(c.pressed) : box->button(c.pressed)->click();
    });
    EXPECT_EQ(MsgBox("Go <b>on</b>?", c.buttons), c.answer);
  }
}

TEST(FileDialog, BeginsWhereTheLastOneEndedAndGivesTheEnding) {
  CommonDialog dialog("Select an exposure sheet", "Exposure sheet|*.exp");
  const std::string home = support::ScratchFolder(), folder = home + "/sheets";
  setenv("HOME", home.c_str(), 1);
  std::filesystem::create_directory(folder);
  const std::string old = support::WriteScratch("sheets/old.exp", "");
  const struct {
    bool save;
    std::string proposal, stands, typed, chosen;  // nothing typed: Cancel
  } cases[] = {{false, "", "", old, old},
               {true, "frog.exp", "frog.exp", "", old},
               {true, "frog.exp", "frog.exp", "toad", folder + "/toad.exp"},
               {true, "", "toad.exp", "newt.txt", folder + "/newt.txt"}};
  for (const auto& c : cases) {
    RunLater([&] {
      auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      auto* name = box->findChild<QLineEdit*>("fileNameEdit");
      EXPECT_EQ(box->windowTitle(), "Select an exposure sheet");
      EXPECT_EQ(box->nameFilters(), QStringList({"Exposure sheet (*.exp *.EXP)", "All files (*)"}));
      EXPECT_EQ(box->directory().path().toStdString(), c.save ? folder : home);
      EXPECT_EQ(name->text().toStdString(), c.stands);
      EXPECT_GT(box->width(), (22 + 40 + 14 + 22 + 27) * box->fontMetrics().averageCharWidth());
      if (c.typed.empty()) return box->reject();
      name->setText(QString::fromStdString(c.typed));
      static_cast<QDialog*>(box)->accept();
    });
    EXPECT_EQ(c.save ? dialog.ShowSave(c.proposal) : dialog.ShowOpen(), !c.typed.empty());
    EXPECT_EQ(dialog.FileName, c.chosen);
  }
}

TEST(StandingQuestion, EscapeStaysAndOnlyItsOwnButtonLeaves) {
  for (const bool stays : {true, false}) {
    StandingQuestion question("It doesn't answer.", "Keep waiting", "Give up");
    EXPECT_EQ(question.Answer(), std::nullopt);
    QWidget* const box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    for (auto* button : box->findChildren<QPushButton*>())
      if (!stays && button->text() == "Give up") button->click();
    if (stays) support::Key(box, Qt::Key_Escape);
    EXPECT_EQ(question.Answer(), stays);
  }
}

TEST_F(ShownSample, DrawsWhatWasPutOffOnceAndBeforeItIsRead) {
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

TEST_F(ShownSample, KeepsACanvasPictureWhenItGrows) {
  canvas.SetBackColor(Rgb(9, 9, 9));
  FillBox(canvas.Pixels(), {0, 0, 5, 5}, Rgb(200, 0, 0));
  canvas.SetWidth(80);
  EXPECT_EQ(canvas.Point(4, 4), Rgb(200, 0, 0));
  EXPECT_EQ(canvas.Point(5, 5), Rgb(9, 9, 9));
  EXPECT_EQ(canvas.Point(70, 2), Rgb(9, 9, 9));
  EXPECT_THROW(canvas.SetWidth(-1), ControlError);
}

/// A widget whose events no routine of ours guards.
struct Toy : QWidget {
  explicit Toy(QEvent::Type type) : fails_at(type) {}
  bool event(QEvent* event) override {
    if (event->type() == fails_at) throw std::runtime_error("unguarded");
    return QWidget::event(event);
  }
  QEvent::Type fails_at;
};

TEST(EventsDeathTest, AFailureInWhateverTheToolkitCallsIsReported) {
  AnswerMessagesWith([](const Message& message) {
    std::fputs(message.text.c_str(), stderr);
    return Answer::Ok;
  });
  const auto expect_report = [](const char* what, const std::function<void()>& routine) {
    const auto run = [&] {
      routine();
      support::HandleEvents();
      std::fputs("went on", stderr);
      std::_Exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "can't go on and ends") << what;
  };
  expect_report("a drawing that was put off, at its paint event", [] {
    sample->Show();
    sample->canvas.Draw = [] { throw std::runtime_error("ink"); };
    sample->canvas.DrawLater();
    sample->canvas.Widget()->repaint();
  });
  expect_report("a canvas that another size makes draw", [] {
    sample->Show();
    sample->canvas.Resize = [] { throw std::runtime_error("ink"); };
    sample->canvas.Widget()->resize(80, 80);
  });
  for (const QEvent::Type type : {QEvent::Paint, QEvent::Timer, QEvent::Wheel, QEvent::Show})
    expect_report("an event of a widget", [type] {
      Toy toy(type);
      toy.resize(50, 50);
      toy.show();
      toy.startTimer(0);
      support::HandleEvents();
      support::Wheel(&toy, 120);
      support::HandleEvents();
    });
  expect_report("a queued call", [] {
    QMetaObject::invokeMethod(
        qApp, [] { throw std::runtime_error("late"); }, Qt::QueuedConnection);
  });
}

TEST(EventsDeathTest, BehindAReportNothingRunsButPainting) {
  AnswerMessagesWith([](const Message&) {
    RunLater([] { std::fputs("ran", stderr); });
    RunEvent([] { throw std::runtime_error("again"); });
    support::HandleEvents();
    std::fputs("read", stderr);
    return Answer::Ok;
  });
  const auto fail = [] {
    sample->Show();
    support::HandleEvents();  // painting, after which a report comes at once as before
    static Timer timer(*sample, "clock", 0);
    timer.Tick = [] { std::fputs("ran", stderr); };
    timer.SetEnabled(true);
    RunEvent([] { throw std::runtime_error("first"); });
  };
  EXPECT_EXIT(fail(), testing::ExitedWithCode(1), "first\nread$");
}

}  // namespace
}  // namespace platform
