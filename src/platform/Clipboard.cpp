#include "platform/Clipboard.h"

#include <algorithm>
#include <map>
#include <vector>

#include "platform/GlobalMemory.h"
#include "platform/MemoryClipboardBackend.h"

namespace vantrel1 {
namespace {

CMemoryClipboardBackend g_memoryBackend;
CClipboardBackend* g_backend = &g_memoryBackend;

struct ClipboardState {
  bool open = false;
  HWND owner = nullptr;
  // Blocks the clipboard holds on the caller's behalf until it is emptied or closed: those
  // handed over by SetClipboardData and those lent by GetClipboardData. None is freed
  // earlier, even when its format gets new data: a caller may still hold its handle, and
  // a freed handle could come back from the next allocation naming another block.
  std::vector<HGLOBAL> held;
  // The block lent for each format, handed out again while the data stays the same.
  std::map<UINT, HGLOBAL> lent;
};

ClipboardState& State() {
  static ClipboardState state;
  return state;
}

void Hold(HGLOBAL block) {
  std::vector<HGLOBAL>& held = State().held;
  if (std::find(held.begin(), held.end(), block) == held.end()) held.push_back(block);
}

void ReleaseBlocks() {
  for (HGLOBAL block : State().held) GlobalFree(block);
  State().held.clear();
  State().lent.clear();
}

HGLOBAL BlockOf(const std::vector<BYTE>& data) {
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, data.size());
  if (!block || data.empty()) return block;
  std::copy(data.begin(), data.end(), static_cast<BYTE*>(GlobalLock(block)));
  GlobalUnlock(block);
  return block;
}

// Registered names, numbered from kFirstRegisteredClipboardFormat in order of
// registration; kept for the life of the process like the window system's atoms.
std::vector<CStdStrW>& Names() {
  static std::vector<CStdStrW> names;
  return names;
}

}  // namespace

UINT RegisterClipboardName(const CStdStrW& name) {
  if (name.empty()) return 0;
  std::vector<CStdStrW>& names = Names();
  const auto it = std::find_if(names.begin(), names.end(), [&](const CStdStrW& n) { return n.EqualsNoCase(name); });
  if (it != names.end()) return kFirstRegisteredClipboardFormat + static_cast<UINT>(it - names.begin());
  if (names.size() > kLastRegisteredClipboardFormat - kFirstRegisteredClipboardFormat) return 0;
  names.push_back(name);
  return kFirstRegisteredClipboardFormat + static_cast<UINT>(names.size() - 1);
}

CStdStrW ClipboardNameOf(UINT format) {
  const std::vector<CStdStrW>& names = Names();
  if (format < kFirstRegisteredClipboardFormat || format - kFirstRegisteredClipboardFormat >= names.size()) return {};
  return names[format - kFirstRegisteredClipboardFormat];
}

}  // namespace vantrel1

using vantrel1::State;

CClipboardBackend::~CClipboardBackend() = default;

UINT CClipboardBackend::RegisterFormat(const CStdStrW& name) { return vantrel1::RegisterClipboardName(name); }

CClipboardBackend* SetClipboardBackend(CClipboardBackend* backend) {
  CClipboardBackend* previous = vantrel1::g_backend;
  vantrel1::g_backend = backend ? backend : &vantrel1::g_memoryBackend;
  return previous;
}

CClipboardBackend* GetClipboardBackend() { return vantrel1::g_backend; }

BOOL OpenClipboard(HWND owner) {
  if (State().open || !vantrel1::g_backend->Open()) return FALSE;
  State().open = true;
  State().owner = owner;
  return TRUE;
}

BOOL CloseClipboard() {
  if (!State().open) return FALSE;
  vantrel1::ReleaseBlocks();
  vantrel1::g_backend->Close();
  State().open = false;
  State().owner = nullptr;
  return TRUE;
}

BOOL EmptyClipboard() {
  if (!State().open) return FALSE;
  vantrel1::ReleaseBlocks();
  return vantrel1::g_backend->Empty() ? TRUE : FALSE;
}

HWND GetOpenClipboardWindow() { return State().open ? State().owner : nullptr; }

UINT RegisterClipboardFormatW(LPCWSTR name) {
  if (!name || !*name) return 0;
  return vantrel1::g_backend->RegisterFormat(CStdStrW(name));
}

int GetClipboardFormatNameW(UINT format, LPWSTR buffer, int size) {
  if (!buffer || size <= 0) return 0;
  const CStdStrW name = vantrel1::ClipboardNameOf(format);
  const std::size_t n = std::min(name.size(), static_cast<std::size_t>(size - 1));
  std::copy_n(name.data(), n, buffer);
  buffer[n] = 0;
  return static_cast<int>(n);
}

BOOL IsClipboardFormatAvailable(UINT format) { return vantrel1::g_backend->IsFormatAvailable(format) ? TRUE : FALSE; }

HGLOBAL GetClipboardData(UINT format) {
  std::vector<BYTE> data;
  if (!State().open || !vantrel1::g_backend->GetData(format, data)) return nullptr;
  if (const auto it = State().lent.find(format); it != State().lent.end()) return it->second;
  HGLOBAL block = vantrel1::BlockOf(data);
  if (!block) return nullptr;
  vantrel1::Hold(block);
  State().lent[format] = block;
  return block;
}

HANDLE SetClipboardData(UINT format, HANDLE data) {
  if (!State().open || GlobalFlags(data) == GMEM_INVALID_HANDLE) return nullptr;
  const auto* bytes = static_cast<const BYTE*>(GlobalLock(data));
  const std::size_t size = GlobalSize(data);
  if (!bytes && size != 0) return nullptr;
  const bool accepted = vantrel1::g_backend->SetData(format, bytes ? std::vector<BYTE>(bytes, bytes + size) : std::vector<BYTE>());
  if (bytes) GlobalUnlock(data);
  if (!accepted) return nullptr;
  vantrel1::Hold(data);
  State().lent.erase(format);
  return data;
}
