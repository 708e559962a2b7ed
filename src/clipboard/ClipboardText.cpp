#include "clipboard/ClipboardText.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/Clipboard.h"
#include "platform/GlobalMemory.h"

namespace vantrel1 {

TextPut PutClipboardText(UINT format, const CStdStrW& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(WCHAR);
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, bytes);
  void* target = GlobalLock(block);
  if (!target) {
    GlobalFree(block);
    return TextPut::NotLocked;
  }
  std::memcpy(target, text.c_str(), bytes);
  GlobalUnlock(block);
  if (SetClipboardData(format, block)) return TextPut::Accepted;
  // A refused block was never handed over; it is still ours to free.
  GlobalFree(block);
  return TextPut::Refused;
}

bool TakeClipboardText(UINT format, CStdStrW& text) {
  if (!IsClipboardFormatAvailable(format)) return false;
  text.clear();
  HGLOBAL block = GetClipboardData(format);
  const void* source = GlobalLock(block);
  if (!source) return true;
  // The block's size bounds the read only; the text ends at its first zero unit.
  std::u16string units(GlobalSize(block) / sizeof(WCHAR), u'\0');
  std::memcpy(units.data(), source, units.size() * sizeof(WCHAR));
  GlobalUnlock(block);
  units.resize(std::min(units.find(u'\0'), units.size()));
  text = CStdStrW(std::move(units));
  return true;
}

}  // namespace vantrel1
