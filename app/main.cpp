#include "app/Program.h"
#include "platform/Application.h"

int main() { return platform::RunApplication(app::Main); }
