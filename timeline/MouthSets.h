// The two sets of mouth drawings, each held by a window that is never shown.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Widgets.h"
#include "platform/Window.h"

namespace timeline {

/// A window that holds eleven pictures, Image1 to Image11. Loading it reads them all, so that showing one
/// later decodes nothing.
class MouthSet : public platform::Window {
 public:
  /// `look` names the folder of the drawings: "cartoon" or "sketch".
  MouthSet(const std::string& name, std::string look);

  /// By the drawing's number, from 1.
  const std::shared_ptr<const platform::Picture>& MouthPicture(int number) const;

 protected:
  void Form_Load() override;

 private:
  std::string look_;
  std::vector<std::unique_ptr<platform::ImageHolder>> images_;
};

}  // namespace timeline

class Form4 : public timeline::MouthSet {
 public:
  Form4() : MouthSet("Form4", "cartoon") {}
};

class Form5 : public timeline::MouthSet {
 public:
  Form5() : MouthSet("Form5", "sketch") {}
};

extern platform::WindowInstance<Form4> form4;
extern platform::WindowInstance<Form5> form5;
