#pragma once
// String resources as the suite's programs load them: from a string-table module
// (platform/StringTable.h; null is this library's own) or from the suite's own strings,
// which this library carries among its resources.
#include "platform/StdStr.h"
#include "platform/Types.h"

// Strings of the suite's own set that the file dialogs use.
constexpr UINT VSTR_ALL_FILES_FILTER = 1040;        // description|pattern of every file
constexpr UINT VSTR_RESERVED_FILE_NAME = 1501;      // the name a save dialog refuses
constexpr UINT VSTR_PROJECTION_FILE_FILTER = 1628;  // description|pattern of .prj files

// String `id` of `module`, at most `maxLength` units of it; empty when the module has no
// such string or maxLength < 1.
VANTREL1_EXPORT CStdStrW VantrelLoadResString(HINSTANCE module, UINT id, int maxLength = 256);

// String `id` of the suite's own set; empty when absent.
VANTREL1_EXPORT CStdStrW LoadVantrelString(UINT id, int maxLength = 512);
