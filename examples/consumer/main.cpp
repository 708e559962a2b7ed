// A program of another project using the installed library through find_package(vantrel1):
// it loads the built-in line type table and prints its counts.
#include <cstdio>

#include "linetable/LineTypeTable.h"
#include "platform/Version.h"

int main() {
  CLineTypeTable table;
  const int fromFile = table.FromFile(nullptr, nullptr, nullptr);
  std::printf("vantrel1 %s: %d system and %d user line types (from a file: %d)\n", Vantrel1Version(),
              table.m_nSystemLines, table.m_nUserLines, fromFile);
  return table.CheckValid() == 1 ? 0 : 1;
}
