// Runs the tests that need windows, inside the application.
#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/Application.h"

int main(int argument_count, char** arguments) {
  testing::InitGoogleTest(&argument_count, arguments);
  // Neither a screen nor a sound device is needed, unless one is asked for.
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("SDL_AUDIODRIVER", "dummy", 0);
  int status = 1;
  platform::RunApplication([&status] {
    status = RUN_ALL_TESTS();
    platform::RunLater(platform::Quit);
  });
  return status;
}
