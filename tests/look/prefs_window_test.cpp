// The walk over a window's controls: which control gets which property under which settings.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDialog>
#include <QDir>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QWidget>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "host/HandedWindow.h"
#include "look/HGlide.h"
#include "look/VlButton.h"
#include "painter/FramePainter.h"
#include "platform/Application.h"
#include "platform/DarkGround.h"
#include "platform/Dialogs.h"
#include "platform/Picture.h"
#include "platform/Settings.h"
#include "platform/Widgets.h"
#include "sheet/Form3.h"
#include "support/desk.h"

namespace {

using platform::Color;
using platform::Control;
using platform::ControlKind;
using platform::Rgb;

constexpr Color kOwn = Rgb(1, 2, 3);

class Bench : public platform::Window {
 public:
  Bench()
      : Window({.name = "Bench", .caption = "Bench", .client_width = 100, .client_height = 90, .icons = {}}) {
    for (look::vl_button* button : {&plain, &vl_button6}) {
      button->SetBackColor(kOwn);
      button->SetHighlight(kOwn);
      button->SetShadow(kOwn);
      button->SetGradient(1.0);
    }
    picture.SetBackColor(kOwn);
    check.SetBackColor(kOwn);
  }

  platform::CheckBox check{*this, "check"};
  platform::TextBox text{*this, "text"};
  platform::Label label{*this, "label", "words"};
  platform::ListBox list{*this, "list", {"one"}};
  platform::PictureBox picture{*this, "picture"};
  look::vl_button plain{*this, "plain"};
  look::vl_button vl_button6{picture, "vl_button6"};
  look::HGlide glide{*this, "glide"};
};

class Prefs : public testing::Test {
 protected:
  Prefs() {
    folder_ = std::filesystem::temp_directory_path() / ("look-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
  }
  ~Prefs() override { std::filesystem::remove_all(folder_); }

  void Store(const std::string& lines) {
    std::ofstream(folder_ / "vellumark.ini") << "[Other]\nShine_Color=77\n[Startup]\n" << lines;
  }
  std::filesystem::path folder_;
};

TEST_F(Prefs, DressesEachKindByTheSettings) {
  Store(
      "Shine_Color=11\nShadow_Color=12\nButton_Fill_Color=13\nScroll_Fill_Color=14\nScroll_Bar_Color=15\n"
      "Textbox_Fill_Color=16\nTextbox_Text_Color=17\nSpecial_Backdrop_Color=18\n");
  const auto dressed_by = [](auto& window) {
    Bench bench;
    bench.SetBackColor(kOwn);
    form1.Hold().Picture1.SetBackColor(kOwn);
    window.PrefsCallback(bench);
    const auto tenths = static_cast<Color>(10 * bench.plain.Gradient());
    return std::vector<Color>{bench.BackColor(),
                              bench.check.BackColor(),
                              bench.label.ForeColor(),
                              bench.text.BackColor(),
                              bench.text.ForeColor(),
                              bench.list.BackColor(),
                              bench.list.ForeColor(),
                              bench.glide.BackColor(),
                              bench.glide.ForeColor(),
                              bench.glide.Highlight(),
                              bench.picture.BackColor(),
                              bench.vl_button6.Highlight(),
                              bench.plain.BackColor(),
                              bench.plain.Highlight(),
                              bench.plain.Shadow(),
                              tenths,
                              form1.Hold().Picture1.BackColor()};
  };
  constexpr Color kGround = Rgb(143, 149, 158);
  EXPECT_EQ(dressed_by(form1.Hold()), (std::vector<Color>{kGround, kGround, 0, 16, 17, 16, 17, 14, 15, 11,
                                                          kOwn, kOwn, 13, 11, 12, 12, 18}));
  // The painter leaves buttons and the mouth preview alone.
  EXPECT_EQ(dressed_by(painter::frame_painter.Hold()),
            (std::vector<Color>{kGround, kGround, 0, 16, 17, 16, 17, 14, 15, 11, kOwn, kOwn, kOwn, kOwn, kOwn,
                                10, kOwn}));
}

TEST_F(Prefs, FlagsMakeButtonsAndScrollersFlat) {
  const struct {
    const char* flag;
    bool flat_button, flat_glide;
    // Each differs in length from the one before, since a file of the same size and time isn't read again.
  } cases[] = {{"0", false, false}, {"on", false, false}, {"1", true, true}, {"-1", false, true}};
  for (const auto& row : cases) {
    Store(std::string("Shine_Color=21\nShadow_Color=22\nScroll_Fill_Color=23\nBorderless_Buttons=") +
          row.flag + "\nBorderless_Scrollers=" + row.flag + "\n");
    Bench bench;
    bench.vl_button6.SetBorderless(true);
    form1.Hold().PrefsCallback(bench);
    EXPECT_EQ(bench.plain.Borderless(), row.flat_button) << row.flag;
    EXPECT_TRUE(bench.vl_button6.Borderless()) << row.flag;
    EXPECT_EQ(bench.glide.Highlight(), row.flat_glide ? 23 : 21) << row.flag;
    EXPECT_EQ(bench.glide.Shadow(), row.flat_glide ? 23 : 22) << row.flag;
  }
}

TEST_F(Prefs, TheHostsCallReachesOpenDialogsAndBringsItsWallpaper) {
  support::Desk desk;
  Form1& main = desk.Main();
  form2->Show();
  form3->Show();
  auto call = [form = host::HandedWindow<Form1>("Form1", form1)]() mutable {
    form.RunPrefsCallback();
    platform::ShowUncovered();  // painting goes on while the host waits for its answer
    support::HandleEvents();
  };
  Store("Textbox_Fill_Color=16\n");
  desk.host->wallpaper = support::ScratchFolder() + "/a picture of another kind.bmp";
  QImage dark(8, 8, QImage::Format_RGB32);
  dark.fill(QColor(60, 60, 60));
  ASSERT_TRUE(dark.save(QString::fromStdString(desk.host->wallpaper), "PNG"));
  call();
  for (const bool later : {false, true}) {
    EXPECT_TRUE(form3->Text7.BackColor() == 16 && form2->Text1.BackColor() == 16) << later;
    if (!later) form2.Unload(), form3.Unload();
  }
  form2->Show();
  form3->Show();
  for (QWidget* dialog : {form2->TopWidget(), form3->TopWidget()})
    EXPECT_EQ(dialog->grab().toImage().pixelColor(1, 1), QColor(60, 60, 60));
  ASSERT_TRUE(main.Image1.Picture());
  EXPECT_TRUE(main.GroundIsDark() && form3->GroundIsDark());
  const auto ground = [](QWidget* widget) { return qGray(widget->palette().color(QPalette::Button).rgb()); };
  QDialog over(main.TopWidget());
  platform::DressOver(main.TopWidget(), over);
  EXPECT_LT(ground(&over), 80) << "what asks over a dark window is dark";
  painter::FramePainter& painter = painter::frame_painter.Hold();
  painter.Show();
  const QImage shown = painter.ContainerWidget()->grab().toImage();
  EXPECT_EQ(shown.pixelColor(500, 400), QColor(60, 60, 60));
  EXPECT_NE(shown.pixelColor(500, 415), QColor(60, 60, 60)) << "the status bar keeps a ground of its own";
  for (const Control* control :
       {static_cast<Control*>(&main.HScroll1), static_cast<Control*>(&painter.StatusBar1)})
    EXPECT_LT(ground(control->Widget()), 80) << control->Name();
  EXPECT_LT(ground(main.MenuBar()->findChild<QMenu*>()), 80);
  EXPECT_LT(ground(main.List1.Widget()->findChild<QScrollBar*>()), 80);
  EXPECT_GT(ground(main.Grid1.Widget()->findChild<QScrollBar*>()), 180) << "the grid keeps its ground";
  desk.host->wallpaper.clear();
  call();
  EXPECT_FALSE(main.Image1.Picture());
  EXPECT_FALSE(main.GroundIsDark());
  EXPECT_GT(ground(main.HScroll1.Widget()), 180);
}

TEST_F(Prefs, APipeInPlaceOfWallpaperSettingsOrFoldersHoldsNothingUp) {
  support::Desk desk;
  desk.host->wallpaper = support::ScratchFolder() + "/pipe.png";
  const std::string settings = platform::SettingsFile("vellumark");
  std::filesystem::create_directories(std::filesystem::path(settings).parent_path());
  const std::string folders = std::filesystem::path(settings).parent_path().string() + "/user-dirs.dirs";
  const std::string home = QDir::homePath().toStdString(), scratch = support::ScratchFolder();
  std::ofstream(folders) << "XDG_DOCUMENTS_DIR=\"" << scratch << "\"\n";
  using Folders = std::vector<std::string>;
  EXPECT_EQ(platform::UserFolders(), (Folders{scratch, home, QDir::tempPath().toStdString()}));
  for (const std::string& file : {settings, folders}) std::filesystem::remove(file);
  for (const std::string& pipe : {desk.host->wallpaper, settings, folders})
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  Form1& main = desk.Main();
  EXPECT_FALSE(main.Image1.Picture());
  EXPECT_EQ(main.List1.BackColor(), Rgb(85, 85, 102));
  EXPECT_EQ(platform::UserFolders(), (Folders{home, QDir::tempPath().toStdString()}));
  for (const std::string& file : {settings, folders}) std::filesystem::remove(file);
}

}  // namespace
