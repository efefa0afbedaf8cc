// The main window worked by keyboard, wheel and dropped files, as a user would.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>
#include <filesystem>

#include "app/Form1.h"
#include "platform/Clock.h"
#include "platform/LongWork.h"
#include "sheet/SheetDocument.h"
#include "support/UserInput.h"
#include "support/desk.h"
#include "timeline/velocity_values.h"
#include "timeline/zoom.h"

namespace {

using support::Key;

struct Hands : testing::Test {
  Hands() {
    platform::ReadClockFrom([this] { return now; });
    form.OpenDropped(support::WriteScratch("voice.wav", support::WaveBytes(8, 1000, std::string(5000, 'x'))));
    grid.SetFocus();
    Go(1, 1);
  }
  ~Hands() override { platform::ReadClockFrom(nullptr); }

  void Go(int row, int col) {
    grid.SetRow(row);
    grid.SetCol(col);
    support::HandleEvents();
  }
  void Type(const char* letters, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    for (const QChar letter : QString(letters)) Key(sheet, letter.toUpper().unicode(), keys, QString(letter));
  }

  double now = 100;
  support::Desk desk;
  Form1& form = desk.Main();
  platform::Grid& grid = form.Grid1;
  QWidget* sheet = grid.Widget();
};

TEST_F(Hands, KeysOfTheGridRunAndStopTheSound) {
  ASSERT_EQ(grid.Rows(), 61);
  Key(sheet, Qt::Key_Space, Qt::NoModifier, " ");
  EXPECT_TRUE(form.Timer1.Enabled());
  EXPECT_EQ(grid.Row(), 0);
  Key(sheet, Qt::Key_Space, Qt::NoModifier, " ");
  EXPECT_FALSE(form.Timer1.Enabled());
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
  QApplication::sendEvent(sheet, &held);
  EXPECT_FALSE(form.Timer1.Enabled()) << "a key that is held starts and stops by turns";
  form.vl_button1.Click();
  Key(sheet, Qt::Key_Escape);
  EXPECT_FALSE(form.Timer1.Enabled());
  EXPECT_FALSE(form.Line1.Visible());
}

TEST_F(Hands, LettersPutShapesAndTheRowStays) {
  Type("th");
  EXPECT_EQ(grid.TextMatrix(1, 1), "Th ");
  EXPECT_EQ(sheet::SheetCells.Text(0, 1), "Th ");
  Type("x");
  Type("o", Qt::ControlModifier);
  Type("o", Qt::AltModifier);
  EXPECT_EQ(grid.TextMatrix(1, 1), "Th ");
  Type("t");
  Key(sheet, Qt::Key_Down);
  Type("h");
  EXPECT_EQ(grid.TextMatrix(2, 1), "") << "the letters of another row";
  Type("m");
  EXPECT_EQ(grid.Row(), 2);
  EXPECT_EQ(grid.TextMatrix(2, 1), "M ");
  for (const int col : {0, 2}) {
    Go(3, col);
    Type("m");
    EXPECT_EQ(grid.TextMatrix(3, 1), "") << "column " << col;
  }
  Go(3, 1);
  form.vl_button5.SetFocus();
  Key(form.vl_button5.Widget(), Qt::Key_M, Qt::NoModifier, "m");
  EXPECT_EQ(grid.TextMatrix(3, 1), "") << "the keyboard is elsewhere";
  grid.SetFocus();
  Go(0, 1);
  Type("m");
  EXPECT_EQ(grid.TextMatrix(0, 1), "Shape");
}

TEST_F(Hands, CtrlWithAnArrowGoesFromShapeToShape) {
  for (const int row : {1, 3, 4, 60}) {
    Go(row, 1);
    grid.SetText(row == 4 ? " " : "A ");
  }
  Go(1, 2);
  form.vl_button5.SetFocus();
  Key(form.TopWidget(), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_TRUE(grid.HasFocus());
  const struct {
    int key, row;
  } steps[] = {{Qt::Key_Down, 3}, {Qt::Key_Down, 60}, {Qt::Key_Down, 60},
               {Qt::Key_Up, 3},   {Qt::Key_Up, 1},    {Qt::Key_Up, 1}};
  for (const auto& step : steps) {
    Key(sheet, step.key, Qt::ControlModifier);
    EXPECT_EQ(grid.Row(), step.row);
    EXPECT_EQ(grid.Col(), 2);
  }
}

TEST_F(Hands, TheListBeginsAnewWithEachFocus) {
  QWidget* list = form.List1.Widget();
  int row = 0;
  for (const char* letter : {"m", "o", "p", "u", "e"}) {
    Go(++row, 1);
    form.List1.SetFocus();
    Key(list, QString(letter).toUpper()[0].unicode(), Qt::NoModifier, letter);
    Key(list, Qt::Key_Return);
    EXPECT_EQ(grid.TextMatrix(row, 1), QString(letter).toUpper().toStdString() + " ");
  }
}

TEST_F(Hands, AClickOnTheToolbarLeavesTheKeyboardInTheGrid) {
  ASSERT_TRUE(grid.HasFocus());
  support::Press(form.vl_button3.Widget(), {5, 5});
  support::Release(form.vl_button3.Widget(), {5, 5});
  EXPECT_EQ(timeline::ZoomFactor, 1.25F);
  EXPECT_TRUE(grid.HasFocus());
  Type("+-.");
  EXPECT_EQ(timeline::ZoomFactor, 1.25F);
  timeline::Tracks().UndoHistory.push_back(timeline::Tracks().VelocityValues);
  Key(sheet, Qt::Key_Z, Qt::ControlModifier, "\x1a");
  EXPECT_TRUE(timeline::Tracks().UndoHistory.empty());
}

TEST_F(Hands, APressAnywhereElseClosesTheCommentEditor) {
  QMenu* const menu = new QMenu(form.Text2.Widget());
  for (QWidget* elsewhere :
       {form.Picture4.Widget(), form.Picture1.Widget(), form.HScroll1.Widget(), form.Label1.Widget(),
        form.vl_button3.Widget(), form.ContainerWidget(), static_cast<QWidget*>(form.MenuBar())}) {
    Go(2, 2);
    form.Grid1.Click();
    ASSERT_TRUE(form.Text2.HasFocus());
    support::Press(form.Text2.Widget(), {5, 5});
    menu->popup({0, 0});
    support::Press(menu, {2, 2});
    menu->hide();
    EXPECT_TRUE(form.Text2.Visible()) << "by a press in it or in its own menu";
    support::Press(elsewhere, {3, 3});
    EXPECT_FALSE(form.Text2.Visible()) << elsewhere->objectName().toStdString();
    EXPECT_TRUE(grid.HasFocus());
    support::Release(elsewhere, {3, 3});
    form.MenuBar()->setActiveAction(nullptr);
    for (QWidget* open = QApplication::activePopupWidget(); open; open = QApplication::activePopupWidget())
      open->close();
  }
}

TEST_F(Hands, TheWheelScrollsAndWithCtrlZoomsAboutThePointer) {
  QWidget* wave = form.Picture2.Widget();
  const auto turn = [](QWidget* canvas, double x, int by, Qt::KeyboardModifiers keys) {
    QWheelEvent event({x, 20}, canvas->mapToGlobal(QPointF(x, 20)), {}, {0, by}, Qt::NoButton, keys,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas, &event);
  };
  for (int i = 0; i < 4; ++i) turn(wave, 0, 120, Qt::ControlModifier);
  EXPECT_EQ(timeline::ZoomFactor, 2.0F);
  EXPECT_EQ(form.HScroll1.Value(), 0);
  turn(form.Picture4.Widget(), 300, -180, Qt::NoModifier);
  const int scrolled = form.HScroll1.Value();
  EXPECT_EQ(scrolled, 96);
  EXPECT_EQ(form.Picture4.Left(), -scrolled);
  // At 2.0 the canvas is 1028 wide, at 2.25 it is 1156: what stood at 514 stands at 578.
  turn(wave, 514, 60, Qt::ControlModifier);
  turn(wave, 514, 60, Qt::ControlModifier);
  EXPECT_EQ(form.Picture2.Width(), 1156);
  EXPECT_EQ(form.HScroll1.Value(), scrolled + 64);
  turn(form.Picture3.Widget(), 578 - form.HScroll1.Value(), -120, Qt::ControlModifier);
  EXPECT_EQ(form.Picture2.Width(), 1028);
  EXPECT_EQ(form.HScroll1.Value(), scrolled);
}

TEST_F(Hands, FilesDroppedAreOpenedAsFromTheMenu) {
  const auto drop = [&](const std::string& path, bool during_work = false) {
    QMimeData files;
    files.setUrls({QUrl("http://example.org/x.wav"),
                   QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"))});
    QWidget* top = form.TopWidget();
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::postEvent(top,
                            new QDropEvent({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier));
    QApplication::sendEvent(top, &enter);
    EXPECT_EQ(enter.isAccepted(), QApplication::activeModalWidget() == nullptr);
    if (during_work) const platform::LongWork work;
    support::HandleEvents();
  };
  QMimeData words;
  words.setText("/etc/hosts");
  words.setUrls({QUrl("http://example.org/x.wav")});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(form.TopWidget(), &enter);
  EXPECT_FALSE(enter.isAccepted());
  desk.files.paths = {support::ScratchFolder() + "/kept.exp"};
  form.MenuSave.Click();
  EXPECT_EQ(desk.files.asked.back().proposal, "voice.exp");
  drop(support::WriteScratch("stereo.wav", support::WaveBytes(8, 1000, std::string(8000, 'x'), 2)));
  EXPECT_EQ(grid.Rows(), 49);
  EXPECT_EQ(desk.messages.Texts().back(), "Stereo sample converted to mono.");
  form.MenuSave.Click();
  EXPECT_EQ(desk.files.asked.back().proposal, "stereo.exp") << "another sound begins another sheet";
  std::filesystem::rename(support::ScratchFolder() + "/kept.exp", support::ScratchFolder() + "/KEPT.EXP");
  drop(support::ScratchFolder() + "/KEPT.EXP");
  EXPECT_EQ(grid.Rows(), 61);
  form.MenuSave.Click();
  EXPECT_EQ(desk.files.asked.back().proposal, "");
  drop(support::ScratchFolder() + "/stereo.wav", true);
  EXPECT_EQ(grid.Rows(), 61) << "it is dropped with the rest of the input";
  drop(support::WriteScratch("notes.txt", "no sound"));
  form.MenuSave.Click();
  EXPECT_EQ(desk.files.asked.back().proposal, "") << "the sheet is still the one in KEPT.EXP";
  EXPECT_EQ(desk.messages.shown.size(), 2U);
  EXPECT_EQ(grid.Rows(), 61);
  drop(support::WriteScratch("t\xf6ne.wav", support::WaveBytes(8, 1000, std::string(4000, 'x'))));
  EXPECT_EQ(grid.Rows(), 49) << "a name that isn't UTF-8";
  QMessageBox question(form.TopWidget());
  question.open();
  drop(support::ScratchFolder() + "/KEPT.EXP");
  EXPECT_EQ(grid.Rows(), 49) << "not while a question stands";
}

}  // namespace
