// What waits, what is dropped and what is shown while the program's one thread is taken up, and behind the
// report of a failure.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPointer>
#include <QPointingDevice>
#include <QProgressBar>
#include <QShortcutEvent>
#include <QSocketNotifier>
#include <QTimer>
#include <QTouchEvent>
#include <QWindow>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <tuple>

#include "platform/Clock.h"
#include "platform/Grid.h"
#include "platform/HeldEvents.h"
#include "platform/LongWork.h"
#include "platform/PictureBox.h"
#include "platform/UntimelyEnd.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/desk.h"

namespace platform {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Busy : Window {
  Busy() : Window({.name = "Busy", .caption = "", .client_width = 300, .client_height = 200, .icons = {}}) {
    grid.Move(0, 0, 200, 150);
    canvas.Move(200, 0, 50, 40);
    timer.Tick = [this] { ++ticks; };
  }
  void Form_Resize() override { ++resizes; }

  Grid grid{*this, "grid", 50, 3};
  PictureBox canvas{*this, "canvas"};
  Timer timer{*this, "timer", 1};
  int ticks = 0, resizes = 0;
};

WindowInstance<Busy> busy;

struct LongWorkTest : testing::Test {
  LongWorkTest() {
    busy->Show();
    Passed();
  }
  static QEvent* NewEvent(int type, int key) {
    const auto kind = static_cast<QEvent::Type>(type);
    switch (type) {
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
        return new QKeyEvent(kind, key, Qt::NoModifier);
      case QEvent::Wheel:
        return new QWheelEvent({5, 5}, {5, 5}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
      case QEvent::ContextMenu:
        return new QContextMenuEvent(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
      case QEvent::Shortcut:
        return new QShortcutEvent(QKeySequence("Ctrl+A"), 1);
      case QEvent::TouchBegin:
        return new QTouchEvent(kind, QPointingDevice::primaryPointingDevice());
      default:
        return new QMouseEvent(kind, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    }
  }
  /// Input comes in, at once or when the thread is free again.
  void Come(const std::vector<int>& types, int key = Qt::Key_A) {
    for (const int type : types) QApplication::postEvent(&spy, NewEvent(type, key));
  }
  /// What of it has got through since the last look.
  std::vector<int> Passed() {
    support::HandleEvents();
    // The toolkit asks first whether a key is to be no shortcut.
    std::erase(spy.seen, int{QEvent::ShortcutOverride});
    return std::exchange(spy.seen, {});
  }
  struct Spy : QWidget {
    bool event(QEvent* event) override { return seen.push_back(event->type()), true; }
    std::vector<int> seen;
  } spy;
  support::Desk desk;
};

TEST_F(LongWorkTest, OnlyPaintingGoesOnDuringAWait) {
  int painted = 0, run_later = 0, woken = 0, ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const QSocketNotifier socket(ends[1], QSocketNotifier::Write);  // there is always room to write
  QObject::connect(&socket, &QSocketNotifier::activated, [&woken] { ++woken; });
  busy->canvas.Paint = [&] { ++painted; };
  busy->timer.SetEnabled(true);
  RunLater([&] { ++run_later; });
  RunLater([&] { run_later *= 10; });
  busy->canvas.Widget()->update();
  const int resizes = busy->resizes;
  QWidget* const client = busy->canvas.Widget()->parentWidget();
  QApplication::postEvent(client, new QResizeEvent(client->size(), client->size()));
  Sleep(5);
  KeepPainted();
  ShowUncovered();
  EXPECT_EQ(painted, 1);
  EXPECT_EQ(run_later + busy->ticks + woken, 0);
  EXPECT_EQ(busy->resizes, resizes);
  Sleep(5);
  support::HandleEvents();
  EXPECT_EQ(run_later, 10) << "each once, in their order";
  EXPECT_TRUE(busy->ticks > 0 && woken > 0);
  EXPECT_EQ(busy->resizes, resizes + 1);
}

TEST_F(LongWorkTest, InputThatCameMeanwhileIsDroppedWithWhatBelongsToIt) {
  constexpr int press = QEvent::MouseButtonPress, release = QEvent::MouseButtonRelease,
                second_press = QEvent::MouseButtonDblClick;
  {
    LongWork work;
    { const LongWork part(&busy->grid); }
    Come({press, release});
    KeepPainted();
    for (const int key : {Qt::Key_Down, Qt::Key_Delete}) Come({QEvent::KeyPress}, key);
  }
  // What was pressed meanwhile and is let go only now still does nothing; the next key does.
  for (const int key : {Qt::Key_Delete, Qt::Key_Delete, Qt::Key_Down}) Come({QEvent::KeyRelease}, key);
  EXPECT_THAT(Passed(), ElementsAre(QEvent::KeyRelease));
  // The second half of a double click may come when the work is over already. Then everything works again.
  Come({second_press, release});
  EXPECT_THAT(Passed(), IsEmpty());
  { const LongWork work; }
  Come({press, release, second_press});
  EXPECT_THAT(Passed(), ElementsAre(press, release, second_press));
  {
    const LongWork at_once(&busy->grid);
    Come({press});
  }
  EXPECT_THAT(Passed(), ElementsAre(press)) << "work that showed no bar drops nothing";
  QCloseEvent close;
  {
    const HeldEvents held(nullptr, true);
    QCoreApplication::sendEvent(busy->canvas.Widget()->window()->windowHandle(), &close);
    EXPECT_TRUE(busy->Visible() && !close.isAccepted());
  }
  support::HandleEvents();
  EXPECT_EQ(busy.IfLoaded(), nullptr) << "a window is closed when the work is over";
}

TEST_F(LongWorkTest, NoKindOfInputPasses) {
  const std::vector<int> all = {
      QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseMove, QEvent::MouseButtonRelease,
      QEvent::KeyPress,         QEvent::KeyRelease,          QEvent::Wheel,     QEvent::ContextMenu,
      QEvent::Shortcut,         QEvent::TouchBegin};
  spy.setAttribute(Qt::WA_AcceptTouchEvents);
  for (const bool held : {false, true, false}) {
    Come(all);
    if (held) HeldEvents(nullptr, true).Handle(QEventLoop::AllEvents);
    EXPECT_EQ(Passed(), held ? std::vector<int>() : all);
  }
}

TEST_F(LongWorkTest, ABarComesAfterHalfASecondAndGoesThroughPartsOfTheWork) {
  const auto find = [] { return busy->grid.Widget()->findChild<QProgressBar*>("LongWorkBar"); };
  const auto value = [&] { return find() == nullptr ? -1 : find()->value(); };
  {
    LongWork work(&busy->grid);
    EXPECT_TRUE(BusyPointerIsOn());
    work.Report(1, 10);
    EXPECT_EQ(value(), -1);
    Sleep(550);
    work.Report(3, 10);
    EXPECT_EQ(value(), 300);
    const QPointer<QProgressBar> bar = find();
    EXPECT_LE((bar->geometry().center() - QPoint(100, 75)).manhattanLength(), 2);
    EXPECT_EQ(bar->accessibleName(), "Progress");
    {
      LongWork part(&busy->grid);
      Sleep(110);
      part.Report(5, 10);
      EXPECT_EQ(value(), 370) << "half of a fifth of what is left";
    }
    Sleep(110);
    work.Report(5, 10);
    EXPECT_EQ(value(), 720) << "half of what is left then";
    EXPECT_NE(bar, nullptr) << "it is one bar all the time";
  }
  EXPECT_EQ(value(), -1);
  EXPECT_FALSE(BusyPointerIsOn());
}

TEST_F(LongWorkTest, AWaitIsAskedAboutAgainAsLongAfterKeepWaiting) {
  AskAfter(std::chrono::milliseconds(160));
  int painted = 0;
  busy->canvas.Paint = [&] { ++painted; };
  busy->canvas.Widget()->update();
  desk.messages.answers = {Answer::Yes, Answer::No};
  QElapsedTimer clock;
  clock.start();
  Patience patience("It doesn't answer.", "Give up");
  while (patience.Lasts()) Sleep(1);
  EXPECT_GE(clock.elapsed(), 320);
  EXPECT_EQ(painted, 1);
  EXPECT_EQ(desk.messages.shown.size(), 2u);
}

TEST_F(LongWorkTest, RepeatsOfAKeyThatASlowMoveHasOvertakenAreDropped) {
  constexpr quint64 screen_time = 5'000'000;
  const auto press = [](bool repeat, quint64 at) {
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, {}, repeat);
    down.setTimestamp(at);
    QApplication::sendEvent(busy->grid.Widget(), &down);
  };
  busy->grid.SetRow(1);
  press(false, screen_time);
  for (int i = 0; i < 3; ++i) press(true, screen_time + 60'000);
  EXPECT_EQ(busy->grid.Row(), 5) << "repeats that come at once all count";
  for (int i = 1; i < 4; ++i) press(true, screen_time + 59'000);
  EXPECT_EQ(busy->grid.Row(), 5) << "these have waited for a second";
  press(false, screen_time + 59'000);
  EXPECT_EQ(busy->grid.Row(), 6) << "what the user presses anew always counts";
  for (int i = 0; i < 2; ++i) press(true, 0);
  EXPECT_EQ(busy->grid.Row(), 8) << "of events without a time nothing is known";
}

TEST(Clock, CountsTheSecondsOfTheLocalDay) {
  setenv("TZ", "ELSEWHERE-5:30", 1);
  tzset();
  const auto passed = static_cast<double>((std::time(nullptr) + 19'800) % 86'400);
  const double now = SecondsSinceMidnight();
  EXPECT_LT(std::fmod(now - passed + 86'401, 86'400), 4);
  EXPECT_NE(now, std::floor(now));
}

TEST(EventsDeathTest, AFailureIsReportedOnceAndOnlyTheReaderEndsTheReport) {
  const auto ran = [] { std::fputs("ran", stderr); };
  AnswerMessagesWith([ran](const Message& message) {
    static bool stands = false;
    if (std::exchange(stands, true)) ran();
    RunLater(ran);
    RunEvent([] { throw std::runtime_error("again"); });
    Quit();
    QEventLoop reading;
    QTimer::singleShot(100, [&] { reading.exit(7); });
    const int end = reading.exec();
    std::fprintf(stderr, "%s read to the end: %d\n", message.text.c_str(), end);
    return Answer::Ok;
  });
  const auto fail = [] { throw std::runtime_error("ink"); };
  const auto throw_this = [](const auto& failure) { return [failure]() -> std::string { throw failure; }; };
  const std::tuple<std::function<void()>, std::function<std::string()>, std::string> cases[] = {
      {[&] { RunEvent(fail); }, [] { return "The sheet is safe."; }, "The sheet is safe."},
      // No routine of ours guards this one.
      {[&] { QTimer::singleShot(0, fail); }, throw_this(1), "What isn't saved could not be kept."},
      {[&] {
         busy->Show();
         support::HandleEvents();
         busy->canvas.Paint = fail;
         for (int i = 0; i < 2; ++i) busy->canvas.Widget()->repaint();
         RunEvent(ran);
         busy->timer.Tick = ran;
         busy->timer.SetEnabled(true);
       },
       throw_this(std::runtime_error("full")), "What isn't saved could not be kept: full"}};
  const auto run = [](const auto& way, const auto& rescue) {
    BeforeUntimelyEnd(rescue);
    way();
    support::HandleEvents();
  };
  for (const auto& [way, rescue, words] : cases)
    EXPECT_EXIT(run(way, rescue), testing::ExitedWithCode(1),
                AllOf(HasSubstr(": ink\n\n" + words + "\n"), HasSubstr("ink\n\n" + words + "\n\n"),
                      HasSubstr("can't go on and ends. read to the end: 7"), Not(HasSubstr("ran")),
                      Not(HasSubstr("again"))));
}

}  // namespace
}  // namespace platform
