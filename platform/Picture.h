// Pictures in memory, from files and from the program's own resources.
#pragma once

#include <memory>
#include <string>

class QImage;

namespace platform {

class Picture {
 public:
  /// Reads a picture file, or a resource of the program (":/assets/icons/play.png"). Throws
  /// std::runtime_error naming the file and the reason. `dense` names the same picture drawn at twice the
  /// size: it is read where the desktop has a screen that shows it.
  static std::shared_ptr<const Picture> Load(const std::string& path, const std::string& dense = "");

  explicit Picture(QImage image);
  Picture(QImage image, QImage dense);
  ~Picture();
  int Width() const;
  int Height() const;
  const QImage& Image() const { return *image_; }
  /// The picture for a screen that shows `scale` pixels for each of its own. It is kept for the next call.
  const QImage& ImageAt(double scale) const;

 private:
  std::unique_ptr<QImage> image_, dense_;
  mutable std::unique_ptr<QImage> scaled_;
};

}  // namespace platform
