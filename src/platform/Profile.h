#pragma once
// Private profile files with the Win32 calls' meaning, over ProfileDocument.
//
// Files are named by UTF-16 path (relative paths are taken from the working directory).
// Each file is parsed once and kept: a later call parses it again only when the file has
// changed on disk (another inode, size or modification time). Writes change the kept copy
// and reach the disk when the file is flushed - a write with null section and key, or
// the end of the process. A flush writes a temporary file beside the file and renames it
// over the file, so that the file is always either the old table or the new one. If the
// file changes on disk before unflushed writes reach it, the disk wins and those writes
// are dropped (a table file deleted to be written afresh must not get stale keys back).
//
// Files this library creates are UTF-8 without BOM with CR LF line ends: UTF-8 holds every
// Serbian letter, a file without non-ASCII text is byte for byte what the Windows suite
// would write, and tools on both systems read it as text, which a BOM or UTF-16 would
// spoil; CR LF keeps a file copied between the systems from changing at every save.
// Existing files keep their encoding (UTF-8 with or without BOM, UTF-16LE) and line ends.
#include <cstddef>

#include "platform/Types.h"

// Copies the value of `key` in `section` (or else `defaultValue`, without its trailing
// blanks; null is "") into `buffer`, truncated to size - 1 units and terminated, and
// returns the number of units copied. With `key` null it copies the names of the keys of
// `section`, with `section` null the names of all sections, each terminated, the list
// ended by a second terminator; a list that does not fit is cut, ends with two
// terminators and size - 2 is returned. A null buffer or size 0 return 0; with a null
// file there is nothing to read but the default (or an empty list).
VANTREL1_EXPORT DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue,
                                               LPWSTR buffer, DWORD size, LPCWSTR file);

// The leading decimal integer of the value (sign allowed, wrapping like an unsigned
// 32-bit number), 0 when the value does not start with one, `defaultValue` when the key
// is absent or empty.
VANTREL1_EXPORT UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int defaultValue, LPCWSTR file);

// The section-name list of GetPrivateProfileStringW with a null section.
VANTREL1_EXPORT DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR file);

// Sets `key` in `section` to `value`; a null value deletes the key, a null key the whole
// section. Null section and key flush `file` (every file when `file` is null too). FALSE
// when the file is unreadable, a name or value cannot be stored (see ProfileDocument::Set),
// or a flush fails, in which case the file on disk is unchanged and the writes are kept
// for the next flush.
VANTREL1_EXPORT BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file);

namespace vantrel1 {

// How many times a profile file has been read and parsed in this process (for checking
// that repeated reads are served from the kept copy).
VANTREL1_EXPORT std::size_t ProfileParseCount();

}  // namespace vantrel1
