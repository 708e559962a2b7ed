#pragma once
// The window system's clipboard: open it for a window, empty it, put and take blocks of
// global memory under format numbers, close it. Standard formats have fixed numbers
// (CF_UNICODETEXT is 13); named formats get their numbers by registration, the same
// number for the same name (compared without regard to case) for the life of the process,
// from 0xC000 up, as Windows numbers them.
//
// The clipboard itself lives in a replaceable backend: in memory by default (tests and
// headless programs), the desktop's clipboard through Qt in GUI programs. The functions
// here keep what Windows keeps for every backend: one window at a time may have the
// clipboard open (a second open fails until it is closed, also for the same window), data
// are put and taken only while it is open, and blocks handed to SetClipboardData or
// returned by GetClipboardData belong to the clipboard until it is emptied or closed.
#include <cstddef>
#include <vector>

#include "platform/StdStr.h"
#include "platform/Types.h"

constexpr UINT CF_TEXT = 1;
constexpr UINT CF_UNICODETEXT = 13;
constexpr UINT kFirstRegisteredClipboardFormat = 0xC000;
constexpr UINT kLastRegisteredClipboardFormat = 0xFFFF;

class VANTREL1_EXPORT CClipboardBackend {
 public:
  virtual ~CClipboardBackend();
  // A window opens the clipboard; false refuses (the clipboard stays closed).
  virtual bool Open() = 0;
  // The clipboard is closed; a backend that gathers data publishes them now.
  virtual void Close() = 0;
  // Removes every format.
  virtual bool Empty() = 0;
  // The number of a named format, 0 when it cannot be registered. This implementation
  // uses the process-wide table that every backend shares (RegisterClipboardName).
  virtual UINT RegisterFormat(const CStdStrW& name);
  virtual bool IsFormatAvailable(UINT format) = 0;
  // The format's bytes as they were put (a text format keeps its terminating zero).
  virtual bool GetData(UINT format, std::vector<BYTE>& data) = 0;
  // Puts or replaces one format. False when the backend cannot hold that format.
  virtual bool SetData(UINT format, const std::vector<BYTE>& data) = 0;
};

// Installs a backend (not owned) and returns the previous one; null restores the default
// in-memory backend. Not to be swapped while the clipboard is open.
VANTREL1_EXPORT CClipboardBackend* SetClipboardBackend(CClipboardBackend* backend);
VANTREL1_EXPORT CClipboardBackend* GetClipboardBackend();

namespace vantrel1 {
// The process-wide table of named formats: the number of `name` (registered now if new),
// or 0 for an empty name or when all 16384 numbers are taken.
VANTREL1_EXPORT UINT RegisterClipboardName(const CStdStrW& name);
// The registered name of a number, empty for any other number.
VANTREL1_EXPORT CStdStrW ClipboardNameOf(UINT format);
}  // namespace vantrel1

VANTREL1_EXPORT BOOL OpenClipboard(HWND owner);
// FALSE when the clipboard was not open.
VANTREL1_EXPORT BOOL CloseClipboard();
// FALSE when the clipboard is not open or the backend cannot empty it.
VANTREL1_EXPORT BOOL EmptyClipboard();
// The window that has the clipboard open (null also when it was opened without one).
VANTREL1_EXPORT HWND GetOpenClipboardWindow();
// 0 for a null or empty name.
VANTREL1_EXPORT UINT RegisterClipboardFormatW(LPCWSTR name);
// Copies a registered format's name (at most size - 1 units and a terminator) and
// returns the number of units copied; 0 for a standard or unknown format.
VANTREL1_EXPORT int GetClipboardFormatNameW(UINT format, LPWSTR buffer, int size);
// Needs no open clipboard.
VANTREL1_EXPORT BOOL IsClipboardFormatAvailable(UINT format);
// A block holding the format's data, owned by the clipboard; null when the clipboard is
// not open or the format is absent.
VANTREL1_EXPORT HGLOBAL GetClipboardData(UINT format);
// Hands `data` over: on success the block belongs to the clipboard and `data` is
// returned; on failure (clipboard not open, null or unknown block, format refused) the
// result is null and the block still belongs to the caller.
VANTREL1_EXPORT HANDLE SetClipboardData(UINT format, HANDLE data);
