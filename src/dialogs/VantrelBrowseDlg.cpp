#include "dialogs/VantrelBrowseDlg.h"

CVantrelBrowseDlg::~CVantrelBrowseDlg() = default;

int CVantrelBrowseDlg::GetItemIdListFromPath(CStdStrW path, LPITEMIDLIST* list) {
  if (path.IsEmpty()) return 0;
  IShellFolder* desktop = nullptr;
  if (FAILED(SHGetDesktopFolder(&desktop))) return 0;
  ULONG eaten = 0;
  const HRESULT hr = desktop->ParseDisplayName(nullptr, nullptr, path.c_str(), &eaten, list, nullptr);
  desktop->Release();
  if (SUCCEEDED(hr)) return 1;
  *list = nullptr;
  return 0;
}

namespace {

void FreeItemIdList(LPITEMIDLIST list) {
  IMalloc* allocator = nullptr;
  if (list == nullptr || FAILED(SHGetMalloc(&allocator))) return;
  allocator->Free(list);
  allocator->Release();
}

}  // namespace

int CVantrelBrowseDlg::PopupBrowseDlg(HWND owner, CStdStrW title, CStdStrW startFolder, CStdStrW* result) {
  LPITEMIDLIST root = nullptr;
  if (!GetItemIdListFromPath(startFolder, &root)) root = nullptr;

  BROWSEINFOW info{};
  info.hwndOwner = owner;
  info.pidlRoot = root;
  info.lpszTitle = title.c_str();
  info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  LPITEMIDLIST chosen = SHBrowseForFolderW(&info);

  WCHAR path[MAX_PATH] = {0};
  if (chosen != nullptr) SHGetPathFromIDListW(chosen, path);
  FreeItemIdList(chosen);
  // The root's list is the caller's to free as well, or every browse would leak one.
  FreeItemIdList(root);

  CStdStrW chosenPath(path);
  const int found = chosenPath.IsEmpty() ? 0 : 1;
  if (result != nullptr) *result = std::move(chosenPath);
  return found;
}
