#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include "convert/formats/formats.h"
#include "convert/paper/Paper.h"
#include "convert/paper/SheetPainter.h"
#include "convert/paper/page_layout.h"
#include "tests/convert/sheets.h"

namespace {

using testing::AllOf;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;
using testing::Not;

TEST(PageLayout, PagesBeginAtAMarkAndSecondsAndFeetStandBesideTheirFrames) {
  // The page has 250 millimetres for rows, and a row takes at least 3.8.
  constexpr std::pair<double, std::int64_t> cases[] = {{24, 48},    {12, 60}, {25, 50},  {30, 60},
                                                       {29.97, 60}, {60, 60}, {120, 60}, {1000, 50},
                                                       {254, 48},   {0, 48},  {-24, 48}, {127, 65}};
  for (const auto& [rate, rows] : cases)
    EXPECT_EQ(convert::RowsOfPage(rate, 25'000).rows_per_page, rows) << rate;
  EXPECT_EQ(convert::PageCount(0, 48), 1);
  EXPECT_EQ(convert::PageCount(96, 48), 2);
  EXPECT_EQ(convert::PageCount(97, 48), 3);
  EXPECT_TRUE(convert::SecondOf(48, 24).Begins());
  EXPECT_EQ(convert::SecondOf(47, 24).frames_since, 23);
  // The second second at 29.97 begins with the first frame behind it.
  EXPECT_EQ(convert::SecondOf(59, 29.97).frames_since, 29);
  EXPECT_TRUE(convert::SecondOf(60, 29.97).Begins());
  EXPECT_EQ(convert::SecondOf(5, 0).second, 0);
  EXPECT_TRUE(convert::IsHalfSecond(36, 24));
  EXPECT_FALSE(convert::IsHalfSecond(0, 1));
  EXPECT_FALSE(convert::IsHalfSecond(1, 2)) << "every row would be one";
  EXPECT_EQ(convert::FeetText(32), "2+00");
}

/// What is drawn on the rows of a page, and the texts above, in order: of lines the points, with - for heavy
/// ones, of an outline of many points the first, the one in the middle and the last; of texts the beginning
/// and the row, of mouths and comments the left edge too.
std::string Drawn(convert::SheetPainter& sheet, std::int64_t page) {
  QBuffer buffer;
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  QPainter painter(&generator);
  sheet.DrawPage(painter, page);
  EXPECT_FALSE(painter.hasClipping()) << "what comes next would be cut";
  painter.end();
  QXmlStreamReader xml(buffer.data());
  QStringList drawn, pictures;
  bool heavy = false;
  const auto of = [&xml](const char* name) { return xml.attributes().value(name).toString(); };
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == u"g") {
      heavy = of("stroke-width") == "50";
    } else if (xml.name() == u"rect" || xml.name() == u"image") {
      if (of("y").toDouble() < 3350) continue;
      drawn += QStringList{of("x"), of("y"), of("width"), of("height")}.join(' ');
      if (const QString picture = of("xlink:href"); !picture.isEmpty() && !pictures.contains(picture))
        drawn.last() += " new", pictures += picture;
    } else if (xml.name() == u"polyline" || xml.name() == u"path") {
      QStringList points = QString(of("d") + of("points")).remove('L').split(' ', Qt::SkipEmptyParts);
      if (points[0].endsWith(",2800")) continue;
      if (points.size() > 8) points = {points[0], points[points.size() / 2], points.last()};
      drawn += (heavy ? "- " : "") + points.join(' ');
    } else if (xml.name() == u"text") {
      const double row = std::floor((of("y").toDouble() - 3350) / 500), left = of("x").toDouble();
      drawn += xml.readElementText().trimmed().left(4);
      if (row >= 0) drawn.last() += " @" + QString::number(row);
      if (row >= 0 && left >= 9200) drawn.last() += " " + QString::number(left);
    }
  }
  return drawn.join(';').toStdString();
}

class Paper : public testing::Test {
  int count_ = 0;
  QGuiApplication application_{count_, nullptr};
};

TEST_F(Paper, DrawsAPage) {
  convert::Document document = support::SheetWith(7, "0:A 2:M 6:E");
  document.frame_rate_text = "4";
  document.wave_file_name = "a/voice.wav";
  document.rows[0][2] = "Hi";
  document.track_values.assign(7, {32, 32, 32, 32});
  document.track_values[1] = {0, 63, 90, 32};
  const std::vector<convert::Peak> peaks(7 * convert::kPeaksPerFrame, {-1, 0.5});
  // Four rows of five millimetres, a second to the page.
  convert::SheetPainter sheet(document, "s", peaks, {21000, 3350 + 4 * 500 + 900});
  EXPECT_EQ(sheet.Pages(), 2);
  EXPECT_EQ(Drawn(sheet, 0),
            "SHEE;s;SOUN;voic;RATE;4 fp;LENG;1.75;PAGE;1 of;Fram;Sec;Feet;Soun;Mout;Comm;Yell;Red;Gree;Blue;"
            "- 1200,3350 20000,3350;1200,3850 20000,3850;1200,4350 20000,4350;1200,4850 20000,4850;"
            "- 1200,5350 20000,5350;1200,3350 20000,3350;6300,3350 6300,5350;"
            "M7075,3381.25 4750,5318.75 7075,3381.25;17194.6,3350 17194.6,5350;"
            "17194.6,3600 17540,4100 17194.6,4600 17194.6,5100;17994.6,3350 17994.6,5350;"
            "17994.6,3600 17660,4100 17994.6,4600 17994.6,5100;18794.6,3350 18794.6,5350;"
            "18794.6,3600 18460,4100 18794.6,4600 18794.6,5100;19594.6,3350 19594.6,5350;"
            "19594.6,3600 19594.6,4100 19594.6,4600 19594.6,5100;0 @0;0s @0;0+00 @0;1 @1;+1 @1;0+01 @1;2 @2;"
            "+2 @2;0+02 @2;3 @3;+3 @3;0+03 @3;A @0 9300;8013.1 3350 1123.81 800 new;9500,3895 9500,4260;"
            "9380,4260 9620,4260;M @2 9300;8013.1 4350 1123.81 800 new;9500,4895 9500,5260;Hi @0 11250");
  // The second page ends with the sheet, has a mouth held over, and seconds that nothing is heard of.
  const std::string second = Drawn(sheet, 1);
  for (const char* part :
       {"1200 3350 3450 500;1200 3850 3450 500;1200 4350 3450 500;1200 4850 3450 500;",
        "1200,4910 20000,4910;6300,3350 6300,4850;M7075,3381.25 4750,4818.75 7075,3381.25;",
        "17194.6,3350 17194.6,4850;17194.6,3600 17194.6,4100 17194.6,4600;", "4 @0;1s @0;0+04 @0;5 @1;",
        "(M) @0 9300;", "E @2 9300;8223.81 4350 702.381 500"})
    EXPECT_THAT(second, HasSubstr(part));
  // A comment too long for its row takes the free rows below it.
  document.rows[0][2] = std::string(60, 'W');
  EXPECT_THAT(Drawn(sheet, 0), HasSubstr("WWWW @1 11250"));
  document.rows[5][1] = std::exchange(document.rows[6][1], "");
  EXPECT_THAT(Drawn(sheet, 1), HasSubstr("9500,4395 9500,4760;9380,4760 9620,4760")) << "held to the end";
  document.frame_rate_text = "0";
  convert::SheetPainter without_rate(document, "s", peaks, {21000, 3350 + 4 * 500 + 900});
  EXPECT_THAT(Drawn(without_rate, 0), AllOf(HasSubstr("7 fr;"), Not(HasSubstr("- ")), Not(HasSubstr("s @"))));
}

TEST_F(Paper, ShowsTheSampleOnTwoPages) {
  const auto sheet = *convert::ReadExposureSheet(support::FileBytes(SOURCE_DIR "/samples/frogs.exp")).sheet;
  const auto sound = convert::SoundFile::Open(SOURCE_DIR "/samples/frogs.wav").sound;
  const auto pdf = convert::PrintSheet(sheet, "frogs", sound.get(), convert::Paper::kLetter, false);
  EXPECT_NE(pdf.bytes->find("/MediaBox [0 0 612"), std::string::npos);
  EXPECT_TRUE(pdf.notes.empty());
  EXPECT_NE(pdf.bytes->find("/Count 2"), std::string::npos);
  const auto mute = convert::PrintSheet(sheet, "frogs", nullptr, convert::Paper::kLetter, false);
  EXPECT_GT(pdf.bytes->size(), mute.bytes->size() + 500) << "the waveform";
  using std::string_view_literals::operator""sv;
  for (const auto text :
       {"/Title (\xfe\xff\0f\0r\0o\0g\0s)"sv, "/Creator (\xfe\xff\0E\0x\0p\0o\0s\0u\0r\0e\0 \0S"sv})
    EXPECT_NE(pdf.bytes->find(text), std::string::npos) << text;
  // Without pictures the first stream is the first page's. It begins at the paper's own corner.
  const auto empty = convert::PrintSheet(support::SheetWith(2, ""), "", nullptr, convert::Paper::kA4, false);
  EXPECT_NE(empty.bytes->find("/MediaBox [0 0 595"), std::string::npos);
  const auto mouth =
      convert::PrintSheet(support::SheetWith(2, "1:A"), "", nullptr, convert::Paper::kA4, false);
  EXPECT_GT(mouth.bytes->size(), empty.bytes->size() + 500) << "the rows of the first page are drawn";
  const std::string stream = std::string(4, '\0') + empty.bytes->substr(empty.bytes->find("stream\n") + 7);
  EXPECT_THAT(
      qUncompress(QByteArray::fromStdString(stream)).toStdString(),
      testing::ContainsRegex("\n0\\.060* 0 0 -0\\.060* 0 842 cm\n(.*\n)*0\\.47244[0-9]* 0 0 0\\.47244"));

  const auto svg = convert::PrintSheet(sheet, "frogs", sound.get(), convert::Paper::kLetter, true);
  for (const char* text :
       {"<title>frogs</title>", "width=\"215.9mm\" height=\"558.8mm\"", "2.96 s, 71 frames, 4+07 ft",
        "2 of 2", "&quot;moon&quot;", ">frogs</text>", ">frogs.wav</text>"})
    EXPECT_NE(svg.bytes->find(text), std::string::npos) << text;
  QSvgRenderer renderer(QByteArray::fromStdString(*svg.bytes));
  ASSERT_TRUE(renderer.isValid());
  EXPECT_NEAR(renderer.viewBoxF().height(), 2 * 27940, 1);
  QImage page(1080, 2794, QImage::Format_RGB32);
  page.fill(Qt::black);
  QPainter painter(&page);
  renderer.render(&painter);
  const auto ink = [&](int from, int to, int frame) {
    const int y =
        frame / 48 * 1397 + static_cast<int>((3350 + (frame % 48 + 0.5) * (27940 - 3350 - 900) / 48) / 20);
    int dark = 0;
    for (int x = from; x < to; ++x) dark += qGray(page.pixel(x, y)) < 160;
    return dark;
  };
  // Beside the sound's middle: the vowel of "Five", the pause after "jump", and "moon" on the second page.
  for (const auto& [frame, least, most] : {std::tuple{3, 60, 150}, {35, 0, 9}, {65, 20, 150}})
    EXPECT_THAT(ink(235, 312, frame) + ink(318, 395, frame), AllOf(Ge(least), Le(most)));
  EXPECT_EQ(ink(0, 50, 49), 0) << "the paper";
  EXPECT_THAT(ink(400, 457, 0), AllOf(Ge(1), Le(30))) << "the picture of the F without its ground";
  for (const char* shapes : {"50:M", "40:A 48:M"}) {
    const auto late =
        convert::PrintSheet(support::SheetWith(60, shapes), "", nullptr, convert::Paper::kA4, true);
    EXPECT_THAT(*late.bytes, Not(testing::ContainsRegex("[(]A?[)]")))
        << "no mouth is held from the page before";
  }
  const auto too_long =
      convert::PrintSheet(support::SheetWith(2001 * 48, ""), "", nullptr, convert::Paper::kA4, false);
  EXPECT_EQ(InEnglish(too_long.failure), "the sheet would fill 2001 pages; at most 2000 are printed");
}

}  // namespace
