// vantrel1 version: the library version and the capabilities that work.
#include <cstdio>

#include "Commands.h"
#include "platform/Version.h"

namespace vantrel1::cli {

int RunVersion(int, char**) {
  std::printf("vantrel1 %s\n", Vantrel1Version());
  std::printf("works: line items, symbol and text items, line types, the line type table and its cache, "
              "the XML class, platform layer (UTF-16 strings, archives, profile files, string tables, "
              "drawing device context), geometry types and the quadtree, CRC-32, precise timer, "
              "subject and observer, point symbols and the symbol table, the application clipboard, "
              "the help launcher, overwrite prompt, folder browser, file dialog and rotate/translate/scale page, "
              "PNG/PDF/SVG output, the catalogue and "
              "render commands\n");
  return 0;
}

}  // namespace vantrel1::cli
