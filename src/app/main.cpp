#include <QApplication>

#include "UI/JelvApplication.h"

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  return JelvApplication::run(app);
}
