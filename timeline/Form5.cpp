#include "timeline/Form5.h"

platform::WindowInstance<Form5> form5;

Form5::Form5()
    : Window({.name = "Form5", .caption = "Form5", .client_width = 300, .client_height = 200, .icons = {}}) {}

void Form5::Form_Load() { Mouths.Load("sketch"); }
