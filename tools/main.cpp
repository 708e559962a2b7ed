// vantrel1: the command-line face of the library.
#include <cstdio>
#include <cstring>

#include "Commands.h"
#include "platform/Version.h"

namespace {

struct Command {
  const char* name;
  int (*run)(int argc, char** argv);
  const char* summary;
};

const Command kCommands[] = {
    {"version", vantrel1::cli::RunVersion, "print the library version and what works"},
    {"convert", vantrel1::cli::RunConvert, "IN OUT  a line type table between .lin, .xml and .vlt files"},
    {"crc", vantrel1::cli::RunCrc, "FILE...  the CRC-32 of each file"},
    {"catalogue", vantrel1::cli::RunCatalogue,
     "OUT.(png|pdf|svg) [--lin FILE.lin] [--color RRGGBB] [--text-mode 0|1|2] [--dpi N]\n"
     "             [--sheet lines|symbols]  a sheet with a sample of every line style or symbol"},
    {"render", vantrel1::cli::RunRender,
     "IN.geojson OUT.(png|pdf|svg) [--clip left,bottom,right,top] [--lin FILE.lin] [--dpi N]\n"
     "             draws a GeoJSON drawing in logical units (0.1 mm) with its line types"},
};

int PrintHelp() {
  std::printf("vantrel1 %s: line types, symbols and drawings of the road design suite\n", Vantrel1Version());
  std::printf("usage: vantrel1 <command> [arguments]\n\n");
  for (const Command& c : kCommands) std::printf("  %-10s %s\n", c.name, c.summary);
  std::printf("  %-10s %s\n", "--help", "this text");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return PrintHelp();
  if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) return PrintHelp();
  for (const Command& c : kCommands)
    if (std::strcmp(argv[1], c.name) == 0) return c.run(argc - 2, argv + 2);
  std::fprintf(stderr, "vantrel1: unknown command '%s' (try --help)\n", argv[1]);
  return 2;
}
