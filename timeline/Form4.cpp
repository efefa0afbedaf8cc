#include "timeline/Form4.h"

platform::WindowInstance<Form4> form4;
