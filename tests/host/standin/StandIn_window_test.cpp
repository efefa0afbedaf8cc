#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QtWidgets>
#include <array>
#include <utility>

#include "host/bus/Connection.h"
#include "host/standin/BusService.h"
#include "host/standin/DemoAnimation.h"
#include "host/standin/EmbeddedHost.h"
#include "host/standin/FrameView.h"
#include "host/standin/HostSettings.h"
#include "host/standin/PictureFiles.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/frame_pixels.h"
#include "platform/Settings.h"
#include "platform/Translation.h"
#include "platform/memory.h"
#include "platform/version.h"

namespace host {
namespace {

struct CountingForm : FormObject {
  std::string FormName() const override { return "Form1"; }
  void ShowForm() override {}
  void RunPrefsCallback() override { ++callbacks; }
  int callbacks = 0;
};

/// Handles events until something comes true or two seconds have passed.
bool Becomes(const std::function<bool()>& true_at_last) {
  QElapsedTimer clock;
  clock.start();
  while (!true_at_last() && clock.elapsed() < 2000)
    QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  return true_at_last();
}

using Dialogs = std::vector<std::function<void(QWidget*)>>;

/// Runs a routine on each of the dialogs that an action brings up, in order.
void OnDialogs(Dialogs routines) {
  if (routines.empty()) return;
  QTimer::singleShot(20, qApp, [routines = std::move(routines)]() mutable {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr) return OnDialogs(std::move(routines));
    const auto routine = routines.front();
    routines.erase(routines.begin());
    OnDialogs(std::move(routines));
    routine(dialog);
  });
}

/// Leaves a question with a button, its text in `text`.
std::function<void(QWidget*)> AnswerQuestion(QMessageBox::StandardButton button, QString* text) {
  return [button, text](QWidget* dialog) {
    auto* question = qobject_cast<QMessageBox*>(dialog);
    ASSERT_NE(question, nullptr);
    EXPECT_TRUE(question->parentWidget() != nullptr && question->parentWidget()->isVisible());
    *text = question->text();
    question->button(button)->click();
  };
}

/// Names a file or folder in a file dialog.
std::function<void(QWidget*)> Name(const QString& file) {
  return [file](QWidget* dialog) {
    EXPECT_TRUE(dialog->parentWidget() != nullptr && dialog->parentWidget()->isVisible());
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
    QMetaObject::invokeMethod(dialog, "accept");
  };
}

/// The stand-in's window over ten small frames, with empty folders for settings and data.
class StandInWindowTest : public testing::Test {
 protected:
  StandInWindowTest() {
    qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8());
    qputenv("XDG_DATA_HOME", folder_.path().toUtf8());
    stand_in_ = std::make_shared<StandIn>(Animation({8, 6}, 10));
    window_ = std::make_unique<StandInWindow>(stand_in_, RunsAs::PartOfTool);
    window_->show();
    QApplication::processEvents();
  }

  QString LabelText(const char* name) { return window_->findChild<QLabel*>(name)->text(); }
  int Frames() { return stand_in_->CurrentAnimation().FrameCount(); }
  /// Chooses an item and handles its dialogs.
  void Choose(const QString& action, Dialogs dialogs = {}) {
    OnDialogs(std::move(dialogs));
    window_->findChild<QAction*>(action)->trigger();
  }
  /// The same where the last dialog is a message: gives its text.
  std::string Told(const QString& action, QMessageBox::StandardButton button, Dialogs dialogs = {}) {
    QString text;
    dialogs.push_back(AnswerQuestion(button, &text));
    Choose(action, std::move(dialogs));
    return text.toStdString();
  }
  /// What a tool does with a frame.
  void Write(const std::vector<std::uint8_t>& plane) {
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
      stand_in_->SetBuffer(channel, OwnTable(plane), "");
  }
  void Write(std::uint8_t value) { Write(std::vector<std::uint8_t>(9 * 7, value)); }
  /// Drops files on the window; gives the number of frames then, or -1 if they aren't taken.
  int Drop(const QList<QUrl>& urls) {
    QMimeData files;
    files.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QDropEvent event({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    const int before = Frames();
    QApplication::sendEvent(window_.get(), &enter);
    if (!enter.isAccepted()) return -1;
    QApplication::sendEvent(window_.get(), &event);
    EXPECT_EQ(Frames(), before) << "the file manager would wait for what the user is asked";
    QApplication::processEvents();
    return event.isAccepted() ? Frames() : -1;
  }
  QString File(const QString& name) { return folder_.filePath(name); }
  void WriteFile(const QString& name, const QByteArray& bytes) {
    QFile file(File(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }
  void WritePicture(const QString& name, int width, int height, QColor color) {
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(color);
    ASSERT_TRUE(picture.save(File(name)));
  }

  QTemporaryDir folder_{QDir::tempPath() + "/für Łódź-XXXXXX"};
  std::shared_ptr<StandIn> stand_in_;
  std::unique_ptr<StandInWindow> window_;
};

constexpr const char* kLost = "These frames aren't saved. Go on without them?";
const Progress kSilent = [](double) {};

/// Notes what a label shows whenever it is painted.
struct Painted : QObject {
  explicit Painted(QLabel* label) { label->installEventFilter(this); }
  bool eventFilter(QObject* label, QEvent* event) override {
    if (event->type() == QEvent::Paint) texts << static_cast<QLabel*>(label)->text();
    return false;
  }
  QStringList texts;
};

TEST_F(StandInWindowTest, ShowsAMoveAtOnceAndTheLastOfManyWhenEventsRunAgain) {
  auto* view = window_->findChild<QWidget*>("FrameView");
  auto* scrub = window_->findChild<QSlider*>("Scrub");
  const auto middle = [view] {
    const QImage shown = view->grab().toImage();
    return qGray(shown.pixel(shown.rect().center()));
  };
  stand_in_->GotoFrameAdv(3);
  Write(0);
  EXPECT_EQ(LabelText("FrameLabel"), "Frame 3") << "the tool may block the thread right after";
  for (const int frame : {2, 3}) {
    stand_in_->GotoFrame(frame);
    EXPECT_TRUE(Becomes([&] { return LabelText("FrameLabel") == QString("Frame %1").arg(frame); }));
    EXPECT_EQ(middle(), frame == 3 ? 0 : 255);
  }
  Write(100);
  EXPECT_TRUE(Becomes([&] { return middle() == 100; })) << "the current frame was written anew";
  for (int step = 0; step < 5000; ++step) stand_in_->GotoFrame(step % 10);
  EXPECT_TRUE(Becomes([&] { return LabelText("FrameLabel") == "Frame 9" && scrub->value() == 9; }));
  EXPECT_EQ(LabelText("FactsLabel"), "10 frames  ·  8 × 6  ·  12 fps");
  EXPECT_EQ(scrub->maximum(), 9);
  scrub->setValue(7);
  EXPECT_EQ(stand_in_->CurrentFrame(), 7);
  std::string steps;
  for (const char* step : {"Last", "Back", "Forward", "Forward", "First", "Back", "Forward"}) {
    Choose(step);
    steps += std::to_string(stand_in_->CurrentFrame());
  }
  EXPECT_EQ(steps, "9899001");
  stand_in_->CreateAnimAdv(1);
  EXPECT_EQ(LabelText("FactsLabel"), "1 frame  ·  8 × 6  ·  12 fps");
  for (const char* step : {"First", "Back", "Play", "Forward", "Last"})
    EXPECT_FALSE(window_->findChild<QAction*>(step)->isEnabled()) << step;
  EXPECT_FALSE(scrub->isEnabled());
}

TEST_F(StandInWindowTest, ShowsAFrameInTheMiddleAsLargeAsItFits) {
  Write(200);
  FrameView view(*stand_in_, nullptr);
  // Each run of equal pixels in the middle: ground, line, picture, line, ground.
  const auto runs = [](FrameView& on, int angle) {
    const QImage shown = on.grab().toImage().transformed(QTransform().rotate(angle));
    std::vector<int> lengths;
    for (int x = 0, before = -1; x < shown.width(); ++x) {
      const int grey = qGray(shown.pixel(x, shown.height() / 2));
      if (grey != std::exchange(before, grey)) lengths.push_back(0);
      ++lengths.back();
    }
    return lengths;
  };
  using testing::ElementsAre;
  // There is room for 200 by 120: eight times the frame is less.
  view.resize(228, 148);
  EXPECT_THAT(runs(view, 0), ElementsAre(81, 1, 64, 1, 81));
  EXPECT_THAT(runs(view, 90), ElementsAre(49, 1, 48, 1, 49));
  stand_in_->TakeAnimation(Animation({40, 10}, 1));
  view.Renew();
  EXPECT_THAT(runs(view, 0), ElementsAre(13, 1, 200, 1, 13));
  // A sharp edge between two columns stays sharp only in the rough picture.
  std::vector<std::uint8_t> halves;
  for (int i = 0; i < 41 * 11; ++i) halves.push_back(i % 41 < 20 ? 0 : 255);
  Write(halves);
  view.ShowAtOnce();
  EXPECT_THAT(runs(view, 0), ElementsAre(13, 1, 100, 100, 1, 13));
  view.Renew();
  EXPECT_GT(runs(view, 0).size(), 6u);
  // So the window shows it, too: roughly during a display, and well when that is closed.
  auto& shown = dynamic_cast<FrameView&>(*window_->findChild<QWidget*>("FrameView"));
  QThread::msleep(20);
  QApplication::processEvents();
  EXPECT_GT(runs(shown, 0).size(), 6u);
  stand_in_->StatusOpen("Saving...");
  EXPECT_EQ(runs(shown, 0).size(), 6u);
  stand_in_->StatusClose();
  EXPECT_TRUE(Becomes([&] { return runs(shown, 0).size() > 6; }));
  stand_in_->TakeAnimation(Animation());
  EXPECT_THAT(runs(view, 0), ElementsAre(228));
}

TEST_F(StandInWindowTest, ShowsTheStatusDisplayWithoutEventsAndStepsAsideInsteadOfClosing) {
  auto* bar = window_->findChild<QProgressBar*>("StatusBar");
  EXPECT_FALSE(bar->isVisible());
  stand_in_->StatusOpen("Developing...");
  EXPECT_TRUE(bar->isVisible());
  const int least_width = window_->centralWidget()->minimumSizeHint().width();
  stand_in_->StatusOpen(std::string(2000, 'x'));
  EXPECT_EQ(window_->centralWidget()->minimumSizeHint().width(), least_width) << "a long text widens nothing";
  Painted status(window_->findChild<QLabel*>("StatusLabel"));
  for (const char* text : {"Saving...", "Developing..."}) stand_in_->StatusOpen(text);
  EXPECT_EQ(status.texts, QStringList({"Saving...", "Developing..."})) << "another display shows at once";
  QThread::msleep(700);
  stand_in_->GotoFrame(4);
  stand_in_->StatusPercent(62.5);
  EXPECT_EQ(bar->value(), 62);
  EXPECT_EQ(LabelText("FrameLabel"), "Frame 4");
  const auto* menu = window_->findChild<QMenu*>("AnimationMenu");
  EXPECT_FALSE(menu->isEnabled()) << "a tool is at work with the animation";
  window_->ShowNote("Not now.");
  EXPECT_EQ(LabelText("StatusLabel"), "Developing...");
  std::string notes;
  for (const auto& [written, read] : {std::pair{0, 0}, {0, 1}, {0, 2}, {1, 2}, {2, 0}}) {
    stand_in_->StatusOpen("Saving...");
    EXPECT_EQ(bar->value(), 0);
    for (int frame = 0; frame < std::max(written, read); ++frame) {
      stand_in_->GotoFrameAdv(frame);
      if (frame < written) Write(0);
      if (frame < read) stand_in_->GetBuffer(Channel::Red, "");
    }
    stand_in_->StatusClose();
    notes += LabelText("StatusLabel").toStdString() + ", ";
  }
  auto* label = window_->findChild<QLabel*>("StatusLabel");
  window_->ShowNote("A note that is so long that no line of this small window can hold it.");
  EXPECT_GE(label->height(), 2 * label->fontMetrics().height()) << "it is readable as a whole";
  window_->TellProblem("There is no bus.");
  EXPECT_EQ(label->text(), "There is no bus.");
  EXPECT_EQ(notes, "Ready, 1 frame retrieved, 2 frames retrieved, 1 frame shot, 2 frames shot, ");
  EXPECT_TRUE(menu->isEnabled());
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(window_->isMinimized());
}

TEST_F(StandInWindowTest, PlaysByTheClockAndStopsWhenAToolMovesTheFrame) {
  stand_in_->CreateAnimAdv(1000);
  stand_in_->GotoFrame(6);
  const auto* play = window_->findChild<QAction*>("Play");
  Choose("Play");
  for (const int rate : {20, 100}) {
    const int start = stand_in_->CurrentFrame();
    QElapsedTimer clock;
    clock.start();
    stand_in_->SetFrameRate(rate);
    QThread::msleep(200);
    EXPECT_TRUE(Becomes([&] { return stand_in_->CurrentFrame() != start; }));
    EXPECT_GE(stand_in_->CurrentFrame(), start + rate / 5) << "a late event skips frames";
    EXPECT_LE(stand_in_->CurrentFrame(), start + rate * clock.elapsed() / 1000);
  }
  stand_in_->GotoFrame(995);
  EXPECT_EQ(play->text(), "Play");
  QThread::msleep(30);
  QApplication::processEvents();
  EXPECT_EQ(stand_in_->CurrentFrame(), 995);
  stand_in_->CreateAnimAdv(2);
  Choose("Play");
  for (const int frame : {1, 0}) EXPECT_TRUE(Becomes([&] { return stand_in_->CurrentFrame() == frame; }));
}

TEST_F(StandInWindowTest, StopsPlayingForWhateverElseMovesTheFrameOrTakesItAway) {
  const auto* play = window_->findChild<QAction*>("Play");
  const auto sign = [play] { return play->icon().pixmap(18).toImage(); };
  const QImage triangle = sign();
  const std::vector<std::function<void()>> stops = {
      [&] { Choose("Play"); },
      [&] { Choose("First"); },  // where it is already
      [&] { window_->findChild<QSlider*>("Scrub")->setValue(5); },
      [&] { stand_in_->GotoFrame(3); },
      [&] { stand_in_->GotoFrame(stand_in_->CurrentFrame()); },
      [&] { stand_in_->CreateAnimAdv(10); },
  };
  for (std::size_t i = 0; i < stops.size(); ++i) {
    stand_in_->SetFrameRate(20);
    EXPECT_EQ(play->text(), "Play") << "another rate begins nothing";
    Choose("Play");
    stand_in_->SetFrameRate(25);
    EXPECT_EQ(play->text(), "Pause") << i;
    EXPECT_NE(sign(), triangle) << i;
    stops[i]();
    EXPECT_EQ(play->text(), "Play") << i;
    EXPECT_EQ(sign(), triangle) << i;
  }
}

TEST(EmbeddedHost, ShowsItsWindowOnceBehindTheTools) {
  const auto host = MakeEmbeddedHost();
  EXPECT_EQ(AsText(host->Invoke("Vel_GetAppDir", {}), ""),
            QCoreApplication::applicationDirPath().toStdString());
  QWidget* window = nullptr;
  for (QWidget* each : QApplication::topLevelWidgets())
    if (each->objectName() == "StandIn") window = each;
  ASSERT_NE(window, nullptr);
  QWidget tool;
  tool.show();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(Becomes([&] { return window->isVisible(); }));
  window->hide();
  tool.repaint();
  QThread::msleep(60);
  QApplication::processEvents();
  EXPECT_FALSE(window->isVisible()) << "the user has put it away";
}

TEST_F(StandInWindowTest, AThemeIsStoredAndReachesTheWindows) {
  CountingForm form;
  stand_in_->KeepForm(form);
  const QString file = QString::fromStdString(platform::SettingsFile("vellumark"));
  QSettings(file, QSettings::IniFormat).setValue("Startup/Of_Another", 7);

  const auto ticked = [this](auto name) { return window_->findChild<QAction*>(name)->isChecked(); };
  EXPECT_TRUE(ticked("ThemeDefault") && ticked("Wallpaperslate") && !ticked("Wallpapernight"));
  EXPECT_TRUE(StoreWallpaper({}));
  for (const auto& [theme, wallpaper] :
       {std::pair{"Loud", "paper"}, {"Default", "slate"}, {"Dark", "night"}}) {
    Choose(QString("Theme") + theme);
    EXPECT_EQ(ChosenWallpaper(), wallpaper);
    EXPECT_TRUE(ticked(QString("Theme") + theme) && ticked(QString("Wallpaper") + wallpaper)) << theme;
  }
  EXPECT_FALSE(ticked("ThemeDefault"));
  EXPECT_EQ(form.callbacks, 3);
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Textbox_Fill_Color"),
            std::to_string(30 + 256 * 32 + 65536 * 37));
  for (const ThemeRow& row : ThemeRows()) {
    QSettings(file, QSettings::IniFormat).setValue("Startup/" + QString::fromUtf8(row.key.data()), 7);
    EXPECT_EQ(CurrentTheme(), std::nullopt) << row.key << " is the user's own";
    EXPECT_TRUE(StoreTheme(Theme::Dark));
  }
  // A window that comes later learns of the colours too, but not of those that it was designed in.
  CountingForm later;
  stand_in_->SendFormObject(later);
  EXPECT_EQ(later.callbacks, 1);
  stand_in_->DropForm(later);
  EXPECT_TRUE(StoreWallpaper("own.png"));
  Choose("ThemeDefault");
  EXPECT_EQ(form.callbacks, 4);
  EXPECT_EQ(ChosenWallpaper(), "own.png");
  stand_in_->SendFormObject(later);
  EXPECT_EQ(later.callbacks, 1);
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Textbox_Fill_Color"), std::nullopt);
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Of_Another"), "7");
  // Where the settings can't be, nothing changes.
  QFile::remove(file);
  QDir().mkpath(file);
  for (const QByteArray& folder : {folder_.path().toUtf8(), QByteArray("/proc")}) {
    qputenv("XDG_CONFIG_HOME", folder);
    for (const char* choice : {"ThemeLoud", "Wallpaperpaper"})
      EXPECT_EQ(Told(choice, QMessageBox::Ok), "The settings can't be written.");
  }
  EXPECT_EQ(form.callbacks, 6) << "such colours change nothing, but a wallpaper hangs until the end";
}

TEST_F(StandInWindowTest, AWallpaperIsAFileThatToolsCanLoad) {
  CountingForm form;
  stand_in_->KeepForm(form);
  WritePicture("own.png", 4, 4, Qt::red);
  QDir(folder_.path()).mkpath("vellumark/wallpapers");
  WritePicture("vellumark/wallpapers/night.png", 1, 1, Qt::red);  // of another version
  const auto choices = [](const StandInWindow& window) {
    return window.findChild<QAction*>("Wallpaperslate")->actionGroup()->actions();
  };
  const QStringList names = {"", "linen", "night", "paper", "slate", File("own.png")};
  for (qsizetype i = 0; i < names.size(); ++i) {
    if (i == 5) OnDialogs({Name(names[i])});
    choices(*window_)[i]->trigger();
    EXPECT_EQ(ChosenWallpaper(), names[i]);
    EXPECT_EQ(form.callbacks, i + 1);
    const QString file = QString::fromStdString(stand_in_->WallpaperFilename());
    EXPECT_EQ(file, i % 5 == 0 ? names[i] : File("vellumark/wallpapers/" + names[i] + ".png"));
    EXPECT_EQ(QImage(file).width() > 4, i % 5 > 0) << names[i].toStdString();
    EXPECT_TRUE(i == 0 || QFile::permissions(file) & QFile::WriteOwner) << "the next version replaces it";
    // A window that comes up later ticks what was chosen.
    const StandInWindow later(std::make_shared<StandIn>(Animation({8, 6}, 10)), RunsAs::PartOfTool);
    for (qsizetype other = 0; other < names.size(); ++other)
      EXPECT_EQ(choices(later)[other]->isChecked(), other == i);
  }
}

TEST_F(StandInWindowTest, ReadsPicturesInTheOrderOfTheirNumbers) {
  WritePicture("frame10.png", 3, 2, QColor(10, 20, 30));
  // Taken with the camera upright: the orientation stands behind the first two bytes.
  WritePicture("frame2.jpeg", 2, 3, QColor(40, 50, 60));
  QFile photo(File("frame2.jpeg"));
  ASSERT_TRUE(photo.open(QIODevice::ReadOnly));
  const auto turn = QByteArray::fromHex(
      "ffe1002245786966"
      "00004d4d002a0000000800010112000300000001000600000000"
      "0000");
  WriteFile("frame2.jpeg", photo.readAll().insert(2, turn));
  WritePicture("Frame1.bmp", 3, 2, QColor(70, 80, 90));
  WritePicture("frame11.png", 3, 2, QColor(0, 100, 255, 51));  // one fifth opaque, on white
  Painted status(window_->findChild<QLabel*>("StatusLabel"));
  Choose("OpenFolder", {Name(folder_.path())});
  EXPECT_TRUE(status.texts.contains("Opening pictures..."));
  const Animation& animation = stand_in_->CurrentAnimation();
  ASSERT_EQ(animation.FrameCount(), 4);
  EXPECT_EQ(animation.Size(), (FrameSize{3, 2}));
  EXPECT_THAT(animation.Plane(0, Channel::Red).bytes, testing::Each(70));
  EXPECT_THAT(animation.Plane(1, Channel::Green).bytes, testing::Each(50));
  EXPECT_THAT(animation.Plane(2, Channel::Blue).bytes, testing::Each(30));
  EXPECT_THAT(animation.Plane(3, Channel::Green).bytes, testing::Each(224));
  // What isn't read leaves the frames and the window as they were; the next dialog begins in that folder.
  QDir(folder_.path()).mkdir("empty");
  EXPECT_EQ(Told("OpenFolder", QMessageBox::Ok, {Name("empty")}),
            "There is no picture in the folder \"" + File("empty").toStdString() + "\".");
  WritePicture("wide.png", 9, 2, Qt::red);
  EXPECT_THAT(Told("OpenPictures", QMessageBox::Ok, {Name("\"../wide.png\" \"../Frame1.bmp\"")}),
              testing::HasSubstr("wide.png\" is 9 by 2"));
  EXPECT_EQ(stand_in_->Status(), std::nullopt);
  EXPECT_EQ(Frames(), 4);
  Choose("OpenPictures", {Name("wide.png")});
  EXPECT_EQ(Frames(), 1);
}

TEST_F(StandInWindowTest, OpensWhatIsDroppedOnIt) {
  QDir(folder_.path()).mkdir("walk");
  for (const char* name : {"a2.png", "a10.png", "walk/1.png"})
    WritePicture(name, 5, 4, name[1] == '2' ? Qt::red : Qt::blue);
  const QUrl elsewhere("http://example.org/a.png"), first = QUrl::fromLocalFile(File("a2.png"));
  EXPECT_EQ(Drop({elsewhere}), -1);
  EXPECT_EQ(Drop({QUrl::fromLocalFile(File("a10.png")), elsewhere, first}), 2);
  EXPECT_THAT(stand_in_->CurrentAnimation().Plane(0, Channel::Red).bytes, testing::Each(255));
  EXPECT_EQ(Drop({QUrl::fromLocalFile(File("walk"))}), 1);
  // One pixel, red and then blue.
  static const char film[] =
      "GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\xff"
      "!\xf9\x04\x04\x05\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00"
      "!\xf9\x04\x04\x05\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x4c\x01\x00;";
  WriteFile("two.gif", QByteArray(film, sizeof film - 1));
  EXPECT_EQ(Drop({QUrl::fromLocalFile(File("two.gif"))}), 2);
  for (const int frame : {0, 1})
    EXPECT_THAT(stand_in_->CurrentAnimation().Plane(frame, Channel::Red).bytes,
                testing::Each(255 - 255 * frame));
  OnDialogs({[&](QWidget* dialog) {
    EXPECT_EQ(Drop({first}), -1);
    dialog->close();
  }});
  QMessageBox().exec();
}

TEST(DemoAnimation, ShowsTheFellowOnHisMeadowUnderTheClouds) {
  // How bright it is in sixteen columns of six rows, on the ground and high up.
  for (const auto& [frame, expected] : {std::pair{0,
                                                  "6666666666666666779777778778997777777777777777777766617777"
                                                  "77777711777666666666665555555555555555"},
                                        {44,
                                         "6666666666666666746666777978997777577777777777777777777777777777666"
                                         "66666666666665555555555555555"}}) {
    std::string seen;
    for (const QRgb pixel : SampleFramePixels(DrawDemoAnimation(), frame, 16, 6).pixels)
      seen += std::to_string(qGray(pixel) * 10 / 256);
    EXPECT_EQ(seen, expected);
  }
}

TEST_F(StandInWindowTest, StopsReadingPicturesBeforeTheMemoryIsFull) {
  WritePicture("red.png", 1000, 1000, Qt::red);
  const QStringList files(12, File("red.png"));
  // Twelve frames take 36 MB. The memory may be short from the start, or become short while they are read.
  for (const double at_first : {3e7, 1e8}) {
    double free = at_first;
    int files_read = 0;
    platform::ReadFreeMemoryFrom([&] { return std::exchange(free, 1e7); });
    EXPECT_THAT(std::get<std::string>(ReadPictures(files, [&](double) { ++files_read; })),
                testing::HasSubstr(" would be needed, "));
    EXPECT_EQ(files_read > 0, at_first == 1e8);
  }
  // What has been read isn't needed a second time.
  double free = 1e8;
  platform::ReadFreeMemoryFrom([&] { return std::exchange(free, 3e7); });
  EXPECT_TRUE(std::holds_alternative<Animation>(ReadPictures(files, kSilent)));
  platform::ReadFreeMemoryFrom(nullptr);
}

TEST_F(StandInWindowTest, NamesThePictureThatDoesNotServe) {
  WritePicture("a1.png", 4, 4, Qt::red);
  WritePicture("a2.png", 5, 4, Qt::red);
  WriteFile("a3.png", "no picture at all");
  ASSERT_EQ(mkfifo(File("a4.png").toUtf8().constData(), 0600), 0);
  for (const auto& [name, words] : {
           std::pair{"a2.png",
                     "is 5 by 4, but the first one, \"a1.png\", is 4 by 4. All frames of an animation have "
                     "one size."},
           {"a3.png", "can't be read: Unsupported image format."},
           {"a4.png", "can't be read: it is not a regular file."},
       })
    EXPECT_EQ(std::get<std::string>(ReadPictures({File("a1.png"), File(name)}, kSilent)),
              "The picture \"" + File(name).toStdString() + "\" " + words);
  EXPECT_EQ(std::get<std::string>(ReadPictures({}, kSilent)), "There is no picture to open.");
}

TEST_F(StandInWindowTest, SavesNumberedPicturesThatReadBackAlike) {
  Animation animation({2, 2}, 2);
  animation.SetPlane(1, Channel::Green, OwnTable({7, 8, 8, 5, 6, 6, 5, 6, 6}));
  std::vector<double> told;
  const Progress tell = [&](double percent) { told.push_back(percent); };
  EXPECT_EQ(SavePictures(animation, File("walk"), tell), std::nullopt);
  EXPECT_TRUE(QFile::exists(File("walk0001.png")));
  EXPECT_EQ(NumberedNames("walk", 10000).last(), "walk9999.png");
  EXPECT_EQ(NumberedNames("walk", 10001).first(), "walk00000.png");
  const auto result = ReadPictures(PicturesIn(folder_.path()), tell);
  EXPECT_THAT(told, testing::ElementsAre(50, 100, 50, 100));
  const auto& back = std::get<Animation>(result);
  ASSERT_EQ(back.FrameCount(), 2);
  EXPECT_THAT(back.Plane(0, Channel::Green).bytes, testing::Each(255));
  EXPECT_THAT(back.Plane(1, Channel::Green).bytes, testing::ElementsAre(7, 8, 8, 5, 6, 6, 5, 6, 6));
}

TEST_F(StandInWindowTest, ReplacesPicturesOnlyAfterAQuestion) {
  WritePicture("take0003.png", 1, 1, Qt::red);
  Write(1);
  EXPECT_EQ(Told("Save", QMessageBox::No, {Name(File("take"))}),
            "The picture take0003.png is already there. Replace it?");
  EXPECT_EQ(QImage(File("take0003.png")).width(), 1);
  EXPECT_FALSE(QFile::exists(File("take0000.png")));
  Painted status(window_->findChild<QLabel*>("StatusLabel"));
  // Without a folder it is the one that was named last.
  Told("Save", QMessageBox::Yes, {Name("take.PNG")});
  EXPECT_TRUE(status.texts.contains("Saving pictures..."));
  EXPECT_EQ(QImage(File("take0003.png")).width(), 8);
  EXPECT_TRUE(QFile::exists(File("take0009.png")));
  EXPECT_EQ(LabelText("StatusLabel"), "10 pictures saved in " + folder_.path());
  EXPECT_FALSE(stand_in_->Unsaved());
  EXPECT_EQ(Told("Save", QMessageBox::No, {Name(File("take"))}),
            "10 of the pictures are already there, take0000.png to take0009.png. Replace them?");
  stand_in_->TakeAnimation(Animation({8, 6}, 1));
  Choose("Save", {[](QWidget* dialog) { QMetaObject::invokeMethod(dialog, "accept"); }});
  EXPECT_TRUE(QFile::exists(File("frame0000.png"))) << "the name that is proposed";
  EXPECT_EQ(LabelText("StatusLabel"), "1 picture saved in " + folder_.path());
  Write(1);
  QDir(folder_.path()).mkdir("no0000.png");
  QString question;
  EXPECT_THAT(Told("Save", QMessageBox::Ok, {Name("no"), AnswerQuestion(QMessageBox::Yes, &question)}),
              testing::ContainsRegex("no0000.png\" can't be written: \\w"));
  EXPECT_TRUE(stand_in_->Unsaved());
  EXPECT_EQ(stand_in_->Status(), std::nullopt);
}

TEST_F(StandInWindowTest, DropsFramesThatAToolWroteOnlyAfterAQuestion) {
  Write(1);
  EXPECT_EQ(Told("Demonstration", QMessageBox::No), kLost);
  EXPECT_EQ(Frames(), 10);
  EXPECT_EQ(Told("Demonstration", QMessageBox::Yes), kLost);
  EXPECT_EQ(Frames(), 48);
  Choose("Demonstration");  // nothing to ask about
  // The first field is selected, so that typing replaces its number.
  std::string asked;
  for (const char* item : {"New", "Rate"})
    for (const bool takes : {false, true})
      Choose(item, {[&](QWidget* dialog) {
               asked += dialog->findChild<QLineEdit*>()->selectedText().toStdString();
               for (auto* box : dialog->findChildren<QAbstractSpinBox*>()) {
                 for (const char* part : {"objectName", "minimum", "maximum", "text"})
                   asked += " " + box->property(part).toString().remove("qt_spinbox").toStdString();
                 box->setProperty("value", box->objectName() == "Height" ? 0 : 23);
               }
               auto* buttons = dialog->findChild<QDialogButtonBox*>();
               buttons->button(takes ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel)->click();
             }});
  const std::string size = "320 Width 1 8190 320 pixels Height 1 8190 240 pixels Frames 1 32767 48 frames";
  const std::string rate = "12,000  0.1 240 12,000";
  EXPECT_EQ(asked, size + size + rate + rate);
  EXPECT_EQ(stand_in_->CurrentAnimation().Size(), (FrameSize{23, 1}));
  EXPECT_EQ(Frames(), 23);
  EXPECT_EQ(stand_in_->RateText(), "23");
}

TEST_F(StandInWindowTest, AsAProgramItEndsOnlyAfterAQuestion) {
  window_ = std::make_unique<StandInWindow>(stand_in_, RunsAs::Program);
  window_->show();
  CountingForm form;
  stand_in_->KeepForm(form);
  const std::string needed = "A tool is at work with these frames and can't go on without them. Quit?";
  EXPECT_EQ(Told("Leave", QMessageBox::No), needed);
  Write(1);
  EXPECT_EQ(Told("Leave", QMessageBox::No), kLost);
  EXPECT_TRUE(window_->isVisible());
  QString question;
  EXPECT_EQ(Told("Leave", QMessageBox::Yes, {AnswerQuestion(QMessageBox::Yes, &question)}), needed);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(StandInWindowTest, StaysForUnsavedFramesWhenTheToolHasGone) {
  EXPECT_TRUE(window_->MayEndWithTool()) << "nothing to ask about";
  Write(1);
  window_->showMinimized();
  stand_in_->StatusOpen("Developing...");  // by the tool that has gone
  QString question;
  OnDialogs({AnswerQuestion(QMessageBox::No, &question)});
  EXPECT_FALSE(window_->MayEndWithTool());
  EXPECT_EQ(question, kLost);
  EXPECT_FALSE(window_->isMinimized() || stand_in_->Status());
  EXPECT_EQ(window_->findChild<QAction*>("Leave")->text(), "&Quit");
  // Its close box now ends the process, after the same question.
  for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    QTimer::singleShot(0, qApp, [&] {
      OnDialogs({AnswerQuestion(answer, &question)});
      window_->close();
      if (answer == QMessageBox::No) QCoreApplication::exit(7);
    });
    EXPECT_EQ(QApplication::exec() == 0, answer == QMessageBox::Yes);
  }
}

TEST_F(StandInWindowTest, LeavesTheFramesToAToolThatBeganWhileADialogStoodOpen) {
  WritePicture("take0003.png", 1, 1, Qt::red);
  const auto tool_begins = [this](QWidget* dialog) {
    stand_in_->StatusOpen("Developing...");
    Name(File("take0003.png"))(dialog);
  };
  for (const char* action : {"OpenPictures", "Save"}) {
    EXPECT_EQ(Told(action, QMessageBox::Ok, {tool_begins}),
              "A tool is at work with these frames. Try again when it has finished.");
    EXPECT_EQ(stand_in_->Status().value_or(StatusDisplay{}).text, "Developing...");
    EXPECT_EQ(Frames(), 10);
    stand_in_->StatusClose();
  }
  EXPECT_FALSE(QFile::exists(File("take00030000.png")));
}

/// Each menu with its items: name or text, keys, and a star if ticked.
std::string MenusOf(const StandInWindow& window) {
  QString all;
  for (const QAction* menu : window.menuBar()->actions()) {
    all += menu->menu()->objectName() + ":";
    for (const QAction* item : menu->menu()->actions()) {
      const QString name = item->objectName().isEmpty() ? item->text() : item->objectName();
      all += " " + (item->isSeparator() ? "-" : name) + (item->isChecked() ? "*" : "");
      if (!item->shortcut().isEmpty()) all += " " + item->shortcut().toString();
    }
    all += "\n";
  }
  return all.toStdString();
}

TEST_F(StandInWindowTest, HasItsMenusAndWithinTheToolNoToolsAndOutlivesNothing) {
  const std::string before =
      "AnimationMenu: New Ctrl+N OpenPictures Ctrl+O OpenFolder Demonstration - Save Ctrl+S - Leave Ctrl+Q\n"
      "FramesMenu: Play Space First Home Back , Forward . Last End - Rate\n"
      "LookMenu: ThemeDefault* ThemeDark ThemeLoud - No wallpaper Wallpaperlinen Wallpapernight "
      "Wallpaperpaper Wallpaperslate* Own wallpaper...\n";
  const std::string tools = "ToolsMenu: ExposureSheet\n", help = "HelpMenu: About\n";
  EXPECT_EQ(MenusOf(*window_), before + help);
  EXPECT_EQ(window_->windowTitle(), "Vellumark (stand-in)");
  const QPoint corner =
      window_->screen()->availableGeometry().bottomRight() - window_->geometry().bottomRight();
  EXPECT_TRUE(corner.x() > 0 && corner.x() < 40 && corner.y() > 0 && corner.y() < 100)
      << "out of the way of the tool's windows";
  EXPECT_EQ(window_->findChild<QAction*>("Leave")->text(), "&Minimise");
  EXPECT_FALSE(window_->testAttribute(Qt::WA_QuitOnClose));
  EXPECT_TRUE(window_->testAttribute(Qt::WA_ShowWithoutActivating));
  const StandInWindow program(stand_in_, RunsAs::Program);
  EXPECT_EQ(MenusOf(program), before + tools + help);
  EXPECT_EQ(program.findChild<QAction*>("Leave")->text(), "&Quit");
  EXPECT_TRUE(program.testAttribute(Qt::WA_QuitOnClose));
  EXPECT_FALSE(program.testAttribute(Qt::WA_ShowWithoutActivating));
  QString parts;
  for (const auto* button : window_->centralWidget()->findChildren<QToolButton*>()) {
    parts += button->defaultAction()->objectName() + " ";
    EXPECT_EQ(button->focusPolicy(), Qt::NoFocus) << "the space bar is for playing";
  }
  for (const auto* part : window_->centralWidget()->findChildren<QWidget*>())
    if (!part->accessibleName().isEmpty()) parts += part->accessibleName() + ", ";
  EXPECT_EQ(parts.toStdString(), "First Back Play Forward Last Current frame, Current frame, Progress, ");
}

/// What a window says: titles, captions, units, tips and names for assistive technology. Of a file dialog,
/// which is the toolkit's, only the title and what files are called.
QStringList Texts(QWidget* window) {
  if (auto* files = qobject_cast<QFileDialog*>(window))
    return {files->windowTitle(), files->nameFilters().first()};
  QStringList texts{window->windowTitle()};
  for (const QObject* part : window->findChildren<QObject*>())
    for (const char* property : {"text", "title", "suffix", "toolTip", "accessibleName"})
      texts << part->property(property).toString();
  return texts;
}

TEST_F(StandInWindowTest, SpeaksGermanWhereTheUserDoes) {
  Write(1);
  const auto said = [this] {
    window_ = std::make_unique<StandInWindow>(stand_in_, RunsAs::Program);
    window_->show();
    QStringList all = Texts(window_.get());
    for (const char* item : {"New", "OpenPictures", "OpenFolder", "Demonstration", "Save", "Rate", "About"})
      Choose(item, {[&](QWidget* dialog) {
               all += Texts(dialog);
               dialog->close();
             }});
    return all;
  };
  const QStringList english = said();
  ASSERT_TRUE(platform::Translate("standin", {"de-DE"}));
  const QStringList german = said();
  ASSERT_EQ(german.size(), english.size());
  QStringList alike;
  for (qsizetype i = 0; i < german.size(); ++i)
    if (german[i] == english[i] && german[i].contains(QRegularExpression("[a-z]{3}"))) alike << german[i];
  EXPECT_EQ(alike.join(", ").toStdString(),
            "&Animation, &Animation, Animation, Cancel, All Files (*), Cancel");
  const QString names = "Default|Dark|Loud|linen|night|paper|slate";
  EXPECT_FALSE(german.join(' ').contains(QRegularExpression(names))) << "of looks and wallpapers";
  EXPECT_TRUE(german.join(' ').contains(QString("Version %1.").arg(platform::kVersion)));
}

TEST_F(StandInWindowTest, TakesDownTheProgressOfAToolThatDied) {
  QProcess bus;
  bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
  if (!bus.waitForStarted()) GTEST_SKIP() << "there is no dbus-daemon";
  ASSERT_TRUE(bus.waitForReadyRead());
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readAllStandardOutput().trimmed());
  std::optional<QString> problem;
  const auto service = ServeOnBus(stand_in_, problem);
  ASSERT_EQ(problem, std::nullopt);
  auto working = Connection::Open(), other = Connection::Open();
  for (auto* tool : {&other, &working}) {
    const Message call = (*tool)->MakeCall(kHostService, kHostPath, kHostInterface, "vel_StatusOpen");
    sd_bus_message_append(call.get(), "s", tool == &working ? "Developing..." : "Saving...");
    (*tool)->Call(call, nullptr);
    EXPECT_TRUE(Becomes([&] { return stand_in_->Status().has_value(); }));
  }
  const Message window = working->MakeCall(kHostService, kHostPath, kHostInterface, "Vel_SendFormObject");
  sd_bus_message_append(window.get(), "oi", "/Form1", 0);
  working->Call(window, [](const Message&) {});
  EXPECT_THAT([&] { working->MakeCall("no name", kHostPath, kHostInterface, "Show"); },
              testing::ThrowsMessage<std::runtime_error>("the call can't be made: Invalid argument"));
  EXPECT_EQ(BusText("Moulin caf\xe9"), "Moulin caf\uFFFD") << "text that is no UTF-8";
  EXPECT_TRUE(Becomes([&] { return stand_in_->Status() && !stand_in_->Forms().empty(); }));
  other.reset();
  for (int i = 0; i < 20; ++i) QApplication::processEvents(QEventLoop::AllEvents, 5), QThread::msleep(5);
  EXPECT_TRUE(stand_in_->Status() && !stand_in_->Forms().empty()) << "another tool has gone";
  working.reset();
  EXPECT_TRUE(Becomes([&] { return !stand_in_->Status() && stand_in_->Forms().empty(); }));
  bus.kill();
  bus.waitForFinished();
}

TEST_F(StandInWindowTest, WithinTheToolOnlyItsOwnButtonsAreGerman) {
  if (!platform::TranslateToolkit(platform::ToolkitSpeaks::UsersLanguageWhereAsked, {"de-DE"}))
    GTEST_SKIP() << "the toolkit's German isn't installed";
  Write(1);
  QStringList seen;
  const auto look = [&](QWidget* dialog) {
    auto* no = dynamic_cast<QMessageBox&>(*dialog).button(QMessageBox::No);
    seen << no->text();
    no->click();
  };
  Choose("Demonstration", {look});
  OnDialogs({look});
  Drop({QUrl::fromLocalFile(File("a.png"))});
  OnDialogs({look, look, look});
  EXPECT_FALSE(window_->MayEndWithTool());
  window_->close();
  QMessageBox tools(QMessageBox::Question, "The tool", "Go on?", QMessageBox::Yes | QMessageBox::No);
  tools.exec();
  EXPECT_EQ(seen.join(' '), "&Nein &Nein &Nein &Nein &No");
}

}  // namespace
}  // namespace host
