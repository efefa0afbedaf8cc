#include "timeline/ShapeSet.h"

#include "platform/Picture.h"
#include "platform/Window.h"
#include "timeline/mouth_names.h"

namespace timeline {

ShapeSet::ShapeSet(platform::Window& holder) {
  for (int number = 1; number <= kMouths; ++number)
    images_.push_back(std::make_unique<platform::ImageHolder>(holder, "Image" + std::to_string(number)));
}

void ShapeSet::Load(const std::string& look) {
  int number = 0;
  for (const auto& image : images_)
    image->SetPicture(
        platform::Picture::Load(":/assets/mouths/" + look + "/" + std::to_string(++number) + ".bmp"));
}

const std::shared_ptr<const platform::Picture>& ShapeSet::Picture(int number) const {
  return images_.at(static_cast<std::size_t>(number - 1))->Picture();
}

}  // namespace timeline
