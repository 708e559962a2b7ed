// Writing: new elements and attributes are spliced into the document text and the stored
// positions after the splice are shifted, so the index never needs a reparse.
//
// Appending at the end of the document, the common case when a table is written, touches
// only the new element's ancestors: the splice moves a few characters of end tags and the
// shift walk climbs straight out.
#include <stdexcept>
#include <string_view>
#include <utility>

#include "markup/Markup.h"
#include "markup/MarkupText.h"

using vantrel1::markup::FindChar;
using vantrel1::markup::IsValidName;
using vantrel1::markup::kMaxDocLength;
using vantrel1::markup::Length;
using vantrel1::markup::ScanToken;
using vantrel1::markup::SkipSpace;

namespace {

constexpr std::u16string_view kLineBreak = u"\r\n";

bool FitsInDocument(const CStdStrW& doc, std::size_t added) {
  return added <= kMaxDocLength && doc.size() <= kMaxDocLength - added;
}

// The entity that stands for `c` in element text (or, with `attribute`, in a quoted
// attribute value), or null when `c` stands for itself.
const WCHAR* EntityFor(WCHAR c, bool attribute) {
  switch (c) {
    case u'<': return u"&lt;";
    case u'&': return u"&amp;";
    case u'>': return u"&gt;";
    case u'\'': return attribute ? u"&apos;" : nullptr;
    case u'"': return attribute ? u"&quot;" : nullptr;
    default: return nullptr;
  }
}

// Appends `text` with its markup characters written as entities, copying the runs
// between them whole.
void AppendEscaped(CStdStrW& out, const WCHAR* text, bool attribute) {
  // Bit n set for the characters below 64 that may need an entity.
  constexpr unsigned long long kQuotes = (1ULL << '\'') | (1ULL << '"');
  constexpr unsigned long long kMarkup = (1ULL << '<') | (1ULL << '&') | (1ULL << '>');
  const unsigned long long special = attribute ? kMarkup | kQuotes : kMarkup;
  const WCHAR* run = text;
  const WCHAR* p = text;
  for (; *p; ++p) {
    if (*p >= 64 || !((special >> *p) & 1)) continue;
    out.append(run, static_cast<std::size_t>(p - run)).append(EntityFor(*p, attribute));
    run = p + 1;
  }
  out.append(run, static_cast<std::size_t>(p - run));
}

}  // namespace

CStdStrW CMarkup::x_TextToDoc(const WCHAR* text, bool attribute) {
  CStdStrW escaped;
  if (!text) return escaped;
  const std::size_t length = static_cast<std::size_t>(Length(text));
  escaped.reserve(length + length / 10 + 7);
  AppendEscaped(escaped, text, attribute);
  return escaped;
}

void CMarkup::x_DocChange(int offset, int replaced, std::u16string_view text) {
  x_ForgetLookup();
  const int length = m_sDocument.GetLength();
  if (offset < 0 || replaced < 0 || offset > length || replaced > length - offset)
    throw std::invalid_argument("CMarkup change outside the document");
  m_sDocument.replace(static_cast<std::size_t>(offset), static_cast<std::size_t>(replaced),
                      text);
}

// Shifts every position after a change inside element `index` (whose own positions the
// caller sets): its descendants unless `afterPos`, then everything that follows in
// document order; of its ancestors only the end tags move.
void CMarkup::x_Adjust(int index, int shift, bool afterPos) {
  if (!shift) return;
  int current = index;
  int depth = 0;  // levels below `index` while inside a subtree that follows the change
  bool descend = !afterPos;
  for (;;) {
    int next = descend ? x_Pos(current).nFirstChild : 0;
    if (next) {
      ++depth;
    } else {
      while (!(next = x_Pos(current).nNextSibling)) {
        current = x_Pos(current).nParent;
        if (!current) return;
        if (depth > 0) {
          --depth;
        } else {
          ElemPos& ancestor = x_Pos(current);
          ancestor.nEndOpen += shift;
          ancestor.nEndClose += shift;
        }
      }
    }
    ElemPos& elem = x_Pos(next);
    elem.nTagOpen += shift;
    elem.nTagClose += shift;
    elem.nEndOpen += shift;
    elem.nEndClose += shift;
    current = next;
    descend = true;
  }
}

int CMarkup::x_LastChild(int parent) const {
  int last = 0;
  for (int child = x_Pos(parent).nFirstChild; child; child = x_Pos(child).nNextSibling)
    last = child;
  return last;
}

int CMarkup::x_PreviousSibling(int index) const {
  int previous = 0;
  for (int child = x_Pos(x_Pos(index).nParent).nFirstChild; child && child != index;
       child = x_Pos(child).nNextSibling)
    previous = child;
  return previous;
}

// Finds where a new element of `length` characters goes under `parent`: just after
// `reference` (before it with kInsertBefore) or at the end (start) of the parent's
// content. On return `reference` is the sibling to link the new element after.
bool CMarkup::x_LocateNew(int parent, int& reference, int& offset, int length, int flags) {
  if (length < 0 || !FitsInDocument(m_sDocument, static_cast<std::size_t>(length)))
    return false;
  const bool before = (flags & kInsertBefore) != 0;
  const bool emptyParent = x_IsEmptyElem(parent);
  const ElemPos& up = x_Pos(parent);
  const WCHAR* doc = m_sDocument.c_str();
  if (emptyParent) {
    // "<p//>" would still read as empty once its last '/' became "></p".
    if (doc[up.nEndOpen - 1] == u'/') return false;
    offset = up.nEndOpen;
    reference = 0;
    return true;
  }
  if (reference) {
    const ElemPos& elem = x_Pos(reference);
    offset = before ? elem.nTagOpen : elem.nEndClose + 1;
    if (before) reference = x_PreviousSibling(reference);
  } else {
    if (parent)
      offset = before ? up.nTagClose + 1 : up.nEndOpen;
    else
      offset = before ? 0 : Length(doc);  // the text ends for the parser at a null
    reference = before ? 0 : x_LastChild(parent);
  }
  int pos = offset;
  SkipSpace(doc, pos);
  if (!doc[pos] || doc[pos] == u'<') offset = pos;
  return true;
}

// Whether the document holds nothing a parse could take for an element: only text and
// complete instructions, comments, CDATA sections and document type declarations.
bool CMarkup::x_HasNoStartTag() {
  const WCHAR* doc = m_sDocument.c_str();
  TokenPos token(doc);
  int pos = 0;
  while (FindChar(doc, pos, u'<')) {
    token.nScan = pos + 1;
    if (!ScanToken(token) || token.bQuoted) return false;
    const WCHAR c = doc[token.nFirst];
    if (c != u'?' && c != u'!') return false;
    token.nScan = pos;
    if (!x_SkipNode(token)) return false;
    pos = token.nScan;
  }
  return true;
}

void CMarkup::x_SetNewPos(int index, int tagOpen, std::u16string_view text) {
  ElemPos& elem = x_Pos(index);
  const int tagClose = static_cast<int>(text.find(u'>'));
  elem.nTagOpen = tagOpen;
  elem.nTagClose = tagOpen + tagClose;
  if (text[static_cast<std::size_t>(tagClose - 1)] == u'/') {
    elem.nEndOpen = elem.nTagClose - 1;
    elem.nEndClose = elem.nTagClose;
  } else {
    elem.nEndOpen = tagOpen + static_cast<int>(text.rfind(u'<'));
    elem.nEndClose = tagOpen + static_cast<int>(text.rfind(u'>'));
  }
}

// The empty parent "<p/>" becomes "<p>", line break, the new element, "</p>".
void CMarkup::x_AddIntoEmpty(int index, int parent, std::u16string_view text) {
  const int slash = x_Pos(parent).nEndOpen;
  const CStdStrW name = x_GetTagName(parent);
  CStdStrW change;
  change.reserve(text.size() + name.size() + 5);
  change.append(u">").append(kLineBreak).append(text).append(u"</").append(name);
  x_SetNewPos(index, slash + 3, text);
  x_DocChange(slash, 1, change);
  x_Adjust(index, change.GetLength() - 1, true);
  ElemPos& up = x_Pos(parent);
  up.nTagClose = slash;
  up.nEndOpen = slash + 3 + static_cast<int>(text.size());
}

bool CMarkup::x_AddElem(const WCHAR* name, const WCHAR* data, bool insert, bool child) {
  if (!IsValidName(name)) return false;
  int parent = m_nParentIndex;
  int reference = m_nMainIndex;
  if (child) {
    if (!m_nMainIndex) return false;
    parent = m_nMainIndex;
    reference = m_nChildIndex;
  } else if (!parent) {
    // One root only; and text that already reads as the start of an element would
    // swallow a root appended after it.
    if (x_Pos(0).nFirstChild) return false;
    if (!insert && !x_HasNoStartTag()) return false;
  }

  // The element is built after a line break, which goes in with it only when the
  // parent has no content yet.
  const int nameLength = Length(name);
  const bool withData = data && *data;
  const std::size_t dataLength = withData ? static_cast<std::size_t>(Length(data)) : 0;
  CStdStrW text;
  text.reserve(2 * static_cast<std::size_t>(nameLength) + dataLength + dataLength / 10 + 16);
  text.append(kLineBreak).append(u"<").append(name, static_cast<std::size_t>(nameLength));
  if (withData) {
    text.append(u">");
    AppendEscaped(text, data, false);
    text.append(u"</").append(name, static_cast<std::size_t>(nameLength)).append(u">");
  } else {
    text.append(u"/>");
  }
  text.append(kLineBreak);
  const std::u16string_view element = std::u16string_view(text).substr(kLineBreak.size());

  int offset = 0;
  // Room for the element, a leading line break and a parent's new end tag.
  const long long room = static_cast<long long>(element.size()) + 8 + nameLength;
  if (room > static_cast<long long>(kMaxDocLength)) return false;
  const bool emptyParent = x_IsEmptyElem(parent);
  if (!x_LocateNew(parent, reference, offset, static_cast<int>(room),
                   insert ? kInsertBefore : 0))
    return false;

  const int index = x_GetFreePos();
  m_aIndex[static_cast<std::size_t>(index)] = ElemPos{};
  x_Link(index, parent, reference);
  if (emptyParent) {
    x_AddIntoEmpty(index, parent, element);
  } else {
    int tagOpen = offset;
    std::u16string_view inserted = element;
    if (parent && x_Pos(parent).nTagClose + 1 == x_Pos(parent).nEndOpen) {
      inserted = text;
      tagOpen += static_cast<int>(kLineBreak.size());
    }
    x_SetNewPos(index, tagOpen, element);
    x_DocChange(offset, 0, inserted);
    x_Adjust(index, static_cast<int>(inserted.size()), true);
    // At document level the parse leaves its cursor on the root's '<'.
    if (!parent) x_Pos(0).nEndOpen = tagOpen;
  }

  if (child)
    x_SetPos(m_nParentIndex, parent, index);
  else
    x_SetPos(parent, index, 0);
  return true;
}

bool CMarkup::x_SetAttrib(int index, const WCHAR* name, const WCHAR* value) {
  if (!index || m_nCurrentKind != 1 || !IsValidName(name)) return false;
  CStdStrW text = x_TextToDoc(value, true);
  if (!FitsInDocument(m_sDocument, text.size() + static_cast<std::size_t>(Length(name)) + 4))
    return false;
  TokenPos token(m_sDocument.c_str());
  int offset = 0;
  int replaced = 0;
  if (x_FindAttribOf(index, token, name)) {
    offset = token.nFirst;
    replaced = token.nLast - token.nFirst + 1;
  } else {
    const ElemPos& elem = x_Pos(index);
    offset = x_IsEmptyElem(index) ? elem.nEndOpen : elem.nTagClose;
    CStdStrW pair;
    pair.reserve(text.size() + static_cast<std::size_t>(Length(name)) + 4);
    pair.append(u" ").append(name).append(u"=\"").append(text).append(u"\"");
    text = std::move(pair);
  }
  x_DocChange(offset, replaced, text);
  const int shift = text.GetLength() - replaced;
  x_Adjust(index, shift, false);
  ElemPos& elem = x_Pos(index);
  elem.nTagClose += shift;
  elem.nEndOpen += shift;
  elem.nEndClose += shift;
  return true;
}
