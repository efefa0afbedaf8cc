// Draws the pages of a sheet, in hundredths of a millimetre.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSizeF>
#include <cstdint>
#include <vector>

#include "convert/document.h"
#include "convert/paper/page_layout.h"

namespace convert {

/// The sound beside the rows: the least and the greatest sample of each piece, kPeaksPerFrame to the frame,
/// as parts of the loudest.
struct Peak {
  float low = 0, high = 0;
};
inline constexpr int kPeaksPerFrame = 8;

class SheetPainter {
 public:
  /// name: for the heading. The document and the peaks must outlive the painter.
  SheetPainter(const Document& document, const QString& name, const std::vector<Peak>& peaks, QSizeF page);

  std::int64_t Pages() const { return pages_; }
  /// The page, from 0, with its upper left corner at the origin.
  void DrawPage(QPainter& painter, std::int64_t page);

 private:
  struct Column {
    double left = 0, width = 0;
    double Right() const { return left + width; }
    double Middle() const { return left + width / 2; }
  };

  void LayColumns();
  void DrawHeading(QPainter& painter, std::int64_t page);
  void DrawColumnHeads(QPainter& painter);
  void DrawRuling(QPainter& painter);
  void DrawCounts(QPainter& painter);
  void DrawSound(QPainter& painter);
  void DrawMouths(QPainter& painter);
  void DrawMouth(QPainter& painter, std::int64_t frame, std::int64_t end, const QString& name);
  void DrawHold(QPainter& painter, std::int64_t from, std::int64_t end);
  void DrawComments(QPainter& painter);
  void DrawTracks(QPainter& painter);

  double RowTop(std::int64_t frame) const;
  QRectF CellOf(const Column& column, std::int64_t frame, double rows = 1) const;
  /// The first frame from this one on that has a shape, or the page's end.
  std::int64_t NextShape(std::int64_t frame) const;
  const QImage& MouthPicture(int number);

  const Document& document_;
  QString name_;
  const std::vector<Peak>& peaks_;
  QSizeF page_size_;
  double rate_;
  PageRows rows_;
  std::int64_t pages_;
  Column frame_, seconds_, feet_, sound_, picture_, shape_, comment_, tracks_[sheet::kTrackChannels];
  QImage mouths_[11];

  /// Of the page being drawn.
  std::int64_t first_ = 0, end_ = 0;
};

}  // namespace convert
