// The document object, the scanner and the parser that builds the element index.
#include "markup/Markup.h"

#include <stdexcept>

#include "markup/MarkupLookup.h"
#include "markup/MarkupText.h"

using vantrel1::markup::FindChar;
using vantrel1::markup::FindCharOrEnd;
using vantrel1::markup::IsDelimiter;
using vantrel1::markup::NameEnd;
using vantrel1::markup::StartsName;
using vantrel1::markup::TokenMatches;
using vantrel1::markup::FindText;
using vantrel1::markup::kMaxDocLength;
using vantrel1::markup::ScanToken;
using vantrel1::markup::SkipSpace;

namespace {

constexpr const WCHAR* kElementTagNotFound = u"Element tag not found";
constexpr const WCHAR* kAbruptEnd = u"Abrupt end within tag";
constexpr const WCHAR* kTagStartsWithQuote = u"Tag starts with quote";
constexpr const WCHAR* kInvalidNode = u"Invalid node";
constexpr const WCHAR* kEndOfTagNotFound = u"End of tag not found";
constexpr const WCHAR* kEndTagNotFound = u"End tag of %s element not found";
constexpr const WCHAR* kExpectingEndTag = u"Expecting end tag of element %s";
constexpr const WCHAR* kEndTagMismatch = u"End tag does not correspond to %s";
constexpr const WCHAR* kEndTagNotCompleted = u"End tag not completed for element %s";

enum NodeKind {
  kNodeNone = 0,
  kNodeElement = 1,
  kNodeText = 2,
  kNodeWhitespace = 4,
  kNodeCData = 8,
  kNodeProcessing = 16,
  kNodeComment = 32,
  kNodeDocType = 64,
};

}  // namespace

CMarkup::CMarkup() { SetDoc(nullptr); }

CMarkup::CMarkup(const WCHAR* doc) { SetDoc(doc); }

CMarkup::CMarkup(const CMarkup& other)
    : m_sDocument(other.m_sDocument),
      m_aIndex(other.m_aIndex),
      m_nParentIndex(other.m_nParentIndex),
      m_nMainIndex(other.m_nMainIndex),
      m_nChildIndex(other.m_nChildIndex),
      m_nFreeIndex(other.m_nFreeIndex),
      m_nCurrentKind(other.m_nCurrentKind),
      m_nEncoding(other.m_nEncoding) {}

CMarkup::~CMarkup() = default;

void CMarkup::operator=(const CMarkup& other) {
  if (this == &other) throw std::invalid_argument("CMarkup assigned to itself");
  x_ForgetLookup();
  m_aIndex = other.m_aIndex;
  m_nParentIndex = other.m_nParentIndex;
  m_nMainIndex = other.m_nMainIndex;
  m_nChildIndex = other.m_nChildIndex;
  m_nFreeIndex = other.m_nFreeIndex;
  m_nCurrentKind = other.m_nCurrentKind;
  m_sDocument = other.m_sDocument;
  m_nEncoding = other.m_nEncoding;
}

bool CMarkup::SetDoc(const WCHAR* doc) {
  if (doc)
    m_sDocument.assign(doc);
  else
    m_sDocument.clear();
  return x_ParseDoc();
}

bool CMarkup::SetDoc(const CStdStrW& doc) {
  m_sDocument = doc;
  return x_ParseDoc();
}

bool CMarkup::SetDoc(CStdStrW&& doc) {
  m_sDocument = std::move(doc);
  return x_ParseDoc();
}

bool CMarkup::IsWellFormed() const {
  return m_nFreeIndex > 1 && !m_aIndex.empty() && m_aIndex[0].nFirstChild != 0;
}

void CMarkup::x_ForgetLookup() {
  if (m_pLookup) m_pLookup->Forget();
}

bool CMarkup::x_ParseDoc() {
  x_ForgetLookup();
  m_nFreeIndex = 1;
  x_SetPos(0, 0, 0);
  const std::size_t length = m_sDocument.size();
  // One entry per 64 characters is plenty for ordinary documents; the index grows by half
  // whenever a denser one runs out. Positions are ints: a longer text is not parsed.
  const std::size_t wanted = (length <= kMaxDocLength ? length : 0) / 64 + 8;
  if (m_aIndex.size() < wanted) m_aIndex.resize(wanted);
  m_aIndex[0] = ElemPos{};
  if (length > 0 && length <= kMaxDocLength) {
    const int root = x_ParseElem(0);
    if (root > 0) {
      m_aIndex[0].nFirstChild = root;
      x_SetPos(0, 0, 0);
      return true;
    }
  }
  m_aIndex[0] = ElemPos{};
  m_nFreeIndex = 1;
  x_SetPos(0, 0, 0);
  return false;
}

void CMarkup::x_ThrowBadIndex() {
  throw std::invalid_argument("CMarkup element index out of range");
}

bool CMarkup::x_IsEmptyElem(int index) const {
  const ElemPos& elem = x_Pos(index);
  return index != 0 && elem.nTagClose == elem.nEndOpen + 1;
}

bool CMarkup::x_FindChar(const WCHAR* doc, int& pos, WCHAR c) {
  return FindChar(doc, pos, c);
}

bool CMarkup::x_FindAny(const WCHAR* doc, int& pos) { return SkipSpace(doc, pos); }

bool CMarkup::x_FindToken(TokenPos& token) { return ScanToken(token); }

CStdStrW CMarkup::x_GetToken(const TokenPos& token) const {
  if (token.nLast < token.nFirst) return CStdStrW();
  return CStdStrW(token.pText + token.nFirst,
                  static_cast<std::size_t>(token.nLast - token.nFirst + 1));
}

int CMarkup::x_GetFreePos() {
  const std::size_t size = m_aIndex.size();
  if (static_cast<std::size_t>(m_nFreeIndex) >= size)
    m_aIndex.resize(size + (size / 2 > 0 ? size / 2 : 1));
  return m_nFreeIndex++;
}

int CMarkup::x_ReleasePos() {
  --m_nFreeIndex;
  return 0;
}

int CMarkup::x_ParseError(const WCHAR* format, const WCHAR* arg) {
  CStdStrW message(format);
  if (arg) {
    const std::size_t at = message.find(u"%s");
    if (at != CStdStrW::npos) message.replace(at, 2, arg);
  }
  m_sLastError = message;
  --m_nFreeIndex;
  return -1;
}

int CMarkup::x_ParseNode(TokenPos& token) {
  const WCHAR* doc = token.pText;
  int pos = token.nScan;
  token.nFirst = pos;
  if (doc[pos] != u'<') {
    if (!doc[pos]) return kNodeNone;
    SkipSpace(doc, pos);
    if (!doc[pos] || doc[pos] == u'<') {
      token.nScan = pos;
      return kNodeWhitespace;
    }
    FindChar(doc, pos, u'<');
    token.nScan = pos;
    return kNodeText;
  }
  const WCHAR c1 = doc[pos + 1];
  if (!c1 || !doc[pos + 2]) return kNodeNone;
  const WCHAR c2 = doc[pos + 2];
  int end = pos;
  if (c1 == u'?') {
    // A search from the '<' itself would take "<?>" for a whole instruction.
    end = pos + 2;
    if (!FindText(doc, end, u"?>")) return kNodeNone;
    token.nScan = end + 2;
    return kNodeProcessing;
  }
  if (c1 == u'!' && (c2 == u'-' || c2 == u'[')) {
    // Searching from the third character keeps "<!-->" from closing itself.
    end = pos + 3;
    if (!FindText(doc, end, c2 == u'-' ? u"-->" : u"]]>")) return kNodeNone;
    token.nScan = end + 3;
    return c2 == u'-' ? kNodeComment : kNodeCData;
  }
  if (c1 == u'!') {
    TokenPos scan(doc);
    scan.nScan = pos + 2;
    int depth = 0;
    while (ScanToken(scan)) {
      if (scan.bQuoted) continue;
      const WCHAR c = doc[scan.nFirst];
      if (c == u'[') {
        ++depth;
      } else if (c == u']') {
        --depth;
      } else if (c == u'>' && depth == 0) {
        token.nScan = scan.nScan;
        return kNodeDocType;
      }
    }
    return kNodeNone;
  }
  return c1 == u'/' ? kNodeNone : kNodeElement;
}

bool CMarkup::x_SkipNode(TokenPos& token) {
  // "< ?" scans as an element; refusing it keeps the start tag search moving forward.
  const int kind = x_ParseNode(token);
  return kind != kNodeNone && kind != kNodeElement;
}

bool CMarkup::x_TagMatches(const TokenPos& token, const WCHAR* name, int nameLength) const {
  const int length = token.nLast - token.nFirst + 1;
  if (length < 0) return false;
  return TokenMatches(std::u16string_view(token.pText + token.nFirst, static_cast<std::size_t>(length)),
                      name, nameLength);
}

// Steps over anything that is not a start tag (instructions, comments, CDATA, document
// type declarations, text) and records the element whose start tag comes next. Returns
// its index, 0 when the parent's end tag comes first, or -1 on error.
int CMarkup::x_ParseStartTag(int parentIndex) {
  const WCHAR* doc = m_sDocument.c_str();
  const int index = x_GetFreePos();
  ElemPos& elem = m_aIndex[static_cast<std::size_t>(index)];
  elem = ElemPos{};
  elem.nParent = parentIndex;
  elem.nTagOpen = x_Pos(parentIndex).nEndOpen;
  TokenPos token(doc);
  for (;;) {
    int pos = elem.nTagOpen;
    if (!FindChar(doc, pos, u'<')) {
      // Inside an element the parent reports its own missing end tag.
      if (parentIndex != 0) return x_ReleasePos();
      return x_ParseError(kElementTagNotFound, nullptr);
    }
    elem.nTagOpen = pos;
    x_Pos(parentIndex).nEndOpen = pos;
    token.nScan = pos + 1;
    if (!ScanToken(token)) return x_ParseError(kAbruptEnd, nullptr);
    if (token.bQuoted) return x_ParseError(kTagStartsWithQuote, nullptr);
    const WCHAR c = doc[token.nFirst];
    if (c == u'?' || c == u'!') {
      token.nScan = pos;
      if (!x_SkipNode(token)) return x_ParseError(kInvalidNode, nullptr);
      elem.nTagOpen = token.nScan;
      continue;
    }
    if (c == u'/') return x_ReleasePos();
    pos = token.nScan;
    if (!FindChar(doc, pos, u'>')) return x_ParseError(kEndOfTagNotFound, nullptr);
    elem.nTagClose = pos;
    if (doc[pos - 1] == u'/') {
      elem.nEndOpen = pos - 1;
      elem.nEndClose = pos;
    } else {
      elem.nEndOpen = pos + 1;
    }
    return index;
  }
}

// Reads the end tag of `index`, which starts at or after its scan cursor.
int CMarkup::x_ParseEndTag(int index) {
  const WCHAR* doc = m_sDocument.c_str();
  ElemPos& elem = x_Pos(index);
  TokenPos name(doc);
  name.nScan = elem.nTagOpen + 1;
  ScanToken(name);
  const auto fail = [&](const WCHAR* format) {
    return x_ParseError(format, x_GetToken(name).c_str());
  };
  int pos = elem.nEndOpen;
  if (!FindChar(doc, pos, u'<')) return fail(kEndTagNotFound);
  elem.nEndOpen = pos;
  TokenPos token(doc);
  token.nScan = pos + 1;
  for (int count = 1; ScanToken(token); ++count) {
    if (token.bQuoted) continue;
    const WCHAR c = doc[token.nFirst];
    if (count == 1) {
      if (c != u'/') return fail(kExpectingEndTag);
    } else if (count == 2) {
      if (!x_TagMatches(token, doc + name.nFirst, name.nLast - name.nFirst + 1))
        return fail(kEndTagMismatch);
    } else if (c == u'>') {
      elem.nEndClose = token.nFirst;
      return index;
    }
  }
  return fail(kEndTagNotCompleted);
}

namespace {

// The common form of an end tag: "</" at `open`, then exactly the name that starts at
// `name` in its start tag, then '>'. Returns the position of that '>', or 0 when the end
// tag has any other form and needs the full token-by-token reading.
int PlainEndTag(const WCHAR* doc, int name, int open) {
  const WCHAR* const expected = doc + name;
  const WCHAR* const text = doc + open + 2;
  if (!StartsName(*expected)) return 0;
  int i = 0;
  for (; expected[i] && !IsDelimiter(expected[i]); ++i)
    if (text[i] != expected[i]) return 0;
  return text[i] == u'>' ? open + 2 + i : 0;
}

enum class Step { kGeneral, kChild, kEndTag };

// Links a new child after `previous` (or first under `current`) and moves the walk: into
// the child, or past it when it is empty.
template <class Elem>
void Enter(Elem* index, int child, int& current, int& previous) {
  Elem& elem = index[child];
  Elem& up = index[current];
  elem.nParent = current;
  int& link = previous ? index[previous].nNextSibling : up.nFirstChild;
  elem.nNextSibling = link;
  link = child;
  if (elem.nTagClose == elem.nEndOpen + 1) {
    up.nEndOpen = elem.nEndClose + 1;
    previous = child;
  } else {
    current = child;
    previous = 0;
  }
}

// Reads the next tag inside `current` when it is a plain one: "<name ...>" or "<name/>"
// (a child, entered as the general reader would) or "</name>" (the end tag of `current`).
// Anything else (instructions, comments, spaces or quotes where a name should be,
// malformed input) is left to the general reader, which gives the same result for plain
// tags too. The index has room for one more entry.
template <class Elem>
Step PlainTag(const WCHAR* doc, int length, Elem* index, int& freeIndex, int& current, int& previous) {
  Elem& up = index[current];
  const int open = FindCharOrEnd(doc, up.nEndOpen, length, u'<');
  const WCHAR next = doc[open] ? doc[open + 1] : 0;
  if (next == u'/') {
    const int close = PlainEndTag(doc, up.nTagOpen + 1, open);
    if (!close) return Step::kGeneral;
    up.nEndOpen = open;
    up.nEndClose = close;
    return Step::kEndTag;
  }
  if (!StartsName(next)) return Step::kGeneral;
  const int close = FindCharOrEnd(doc, NameEnd(doc, open + 1), length, u'>');
  if (!doc[close]) return Step::kGeneral;
  const int child = freeIndex++;
  Elem& elem = index[child];
  elem = Elem{};
  elem.nTagOpen = open;
  elem.nTagClose = close;
  if (doc[close - 1] == u'/') {
    elem.nEndOpen = close - 1;
    elem.nEndClose = close;
  } else {
    elem.nEndOpen = close + 1;
  }
  up.nEndOpen = open;
  Enter(index, child, current, previous);
  return Step::kChild;
}

}  // namespace

// Parses one element with all its descendants. The walk keeps its place in the index
// itself (each open element's scan cursor and parent link) rather than on the call stack,
// so nesting depth is limited by memory only.
int CMarkup::x_ParseElem(int parentIndex) {
  const int top = x_ParseStartTag(parentIndex);
  if (top <= 0 || x_IsEmptyElem(top)) return top;
  const WCHAR* const doc = m_sDocument.c_str();
  const int length = static_cast<int>(m_sDocument.size());
  int current = top;
  int previous = 0;
  for (;;) {
    // The general reader takes an entry for every tag, an end tag too, and gives it back;
    // growing here first keeps the index exactly the size the general reader makes it.
    if (static_cast<std::size_t>(m_nFreeIndex) >= m_aIndex.size()) {
      x_GetFreePos();
      x_ReleasePos();
    }
    Step step = PlainTag(doc, length, m_aIndex.data(), m_nFreeIndex, current, previous);
    if (step == Step::kGeneral) {
      const int child = x_ParseStartTag(current);
      if (child < 0) return -1;
      if (child > 0) {
        Enter(m_aIndex.data(), child, current, previous);
        step = Step::kChild;
      } else if (x_ParseEndTag(current) < 0) {
        return -1;
      }
    }
    if (step == Step::kChild) continue;
    if (current == top) return top;
    previous = current;
    current = x_Pos(current).nParent;
    x_Pos(current).nEndOpen = x_Pos(previous).nEndClose + 1;
  }
}

void CMarkup::x_Link(int index, int parent, int previous) {
  ElemPos& elem = x_Pos(index);
  elem.nParent = parent;
  if (previous) {
    ElemPos& before = x_Pos(previous);
    elem.nNextSibling = before.nNextSibling;
    before.nNextSibling = index;
  } else {
    ElemPos& up = x_Pos(parent);
    elem.nNextSibling = up.nFirstChild;
    up.nFirstChild = index;
  }
}
