#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "convert/formats/formats.h"
#include "convert/paper/Paper.h"
#include "convert/paper/page_layout.h"
#include "tests/convert/sheets.h"

namespace {

TEST(PageLayout, PagesBeginAtAMarkAndRowsCanBeRead) {
  // The page has 250 millimetres for rows, and a row takes at least 3.8.
  constexpr std::pair<double, std::int64_t> cases[] = {{24, 48},    {12, 60},  {25, 50},  {30, 60},
                                                       {29.97, 60}, {60, 60},  {120, 60}, {1000, 50},
                                                       {0, 48},     {-24, 48}, {127, 65}};
  for (const auto& [rate, rows] : cases)
    EXPECT_EQ(convert::RowsOfPage(rate, 25'000).rows_per_page, rows) << rate;
  EXPECT_EQ(convert::PageCount(0, 48), 1);
  EXPECT_EQ(convert::PageCount(96, 48), 2);
  EXPECT_EQ(convert::PageCount(97, 48), 3);
}

TEST(PageLayout, SecondsAndFeetStandBesideTheirFrames) {
  EXPECT_TRUE(convert::SecondOf(48, 24).Begins());
  EXPECT_EQ(convert::SecondOf(47, 24).frames_since, 23);
  // The second second at 29.97 begins with the first frame behind it.
  EXPECT_EQ(convert::SecondOf(59, 29.97).frames_since, 29);
  EXPECT_TRUE(convert::SecondOf(60, 29.97).Begins());
  EXPECT_TRUE(convert::IsHalfSecond(36, 24));
  EXPECT_FALSE(convert::IsHalfSecond(0, 1));
  EXPECT_EQ(convert::FeetText(71), "4+07");
  EXPECT_EQ(convert::FeetText(32), "2+00");
}

TEST(Paper, ShowsTheSampleOnTwoPages) {
  int count = 0;
  QGuiApplication application(count, nullptr);
  const auto sheet = *convert::ReadExposureSheet(support::FileBytes(SOURCE_DIR "/samples/frogs.exp")).sheet;
  const auto sound = convert::SoundFile::Open(SOURCE_DIR "/samples/frogs.wav").sound;
  const auto pdf = convert::PrintSheet(sheet, "frogs", sound.get(), convert::Paper::kLetter, false);
  EXPECT_NE(pdf.bytes->find("/MediaBox [0 0 612"), std::string::npos);
  EXPECT_EQ(pdf.bytes->substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.bytes->find("/Count 2"), std::string::npos);

  const auto svg = convert::PrintSheet(sheet, "frogs", sound.get(), convert::Paper::kLetter, true);
  for (const char* text : {"frogs.wav", "2.96 s, 71 frames, 4+07 ft", "2 of 2", "&quot;moon&quot;", ">(M)<",
                           ">frogs</text>", ">24 fps<", ">2s<", ">+23<", ">2+15<"})
    EXPECT_NE(svg.bytes->find(text), std::string::npos) << text;
  QSvgRenderer renderer(QByteArray::fromStdString(*svg.bytes));
  ASSERT_TRUE(renderer.isValid());
  EXPECT_NEAR(renderer.viewBoxF().height(), 2 * 27940, 1);
  QImage page(1080, 2794, QImage::Format_RGB32);
  QPainter painter(&page);
  renderer.render(&painter);
  const auto ink = [&](int from, int to, int frame) {
    const double body_top = 1000 + 1500 + 300 + 550, row = (27940 - body_top - 900) / 48;
    const double between_pages = frame < 48 ? 0 : 27940 - 48 * row;
    const int y = static_cast<int>((body_top + (frame + 0.5) * row + between_pages) / 20);
    int dark = 0;
    for (int x = from; x < to; ++x) dark += qGray(page.pixel(x, y)) < 160;
    return dark;
  };
  // The sound on both sides of its middle at 315: loud in the vowel of "Five", nothing in the pause after
  // "jump".
  for (const auto& [from, to] : {std::pair{235, 312}, {318, 395}}) {
    EXPECT_GT(ink(from, to, 3), 30) << from;
    EXPECT_LT(ink(from, to, 35), 5) << from;
  }
  EXPECT_GT(ink(400, 457, 0), 0) << "the picture of the F";
  EXPECT_LT(ink(400, 457, 0), 30) << "its ground";
  const auto rule_above = [&](int frame) {
    const int y = static_cast<int>((3350 + frame * (27940 - 3350 - 900) / 48.0) / 20);
    return std::min(
        {qGray(page.pixel(800, y - 1)), qGray(page.pixel(800, y)), qGray(page.pixel(800, y + 1))});
  };
  EXPECT_LT(rule_above(12), rule_above(11) - 40) << "the half of a second";
  EXPECT_LT(rule_above(24), rule_above(12) - 20) << "the second";
  EXPECT_GT(ink(473, 479, 11), 0) << "the E is held";
  EXPECT_GT(ink(473, 479, 49), 0) << "so is the M, overleaf";
  // The yellow track goes right by the mouth's opening: 12 in frame 3, 57 in frame 8. The red one is at rest.
  EXPECT_GT(ink(897, 904, 3), 0);
  EXPECT_GT(ink(872, 880, 8), 0);
  EXPECT_EQ(ink(872, 895, 3) + ink(882, 904, 8), 0);
  EXPECT_GT(ink(926, 933, 8), 0);
  int ink_of_second_page = 0;
  for (int y = 1400; y < 2790; ++y) ink_of_second_page += qGray(page.pixel(120, y)) < 160;
  EXPECT_GT(ink_of_second_page, 0);
  const auto late =
      convert::PrintSheet(support::SheetWith(60, "50:M"), "", nullptr, convert::Paper::kA4, true);
  EXPECT_EQ(late.bytes->find("()"), std::string::npos) << "no mouth is held from the page before";
}

TEST(Paper, TellsASheetThatIsTooLong) {
  int count = 0;
  QGuiApplication application(count, nullptr);
  const auto writing =
      convert::PrintSheet(support::SheetWith(2001 * 48, ""), "", nullptr, convert::Paper::kA4, false);
  EXPECT_FALSE(writing.bytes);
  EXPECT_EQ(InEnglish(writing.failure), "the sheet would fill 2001 pages; at most 2000 are printed");
}

}  // namespace
