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
  std::function<void()> on_paint;

 protected:
  void Form_Paint() override {
    if (on_paint) on_paint();
  }
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
  Bench bench;
  bench.SetBackColor(kOwn);
  form1.Hold().PrefsCallback(bench);
  constexpr Color kBackdrop = Rgb(143, 149, 158);
  EXPECT_EQ(bench.BackColor(), kBackdrop);
  EXPECT_EQ(bench.check.BackColor(), kBackdrop);
  EXPECT_EQ(bench.text.BackColor(), 16);
  EXPECT_EQ(bench.text.ForeColor(), 17);
  EXPECT_EQ(bench.list.BackColor(), 16);
  EXPECT_EQ(bench.list.ForeColor(), 17);
  EXPECT_EQ(bench.label.ForeColor(), 0);
  EXPECT_EQ(bench.picture.BackColor(), kOwn);
  EXPECT_EQ(bench.plain.BackColor(), 13);
  EXPECT_EQ(bench.plain.Highlight(), 11);
  EXPECT_EQ(bench.plain.Shadow(), 12);
  EXPECT_EQ(bench.plain.Gradient(), 1.2);
  EXPECT_EQ(bench.vl_button6.Highlight(), kOwn);
  EXPECT_EQ(bench.glide.BackColor(), 14);
  EXPECT_EQ(bench.glide.ForeColor(), 15);
  EXPECT_EQ(form1.Hold().Picture1.BackColor(), 18) << "whichever window was passed";
}

TEST_F(Prefs, PaintersTwinLeavesButtonsAndTheMouthPreviewAlone) {
  Store("Shine_Color=11\nButton_Fill_Color=13\nScroll_Fill_Color=14\nTextbox_Text_Color=17\n");
  Bench bench;
  form1.Hold().Picture1.SetBackColor(kOwn);
  bench.SetBackColor(kOwn);
  painter::frame_painter.Hold().PrefsCallback(bench);
  EXPECT_EQ(bench.BackColor(), Rgb(143, 149, 158));
  EXPECT_EQ(bench.plain.BackColor(), kOwn);
  EXPECT_EQ(bench.list.ForeColor(), 17);
  EXPECT_EQ(bench.glide.Highlight(), 11);
  EXPECT_EQ(form1.Hold().Picture1.BackColor(), kOwn);
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

/// Tiles of 40 by 30: a red one in each left top pixel, else blue.
std::shared_ptr<const platform::Picture> Tile(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::blue);
  image.setPixel(0, 0, qRgb(255, 0, 0));
  return std::make_shared<const platform::Picture>(image);
}

TEST_F(Prefs, WallpaperIsTiledFromTheLeftTop) {
  Bench bench;
  for (Control* control : bench.Controls()) control->SetVisible(false);
  bench.on_paint = [&bench] { form1.Hold().Draw_Pattern(bench); };
  bench.Show();
  const auto pixel = [&bench](int x, int y) {
    return bench.ContainerWidget()->grab().toImage().pixelColor(x, y);
  };
  EXPECT_EQ(pixel(0, 0), QColor(143, 149, 158)) << "no picture yet";
  form1.Hold().Image1.SetPicture(Tile(40, 30));
  for (int y = 0; y < 90; y += 30)
    for (int x = 0; x < 100; x += 40) EXPECT_EQ(pixel(x, y), QColor(Qt::red)) << x << " " << y;
  EXPECT_EQ(pixel(99, 89), QColor(Qt::blue));
  painter::FramePainter& painter = painter::frame_painter.Hold();
  painter.Show();
  painter.Image1.SetPicture(Tile(40, 30));
  const QImage shown = painter.ContainerWidget()->grab().toImage();
  EXPECT_EQ(shown.pixelColor(500, 400), QColor(Qt::blue));
  EXPECT_NE(shown.pixelColor(500, 415), QColor(Qt::blue)) << "the status bar keeps a ground of its own";
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
  EXPECT_LT(ground(main.HScroll1.Widget()), 80);
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
