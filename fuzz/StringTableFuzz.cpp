// String tables: any bytes parse into good entries and errors in line order, each error
// on a line that exists.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/StringTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const vantrel1::StringTableParse parsed = vantrel1::StringTable::Parse(text);
  const std::size_t lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  int previous = 0;
  for (const vantrel1::StringTableError& error : parsed.errors) {
    if (error.line < previous || error.line < 1 || static_cast<std::size_t>(error.line) > lines) std::abort();
    previous = error.line;
  }
  if (parsed.table.Size() > lines) std::abort();
  for (unsigned id : {0u, 1u, 7u, 21003u, 65535u}) {
    if (const std::u16string* s = parsed.table.Find(id)) (void)s->size();
  }
  return 0;
}
