#pragma once
// The shell's folder interfaces, as the folder browser is written against them. An
// item-id list names one existing file-system object by its absolute path; lists are
// made by the desktop folder's ParseDisplayName and by SHBrowseForFolderW, and freed with
// the shell's allocator. The browser itself is a Qt dialog (dialogs/FolderBrowserDialog.h).
#include <cstdint>

#include "platform/StdStr.h"
#include "platform/Types.h"

using HRESULT = std::int32_t;
constexpr HRESULT S_OK = 0;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) { return hr < 0; }

// Paths handed back by the shell are at most MAX_PATH units with their terminator.
constexpr int MAX_PATH = 260;

struct ITEMIDLIST;
using LPITEMIDLIST = ITEMIDLIST*;
using LPCITEMIDLIST = const ITEMIDLIST*;

using BFFCALLBACK = int (*)(HWND window, UINT message, LPARAM lParam, LPARAM data);

struct BROWSEINFOW {
  HWND hwndOwner;
  LPCITEMIDLIST pidlRoot;  // the top of the tree; null for the whole file system
  LPWSTR pszDisplayName;   // receives the chosen folder's name (MAX_PATH units); may be null
  LPCWSTR lpszTitle;       // the instruction above the tree
  UINT ulFlags;            // BIF_*
  BFFCALLBACK lpfn;        // not called by this platform's browser
  LPARAM lParam;
  int iImage;
};

class VANTREL1_QT_EXPORT IShellFolder {
 public:
  // Parses `name` (a path; '\' also separates) into an item-id list of the object it names.
  // E_FAIL, with *list null, when nothing exists there.
  virtual HRESULT ParseDisplayName(HWND owner, void* bindContext, LPCWSTR name, ULONG* eaten, LPITEMIDLIST* list,
                                   ULONG* attributes) = 0;
  virtual ULONG Release() = 0;

 protected:
  virtual ~IShellFolder();
};

class VANTREL1_QT_EXPORT IMalloc {
 public:
  // Frees a block that the shell handed out; anything else (and null) is ignored.
  virtual void Free(void* block) = 0;
  virtual ULONG Release() = 0;

 protected:
  virtual ~IMalloc();
};

VANTREL1_QT_EXPORT HRESULT SHGetDesktopFolder(IShellFolder** folder);
VANTREL1_QT_EXPORT HRESULT SHGetMalloc(IMalloc** allocator);

// Shows the folder browser modally; the chosen folder's list, or null when cancelled.
VANTREL1_QT_EXPORT LPITEMIDLIST SHBrowseForFolderW(const BROWSEINFOW* info);
// Copies the list's path into `path` (MAX_PATH units). FALSE, with an empty path, for a
// null list or a path that does not fit.
VANTREL1_QT_EXPORT BOOL SHGetPathFromIDListW(LPCITEMIDLIST list, LPWSTR path);

namespace vantrel1 {

// Item-id lists made and not yet freed: what a caller that forgets to free leaves behind.
VANTREL1_QT_EXPORT int LiveItemIdLists();

}  // namespace vantrel1
