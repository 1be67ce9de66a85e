// The dialog's tests need one QApplication for the whole binary.
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
