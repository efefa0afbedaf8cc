// Picture files to animations and back.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "host/standin/animation.h"
#include "host/standin/frame_size.h"

namespace host {

/// Told of progress, 0 to 100 per cent.
using Progress = std::function<void(double percent)>;

/// Name filter of the kinds of picture that are read, for dialogs: "*.png *.jpg ...".
QString PicturePatterns();

/// The pictures of a folder, in the order of the numbers in their names: frame2 before frame10.
QStringList PicturesIn(const QString& folder);
/// The same order for a choice of files.
QStringList SortedByNumber(QStringList files);

/// The planes of a picture, whose size is the frame's or one more each way. Where it has no last column and
/// row for the planes, they repeat its edge; what is transparent shows white.
Animation::Frame PlanesOf(const QImage& picture, FrameSize size);

/// One frame from each picture, all of them from one that moves. Otherwise the reason, which names the
/// picture that can't be read or differs in size, or says how much memory all of them would need.
std::variant<Animation, std::string> ReadPictures(const QStringList& files, const Progress& progress);

/// The names under which SavePictures writes: <base>0000.png and so on, in order.
QStringList NumberedNames(const QString& base, int frame_count);

/// Writes each frame as a PNG, replacing what stands there, each file whole or not at all. `base` is a path
/// without number and extension. Otherwise the reason, naming the file.
std::optional<std::string> SavePictures(const Animation& animation, const QString& base,
                                        const Progress& progress);

}  // namespace host
