#include "suite/VantrelStrings.h"

#include <algorithm>

#include "platform/StringTable.h"

CStdStrW VantrelLoadResString(HINSTANCE module, UINT id, int maxLength) {
  if (maxLength < 1) return CStdStrW();
  const WCHAR* text = nullptr;
  // A buffer size of 0 lends the module's own copy instead of cutting it.
  const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length <= 0 || !text) return CStdStrW();
  return CStdStrW(text, static_cast<std::size_t>(std::min(length, maxLength)));
}

CStdStrW LoadVantrelString(UINT id, int maxLength) { return VantrelLoadResString(nullptr, id, maxLength); }
