// vantrel1: the command-line face of the library.
#include <cstdio>
#include <cstring>

#include "platform/Version.h"

namespace {

int PrintHelp() {
  std::printf(
      "vantrel1 %s\n"
      "usage: vantrel1 <command> [options]\n"
      "  version     print the library version and what works\n"
      "  --help      this text\n",
      Vantrel1Version());
  return 0;
}

int PrintVersion() {
  std::printf("vantrel1 %s\n", Vantrel1Version());
  std::printf("works: the platform layer (strings, archives, profile files, string resources, "
              "drawing devices)\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "version") == 0) return PrintVersion();
  if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) return PrintHelp();
  std::fprintf(stderr, "vantrel1: unknown command '%s' (try --help)\n", argv[1]);
  return 2;
}
