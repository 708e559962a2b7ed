// Parses arbitrary text and reads every element of whatever parsed: no input may crash,
// read out of bounds or leave an index whose positions do not point at its tags.
#include <cstddef>
#include <cstdint>
#include <string>

#include "../tests/markup/MarkupProbe.h"

namespace {

// Odd first byte: the rest is UTF-8; even: UTF-16LE code units, lone surrogates and all.
std::u16string Decode(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return std::u16string();
  if (data[0] & 1)
    return vantrel1::FromUtf8(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  std::u16string text;
  for (std::size_t i = 1; i + 1 < size; i += 2)
    text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  return text;
}

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

void CheckEntry(const MarkupProbe& m, int index) {
  const std::u16string& doc = m.GetDocRef();
  const auto& e = m.Entry(index);
  const int length = static_cast<int>(doc.size());
  Check(e.nTagOpen >= 0 && e.nTagOpen < e.nTagClose && e.nEndClose < length);
  Check(doc[e.nTagOpen] == u'<' && doc[e.nTagClose] == u'>' && doc[e.nEndClose] == u'>');
  if (e.nEndOpen == e.nTagClose - 1) {
    Check(doc[e.nEndOpen] == u'/' && e.nEndClose == e.nTagClose && !e.nFirstChild);
  } else {
    Check(e.nEndOpen > e.nTagClose && e.nEndOpen < e.nEndClose && doc[e.nEndOpen] == u'<');
  }
  if (e.nParent) {
    const auto& p = m.Entry(e.nParent);
    Check(p.nTagClose < e.nTagOpen && e.nEndClose < p.nEndOpen);
  }
  if (e.nNextSibling) Check(e.nEndClose < m.Entry(e.nNextSibling).nTagOpen);
}

// Visits every element through the public cursor, reading as an application would.
void ReadAll(MarkupProbe& m) {
  int visited = 0;
  m.ResetPos();
  for (;;) {
    if (m.FindElem()) {
      ++visited;
      Check(visited < m.FreeIndex());
      CheckEntry(m, m.MainPos());
      m.GetTagName();
      m.GetAttrib(u"a");
      m.GetData();
      m.GetDataInt(u"N", 0);
      m.GetDataChar(u"C", u'x');
      m.ResetChildPos();
      m.IntoElem();
      continue;
    }
    if (!m.OutOfElem()) break;
  }
  Check(visited == m.FreeIndex() - 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = Decode(data, size);
  MarkupProbe m;
  const bool parsed = m.SetDoc(text);
  Check(parsed == m.IsWellFormed());
  if (!parsed) {
    Check(m.FreeIndex() == 1);
    return 0;
  }
  ReadAll(m);
  MarkupProbe copy(m);
  Check(markup_probe::Layout(copy) == markup_probe::Layout(m));
  return 0;
}
