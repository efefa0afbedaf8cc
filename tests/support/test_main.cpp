// Window tests run on the offscreen platform, with the application that the program would have.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/Lifetime.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  platform::PrepareApplication();
  const int status = RUN_ALL_TESTS();
  platform::DestroyAllWindows();
  return status;
}
