#pragma once
// The stored forms of a line type table, told by a file's extension in any case:
//   .lin  table file (the user line types; the system ones always come built in)
//   .xml  XML document whose first element is LINETYPETABLE
//   .vlt  archive, as documents embed the table
#include <optional>
#include <string>

#include "linetable/LineTypeTable.h"
#include "platform/StdStr.h"

namespace vantrel1::cli {

enum class TableForm { Lin, Xml, Archive };

std::optional<TableForm> FormOf(const std::string& path);
bool IsReadable(const std::string& path);
// An empty text when the table loaded whole (with its 9 system line types), else why not.
std::string Load(TableForm form, CLineTypeTable& table, const CStdStrW& path);
bool Save(TableForm form, CLineTypeTable& table, const CStdStrW& path);

}  // namespace vantrel1::cli
