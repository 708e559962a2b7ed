// Symbol tables from outside: any bytes, read as a symbol table file and as a document's
// SYMBOLTABLE element, load into a table that stays within its limits; every entry read
// from the file writes back as a section and as XML that read back to the same counts and
// flags; lookups and created symbols work on whatever was loaded, and no pen outlives them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "MemoryProfile.h"
#include "markup/Markup.h"
#include "platform/GdiObjects.h"
#include "platform/Utf.h"
#include "platform/WideCrt.h"
#include "symbols/SymbolTable.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

constexpr std::u16string_view kInput = u"input.sym";

// What both forms keep exactly, whatever the records and the name hold.
std::u16string Fingerprint(const CSymbol& symbol) {
  std::u16string out;
  for (long long v : {symbol.GetIndex(), symbol.m_nPenWidth, symbol.SymbolItemsNum(), symbol.TextItemsNum(),
                      symbol.m_bRotatable, symbol.m_bScalable, symbol.GetFont() != nullptr ? 1 : 0}) {
    out += u',';
    for (char c : std::to_string(v)) out += static_cast<char16_t>(c);
  }
  return out;
}

// A name that a header record carries unchanged: no comma to split it and no blanks or
// line breaks that a profile file would drop.
bool PlainName(const std::u16string& name) {
  if (name.empty() || name.front() == u' ' || name.back() == u' ') return false;
  return std::none_of(name.begin(), name.end(), [](char16_t c) { return c == u',' || c < 0x20; });
}

void CheckFileRoundTrip(MemoryProfile& app, CSymbol& symbol, int index) {
  if (!PlainName(symbol.GetDesc())) return;
  WCHAR section[32];
  _snwprintf_s(section, 32, _TRUNCATE, u"Out%d", index);
  if (symbol.ToFileX(&app, u"out.sym", section) == 0) return;
  CSymbol copy;
  // An item record longer than its buffer is written without a key.
  if (copy.FromFileX(&app, u"out.sym", section, nullptr, nullptr) == 0) return;
  Check(Fingerprint(copy) == Fingerprint(symbol));
  Check(copy.GetDesc() == symbol.GetDesc());
}

void CheckXmlRoundTrip(CSymbol& symbol) {
  CMarkup xml;
  xml.AddElem(u"SYMBOL0");
  xml.IntoElem();
  symbol.SerializeXML(&xml, 1);
  CMarkup back(xml.GetDoc().c_str());
  Check(back.FindElem());
  CSymbol copy;
  copy.SerializeXML(&back, 0);
  Check(Fingerprint(copy) == Fingerprint(symbol));
}

void UseTable(CSymbolTable& table) {
  Check(table.m_nCount >= 0 && table.m_nCount <= CSymbolTable::kMaxSymbols);
  table.CheckValid();
  for (int number : {0, 1, 7, 19, 1023, 1024, 1024 + table.m_nCount - 1, 1024 + table.m_nCount}) {
    CSymbol* symbol = table.CreateSymbol(number, RGB(1, 2, 3), 2.0, 0);
    Check(symbol != nullptr);
    table.DeleteSymbol(symbol);
  }
  if (table.m_nCount > 0) {
    const int found = table.GetSymbolNumber(table.m_pSymbols[table.m_nCount - 1].GetDesc());
    Check(found >= 0 && found <= 1023 + table.m_nCount);
    Check(table.ShiftSymbol(0, 1) == (table.m_nCount > 1 ? 1 : 0));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const GdiObjectTally before = GdiObjectCounts();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  {
    MemoryProfile app(bytes, kInput);
    CSymbolTable table;
    const int fromFile = table.FromFile(&app, kInput.data(), nullptr);
    Check(fromFile == 0 || table.m_nCount > 0);
    for (int i = 0; i < table.m_nCount; ++i) {
      CheckFileRoundTrip(app, table.m_pSymbols[i], i);
      CheckXmlRoundTrip(table.m_pSymbols[i]);
    }
    UseTable(table);

    CMarkup xml(vantrel1::FromUtf8(bytes).c_str());
    CSymbolTable document;
    document.SerializeXML(&app, &xml, 0);
    UseTable(document);
  }
  Check((GdiObjectCounts() - before).Live() == 0);
  return 0;
}
