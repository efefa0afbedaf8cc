#include "convert/paper/Paper.h"

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "convert/message.h"
#include "convert/paper/SheetPainter.h"
#include "platform/version.h"

namespace convert {
namespace {

constexpr std::int64_t kMostPages = 2000;
constexpr int kPdfDotsPerInch = 1200;
constexpr double kUnitsPerInch = 2540;

/// The sound, piece by piece of the sheet: both are tied by their proportion of the whole.
std::vector<Peak> PeaksOf(SoundFile& sound, std::int64_t frames) {
  const SoundFile::Scan scan = sound.ScanAll();
  std::vector<Peak> peaks(static_cast<std::size_t>(frames) * kPeaksPerFrame);
  if (peaks.empty() || scan.frames == 0 || scan.peak <= 0) return {};
  const double pieces_per_sample = static_cast<double>(peaks.size()) / static_cast<double>(scan.frames);
  std::int64_t sample_number = 0;
  sound.Play([&](std::span<const double> samples) {
    for (const double sample : samples) {
      const auto piece = static_cast<std::size_t>(static_cast<double>(sample_number++) * pieces_per_sample);
      Peak& peak = peaks[std::min(piece, peaks.size() - 1)];
      const auto value = static_cast<float>(sample / scan.peak);
      peak.low = std::min(peak.low, value);
      peak.high = std::max(peak.high, value);
    }
    return true;
  });
  return peaks;
}

QPageSize PageSizeOf(Paper paper) {
  return QPageSize(paper == Paper::kA4 ? QPageSize::A4 : QPageSize::Letter);
}

QSizeF UnitsOf(const QPageSize& page) { return page.size(QPageSize::Millimeter) * 100; }

QByteArray Pdf(SheetPainter& sheet, const QPageSize& page, const QString& name) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(kPdfDotsPerInch);
  writer.setPageSize(page);
  writer.setPageMargins(QMarginsF());
  writer.setTitle(name);
  writer.setCreator(QStringLiteral("Exposure Sheet %1").arg(platform::kVersion));
  QPainter painter(&writer);
  painter.scale(kPdfDotsPerInch / kUnitsPerInch, kPdfDotsPerInch / kUnitsPerInch);
  for (std::int64_t i = 0; i < sheet.Pages(); ++i) {
    if (i > 0) writer.newPage();
    sheet.DrawPage(painter, i);
  }
  painter.end();
  return bytes;
}

QByteArray Svg(SheetPainter& sheet, const QSizeF& page, const QString& name) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setTitle(name);
  const QSizeF all(page.width(), page.height() * static_cast<double>(sheet.Pages()));
  generator.setResolution(static_cast<int>(kUnitsPerInch));
  generator.setSize(all.toSize());
  generator.setViewBox(QRectF(QPointF(), all));
  QPainter painter(&generator);
  painter.fillRect(QRectF(QPointF(), all), Qt::white);
  for (std::int64_t i = 0; i < sheet.Pages(); ++i) {
    sheet.DrawPage(painter, i);
    painter.translate(0, page.height());
  }
  painter.end();
  return bytes;
}

}  // namespace

Writing PrintSheet(const Document& document, const std::string& name, SoundFile* sound, Paper paper,
                   bool svg) {
  const QPageSize page = PageSizeOf(paper);
  const QString title = QString::fromStdString(name);
  std::vector<Peak> peaks;
  SheetPainter sheet(document, title, peaks, UnitsOf(page));
  if (sheet.Pages() > kMostPages) {
    return {std::nullopt,
            {QT_TRANSLATE_NOOP("convert", "the sheet would fill %1 pages; at most %2 are printed"),
             {std::to_string(sheet.Pages()), std::to_string(kMostPages)}},
            {}};
  }
  if (sound) peaks = PeaksOf(*sound, FramesOf(document));
  const QByteArray bytes = svg ? Svg(sheet, UnitsOf(page), title) : Pdf(sheet, page, title);
  Messages notes;
  NoteWhatIsLeftOut(document, {.rate = true, .sound = true, .comments = true, .tracks = true}, notes);
  return {bytes.toStdString(), {}, std::move(notes)};
}

}  // namespace convert
