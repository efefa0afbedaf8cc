#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <utility>

#include "host/bus/Connection.h"
#include "host/standin/BusService.h"
#include "host/standin/DemoAnimation.h"
#include "host/standin/HostSettings.h"
#include "host/standin/PictureFiles.h"
#include "host/standin/StandInWindow.h"
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
  void Choose(const QString& action) { window_->findChild<QAction*>(action)->trigger(); }
  QString File(const QString& name) { return folder_.filePath(name); }
  void WritePicture(const QString& name, int width, int height, QColor color) {
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(color);
    ASSERT_TRUE(picture.save(File(name)));
  }

  QTemporaryDir folder_;
  std::shared_ptr<StandIn> stand_in_;
  std::unique_ptr<StandInWindow> window_;
};

/// Handles events until something comes true or two seconds have passed.
bool Becomes(const std::function<bool()>& true_at_last) {
  QElapsedTimer clock;
  clock.start();
  while (!true_at_last() && clock.elapsed() < 2000)
    QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  return true_at_last();
}

/// Runs a routine on each of the dialogs that an action brings up, in order.
void OnDialogs(std::vector<std::function<void(QWidget*)>> routines) {
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
    *text = question->text();
    question->button(button)->click();
  };
}

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
  stand_in_->GotoFrameAdv(3);
  for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
    stand_in_->SetBuffer(channel, OwnTable(std::vector<std::uint8_t>(9 * 7, 0)), "");
  EXPECT_EQ(LabelText("FrameLabel"), "Frame 3") << "the tool may block the thread right after";
  for (const int frame : {2, 3}) {
    stand_in_->GotoFrame(frame);
    EXPECT_TRUE(Becomes([&] { return LabelText("FrameLabel") == QString("Frame %1").arg(frame); }));
    const QImage view = window_->findChild<QWidget*>("FrameView")->grab().toImage();
    EXPECT_EQ(qGray(view.pixel(view.rect().center())), frame == 3 ? 0 : 255);
  }
  for (int step = 0; step < 5000; ++step) stand_in_->GotoFrame(step % 10);
  EXPECT_TRUE(Becomes([&] { return LabelText("FrameLabel") == "Frame 9"; }));
  EXPECT_THAT(LabelText("FactsLabel").toStdString(), testing::HasSubstr("10 frames"));
  EXPECT_EQ(window_->findChild<QSlider*>("Scrub")->maximum(), 9);
  window_->findChild<QSlider*>("Scrub")->setValue(7);
  EXPECT_EQ(stand_in_->CurrentFrame(), 7);
}

TEST_F(StandInWindowTest, ShowsTheStatusDisplayWithoutEventsAndStepsAsideInsteadOfClosing) {
  auto* bar = window_->findChild<QProgressBar*>("StatusBar");
  EXPECT_FALSE(bar->isVisible());
  stand_in_->StatusOpen("Developing...");
  EXPECT_TRUE(bar->isVisible());
  Painted status(window_->findChild<QLabel*>("StatusLabel"));
  for (const char* text : {"Saving...", "Developing..."}) stand_in_->StatusOpen(text);
  EXPECT_EQ(status.texts, QStringList({"Saving...", "Developing..."})) << "another display shows at once";
  QThread::msleep(700);
  stand_in_->GotoFrame(4);
  stand_in_->StatusPercent(62.5);
  EXPECT_EQ(bar->value(), 62);
  EXPECT_EQ(LabelText("FrameLabel"), "Frame 4");
  stand_in_->StatusClose();
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(window_->isMinimized());
}

TEST_F(StandInWindowTest, PlaysByTheClockAndStopsWhenAToolMovesTheFrame) {
  stand_in_->SetFrameRate(2);
  stand_in_->GotoFrame(6);
  // Beside the triangle's tip there is nothing; there Pause has a bar.
  const auto bar = [this] {
    return qAlpha(window_->findChild<QAction*>("Play")->icon().pixmap(24).toImage().pixel(15, 6)) > 0;
  };
  EXPECT_FALSE(bar());
  Choose("Play");
  EXPECT_TRUE(bar());
  for (int i = 0; i < 10; ++i) QApplication::processEvents(), QThread::msleep(30);
  EXPECT_EQ(stand_in_->CurrentFrame(), 6) << "it goes on from where it stood";
  EXPECT_EQ(window_->findChild<QAction*>("Play")->text(), "Pause");
  Choose("Play");
  stand_in_->SetFrameRate(100);
  stand_in_->GotoFrame(0);
  Choose("Play");
  EXPECT_TRUE(Becomes([&] { return stand_in_->CurrentFrame() > 2; }));
  stand_in_->GotoFrame(1);
  Becomes([clock = std::chrono::steady_clock::now()] {
    return std::chrono::steady_clock::now() - clock > std::chrono::milliseconds(60);
  });
  EXPECT_EQ(stand_in_->CurrentFrame(), 1);
}

TEST_F(StandInWindowTest, AThemeIsStoredAndReachesTheWindows) {
  CountingForm form;
  stand_in_->KeepForm(form);
  const QString file = QString::fromStdString(platform::SettingsFile("vellumark"));
  QSettings(file, QSettings::IniFormat).setValue("Startup/Of_Another", 7);

  const auto ticked = [this](const char* action) {
    return window_->findChild<QAction*>(action)->isChecked();
  };
  EXPECT_TRUE(ticked("ThemeDefault") && ticked("Wallpaperslate") && !ticked("Wallpapernight"));
  Choose("ThemeDark");
  EXPECT_TRUE(ticked("ThemeDark") && !ticked("ThemeDefault"));
  EXPECT_EQ(form.callbacks, 1);
  EXPECT_EQ(CurrentTheme(), Theme::Dark);
  // Red 30, green 32, blue 37.
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Textbox_Fill_Color"),
            std::to_string(30 + 256 * 32 + 65536 * 37));
  EXPECT_EQ(ChosenWallpaper(), "night");
  // A window that comes later learns of the colours too, but not of those that it was designed in.
  CountingForm later;
  stand_in_->SendFormObject(later);
  EXPECT_EQ(later.callbacks, 1);
  stand_in_->DropForm(later);
  EXPECT_TRUE(StoreWallpaper(folder_.path() + "/own.png"));
  Choose("ThemeDefault");
  EXPECT_EQ(form.callbacks, 2);
  EXPECT_EQ(CurrentTheme(), Theme::Default);
  EXPECT_EQ(ChosenWallpaper(), folder_.path() + "/own.png");
  stand_in_->SendFormObject(later);
  EXPECT_EQ(later.callbacks, 1);
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Textbox_Fill_Color"), std::nullopt);
  EXPECT_EQ(platform::ReadSetting("vellumark", "Startup", "Of_Another"), "7");
}

TEST_F(StandInWindowTest, AWallpaperIsAFileThatToolsCanLoad) {
  CountingForm form;
  stand_in_->KeepForm(form);
  int told = 0;
  for (const QString& name : WallpaperNames()) {
    Choose("Wallpaper" + name);
    const QString file = QString::fromStdString(stand_in_->WallpaperFilename());
    EXPECT_FALSE(QImage(file).isNull()) << name.toStdString();
    EXPECT_TRUE(QFile::permissions(file) & QFile::WriteOwner) << "the next version replaces it";
    EXPECT_EQ(ChosenWallpaper(), name);
    EXPECT_EQ(form.callbacks, ++told);
    // A window that comes up later ticks what was chosen.
    const StandInWindow later(std::make_shared<StandIn>(Animation({8, 6}, 10)), RunsAs::PartOfTool);
    for (const QAction* choice : later.findChild<QAction*>("Wallpaper" + name)->actionGroup()->actions())
      EXPECT_EQ(choice->isChecked(), choice->objectName() == "Wallpaper" + name);
  }
}

TEST_F(StandInWindowTest, ReadsPicturesInTheOrderOfTheirNumbers) {
  WritePicture("frame10.png", 3, 2, QColor(10, 20, 30));
  WritePicture("frame2.png", 3, 2, QColor(40, 50, 60));
  WritePicture("Frame1.bmp", 3, 2, QColor(70, 80, 90));
  WritePicture("frame11.png", 3, 2, QColor(0, 100, 255, 51));  // one fifth opaque, on white
  const auto result = ReadPictures(PicturesIn(folder_.path()), kSilent);
  ASSERT_TRUE(std::holds_alternative<Animation>(result)) << std::get<std::string>(result);
  const auto& animation = std::get<Animation>(result);
  ASSERT_EQ(animation.FrameCount(), 4);
  EXPECT_EQ(animation.Size(), (FrameSize{3, 2}));
  // Last column and row included.
  EXPECT_THAT(animation.Plane(0, Channel::Red).bytes, testing::Each(70));
  EXPECT_THAT(animation.Plane(1, Channel::Green).bytes, testing::Each(50));
  EXPECT_THAT(animation.Plane(2, Channel::Blue).bytes, testing::Each(30));
  EXPECT_THAT(animation.Plane(3, Channel::Green).bytes, testing::Each(224));
  OnDialogs({[this](QWidget* dialog) {
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(folder_.path());
    QMetaObject::invokeMethod(dialog, "accept");
  }});
  Choose("OpenFolder");
  EXPECT_EQ(stand_in_->CurrentAnimation().FrameCount(), 4);
}

TEST_F(StandInWindowTest, TakesEveryFrameOfAGif) {
  // One pixel, red and then blue.
  static const char bytes[] =
      "GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\xff"
      "!\xf9\x04\x04\x05\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00"
      "!\xf9\x04\x04\x05\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x4c\x01\x00;";
  QFile file(File("two.gif"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes, sizeof bytes - 1);
  file.close();
  // Two frames of three planes of 2 by 2, and 8 bytes to work on one pixel.
  for (const double free : {31.0, 32.0}) {
    platform::ReadFreeMemoryFrom([free] { return free; });
    EXPECT_EQ(std::holds_alternative<Animation>(ReadPictures({File("two.gif")}, kSilent)), free == 32);
  }
  platform::ReadFreeMemoryFrom(nullptr);
  const auto result = ReadPictures({File("two.gif")}, kSilent);
  ASSERT_TRUE(std::holds_alternative<Animation>(result)) << std::get<std::string>(result);
  const auto& animation = std::get<Animation>(result);
  ASSERT_EQ(animation.FrameCount(), 2);
  EXPECT_EQ(animation.Plane(0, Channel::Red).bytes[0], 255);
  EXPECT_EQ(animation.Plane(1, Channel::Red).bytes[0], 0);
  EXPECT_EQ(animation.Plane(1, Channel::Blue).bytes[0], 255);
}

TEST_F(StandInWindowTest, StopsReadingPicturesBeforeTheMemoryIsFull) {
  QStringList files;
  for (int i = 0; i < 12; ++i) {
    const QString name = QString("%1.png").arg(i);
    WritePicture(name, 1000, 1000, Qt::red);
    files << File(name);
  }
  // Twelve frames take 36 MB. The memory may be short from the start, or become short while they are read.
  for (const double at_first : {3e7, 1e8}) {
    double free = at_first;
    int files_read = 0;
    platform::ReadFreeMemoryFrom([&] { return std::exchange(free, 1e7); });
    const auto result = ReadPictures(files, [&](double) { ++files_read; });
    ASSERT_TRUE(std::holds_alternative<std::string>(result));
    EXPECT_THAT(std::get<std::string>(result), testing::HasSubstr(" would be needed, "));
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
  QFile nonsense(File("a3.png"));
  ASSERT_TRUE(nonsense.open(QIODevice::WriteOnly));
  nonsense.write("no picture at all");
  nonsense.close();
  ASSERT_EQ(mkfifo(File("a4.png").toUtf8().constData(), 0600), 0);
  const std::vector<std::pair<QStringList, std::vector<std::string>>> cases = {
      {{File("a1.png"), File("a2.png")}, {"a2.png\" is 5 by 4", "a1.png", "4 by 4"}},
      {{File("a1.png"), File("a3.png")}, {"a3.png", "can't be read"}},
      {{File("a1.png"), File("a4.png")}, {"a4.png", "not a regular file"}},
      {{File("missing.png")}, {"missing.png", "can't be read"}},
      {{}, {"no picture"}},
  };
  for (const auto& [files, words] : cases) {
    const auto result = ReadPictures(files, kSilent);
    ASSERT_TRUE(std::holds_alternative<std::string>(result));
    for (const auto& word : words) EXPECT_THAT(std::get<std::string>(result), testing::HasSubstr(word));
  }
}

TEST_F(StandInWindowTest, SavesNumberedPicturesThatReadBackAlike) {
  Animation animation({2, 1}, 2);
  animation.SetPlane(1, Channel::Green, OwnTable({7, 8, 8, 7, 8, 8}));
  std::vector<double> told;
  const Progress tell = [&](double percent) { told.push_back(percent); };
  EXPECT_EQ(SavePictures(animation, File("walk"), tell), std::nullopt);
  EXPECT_EQ(NumberedNames("walk", 2), (QStringList{"walk0000.png", "walk0001.png"}));
  const auto result = ReadPictures(PicturesIn(folder_.path()), tell);
  EXPECT_THAT(told, testing::ElementsAre(50, 100, 50, 100));
  const auto& back = std::get<Animation>(result);
  ASSERT_EQ(back.FrameCount(), 2);
  EXPECT_THAT(back.Plane(0, Channel::Green).bytes, testing::Each(255));
  EXPECT_THAT(back.Plane(1, Channel::Green).bytes, testing::ElementsAre(7, 8, 8, 7, 8, 8));
  const auto failure = SavePictures(animation, File("nowhere/walk"), kSilent);
  EXPECT_THAT(failure.value_or(""), testing::HasSubstr("nowhere/walk0000.png"));
}

TEST_F(StandInWindowTest, ReplacesPicturesOnlyAfterAQuestion) {
  WritePicture("take0003.png", 1, 1, Qt::red);
  const auto name_it = [this](QWidget* dialog) {
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(File("take"));
    QMetaObject::invokeMethod(dialog, "accept");
  };
  QString question;
  stand_in_->SetBuffer(Channel::Red, OwnTable(std::vector<std::uint8_t>(9 * 7, 1)), "vel_SetRbuffer");
  OnDialogs({name_it, AnswerQuestion(QMessageBox::No, &question)});
  Choose("Save");
  EXPECT_THAT(question.toStdString(), testing::HasSubstr("take0003.png is already there"));
  EXPECT_EQ(QImage(File("take0003.png")).width(), 1);
  EXPECT_FALSE(QFile::exists(File("take0000.png")));
  Painted status(window_->findChild<QLabel*>("StatusLabel"));
  OnDialogs({name_it, AnswerQuestion(QMessageBox::Yes, &question)});
  Choose("Save");
  EXPECT_TRUE(status.texts.contains("Saving pictures..."));
  EXPECT_EQ(QImage(File("take0003.png")).width(), 8);
  EXPECT_TRUE(QFile::exists(File("take0009.png")));
  EXPECT_EQ(LabelText("StatusLabel"), "10 pictures saved in " + folder_.path());
  OnDialogs({name_it, AnswerQuestion(QMessageBox::No, &question)});
  Choose("Save");
  EXPECT_THAT(question.toStdString(),
              testing::HasSubstr("10 of the pictures are already there, take0000.png to take0009"));
  EXPECT_FALSE(stand_in_->Unsaved());
}

TEST_F(StandInWindowTest, DropsFramesThatAToolWroteOnlyAfterAQuestion) {
  stand_in_->SetBuffer(Channel::Red, OwnTable(std::vector<std::uint8_t>(9 * 7, 1)), "vel_SetRbuffer");
  QString question;
  OnDialogs({AnswerQuestion(QMessageBox::No, &question)});
  Choose("Demonstration");
  EXPECT_THAT(question.toStdString(), testing::HasSubstr("aren't saved"));
  EXPECT_EQ(stand_in_->CurrentAnimation().FrameCount(), 10);
  OnDialogs({AnswerQuestion(QMessageBox::Yes, &question)});
  Choose("Demonstration");
  EXPECT_EQ(stand_in_->CurrentAnimation().FrameCount(), 48);
  Choose("Demonstration");  // nothing to ask about
  OnDialogs({[](QWidget* dialog) {
    for (const auto& [field, value] : {std::pair{"Width", 12}, {"Height", 0}, {"Frames", 3}})
      dialog->findChild<QSpinBox*>(field)->setValue(value);
    QMetaObject::invokeMethod(dialog, "accept");
  }});
  Choose("New");
  EXPECT_EQ(stand_in_->CurrentAnimation().Size(), (FrameSize{12, 1}));
  EXPECT_EQ(stand_in_->CurrentAnimation().FrameCount(), 3);
  StandInWindow program(stand_in_, RunsAs::Program);
  program.show();
  stand_in_->SetBuffer(Channel::Red, stand_in_->CurrentAnimation().Plane(0, Channel::Red), "vel_SetRbuffer");
  question.clear();
  OnDialogs({AnswerQuestion(QMessageBox::No, &question)});
  EXPECT_FALSE(program.close());
  EXPECT_THAT(question.toStdString(), testing::HasSubstr("aren't saved"));
}

TEST_F(StandInWindowTest, StaysForUnsavedFramesWhenTheToolHasGone) {
  EXPECT_TRUE(window_->MayEndWithTool()) << "nothing to ask about";
  stand_in_->SetBuffer(Channel::Red, OwnTable(std::vector<std::uint8_t>(9 * 7, 1)), "vel_SetRbuffer");
  window_->showMinimized();
  QString question;
  OnDialogs({AnswerQuestion(QMessageBox::No, &question)});
  EXPECT_FALSE(window_->MayEndWithTool());
  EXPECT_THAT(question.toStdString(), testing::HasSubstr("aren't saved"));
  EXPECT_FALSE(window_->isMinimized());
  // Its close box now ends the process, after the same question.
  for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    bool ended = false;
    QTimer::singleShot(0, qApp, [&] {
      OnDialogs({AnswerQuestion(answer, &question)});
      window_->close();
      if (answer == QMessageBox::No) QCoreApplication::exit(7);
    });
    ended = QApplication::exec() == 0;
    EXPECT_EQ(ended, answer == QMessageBox::Yes);
  }
}

TEST_F(StandInWindowTest, LeavesTheFramesToAToolThatBeganWhileADialogStoodOpen) {
  WritePicture("take0003.png", 1, 1, Qt::red);
  const auto tool_begins = [this](QWidget* dialog) {
    stand_in_->StatusOpen("Developing...");
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(File("take0003.png"));
    QMetaObject::invokeMethod(dialog, "accept");
  };
  for (const char* action : {"OpenPictures", "Save"}) {
    QString refusal;
    OnDialogs({tool_begins, AnswerQuestion(QMessageBox::Ok, &refusal)});
    Choose(action);
    EXPECT_THAT(refusal.toStdString(), testing::HasSubstr("A tool is at work")) << action;
    EXPECT_EQ(stand_in_->Status().value_or(StatusDisplay{}).text, "Developing...");
    EXPECT_EQ(stand_in_->CurrentAnimation().FrameCount(), 10);
    stand_in_->StatusClose();
  }
  EXPECT_FALSE(QFile::exists(File("take00030000.png")));
}

TEST_F(StandInWindowTest, ANoteIsReadableAsAWhole) {
  auto* label = window_->findChild<QLabel*>("StatusLabel");
  for (const char* text :
       {"Short.", "A note that is so long that no line of this small window can hold it."}) {
    window_->ShowNote(text);
    const QRect column(0, 0, label->width(), 1000);
    EXPECT_GE(label->height(), label->fontMetrics().boundingRect(column, Qt::TextWordWrap, text).height() - 1)
        << text;
  }
  stand_in_->StatusOpen("Developing...");
  EXPECT_LT(label->height(), 2 * label->fontMetrics().height());
}

TEST_F(StandInWindowTest, TheDemoMovesFromFrameToFrame) {
  const Animation animation = DrawDemoAnimation();
  ASSERT_EQ(animation.FrameCount(), 48);
  for (int frame = 0; frame < 48; ++frame) {
    const ByteTable here = animation.Plane(frame, Channel::Red);
    const ByteTable next = animation.Plane((frame + 1) % 48, Channel::Red);
    ASSERT_EQ(here.bytes.size(), animation.Size().PlaneBytes());
    EXPECT_FALSE(std::ranges::equal(here.bytes, next.bytes)) << frame;
  }
}

TEST_F(StandInWindowTest, WithinTheToolItHasNoToolsAndOutlivesNothing) {
  QStringList items;
  for (const QAction* menu : window_->menuBar()->actions())
    for (const QAction* item : menu->menu()->actions())
      if (!item->isSeparator()) items << item->objectName();
  EXPECT_EQ(
      items.join(' '),
      "New OpenPictures OpenFolder Demonstration Save Leave Play First Back Forward Last Rate ThemeDefault "
      "ThemeDark ThemeLoud  Wallpaperlinen Wallpapernight Wallpaperpaper Wallpaperslate  About");
  EXPECT_EQ(window_->findChild<QAction*>("Leave")->text(), "&Minimise");
  EXPECT_FALSE(window_->testAttribute(Qt::WA_QuitOnClose));
  EXPECT_TRUE(StandInWindow(stand_in_, RunsAs::Program).testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(StandInWindowTest, SpeaksGermanWhereTheUserDoes) {
  ASSERT_TRUE(platform::Translate("standin", {"de-DE"}));
  StandInWindow german(stand_in_, RunsAs::Program);
  QStringList menus;
  for (const QAction* menu : german.menuBar()->actions()) menus << menu->text();
  EXPECT_EQ(menus.join(' '), "&Animation &Bilder &Aussehen &Werkzeuge &Hilfe");
  EXPECT_EQ(german.findChild<QAction*>("First")->toolTip(), "Erstes Bild (Home)");
  EXPECT_EQ(german.findChild<QAction*>("ThemeDark")->text(), "Farben: Dunkel");
  for (const auto& [action, keys] :
       std::initializer_list<std::pair<const char*, const char*>>{{"New", "Ctrl+N"},
                                                                  {"OpenPictures", "Ctrl+O"},
                                                                  {"Save", "Ctrl+S"},
                                                                  {"Leave", "Ctrl+Q"},
                                                                  {"Play", "Space"},
                                                                  {"First", "Home"},
                                                                  {"Back", ","},
                                                                  {"Forward", "."},
                                                                  {"Last", "End"}})
    EXPECT_EQ(german.findChild<QAction*>(action)->shortcut().toString(), keys);
  EXPECT_TRUE(german.findChild<QLabel*>("FactsLabel")->text().startsWith("10 Bilder"));

  QString about;
  OnDialogs({AnswerQuestion(QMessageBox::Ok, &about)});
  german.findChild<QAction*>("About")->trigger();
  EXPECT_TRUE(about.contains(QString("Version %1.").arg(platform::kVersion))) << about.toStdString();
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
  const Message call = working->MakeCall(kHostService, kHostPath, kHostInterface, "vel_StatusOpen");
  sd_bus_message_append(call.get(), "s", "Developing...");
  working->Call(call, [](const Message&) {});
  EXPECT_TRUE(Becomes([&] { return stand_in_->Status().has_value(); }));
  other.reset();
  for (int i = 0; i < 20; ++i) QApplication::processEvents(QEventLoop::AllEvents, 5), QThread::msleep(5);
  EXPECT_TRUE(stand_in_->Status().has_value());
  working.reset();
  EXPECT_TRUE(Becomes([&] { return !stand_in_->Status().has_value(); }));
  bus.kill();
  bus.waitForFinished();
}

TEST_F(StandInWindowTest, WithinTheToolOnlyItsOwnButtonsAreGerman) {
  if (!platform::TranslateToolkit(platform::ToolkitSpeaks::UsersLanguageWhereAsked, {"de-DE"}))
    GTEST_SKIP() << "the toolkit's German isn't installed";
  const auto no_of = [](QMessageBox& box) { return box.button(QMessageBox::No)->text(); };
  StandInWindow part(stand_in_, RunsAs::PartOfTool);
  stand_in_->SetBuffer(Channel::Red, OwnTable(std::vector<std::uint8_t>(9 * 7, 1)), "vel_SetRbuffer");
  QStringList seen;
  const auto look = [&](QWidget* dialog) {
    auto* box = qobject_cast<QMessageBox*>(dialog);
    ASSERT_NE(box, nullptr);
    seen << no_of(*box);
    box->button(QMessageBox::No)->click();
  };
  OnDialogs({look});
  part.findChild<QAction*>("Demonstration")->trigger();
  OnDialogs({look});
  EXPECT_FALSE(part.MayEndWithTool());
  OnDialogs({look});
  part.close();
  QMessageBox tools(QMessageBox::Question, "The tool", "Go on?", QMessageBox::Yes | QMessageBox::No);
  seen << no_of(tools);
  EXPECT_EQ(seen.join(' '), "&Nein &Nein &Nein &No");
}

}  // namespace
}  // namespace host
