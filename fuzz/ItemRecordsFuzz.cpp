// Feeds arbitrary input to the line style items' record readers. The first byte chooses
// the reader; the rest is a text record as UTF-16LE units (any units, terminated here) or
// the bytes of an archive record. Nothing may crash, read or write out of bounds or
// allocate without bound; archive readers fail only with CArchiveException. Whatever a
// reader accepts must keep the items' limits (10 dash pairs, 20 points, 9 text units),
// write back into a 512-unit record with its terminator, and store to an archive record
// that loads and stores to the same bytes again.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "linestyle/LineItem.h"
#include "linestyle/LineType.h"
#include "linestyle/SymbolItem.h"
#include "linestyle/TextItem.h"
#include "platform/Archive.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

std::u16string Units(std::span<const std::uint8_t> bytes) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text.push_back(static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8)));
  }
  return text;
}

void CheckLimits(const CLineItem& item) { Check(item.m_nCount <= CLineItem::kMaxPairs); }
void CheckLimits(const CSymbolItem& item) { Check(item.m_nPoints <= CSymbolItem::kMaxPoints); }
void CheckLimits(const CTextItem& item) {
  bool terminated = false;
  for (WCHAR unit : item.m_szText) terminated = terminated || unit == u'\0';
  Check(terminated);
}
void CheckLimits(const CLineType& type) {
  Check(type.m_nLine >= 0 && type.m_nLine <= type.m_nMaxLine);
  Check(type.m_nSymbol >= 0 && type.m_nSymbol <= type.m_nMaxSymbol);
  Check(type.m_nText >= 0 && type.m_nText <= type.m_nMaxText);
  Check(type.m_szDesc[CLineType::kDescSize - 1] == u'\0');
  for (int i = 0; i < type.m_nLine; ++i) CheckLimits(type.m_pLineItems[i]);
  for (int i = 0; i < type.m_nSymbol; ++i) CheckLimits(type.m_pSymbolItems[i]);
  for (int i = 0; i < type.m_nText; ++i) CheckLimits(type.m_pTextItems[i]);
}

template <typename Item>
void WriteBack(Item& item) {
  WCHAR buffer[512];
  if (item.ToAscii(buffer, 512) != nullptr) Check(std::char_traits<char16_t>::length(buffer) < 512);
  WCHAR tiny[7];
  if (item.ToAscii(tiny, 7) != nullptr) Check(std::char_traits<char16_t>::length(tiny) < 7);
}

template <typename Item>
void ReadText(std::span<const std::uint8_t> bytes) {
  const std::u16string text = Units(bytes);
  Item item;
  if (item.FromAscii(text.c_str()) != 0) WriteBack(item);
  CheckLimits(item);
}

template <typename Item>
std::vector<BYTE> Store(Item& item) {
  CArchive out(CArchive::store);
  item.Serialize(out);
  return out.GetBytes();
}

template <typename Item>
void ReadArchive(std::span<const std::uint8_t> bytes) {
  Item item;
  try {
    CArchive in(bytes);
    item.Serialize(in);
  } catch (const CArchiveException&) {
    return;
  }
  CheckLimits(item);
  const std::vector<BYTE> stored = Store(item);
  Item again;
  CArchive in(stored);
  again.Serialize(in);
  Check(in.IsBufferEmpty());
  Check(Store(again) == stored);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::span<const std::uint8_t> rest(data + 1, size - 1);
  switch (data[0] % 7) {
    case 0: ReadText<CLineItem>(rest); break;
    case 1: ReadText<CSymbolItem>(rest); break;
    case 2: ReadText<CTextItem>(rest); break;
    case 3: ReadArchive<CLineItem>(rest); break;
    case 4: ReadArchive<CSymbolItem>(rest); break;
    case 5: ReadArchive<CTextItem>(rest); break;
    default: ReadArchive<CLineType>(rest); break;
  }
  return 0;
}
