// "Sample info": the format of the loaded sound.
#pragma once

#include "platform/Window.h"

class Form2 : public platform::Window {
 public:
  Form2()
      : Window({.name = "Form2",
                .caption = "Sample info",
                .border = Border::FixedToolWindow,
                .client_width = 204,
                .client_height = 239,
                .icons = {}}) {}
};

extern platform::WindowInstance<Form2> form2;
