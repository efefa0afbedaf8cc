#include "timeline/Form5.h"

platform::WindowInstance<Form5> form5;
