#include "dialogs/Shell.h"

#include <algorithm>
#include <set>

#include <QDir>
#include <QFileInfo>

#include "dialogs/FolderBrowserDialog.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"

struct ITEMIDLIST {
  QString path;  // absolute and clean, '/' separated
};

IShellFolder::~IShellFolder() = default;
IMalloc::~IMalloc() = default;

namespace {

using vantrel1::ToQString;

// Every list handed out and not yet freed; Free refuses pointers it never made.
std::set<ITEMIDLIST*>& LiveLists() {
  static auto* lists = new std::set<ITEMIDLIST*>;
  return *lists;
}

LPITEMIDLIST MakeList(const QString& path) {
  auto* list = new ITEMIDLIST{QDir::cleanPath(QFileInfo(path).absoluteFilePath())};
  LiveLists().insert(list);
  return list;
}

class DesktopFolder final : public IShellFolder {
 public:
  HRESULT ParseDisplayName(HWND /*owner*/, void* /*bindContext*/, LPCWSTR name, ULONG* eaten, LPITEMIDLIST* list,
                           ULONG* attributes) override {
    if (list == nullptr) return E_POINTER;
    *list = nullptr;
    if (name == nullptr || *name == 0) return E_INVALIDARG;
    QString path = ToQString(name);
    // Names written by the suite's Windows programs separate with '\'.
    path.replace(u'\\', u'/');
    if (!QFileInfo::exists(path)) return E_FAIL;
    *list = MakeList(path);
    if (eaten) *eaten = static_cast<ULONG>(ToQString(name).size());
    if (attributes) *attributes = 0;
    return S_OK;
  }
  ULONG Release() override { return 1; }
};

class ShellAllocator final : public IMalloc {
 public:
  void Free(void* block) override {
    auto* list = static_cast<ITEMIDLIST*>(block);
    if (LiveLists().erase(list) == 1) delete list;
  }
  ULONG Release() override { return 1; }
};

}  // namespace

HRESULT SHGetDesktopFolder(IShellFolder** folder) {
  if (folder == nullptr) return E_POINTER;
  static DesktopFolder desktop;
  *folder = &desktop;
  return S_OK;
}

HRESULT SHGetMalloc(IMalloc** allocator) {
  if (allocator == nullptr) return E_POINTER;
  static ShellAllocator shellAllocator;
  *allocator = &shellAllocator;
  return S_OK;
}

namespace {

bool IsLive(LPCITEMIDLIST list) { return list && LiveLists().count(const_cast<ITEMIDLIST*>(list)) == 1; }

void CopyBounded(const QString& text, LPWSTR out) {
  const auto n = static_cast<std::size_t>(std::min<qsizetype>(text.size(), MAX_PATH - 1));
  std::copy_n(reinterpret_cast<const char16_t*>(text.utf16()), n, out);
  out[n] = 0;
}

}  // namespace

LPITEMIDLIST SHBrowseForFolderW(const BROWSEINFOW* info) {
  if (info == nullptr) return nullptr;
  const QString root = IsLive(info->pidlRoot) ? info->pidlRoot->path : QString();
  // Every folder of this browser is a file-system folder, so BIF_RETURNONLYFSDIRS holds
  // whatever the flags say.
  vantrel1::FolderBrowserDialog browser(WidgetFromHwnd(info->hwndOwner), ToQString(CStdStrW(info->lpszTitle)), root);
  if (browser.exec() != QDialog::Accepted) return nullptr;
  const QString chosen = browser.SelectedFolder();
  if (chosen.isEmpty()) return nullptr;
  if (info->pszDisplayName) CopyBounded(QFileInfo(chosen).fileName(), info->pszDisplayName);
  return MakeList(chosen);
}

BOOL SHGetPathFromIDListW(LPCITEMIDLIST list, LPWSTR path) {
  if (path == nullptr) return FALSE;
  path[0] = 0;
  if (!IsLive(list) || list->path.size() >= MAX_PATH) return FALSE;
  CopyBounded(list->path, path);
  return TRUE;
}

namespace vantrel1 {

int LiveItemIdLists() { return static_cast<int>(LiveLists().size()); }

}  // namespace vantrel1
