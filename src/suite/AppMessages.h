#pragma once
// The suite's numbered messages to the user. Each id names a text of the suite's own
// strings (suite/VantrelStrings.h), shown through the message sink (platform/
// MessageSink.h) with its kind, its id and the buttons and icon of `type`; the answer
// (IDOK, IDYES, IDNO, ...) is returned.
//
// The argument, when there is one, goes where the text has "%s" (every "%s"); a text
// without "%s" shows a non-empty argument on a line of its own after it. A null or empty
// argument leaves "%s" empty. An id without a text still shows the id and the argument.
// `owner`, the window the message belongs to, is accepted for the suite's callers; where
// a box appears is the sink's choice.
#include "platform/StdStr.h"
#include "platform/Types.h"

// Message ids.
constexpr UINT VMSG_PATH_TOO_LONG = 44;             // argument: the path
constexpr UINT VMSG_NAME_DOES_NOT_FIT_FILTER = 138;  // argument: the file name
constexpr UINT VMSG_TABLE_FULL = 265;               // no argument
constexpr UINT VMSG_FIGURE_TOO_MANY_POINTS = 412;   // argument: "<symbol name>:  "
constexpr UINT VMSG_CONFIRM_OVERWRITE = 504;        // argument: the file name
constexpr UINT VMSG_RESERVED_FILE_NAME = 743;       // argument, if any: the file name
constexpr UINT VMSG_TOO_MANY_FILES = 812;           // no argument
constexpr UINT VMSG_CANNOT_WRITE_PROJECTION = 933;  // argument: the path

VANTREL1_EXPORT int AppError(UINT id, HWND owner = nullptr, CStdStrArg<WCHAR> argument = nullptr,
                             UINT type = MB_OK | MB_ICONSTOP);
VANTREL1_EXPORT int AppWarning(UINT id, HWND owner = nullptr, CStdStrArg<WCHAR> argument = nullptr,
                               UINT type = MB_OK | MB_ICONEXCLAMATION);
VANTREL1_EXPORT int AppPrompt(UINT id, HWND owner = nullptr, CStdStrArg<WCHAR> argument = nullptr,
                              UINT type = MB_YESNO | MB_ICONQUESTION);

// The text that message `id` shows with `argument`.
VANTREL1_EXPORT CStdStrW AppMessageText(UINT id, CStdStrArg<WCHAR> argument = nullptr);
