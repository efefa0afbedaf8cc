#include "audio/Form2.h"

platform::WindowInstance<Form2> form2;
