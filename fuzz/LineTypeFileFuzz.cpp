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

#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"
#include "platform/ProfileDocument.h"
#include "platform/WideCrt.h"
#include "suite/VantrelAppBaseX.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

constexpr std::u16string_view kInput = u"input.lin";

// An application context whose profile files live in memory: the fuzz input, read only,
// and one file that line types are written to.
class MemoryProfiles : public CVantrelAppBaseX {
 public:
  explicit MemoryProfiles(std::string_view bytes) : m_input(vantrel1::ProfileDocument::Parse(bytes)) {}

  DWORD GetProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                          LPCWSTR file) const override {
    if (buffer == nullptr || size == 0) return 0;
    const vantrel1::ProfileDocument& doc = file != nullptr && kInput == file ? m_input : m_output;
    std::u16string value = defaultValue != nullptr ? defaultValue : u"";
    if (section != nullptr && key != nullptr) {
      if (auto found = doc.Find(section, key)) value = *found;
    }
    const std::size_t n = std::min<std::size_t>(value.size(), size - 1);
    std::copy_n(value.data(), n, buffer);
    buffer[n] = 0;
    return static_cast<DWORD>(n);
  }

  BOOL WriteProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR /*file*/) const override {
    if (section == nullptr || key == nullptr) return TRUE;
    if (value == nullptr) return m_output.DeleteKey(section, key) ? TRUE : FALSE;
    return m_output.Set(section, key, value) ? TRUE : FALSE;
  }

  int GetDefaultLineWidth() const override { return 3; }

 private:
  vantrel1::ProfileDocument m_input;
  mutable vantrel1::ProfileDocument m_output;
};

std::u16string Records(CLineType& line) {
  std::u16string out = line.GetDesc();
  WCHAR record[512];
  const auto add = [&](const WCHAR* text) {
    out += u'|';
    out += text != nullptr ? text : u"(too long)";
  };
  for (int i = 0; i < line.GetNLine(); ++i) add(line.GetLineItem(i)->ToAscii(record, 512));
  for (int i = 0; i < line.GetNSymbol(); ++i) add(line.GetSymbolItem(i)->ToAscii(record, 512));
  for (int i = 0; i < line.GetNText(); ++i) add(line.GetTextItem(i)->ToAscii(record, 512));
  return out;
}

// Writing normalises a line type once (edge blanks of values are not kept, for one);
// after that a write and a read must give back exactly the same line type.
void CheckRoundTrip(MemoryProfiles& app, CLineType& line, int index) {
  WCHAR section[32];
  _snwprintf_s(section, 32, _TRUNCATE, u"Out%d", index);
  if (line.ToFile(&app, u"out.lin", section) == 0) return;
  CLineType once;
  if (once.FromFile(&app, u"out.lin", section, nullptr, nullptr) == 0) return;
  Check(once.ToFile(&app, u"out.lin", section) == 1);
  CLineType twice;
  Check(twice.FromFile(&app, u"out.lin", section, nullptr, nullptr) == 1);
  Check(Records(once) == Records(twice));
  Check(once.GetPenWidth() == twice.GetPenWidth());
  Check((once.GetFont() == nullptr) == (twice.GetFont() == nullptr));
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
    MemoryProfiles app(std::string_view(reinterpret_cast<const char*>(data), size));
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
