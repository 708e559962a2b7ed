#pragma once
// The suite's installation folders and its small file-name helpers. Paths are UTF-16 and
// taken as '/'-separated; '\' also separates, because names come from documents and
// settings written by the suite's Windows programs.
#include "platform/StdStr.h"
#include "platform/Types.h"

class CVantrelAppBaseX;

// The installation directory, always ending with '/': the environment variable
// VANTREL1_DIR when it is set and not empty (tests, and users who keep the data
// elsewhere), else the data directory the library was installed with.
VANTREL1_EXPORT CStdStrW GetCorviaDIR();
// The samples folder inside it ("samples/"), also ending with '/'.
VANTREL1_EXPORT CStdStrW GetCorviaDIRsamples();

// Joins `dir`, `name` and `ext` into `buffer` of `size` units: a '/' goes between the
// folder and the name unless one of them already has a separator there, and a '.' before
// the extension unless it starts with one. An empty folder leaves the name as it is.
// Returns 1, or 0 with an empty buffer (when size > 0) when the name is empty or the path
// and its terminator do not fit. `app` is accepted for the suite's callers and not needed.
VANTREL1_EXPORT int FileMakePathX(const CVantrelAppBaseX* app, WCHAR* buffer, CStdStrArg<WCHAR> dir,
                                  CStdStrArg<WCHAR> name, CStdStrArg<WCHAR> ext, int size);

// What FileExistsX accepts as existing: a bit set.
constexpr int FILE_EXISTS_FILE = 1;       // anything that is not a folder
constexpr int FILE_EXISTS_DIRECTORY = 2;  // a folder
constexpr int FILE_EXISTS_ANY = FILE_EXISTS_FILE | FILE_EXISTS_DIRECTORY;

// 1 when `path` names an existing object of a kind that `mode` accepts (0 counts as
// FILE_EXISTS_ANY), else 0. Symbolic links are followed.
VANTREL1_EXPORT int FileExistsX(LPCWSTR path, int mode);

// Splits a path into its folder (with the trailing separator), its name without the
// extension, and the extension with its dot, so that the three joined give the path back.
// The extension starts at the name's last '.', unless that dot opens the name (".profile"
// has no extension) or ends it ("notes." has none either). Any output may be null.
VANTREL1_EXPORT void splitpath2(CStdStrArg<WCHAR> path, CStdStrW* dir, CStdStrW* name, CStdStrW* ext);

// 1 when `name` fits the wildcard `pattern` without regard to case: '*' stands for
// any run of units (none included), '?' for exactly one. As the file dialogs of the
// Windows suite read "*.*", a pattern ending in ".*" also fits a name without any dot.
// Time grows with the product of the two lengths at worst, never exponentially.
VANTREL1_EXPORT int FileNameFitsSpec(CStdStrArg<WCHAR> name, CStdStrArg<WCHAR> pattern);
