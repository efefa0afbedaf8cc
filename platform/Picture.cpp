#include "platform/Picture.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <stdexcept>
#include <utility>

namespace platform {
namespace {

QImage Read(const std::string& path) {
  if (path.empty()) throw std::runtime_error("There is no picture: its file name is empty");
  const QString name = QString::fromStdString(path);
  // Opening a pipe would wait for its other end.
  if (QFileInfo(name).exists() && !QFileInfo(name).isFile())
    throw std::runtime_error("Can't read the picture \"" + path + "\": Not a regular file");
  // Left to itself the toolkit loads all its readers of pictures to find out what it has. A file that isn't
  // what its name says is rare, and gets that second try.
  QImageReader reader(name, QFileInfo(name).suffix().toLatin1());
  reader.setAutoDetectImageFormat(false);
  QImage image = reader.read();
  if (image.isNull()) {
    reader.setFileName(name);
    reader.setFormat({});
    reader.setAutoDetectImageFormat(true);
    image = reader.read();
  }
  if (image.isNull())
    throw std::runtime_error("Can't read the picture \"" + path +
                             "\": " + reader.errorString().toStdString());
  // The toolkit takes "@2x" in a name for a wish to be drawn at half the size.
  image.setDevicePixelRatio(1);
  // What is opaque is copied rather than blended when it is drawn.
  const auto format = image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
  return image.convertToFormat(format);
}

}  // namespace

Picture::Picture(QImage image) : Picture(std::move(image), QImage()) {}
Picture::Picture(QImage image, QImage dense)
    : image_(std::make_unique<QImage>(std::move(image))),
      dense_(std::make_unique<QImage>(std::move(dense))) {}
Picture::~Picture() = default;

std::shared_ptr<const Picture> Picture::Load(const std::string& path, const std::string& dense) {
  const bool shown_densely = !dense.empty() && qGuiApp->devicePixelRatio() > 1;
  return std::make_shared<const Picture>(Read(path), shown_densely ? Read(dense) : QImage());
}

int Picture::Width() const { return image_->width(); }
int Picture::Height() const { return image_->height(); }

const QImage& Picture::ImageAt(double scale) const {
  const QSize size = (QSizeF(image_->size()) * scale).toSize();
  if (size == image_->size()) return *image_;
  if (size == dense_->size()) return *dense_;
  const QImage& source = scale > 1 && !dense_->isNull() ? *dense_ : *image_;
  if (!scaled_ || scaled_->size() != size)
    scaled_ = std::make_unique<QImage>(source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  return *scaled_;
}

}  // namespace platform
