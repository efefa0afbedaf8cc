#include "timeline/MouthSets.h"

#include <utility>

#include "platform/Picture.h"
#include "timeline/mouth_names.h"

platform::WindowInstance<Form4> form4;
platform::WindowInstance<Form5> form5;

namespace timeline {

MouthSet::MouthSet(const std::string& name, std::string look)
    : Window({.name = name, .caption = name, .client_width = 300, .client_height = 200, .icons = {}}),
      look_(std::move(look)) {
  for (int number = 1; number <= kMouths; ++number)
    images_.push_back(std::make_unique<platform::ImageHolder>(*this, "Image" + std::to_string(number)));
}

void MouthSet::Form_Load() {
  int number = 0;
  for (const auto& image : images_) {
    const std::string name = ":/assets/mouths/" + look_ + "/" + std::to_string(++number);
    image->SetPicture(platform::Picture::Load(name + ".bmp", name + "@2x.png"));
  }
}

const std::shared_ptr<const platform::Picture>& MouthSet::MouthPicture(int number) const {
  return images_.at(static_cast<std::size_t>(number - 1))->Picture();
}

}  // namespace timeline
