#pragma once
// Opens CMarkup's element index to the tests and the fuzzers, and checks the property every
// edit must keep: the index equals the one a fresh parse of the edited text builds.
#include <cstdint>
#include <functional>
#include <string>

#include "markup/Markup.h"
#include "platform/Utf.h"

class MarkupProbe : public CMarkup {
 public:
  using CMarkup::CMarkup;
  using CMarkup::x_AddElem;
  using CMarkup::x_TextFromDoc;

  int FreeIndex() const { return m_nFreeIndex; }
  const ElemPos& Entry(int index) const { return x_Pos(index); }
  int ParentPos() const { return m_nParentIndex; }
  int MainPos() const { return m_nMainIndex; }
  int ChildPos() const { return m_nChildIndex; }
  int Kind() const { return m_nCurrentKind; }
  void SetLastError(const CStdStrW& text) { m_sLastError = text; }
  CStdStrW TagName(int index) const { return x_GetTagName(index); }
};

namespace markup_probe {

inline std::string Narrow(const CStdStrW& text) { return vantrel1::ToUtf8(text); }

// The index as text, in document order: name<tagOpen,tagClose,endOpen,endClose>, children
// in parentheses, siblings separated by a space.
inline std::string Layout(const MarkupProbe& doc) {
  std::string out;
  int index = doc.Entry(0).nFirstChild;
  int guard = doc.FreeIndex();
  while (index && guard-- > 0) {
    const auto& e = doc.Entry(index);
    out += Narrow(doc.TagName(index)) + "<" + std::to_string(e.nTagOpen) + "," +
           std::to_string(e.nTagClose) + "," + std::to_string(e.nEndOpen) + "," +
           std::to_string(e.nEndClose) + ">";
    if (e.nFirstChild) {
      out += "(";
      index = e.nFirstChild;
      continue;
    }
    while (index && !doc.Entry(index).nNextSibling) {
      index = doc.Entry(index).nParent;
      if (index) out += ")";
    }
    if (index) {
      out += " ";
      index = doc.Entry(index).nNextSibling;
    }
  }
  return out;
}

inline std::string Describe(int ordinal, const char* what, int edited, int fresh) {
  return "element " + std::to_string(ordinal) + ": " + what + " " + std::to_string(edited) +
         ", fresh parse " + std::to_string(fresh);
}

// Empty when `edited`'s index equals, element for element in document order, the index a
// fresh SetDoc of its text builds; otherwise the first difference.
inline std::string IndexMismatch(const MarkupProbe& edited) {
  MarkupProbe fresh;
  fresh.SetDoc(edited.GetDocRef());
  if (edited.FreeIndex() != fresh.FreeIndex())
    return Describe(0, "entries in use", edited.FreeIndex(), fresh.FreeIndex());
  for (const int pos : {edited.ParentPos(), edited.MainPos(), edited.ChildPos()})
    if (pos < 0 || pos >= edited.FreeIndex()) return "cursor outside the index";
  const auto& rootA = edited.Entry(0);
  const auto& rootB = fresh.Entry(0);
  if (rootA.nTagOpen != rootB.nTagOpen || rootA.nTagClose != rootB.nTagClose ||
      rootA.nEndOpen != rootB.nEndOpen || rootA.nEndClose != rootB.nEndClose ||
      rootA.nNextSibling || rootA.nParent || rootA.nSpare)
    return Describe(0, "document entry cursor", rootA.nEndOpen, rootB.nEndOpen);
  int a = rootA.nFirstChild;
  int b = rootB.nFirstChild;
  for (int ordinal = 1; a || b; ++ordinal) {
    if (!a || !b) return Describe(ordinal, "exists", a != 0, b != 0);
    if (ordinal >= edited.FreeIndex()) return "cycle in the index";
    const auto& ea = edited.Entry(a);
    const auto& eb = fresh.Entry(b);
    if (ea.nTagOpen != eb.nTagOpen) return Describe(ordinal, "nTagOpen", ea.nTagOpen, eb.nTagOpen);
    if (ea.nTagClose != eb.nTagClose)
      return Describe(ordinal, "nTagClose", ea.nTagClose, eb.nTagClose);
    if (ea.nEndOpen != eb.nEndOpen) return Describe(ordinal, "nEndOpen", ea.nEndOpen, eb.nEndOpen);
    if (ea.nEndClose != eb.nEndClose)
      return Describe(ordinal, "nEndClose", ea.nEndClose, eb.nEndClose);
    if (ea.nSpare != 0) return Describe(ordinal, "nSpare", ea.nSpare, 0);
    if ((ea.nFirstChild != 0) != (eb.nFirstChild != 0))
      return Describe(ordinal, "has children", ea.nFirstChild != 0, eb.nFirstChild != 0);
    if (ea.nFirstChild) {
      if (edited.Entry(ea.nFirstChild).nParent != a) return Describe(ordinal, "child's parent", 0, 1);
      a = ea.nFirstChild;
      b = eb.nFirstChild;
      continue;
    }
    while (a && b && !edited.Entry(a).nNextSibling && !fresh.Entry(b).nNextSibling) {
      a = edited.Entry(a).nParent;
      b = fresh.Entry(b).nParent;
    }
    if (!a && !b) break;
    if (!a || !b) return Describe(ordinal, "depth", a, b);
    const int nextA = edited.Entry(a).nNextSibling;
    const int nextB = fresh.Entry(b).nNextSibling;
    if ((nextA != 0) != (nextB != 0)) return Describe(ordinal, "has next sibling", nextA != 0, nextB != 0);
    if (edited.Entry(nextA).nParent != edited.Entry(a).nParent)
      return Describe(ordinal, "sibling's parent", edited.Entry(nextA).nParent, edited.Entry(a).nParent);
    a = nextA;
    b = nextB;
  }
  return std::string();
}

// One edit or cursor move of the kinds applications make, chosen by `pick(n)` (a number
// below n), with names and texts that include awkward ones.
inline void ApplyRandomEdit(MarkupProbe& doc, const std::function<unsigned(unsigned)>& pick) {
  static const char16_t* const kNames[] = {
      u"a", u"b", u"LINE", u"x[1]", u"\u0161i\u0107", u"a b", u"", u"=", u"?x", u"\"q", u"a/",
      nullptr};
  static const char16_t* const kTexts[] = {
      nullptr, u"", u"1", u"a<b&c>d", u" x ", u"it's \"q\"", u"<![CDATA[z]]>", u"\xD800", u"&amp;",
      u"\r\n", u"-->", u"]]>", u"?>"};
  const char16_t* name = kNames[pick(std::size(kNames))];
  const char16_t* text = kTexts[pick(std::size(kTexts))];
  switch (pick(14)) {
    case 0: doc.AddElem(name, text); break;
    case 1: doc.AddChildElem(name, text); break;
    case 2: doc.SetAttrib(name, text); break;
    case 3: doc.SetChildAttrib(name, text); break;
    case 4: doc.IntoElem(); break;
    case 5: doc.OutOfElem(); break;
    case 6: doc.FindElem(pick(2) ? name : nullptr); break;
    case 7: doc.FindChildElem(pick(2) ? name : nullptr); break;
    case 8: doc.ResetPos(); break;
    case 9: doc.ResetMainPos(); break;
    case 10: doc.ResetChildPos(); break;
    case 11: doc.x_AddElem(name, text, true, pick(2) != 0); break;
    case 12: doc.GetDataInt(name ? name : u"a", 3); break;
    default: doc.AddChildElem(name, text); doc.IntoElem(); break;
  }
}

}  // namespace markup_probe
