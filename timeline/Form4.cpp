#include "timeline/Form4.h"

platform::WindowInstance<Form4> form4;

Form4::Form4()
    : Window({.name = "Form4", .caption = "Form4", .client_width = 300, .client_height = 200, .icons = {}}) {}

void Form4::Form_Load() { Mouths.Load("cartoon"); }
