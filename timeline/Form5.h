// Holds the mouth drawings of the set Sketch; never shown.
#pragma once

#include "platform/Window.h"
#include "timeline/ShapeSet.h"

class Form5 : public platform::Window {
 public:
  Form5();
  void Form_Load() override;

  timeline::ShapeSet Mouths{*this};
};

extern platform::WindowInstance<Form5> form5;
