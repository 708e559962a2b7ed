// vantrel1 crc FILE...: the CRC-32 of each file, read through the file mapping.
#include <cstdio>

#include "Commands.h"
#include "platform/StdStr.h"
#include "util/Crc32Static.h"

namespace vantrel1::cli {

int RunCrc(int argc, char** argv) {
  if (argc < 1) {
    std::fprintf(stderr, "usage: vantrel1 crc FILE...\n");
    return 2;
  }
  int status = 0;
  for (int i = 0; i < argc; ++i) {
    DWORD crc = 0;
    const DWORD error = CCrc32Static::FileCrc32Filemap(CStdStrW::FromUtf8(argv[i]).c_str(), crc);
    if (error != 0) {
      std::fprintf(stderr, "vantrel1 crc: %s: cannot be read (Windows error %u)\n", argv[i], error);
      status = 1;
      continue;
    }
    std::printf("%08X  %s\n", crc, argv[i]);
  }
  return status;
}

}  // namespace vantrel1::cli
