// Line type table files: any bytes, read as a table file, load into a table that stays
// consistent; every user line type read writes back as a section that reads back to the
// same records; lookups and drawable lines work on whatever was loaded, and no pen
// outlives the table.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "MemoryProfile.h"
#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"
#include "platform/WideCrt.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

constexpr std::u16string_view kInput = u"input.lin";

// Loaded tables take their default width from the application.
class LineProfiles : public MemoryProfile {
 public:
  explicit LineProfiles(std::string_view bytes) : MemoryProfile(bytes, kInput) {}
  int GetDefaultLineWidth() const override { return 3; }
};

// What a write and a read keep exactly. Records are normalised on reading (dash pairs
// merged, start fractions truncated, edge blanks of values dropped), so lengths, scales
// and texts may change from one trip to the next; counts, widths, offsets, modes and
// figure points may not.
std::u16string Fingerprint(CLineType& line) {
  std::u16string out;
  const auto add = [&](long long value) {
    out += u',';
    for (char c : std::to_string(value)) out += static_cast<char16_t>(c);
  };
  add(line.GetPenWidth());
  add(line.GetFont() != nullptr);
  add(line.GetNLine());
  for (int i = 0; i < line.GetNLine(); ++i) {
    add(line.GetLineItem(i)->m_nWidth);
    add(line.GetLineItem(i)->m_nOffset);
  }
  add(line.GetNSymbol());
  for (int i = 0; i < line.GetNSymbol(); ++i) {
    const CSymbolItem& item = *line.GetSymbolItem(i);
    for (long long v : {item.m_nFill, item.m_nPenWidth, item.m_nInterval, item.m_nMode, item.m_nShift, item.m_nPoints})
      add(v);
    for (int k = 0; k < item.m_nPoints; ++k) {
      add(item.m_ptPoints[k].x);
      add(item.m_ptPoints[k].y);
      add(item.m_bPenDown[k]);
    }
  }
  add(line.GetNText());
  for (int i = 0; i < line.GetNText(); ++i) {
    const CTextItem& item = *line.GetTextItem(i);
    for (long long v : {item.m_nAngle, item.m_nBkMode, item.m_nInterval, item.m_nOffset}) add(v);
  }
  return out;
}

std::u16string_view Trimmed(std::u16string_view text) {
  const auto blank = [](char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\v' || c == u'\f'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

void CheckRoundTrip(LineProfiles& app, CLineType& line, int index) {
  WCHAR section[32];
  _snwprintf_s(section, 32, _TRUNCATE, u"Out%d", index);
  if (line.ToFile(&app, u"out.lin", section) == 0) return;
  CLineType copy;
  // A profile file cannot hold every text as written (a line break, a blank name).
  if (copy.FromFile(&app, u"out.lin", section, nullptr, nullptr) == 0) return;
  Check(Fingerprint(copy) == Fingerprint(line));
  Check(Trimmed(copy.GetDesc()) == Trimmed(line.GetDesc()));
}

void UseLines(CLineTypeTable& table) {
  COLORREF red = RGB(255, 0, 0);
  for (int number : {-1, 0, 6, 7, 15, 16, 1026, 1026 + table.m_nUserLines, 1275}) {
    CLineType* line = table.CreateLine(number, &red, 0, 1, 0);
    Check(line != nullptr);
    Check(table.GetDesc(number).size() >= 2);
    table.DeleteLine(line, 1);
  }
  if (table.m_nUserLines > 0) {
    const WCHAR* name = table.m_pUserLines[table.m_nUserLines - 1].GetDesc();
    const int found = table.FindLine(name);
    Check(found >= 0 && found <= 1025 + table.m_nUserLines);
    Check(table.GetLineNumber(CLineTypeTable::MakeDesc(found, name), 1) >= 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const GdiObjectTally before = GdiObjectCounts();
  {
    LineProfiles app(std::string_view(reinterpret_cast<const char*>(data), size));
    CLineTypeTable table;
    const int fromFile = table.FromFile(&app, kInput.data(), nullptr);
    Check(table.m_nSystemLines == 9);
    Check(table.m_nUserLines >= 0 && table.m_nUserLines <= 250);
    if (fromFile == 1) {
      Check(table.CheckValid() == 1);
      Check(table.m_nDefaultWidth == 3);
    }
    for (int i = 0; i < table.m_nUserLines; ++i) CheckRoundTrip(app, table.m_pUserLines[i], i);
    UseLines(table);
  }
  Check((GdiObjectCounts() - before).Live() == 0);
  return 0;
}
