// What reading a document costs a process that does nothing else with it.
#include <cstdio>

#include "PlainDocument.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  return std::printf("%zu rows\n", pendra::plain::readAll(QString::fromLocal8Bit(argv[1])).size()) < 0 ? 1
                                                                                                       : 0;
}
