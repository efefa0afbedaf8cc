// Holds the mouth drawings of the set Cartoon; never shown.
#pragma once

#include "platform/Window.h"
#include "timeline/ShapeSet.h"

class Form4 : public platform::Window {
 public:
  Form4();
  void Form_Load() override;

  timeline::ShapeSet Mouths{*this};
};

extern platform::WindowInstance<Form4> form4;
