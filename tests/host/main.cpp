// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>

// Qt's loop, timers and sockets need the one application object for all tests of a process.
int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
