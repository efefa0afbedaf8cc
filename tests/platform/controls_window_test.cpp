// Windows that load on the first touch, the grid's events, the canvas that keeps its picture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QTreeView>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <filesystem>

#include "platform/Accessible.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/DarkGround.h"
#include "platform/Grid.h"
#include "platform/Lifetime.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Texts = std::vector<std::string>;

/// What a screen reader finds: the name, a letter for each state, where it is, what is in it.
std::string Spoken(const QAccessibleInterface* thing) {
  const QAccessible::State is = thing->state();
  const QAccessibleInterface* parent = thing->parent();
  std::string all = thing->text(QAccessible::Name).toStdString() + " ";
  for (const auto& [state, letter] : {std::pair(is.focusable, 'f'), {is.focused, 'F'}, {is.invisible, 'i'}})
    if (state) all += letter;
  if (parent && thing->rect() == parent->rect()) all += parent->text(QAccessible::Name).toStdString();
  return all + std::to_string(thing->childCount()) + std::to_string(thing->indexOfChild(thing));
}

/// What a reader was told of that is no widget.
Texts told;

}  // namespace
}  // namespace platform

// Without a screen the toolkit has nobody to tell, so it is told here.
void QAccessible::updateAccessibility(QAccessibleEvent* event) {
  QAccessibleInterface* const thing = event->accessibleInterface();
  if (thing == nullptr || thing->object() != nullptr) return;
  const bool item = event->type() == Focus && thing->role() == ListItem;
  const bool notice = event->type() == ObjectShow && thing->role() == Notification;
  platform::told.push_back((item ? "focus: " : notice ? "notice: " : "?") + platform::Spoken(thing));
}

namespace platform {
namespace {

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
  const auto press = [this](int row, Qt::MouseButton button, QEvent::Type type = QEvent::MouseButtonPress) {
    const QPoint at = view->visualRect(view->model()->index(row - 1, 0)).center();
    support::Mouse(view->viewport(), type, at, button);
    support::HandleEvents();
    return grid.Row();
  };
  grid.SetRows(4);
  support::HandleEvents();
  grid.SetRows(3);
  EXPECT_EQ(press(3, Qt::LeftButton), 0);
  EXPECT_EQ(press(1, Qt::RightButton), 0) << "nor does the right button choose a cell";
  EXPECT_EQ(press(2, Qt::LeftButton), 2);
  EXPECT_EQ(press(1, Qt::LeftButton, QEvent::MouseButtonDblClick), 1);
  Take();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::LeftButton}) {
    support::Release(view->horizontalHeader()->viewport(), {5, 5}, button);
    EXPECT_EQ(Take().size(), button == Qt::LeftButton ? 1U : 0U) << "the header is a row of the grid";
  }
}

TEST_F(ShownSample, KeepsTheTextsOfTheCellsThatRemain) {
  int changes = 0;
  QObject::connect(view->model(), &QAbstractItemModel::dataChanged, [&] { ++changes; });
  const auto texts = [this] {
    support::HandleEvents();
    EXPECT_EQ(view->model()->rowCount(), grid.Rows() - 1);
    std::string all;
    for (int row = 0; row < grid.Rows(); ++row, all += ";")
      for (int col = 0; col < view->model()->columnCount(); ++col) all += grid.TextMatrix(row, col) + ",";
    return all;
  };
  EXPECT_EQ(texts(), ",,,;,,,;,,,;,,,;,,,;");
  for (int cell = 0; cell < 15; ++cell) {
    grid.SetRow(cell / 3);
    grid.SetCol(cell % 3);
    grid.SetText(std::string(1, static_cast<char>('a' + cell)));
  }
  Take();
  grid.SetRows(3);
  grid.SetRows(4);
  EXPECT_EQ(texts(), "a,b,c,;d,e,f,;g,h,i,;,,,;");
  grid.SetCols(2);
  EXPECT_THAT(Take(), ElementsAre("leave 4,2", "reach 2,2", "leave 2,2", "reach 2,1"));
  EXPECT_EQ(texts(), "a,b,;d,e,;g,h,;,,;");
  grid.SetCols(1);
  EXPECT_EQ(texts(), "a,;d,;g,;,;");
  EXPECT_THROW(grid.SetRows(0), ControlError);
  EXPECT_THROW(grid.SetCols(0), ControlError);
  changes = 0;
  grid.SetText("z");
  support::HandleEvents();
  grid.Clear();
  support::HandleEvents();
  EXPECT_EQ(changes, 2) << "seen without a move";
  grid.SetRow(0);
  for (const int rows : {1, 2}) {
    grid.SetRows(rows);
    EXPECT_EQ(texts(), rows == 1 ? ",;" : ",;,;");
  }
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
  static int scrolled = 0;
  grid.Scroll = [&] { ++scrolled; };
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
  scrolled = 0;
  bar.setValue(90);
  EXPECT_EQ(scrolled, 1);
  grid.BringIntoView();
  EXPECT_EQ(bar.value(), 51);
  bar.setValue(20);
  grid.SetText("M ");
  support::HandleEvents();
  EXPECT_EQ(bar.value(), 46) << "a text is no step";
  grid.SetHeight(65);
  grid.SetRow(60);
  support::HandleEvents();
  EXPECT_EQ(bar.value(), 59) << "the only row that is seen";
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
  canvas.Widget()->setFocusPolicy(Qt::StrongFocus);
  canvas.SetFocus();
  EXPECT_EQ(drawn(view->viewport(), {20}), "ffffff==+ ") << "another control has the keyboard";
  grid.SetRow(0);
  grid.SetCol(1);
  EXPECT_EQ(drawn(view->horizontalHeader(), {18, 19, 20}), "......... ......FF. ......FF. ");
  // Nothing of the sheet's form is the user's to change.
  const QHeaderView &rows = *view->verticalHeader(), &cols = *view->horizontalHeader();
  EXPECT_TRUE(rows.isHidden() && !cols.highlightSections() && !view->wordWrap() && !view->tabKeyNavigation());
  EXPECT_EQ(cols.sectionResizeMode(0), QHeaderView::Fixed);
  EXPECT_EQ(view->editTriggers(), QAbstractItemView::NoEditTriggers);
  EXPECT_EQ(view->selectionMode(), QAbstractItemView::SingleSelection);
  EXPECT_EQ(view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
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
  grid.MoveTwips(15, 30, 0, 0);
  EXPECT_EQ(view->geometry(), QRect(1, 2, 0, 0));
  EXPECT_THROW(grid.BackColor(), ControlError);
  EXPECT_THROW(grid.SetBackColor(0), ControlError);
  EXPECT_THROW(grid.ForeColor(), ControlError);
  EXPECT_THROW(grid.SetForeColor(0), ControlError);
  const std::size_t controls = sample->Controls().size();
  const QPointer undo = TextBox(*sample, "vl_button11").Widget();
  EXPECT_EQ(undo, nullptr);
  EXPECT_EQ(sample->Controls().size(), controls);
  TextBox field(*sample, "field");
  EXPECT_EQ(sample->Controls().back(), &field);
  EXPECT_EQ(field.Widget()->objectName(), "field");
  field.SetToolTip("Undo", "Ctrl+Z");
  EXPECT_EQ(field.Widget()->toolTip() + field.Widget()->accessibleName(), "Undo (Ctrl+Z)Undo");
  field.SetToolTip("Redo");
  EXPECT_EQ(field.Widget()->toolTip() + field.Widget()->accessibleName(), "RedoUndo");
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

/// A box as its reader has it.
Texts Seen(const QMessageBox& box) {
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
    RunLater([&c, dark] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      EXPECT_THAT(Seen(*box), ElementsAre("Exposure Sheet", "Go <b>on</b>?", "asks", "over the window",
                                          dark ? "dark" : "bright", "", "arrow"));
      c.pressed == QMessageBox::NoButton ? box->done(c.pressed) : box->button(c.pressed)->click();
    });
    EXPECT_EQ(MsgBox("Go <b>on</b>?", c.buttons, Icon::Question), c.answer);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    support::HandleEvents();
    EXPECT_EQ(QApplication::activeWindow(), sample->TopWidget()) << "it has the keyboard again";
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
    std::string before, begins, proposal, stands, typed, chosen;  // nothing typed: Cancel
  } cases[] = {{false, "", home, "", "", old, old},
               {true, old, folder, "frog.exp", "frog.exp", "", old},
               {true, old, folder, "frog.exp", "frog.exp", "toad", folder + "/toad.exp"},
               {true, "/gone/toad.exp", folder, "", "toad.exp", "newt.txt", folder + "/newt.txt"},
               {true, home + "/toad.exp", home, "", "toad.exp", "", home + "/toad.exp"}};
  for (const auto& c : cases) {
    dialog.FileName = c.before;
    RunLater([&] {
      auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      auto* name = box->findChild<QLineEdit*>("fileNameEdit");
      EXPECT_EQ(box->windowTitle(), "Select an exposure sheet");
      EXPECT_EQ(box->nameFilters(), QStringList({"Exposure sheet (*.exp *.EXP)", "All files (*)"}));
      EXPECT_EQ(box->acceptMode(), c.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
      EXPECT_EQ(box->fileMode(), c.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
      EXPECT_EQ(box->directory().path().toStdString(), c.begins);
      EXPECT_EQ(name->text().toStdString(), c.stands);
      // Room for long names, sizes and dates, in letters.
      const int letter = box->fontMetrics().averageCharWidth();
      EXPECT_GE(box->width(), (22 + 40 + 14 + 22 + 27 + 8) * letter);
      EXPECT_GE(box->height(), 68 * letter);
      const auto* columns = box->findChild<QTreeView*>("treeView")->header();
      for (const auto& [column, letters] : {std::pair(0, 40), {1, 14}, {2, 22}})
        EXPECT_EQ(columns->sectionSize(column), letters * letter) << column;
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

TEST(Accessible, AReaderIsToldOfTheItemWithTheFocusAndOfANotice) {
  QWidget window;
  window.setAccessibleName("@window");
  auto* list = new QWidget(&window);
  list->setGeometry(10, 20, 30, 40);
  list->setFocusPolicy(Qt::StrongFocus);
  list->setAccessibleName("@list");
  SetAccessibleRole(list, QAccessible::List);
  const QAccessibleInterface* const strip = QAccessible::queryAccessibleInterface(list);
  TellAccessibleItem(list);
  EXPECT_EQ(strip->childCount(), 0);
  SetAccessibleItem(list, "Cell 1");
  EXPECT_EQ(strip->childCount(), 1);
  EXPECT_EQ(strip->indexOfChild(strip->child(0)), 0);
  EXPECT_EQ(strip->indexOfChild(strip), -1);
  EXPECT_EQ(strip->focusChild(), nullptr);
  EXPECT_EQ(Spoken(strip->child(0)), "Cell 1 fi@list0-1");
  window.show();
  list->setFocus();
  support::HandleEvents();
  EXPECT_EQ(strip->focusChild(), strip->child(0));
  for (const char* item : {"Cell 1", "Cell 2"}) SetAccessibleItem(list, item);
  Announce(list, "Stamped");
  EXPECT_THAT(told, ElementsAre("focus: Cell 2 fF@list0-1", "notice: Stamped @window0-1"));
  const QAccessibleInterface* const cell = strip->child(0);
  delete list;
  EXPECT_FALSE(cell->isValid());
  EXPECT_EQ(Spoken(cell), "Cell 2 fi0-1");
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
  const auto fail_while_painting = [] {
    sample->Show();
    support::HandleEvents();
    sample->canvas.Paint = [] { throw std::runtime_error("ink"); };
    sample->canvas.Widget()->repaint();
    RunEvent([] { std::fputs("ran", stderr); });
    support::HandleEvents();
  };
  EXPECT_EXIT(fail_while_painting(), testing::ExitedWithCode(1),
              AllOf(HasSubstr("ink\nread"), Not(HasSubstr("ran"))));
}

}  // namespace
}  // namespace platform
