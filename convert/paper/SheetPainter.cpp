#include "convert/paper/SheetPainter.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <filesystem>
#include <string_view>

#include "convert/message.h"
#include "platform/numbers.h"
#include "timeline/mouth_names.h"
#include "timeline/velocity_values.h"

namespace convert {
namespace {

constexpr double kLeft = 1200, kRight = 1000, kTop = 1000, kBottom = 900;
constexpr double kHeadingHeight = 1500, kGap = 300, kHeadHeight = 550;
constexpr double kBodyTop = kTop + kHeadingHeight + kGap + kHeadHeight;

constexpr double kHairline = 8, kThin = 14, kMedium = 28, kThick = 50;
const QColor kInk(20, 24, 32), kGrey(110, 116, 126), kPale(196, 201, 208), kRule(150, 156, 166);
const QColor kSecondGround(236, 240, 245), kSoundFill(92, 120, 150);
/// The tracks' own hues, dark enough for paper.
const QColor kTrackColors[] = {QColor(190, 150, 0), QColor(205, 60, 60), QColor(40, 150, 60),
                               QColor(60, 80, 200)};
const char* const kTrackNames[] = {QT_TRANSLATE_NOOP("convert", "Yellow"),
                                   QT_TRANSLATE_NOOP("convert", "Red"), QT_TRANSLATE_NOOP("convert", "Green"),
                                   QT_TRANSLATE_NOOP("convert", "Blue")};
/// Values below the tool's canvas lie at the lane's edge.
constexpr int kTrackRange = 63;

/// What of the drawings of 128 by 128 pixels holds every mouth and jaw; the nose above is left out.
const QRect kMouthBox(5, 35, 118, 84);

QString Text(const char* text) { return QCoreApplication::translate("convert", text); }

QFont FontOf(double height, bool bold = false) {
  QFont font(QStringList{"Liberation Sans", "DejaVu Sans", "Sans"});
  font.setPixelSize(static_cast<int>(height));
  font.setBold(bold);
  return font;
}

void SetPen(QPainter& painter, const QColor& color, double width) {
  painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

/// One line of text, cut to its box.
void DrawLine(QPainter& painter, const QRectF& box, int alignment, const QString& text) {
  const QString shown = QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, box.width());
  painter.drawText(box, alignment | Qt::TextSingleLine, shown);
}

QString FeetOf(std::int64_t frame) { return QString::fromStdString(FeetText(frame)); }

}  // namespace

SheetPainter::SheetPainter(const Document& document, const QString& name, const std::vector<Peak>& peaks,
                           QSizeF page)
    : document_(document),
      name_(name),
      peaks_(peaks),
      page_size_(page),
      rate_(RateOf(document)),
      rows_(RowsOfPage(rate_, page.height() - kBodyTop - kBottom)),
      pages_(PageCount(FramesOf(document), rows_.rows_per_page)) {
  LayColumns();
}

void SheetPainter::LayColumns() {
  double left = kLeft;
  const auto next = [&left](double width) {
    const Column column{left, width};
    left += width;
    return column;
  };
  constexpr double kTrackWidth = 800;
  frame_ = next(1250);
  seconds_ = next(1050);
  feet_ = next(1150);
  sound_ = next(3300);
  picture_ = next(1250);
  shape_ = next(1950);
  comment_ = next(page_size_.width() - kRight - left - sheet::kTrackChannels * kTrackWidth);
  for (Column& track : tracks_) track = next(kTrackWidth);
}

double SheetPainter::RowTop(std::int64_t frame) const {
  return kBodyTop + static_cast<double>(frame - first_) * rows_.row_height;
}

QRectF SheetPainter::CellOf(const Column& column, std::int64_t frame, double rows) const {
  constexpr double kInset = 100;
  return {column.left + kInset, RowTop(frame), column.width - 2 * kInset, rows * rows_.row_height};
}

std::int64_t SheetPainter::NextShape(std::int64_t frame) const {
  while (frame < end_ && ShapeOf(document_, frame).empty()) ++frame;
  return frame;
}

const QImage& SheetPainter::MouthPicture(int number) {
  QImage& picture = mouths_[number - 1];
  if (!picture.isNull()) return picture;
  const QImage drawn = QImage(QStringLiteral(":/assets/mouths/cartoon/%1.bmp").arg(number))
                           .convertToFormat(QImage::Format_Grayscale8);
  // Without the ground around the mouths, so that they are as large as a row allows; and ink on nothing, so
  // that the rules go on behind it.
  picture = QImage(kMouthBox.size(), QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int ink = 255 - qGray(drawn.pixel(kMouthBox.topLeft() + QPoint(x, y)));
      picture.setPixel(x, y, qRgba(kInk.red(), kInk.green(), kInk.blue(), ink));
    }
  }
  return picture;
}

void SheetPainter::DrawPage(QPainter& painter, std::int64_t page) {
  first_ = page * rows_.rows_per_page;
  end_ = std::min(first_ + rows_.rows_per_page, FramesOf(document_));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  DrawHeading(painter, page);
  DrawColumnHeads(painter);
  DrawRuling(painter);
  DrawSound(painter);
  DrawTracks(painter);
  DrawCounts(painter);
  DrawMouths(painter);
  DrawComments(painter);
}

void SheetPainter::DrawHeading(QPainter& painter, std::int64_t page) {
  const std::int64_t frames = FramesOf(document_);
  const QString sound =
      QString::fromStdString(std::filesystem::path(document_.wave_file_name).filename().string());
  QString length = Text(QT_TRANSLATE_NOOP("convert", "%1 frames")).arg(frames);
  if (rate_ > 0) {
    length = Text(QT_TRANSLATE_NOOP("convert", "%1 s, %2 frames, %3 ft"))
                 .arg(static_cast<double>(frames) / rate_, 0, 'f', 2)
                 .arg(frames)
                 .arg(FeetOf(frames));
  }
  struct Box {
    const char* label;
    QString text;
    double share;
  };
  const Box boxes[] = {
      {QT_TRANSLATE_NOOP("convert", "Sheet"), name_, 0.27},
      {QT_TRANSLATE_NOOP("convert", "Sound"), sound.isEmpty() ? QStringLiteral("–") : sound, 0.23},
      {QT_TRANSLATE_NOOP("convert", "Rate"),
       Text(QT_TRANSLATE_NOOP("convert", "%1 fps")).arg(QString::fromStdString(platform::NumberText(rate_))),
       0.12},
      {QT_TRANSLATE_NOOP("convert", "Length"), length, 0.26},
      {QT_TRANSLATE_NOOP("convert", "Page"),
       Text(QT_TRANSLATE_NOOP("convert", "%1 of %2")).arg(page + 1).arg(pages_), 0.12}};
  const double width = page_size_.width() - kLeft - kRight;
  double left = kLeft;
  for (const Box& box : boxes) {
    const QRectF frame(left, kTop, width * box.share, kHeadingHeight);
    SetPen(painter, kInk, kThin);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
    const QRectF inside = frame.adjusted(150, 130, -150, -200);
    painter.setFont(FontOf(230));
    painter.setPen(kGrey);
    DrawLine(painter, inside, Qt::AlignTop | Qt::AlignLeft, Text(box.label).toUpper());
    painter.setPen(kInk);
    double height = left == kLeft ? 480 : 360;
    // A length in three measures rather gets smaller than loses its end.
    while (height > 240 && QFontMetricsF(FontOf(height, true)).horizontalAdvance(box.text) > inside.width())
      height -= 20;
    painter.setFont(FontOf(height, true));
    DrawLine(painter, inside, Qt::AlignBottom | Qt::AlignLeft, box.text);
    left += frame.width();
  }
}

void SheetPainter::DrawColumnHeads(QPainter& painter) {
  painter.setFont(FontOf(260, true));
  painter.setPen(kInk);
  const auto head = [&](const Column& column, double right, const char* text) {
    DrawLine(painter, {column.left, kBodyTop - kHeadHeight, right - column.left, kHeadHeight},
             Qt::AlignCenter, Text(text));
  };
  head(frame_, frame_.Right(), QT_TRANSLATE_NOOP("convert", "Frame"));
  head(seconds_, seconds_.Right(), QT_TRANSLATE_NOOP("convert", "Sec"));
  head(feet_, feet_.Right(), QT_TRANSLATE_NOOP("convert", "Feet"));
  head(sound_, sound_.Right(), QT_TRANSLATE_NOOP("convert", "Sound"));
  head(picture_, shape_.Right(), QT_TRANSLATE_NOOP("convert", "Mouth"));
  head(comment_, comment_.Right(), QT_TRANSLATE_NOOP("convert", "Comment"));
  painter.setFont(FontOf(220, true));
  for (std::size_t i = 0; i < std::size(kTrackNames); ++i) {
    painter.setPen(kTrackColors[i]);
    head(tracks_[i], tracks_[i].Right(), kTrackNames[i]);
  }
}

void SheetPainter::DrawRuling(QPainter& painter) {
  const double right = page_size_.width() - kRight;
  // Rows behind the sheet's end are ruled too: they are there to write on.
  const std::int64_t ruled_end = first_ + rows_.rows_per_page;
  const double bottom = RowTop(ruled_end);
  for (std::int64_t frame = first_; frame < ruled_end; ++frame) {
    if (SecondOf(frame, rate_).second % 2 == 1)
      painter.fillRect(QRectF(kLeft, RowTop(frame), feet_.Right() - kLeft, rows_.row_height), kSecondGround);
  }
  for (std::int64_t frame = first_; frame <= ruled_end; ++frame) {
    const bool second = rate_ > 0 && SecondOf(frame, rate_).Begins();
    const bool half = IsHalfSecond(frame, rate_);
    SetPen(painter, second || half ? kInk : kPale, second ? kThick : half ? kThin : kHairline);
    painter.drawLine(QLineF(kLeft, RowTop(frame), right, RowTop(frame)));
  }
  const double head_top = kBodyTop - kHeadHeight;
  for (const Column* column : {&frame_, &seconds_, &feet_, &sound_, &shape_, &comment_}) {
    SetPen(painter, kRule, kThin);
    painter.drawLine(QLineF(column->Right(), head_top, column->Right(), bottom));
  }
  for (const Column& track : tracks_)
    painter.drawLine(QLineF(track.Right(), head_top, track.Right(), bottom));
  SetPen(painter, kInk, kMedium);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRectF(kLeft, head_top, right - kLeft, bottom - head_top));
  painter.drawLine(QLineF(kLeft, kBodyTop, right, kBodyTop));
  if (end_ < ruled_end) {
    SetPen(painter, kInk, kThin);
    painter.drawLine(QLineF(kLeft, RowTop(end_) + 60, right, RowTop(end_) + 60));
  }
}

void SheetPainter::DrawCounts(QPainter& painter) {
  for (std::int64_t frame = first_; frame < end_; ++frame) {
    const SecondMark mark = SecondOf(frame, rate_);
    const bool begins_second = rate_ > 0 && mark.Begins();
    painter.setFont(FontOf(begins_second ? 290 : 260, begins_second));
    painter.setPen(kInk);
    DrawLine(painter, CellOf(frame_, frame), Qt::AlignRight | Qt::AlignVCenter, QString::number(frame));
    if (rate_ > 0) {
      painter.setPen(begins_second ? kInk : kGrey);
      painter.setFont(FontOf(begins_second ? 290 : 220, begins_second));
      const QString text =
          begins_second ? QString::number(mark.second) + "s" : "+" + QString::number(mark.frames_since);
      DrawLine(painter, CellOf(seconds_, frame), Qt::AlignRight | Qt::AlignVCenter, text);
    }
    const bool begins_foot = frame % kFramesPerFoot == 0;
    painter.setPen(begins_foot ? kInk : kGrey);
    painter.setFont(FontOf(begins_foot ? 260 : 220, begins_foot));
    DrawLine(painter, CellOf(feet_, frame), Qt::AlignRight | Qt::AlignVCenter, FeetOf(frame));
  }
}

void SheetPainter::DrawSound(QPainter& painter) {
  const double half_width = sound_.width / 2 - 100, middle = sound_.Middle();
  SetPen(painter, kRule, kHairline);
  if (end_ > first_) painter.drawLine(QLineF(middle, RowTop(first_), middle, RowTop(end_)));
  const auto begin = static_cast<std::size_t>(first_) * kPeaksPerFrame;
  const auto end = std::min(static_cast<std::size_t>(end_) * kPeaksPerFrame, peaks_.size());
  if (begin >= end) return;
  const double step = rows_.row_height / kPeaksPerFrame;
  const auto y = [&](std::size_t i) { return kBodyTop + (static_cast<double>(i - begin) + 0.5) * step; };
  QPolygonF outline;
  for (std::size_t i = begin; i < end; ++i)
    outline << QPointF(middle + double{peaks_[i].high} * half_width, y(i));
  for (std::size_t i = end; i-- > begin;)
    outline << QPointF(middle + double{peaks_[i].low} * half_width, y(i));
  SetPen(painter, kSoundFill, kHairline);
  painter.setBrush(kSoundFill);
  painter.drawPolygon(outline);
}

void SheetPainter::DrawMouths(QPainter& painter) {
  std::int64_t frame = NextShape(first_);
  if (frame > first_) {
    std::int64_t before = first_;
    while (before > 0 && ShapeOf(document_, before - 1).empty()) --before;
    if (before > 0) {
      const std::string_view held = ShapeOf(document_, before - 1);
      painter.setFont(FontOf(260));
      painter.setPen(kGrey);
      DrawLine(painter, CellOf(shape_, first_), Qt::AlignLeft | Qt::AlignVCenter,
               "(" + QString::fromUtf8(held.data(), static_cast<qsizetype>(held.size())) + ")");
      DrawHold(painter, first_, frame);
    }
  }
  while (frame < end_) {
    const std::int64_t next = NextShape(frame + 1);
    const std::string_view name = ShapeOf(document_, frame);
    DrawMouth(painter, frame, next, QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    DrawHold(painter, frame, next);
    frame = next;
  }
}

void SheetPainter::DrawMouth(QPainter& painter, std::int64_t frame, std::int64_t end, const QString& name) {
  constexpr double kMostPicture = 800;
  painter.setFont(FontOf(320, true));
  painter.setPen(kInk);
  DrawLine(painter, CellOf(shape_, frame), Qt::AlignLeft | Qt::AlignVCenter, name);
  const auto mouth = timeline::MouthNumber(ShapeOf(document_, frame));
  if (!mouth) return;
  const double height = std::min(static_cast<double>(end - frame) * rows_.row_height, kMostPicture);
  const double width = height * kMouthBox.width() / kMouthBox.height();
  painter.drawImage(QRectF(picture_.Middle() - width / 2, RowTop(frame), width, height),
                    MouthPicture(*mouth));
}

void SheetPainter::DrawHold(QPainter& painter, std::int64_t from, std::int64_t end) {
  if (end - from < 2) return;
  constexpr double kHoldFromLeft = 300, kGapAtEnds = 90, kTick = 120;
  const double x = shape_.left + kHoldFromLeft, bottom = RowTop(end) - kGapAtEnds;
  SetPen(painter, kInk, kMedium);
  painter.drawLine(QLineF(x, RowTop(from + 1) + kGapAtEnds / 2, x, bottom));
  // A hold that goes on overleaf has no foot.
  if (end < end_ || end == FramesOf(document_))
    painter.drawLine(QLineF(x - kTick, bottom, x + kTick, bottom));
}

void SheetPainter::DrawComments(QPainter& painter) {
  painter.setFont(FontOf(290));
  painter.setPen(kInk);
  for (std::int64_t frame = first_; frame < end_; ++frame) {
    const QString comment = QString::fromStdString(CommentOf(document_, frame));
    if (comment.isEmpty()) continue;
    std::int64_t free = frame + 1;
    while (free < end_ && CommentOf(document_, free).empty()) ++free;
    const QRectF row = CellOf(comment_, frame);
    if (free == frame + 1 || QFontMetricsF(painter.font()).horizontalAdvance(comment) <= row.width()) {
      DrawLine(painter, row, Qt::AlignLeft | Qt::AlignVCenter, comment);
      continue;
    }
    const QRectF box = CellOf(comment_, frame, static_cast<double>(std::min<std::int64_t>(free - frame, 4)));
    painter.save();
    painter.setClipRect(box);
    painter.drawText(box.adjusted(0, 40, 0, 0),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere | Qt::TextWordWrap, comment);
    painter.restore();
  }
}

void SheetPainter::DrawTracks(QPainter& painter) {
  const auto tracked_end = std::min(end_, static_cast<std::int64_t>(document_.track_values.size()));
  for (std::size_t channel = 0; channel < std::size(tracks_); ++channel) {
    const Column& lane = tracks_[channel];
    constexpr double kInset = 60;
    // High on the tool's canvas is right on paper.
    const auto x = [&](int value) {
      return lane.Right() - kInset - std::min(value, kTrackRange) * (lane.width - 2 * kInset) / kTrackRange;
    };
    SetPen(painter, kPale, kHairline);
    const double start = x(timeline::kVelocityStart);
    if (end_ > first_) painter.drawLine(QLineF(start, RowTop(first_), start, RowTop(end_)));
    if (tracked_end <= first_) continue;
    QPolygonF curve;
    for (std::int64_t frame = first_; frame < tracked_end; ++frame) {
      const int value = document_.track_values[static_cast<std::size_t>(frame)][channel];
      curve << QPointF(x(value), RowTop(frame) + rows_.row_height / 2);
    }
    SetPen(painter, kTrackColors[channel], kMedium);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(curve);
  }
}

}  // namespace convert
