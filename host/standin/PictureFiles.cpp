#include "host/standin/PictureFiles.h"

#include <QCollator>
#include <QDir>
#include <QImageReader>
#include <QLocale>
#include <QSaveFile>
#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include "host/standin/frame_pixels.h"
#include "platform/memory.h"
#include "platform/numbers.h"

namespace host {
namespace {

const QStringList kPatterns = {"*.png", "*.jpg", "*.jpeg", "*.bmp", "*.gif"};

std::string Text(const QString& text) { return text.toStdString(); }

/// How much may be taken up before the free memory is looked at again.
constexpr double kBytesBetweenLooks = 16e6;

double FrameBytes(FrameSize size) { return 3.0 * static_cast<double>(size.PlaneBytes()); }

/// A picture as it is decoded, and once more on white, four bytes to the pixel.
double WorkBytes(FrameSize size) { return 8.0 * size.width * size.height; }

/// Opening a pipe would wait for its other end.
bool IsPipeOrTheLike(const QString& file) { return QFileInfo::exists(file) && !QFileInfo(file).isFile(); }

/// Collects the frames of files until their number is known.
struct Reading {
  FrameSize size;
  QString first_file;
  std::vector<Animation::Frame> frames;
  /// What all frames take, as far as the files' heads tell, what those do that are there, and when the free
  /// memory was looked at last.
  double expected_bytes = 0, taken_bytes = 0, bytes_at_look = -kBytesBetweenLooks;
};

/// The memory that the frames of all files will take: as many as there are, in the size of the first. Only
/// the files' heads are read for it.
double ExpectedBytes(const QStringList& files) {
  double frames = 0;
  FrameSize size;
  for (const QString& file : files) {
    if (IsPipeOrTheLike(file)) continue;
    QImageReader reader(file);
    if (frames == 0) size = {reader.size().width(), reader.size().height()};
    frames += reader.supportsAnimation() ? std::max(reader.imageCount(), 1) : 1;
  }
  return size.width < 1 || size.height < 1 ? 0 : FrameBytes(size) * frames;
}

/// The refusal, if the frames still to come, this one at least, need more memory than there is. The system
/// would promise it all the same and end processes when it is filled.
std::optional<std::string> LookForMemory(Reading& reading, QSize next) {
  if (!next.isValid() || reading.taken_bytes - reading.bytes_at_look < kBytesBetweenLooks)
    return std::nullopt;
  reading.bytes_at_look = reading.taken_bytes;
  const FrameSize size{next.width(), next.height()};
  const double needed =
      std::max(reading.expected_bytes - reading.taken_bytes, FrameBytes(size)) + WorkBytes(size);
  const double free = platform::FreeMemoryBytes();
  if (needed <= free) return std::nullopt;
  const auto amount = [](double bytes, platform::RoundTo direction) {
    return QString::fromStdString(platform::SizeText(bytes, direction));
  };
  return Text(QObject::tr("There is not enough memory for all of these pictures. %1 would be needed, %2 are "
                          "free.")
                  .arg(amount(needed, platform::RoundTo::Above), amount(free, platform::RoundTo::Below)));
}

QImage OnWhite(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture.convertToFormat(QImage::Format_RGB32);
  QImage opaque = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < opaque.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(opaque.scanLine(y));
    for (int x = 0; x < opaque.width(); ++x) {
      const auto blend = [alpha = qAlpha(line[x])](int part) {
        return (part * alpha + 255 * (255 - alpha) + 127) / 255;
      };
      line[x] = qRgb(blend(qRed(line[x])), blend(qGreen(line[x])), blend(qBlue(line[x])));
    }
  }
  return opaque;
}

QString SizeText(FrameSize size) { return QObject::tr("%1 by %2").arg(size.width).arg(size.height); }

std::optional<std::string> TakePicture(Reading& reading, const QImage& picture, const QString& file) {
  const FrameSize size{picture.width(), picture.height()};
  if (reading.frames.empty()) {
    reading.size = size;
    reading.first_file = file;
  }
  if (size != reading.size)
    return Text(
        QObject::tr(
            "The picture \"%1\" is %2, but the first one, \"%3\", is %4. All frames of an animation have "
            "one size.")
            .arg(file, SizeText(size), QFileInfo(reading.first_file).fileName(), SizeText(reading.size)));
  if (reading.frames.size() >= static_cast<std::size_t>(kMaximumFrames))
    return Text(QObject::tr("The picture \"%1\" is one frame too many.").arg(file));
  reading.frames.push_back(PlanesOf(picture, size));
  reading.taken_bytes += FrameBytes(size);
  return std::nullopt;
}

std::optional<std::string> TakeFile(Reading& reading, const QString& file) {
  if (IsPipeOrTheLike(file))
    return Text(QObject::tr("The picture \"%1\" can't be read: %2.")
                    .arg(file, QObject::tr("it is not a regular file")));
  QImageReader reader(file);
  reader.setAutoTransform(true);
  do {
    if (auto refusal = LookForMemory(reading, reader.size())) return refusal;
    const QImage picture = reader.read();
    if (picture.isNull())
      return Text(QObject::tr("The picture \"%1\" can't be read: %2.").arg(file, reader.errorString()));
    if (auto failure = TakePicture(reading, picture, file)) return failure;
  } while (reader.supportsAnimation() && reader.canRead());
  return std::nullopt;
}

Animation AnimationOf(Reading reading) {
  Animation animation(reading.size, static_cast<int>(reading.frames.size()));
  for (int frame = 0; frame < animation.FrameCount(); ++frame)
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
      animation.SetPlane(frame, channel,
                         reading.frames[static_cast<std::size_t>(frame)][static_cast<std::size_t>(channel)]);
  return animation;
}

std::optional<std::string> SaveFrame(const Animation& animation, int frame, const QString& name) {
  const PixelBlock block = FramePixels(animation, frame);
  const QImage picture(reinterpret_cast<const uchar*>(block.pixels.data()), block.width, block.height,
                       QImage::Format_RGB32);
  QSaveFile file(name);
  if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG") && file.commit()) return std::nullopt;
  return Text(QObject::tr("The picture \"%1\" can't be written: %2.").arg(name, file.errorString()));
}

}  // namespace

Animation::Frame PlanesOf(const QImage& picture, FrameSize size) {
  const QImage opaque = OnWhite(picture);
  std::array<std::vector<std::uint8_t>, 3> planes;
  for (auto& plane : planes) plane.reserve(size.PlaneBytes());
  for (int y = 0; y <= size.height; ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(opaque.constScanLine(std::min(y, opaque.height() - 1)));
    for (int x = 0; x <= size.width; ++x) {
      const QRgb pixel = line[std::min(x, opaque.width() - 1)];
      planes[0].push_back(static_cast<std::uint8_t>(qRed(pixel)));
      planes[1].push_back(static_cast<std::uint8_t>(qGreen(pixel)));
      planes[2].push_back(static_cast<std::uint8_t>(qBlue(pixel)));
    }
  }
  return {OwnTable(std::move(planes[0])), OwnTable(std::move(planes[1])), OwnTable(std::move(planes[2]))};
}

QString PicturePatterns() { return kPatterns.join(' '); }

QStringList SortedByNumber(QStringList files) {
  // A language is named because the plain C locale, in which programs may run too, doesn't compare numbers.
  QCollator order{QLocale(QLocale::English)};
  order.setNumericMode(true);
  order.setCaseSensitivity(Qt::CaseInsensitive);
  std::ranges::sort(files);
  std::ranges::stable_sort(files, order);
  return files;
}

QStringList PicturesIn(const QString& folder) {
  QStringList files;
  for (const QFileInfo& file : QDir(folder).entryInfoList(kPatterns, QDir::Files))
    files << file.absoluteFilePath();
  return SortedByNumber(files);
}

std::variant<Animation, std::string> ReadPictures(const QStringList& files, const Progress& progress) try {
  Reading reading;
  reading.expected_bytes = ExpectedBytes(files);
  for (qsizetype i = 0; i < files.size(); ++i) {
    if (auto failure = TakeFile(reading, files[i])) return *failure;
    progress(100.0 * static_cast<double>(i + 1) / static_cast<double>(files.size()));
  }
  if (reading.frames.empty()) return Text(QObject::tr("There is no picture to open."));
  return AnimationOf(std::move(reading));
} catch (const std::bad_alloc&) {
  return Text(QObject::tr("There is not enough memory for all of these pictures."));
}

QStringList NumberedNames(const QString& base, int frame_count) {
  const auto digits = std::max<qsizetype>(4, QString::number(frame_count - 1).size());
  QStringList names;
  for (int frame = 0; frame < frame_count; ++frame)
    names << QString("%1%2.png").arg(base).arg(frame, static_cast<int>(digits), 10, QChar('0'));
  return names;
}

std::optional<std::string> SavePictures(const Animation& animation, const QString& base,
                                        const Progress& progress) {
  const QStringList names = NumberedNames(base, animation.FrameCount());
  for (int frame = 0; frame < animation.FrameCount(); ++frame) {
    if (auto failure = SaveFrame(animation, frame, names[frame])) return failure;
    progress(100.0 * (frame + 1) / animation.FrameCount());
  }
  return std::nullopt;
}

}  // namespace host
