#include "platform/Application.h"

int main() {
  return platform::RunApplication([] {});
}
