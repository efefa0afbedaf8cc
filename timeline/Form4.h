// The store of a mouth set's pictures; never shown.
#pragma once

#include "platform/Window.h"

class Form4 : public platform::Window {
 public:
  Form4()
      : Window(
            {.name = "Form4", .caption = "Form4", .client_width = 300, .client_height = 200, .icons = {}}) {}
};

extern platform::WindowInstance<Form4> form4;
