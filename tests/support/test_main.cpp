// Window tests run on the offscreen platform, with the application that the program would have.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/Lifetime.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Neither a screen nor a sound device is needed, unless one is asked for.
  for (const auto& [name, value] :
       {std::pair{"QT_QPA_PLATFORM", "offscreen"}, std::pair{"SDL_AUDIODRIVER", "dummy"}})
    if (qEnvironmentVariableIsEmpty(name)) qputenv(name, value);
  // Numbers are read and written as in Germany wherever they follow the user, so that a file that does shows.
  qunsetenv("LC_ALL");
  qputenv("LC_NUMERIC", "de_DE.UTF-8");
  const auto application = platform::MakeApplication(argc, argv);
  platform::PrepareApplication();
  const int status = RUN_ALL_TESTS();
  platform::DestroyAllWindows();
  return status;
}
