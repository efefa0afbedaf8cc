// A set of mouth drawings, held by a window that is never shown.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Widgets.h"

namespace timeline {

/// Eleven picture holders, Image1 to Image11, on the window that holds the set.
class ShapeSet {
 public:
  explicit ShapeSet(platform::Window& holder);
  /// Reads all drawings, so that showing one later decodes nothing. look: "sketch" or "cartoon".
  void Load(const std::string& look);
  /// By the drawing's number, from 1.
  const std::shared_ptr<const platform::Picture>& Picture(int number) const;

 private:
  std::vector<std::unique_ptr<platform::ImageHolder>> images_;
};

}  // namespace timeline
