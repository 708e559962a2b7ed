// vantrel1 convert IN OUT: a line type table from one stored form into another, each
// file's form told by its extension, in any case:
// .lin, .xml or .vlt (see TableFiles.h).
// Exit codes: 0 converted, 1 the input could not be read or loaded or the output not
// written, 2 wrong arguments or an unknown extension.
#include <cstdio>
#include <optional>
#include <string>

#include "Commands.h"
#include "TableFiles.h"
#include "linetable/LineTypeTable.h"
#include "platform/StdStr.h"

namespace vantrel1::cli {
namespace {

constexpr const char* kUsage = "usage: vantrel1 convert IN OUT  (line type tables: .lin, .xml, .vlt)\n";

}  // namespace

int RunConvert(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  const std::string in = argv[0];
  const std::string out = argv[1];
  const std::optional<TableForm> inForm = FormOf(in);
  const std::optional<TableForm> outForm = FormOf(out);
  if (!inForm || !outForm) {
    std::fprintf(stderr, "vantrel1 convert: %s: unknown extension (use .lin, .xml or .vlt)\n",
                 (inForm ? out : in).c_str());
    return 2;
  }
  if (!IsReadable(in)) {
    std::fprintf(stderr, "vantrel1 convert: %s: cannot be read\n", in.c_str());
    return 1;
  }
  CLineTypeTable table;
  const std::string why = Load(*inForm, table, CStdStrW::FromUtf8(in));
  if (!why.empty()) {
    std::fprintf(stderr, "vantrel1 convert: %s: not a line type table: %s\n", in.c_str(), why.c_str());
    return 1;
  }
  if (!Save(*outForm, table, CStdStrW::FromUtf8(out))) {
    std::fprintf(stderr, "vantrel1 convert: %s: cannot be written\n", out.c_str());
    return 1;
  }
  std::printf("%s: %d user line types\n", out.c_str(), table.m_nUserLines);
  return 0;
}

}  // namespace vantrel1::cli
