// The store of a mouth set's pictures; never shown.
#pragma once

#include "platform/Window.h"

class Form5 : public platform::Window {
 public:
  Form5()
      : Window(
            {.name = "Form5", .caption = "Form5", .client_width = 300, .client_height = 200, .icons = {}}) {}
};

extern platform::WindowInstance<Form5> form5;
