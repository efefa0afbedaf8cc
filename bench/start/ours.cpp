// The program itself, which ends with its first paint.
#include "app/Program.h"
#include "bench/start/first_paint.h"
#include "platform/Application.h"

int main() {
  return platform::RunApplication([] {
    new bench::FirstPaint("Exposure Sheet");
    app::Main();
  });
}
