// The cursor over the element index and everything that reads the document through it.
#include <stdexcept>
#include <string_view>

#include "markup/Markup.h"
#include "markup/MarkupLookup.h"
#include "markup/MarkupText.h"
#include "platform/WideCrt.h"

using vantrel1::markup::EndsTagName;
using vantrel1::markup::Length;
using vantrel1::markup::NameEnd;
using vantrel1::markup::NameRunMatches;
using vantrel1::markup::ScanToken;
using vantrel1::markup::SkipSpace;
using vantrel1::markup::StartsName;
using vantrel1::markup::TokenMatches;

namespace {

struct Entity {
  const WCHAR* name;  // after the '&', with its ';'
  int length;
  WCHAR character;
};

// Tried in this order when unescaping.
constexpr Entity kEntities[] = {
    {u"lt;", 3, u'<'},    {u"amp;", 4, u'&'},   {u"gt;", 3, u'>'},
    {u"apos;", 5, u'\''}, {u"quot;", 5, u'"'},
};

// The number of tag names a search name matches; a name that matches many is searched by
// walking, as hashing every one of its beginnings could cost more.
constexpr int kMaxLookupCandidates = 4;

int LookupCandidates(const WCHAR* name, int nameLength) {
  int count = 1;
  for (int i = 1; i < nameLength; ++i) count += EndsTagName(name[i]) ? 1 : 0;
  return count;
}

bool NameEquals(const WCHAR* text, int length, const WCHAR* name) {
  for (int i = 0; i < length; ++i)
    if (text[i] != name[i]) return false;
  return name[length] == 0;
}

}  // namespace

void CMarkup::x_SetPos(int parent, int main, int child) {
  m_nParentIndex = parent;
  m_nMainIndex = main;
  m_nChildIndex = child;
  m_nCurrentKind = main ? 1 : 0;
}

void CMarkup::ResetMainPos() {
  m_nMainIndex = 0;
  m_nCurrentKind = 0;
}

void CMarkup::ResetChildPos() {
  m_nChildIndex = 0;
  m_nCurrentKind = m_nMainIndex ? 1 : 0;
}

bool CMarkup::FindElem(const WCHAR* name) {
  if (m_nFreeIndex <= 1) return false;
  const int found = x_FindElem(m_nParentIndex, m_nMainIndex, name);
  if (!found) return false;
  x_SetPos(x_Pos(found).nParent, found, 0);
  return true;
}

bool CMarkup::FindChildElem(const WCHAR* name) {
  if (!m_nMainIndex) FindElem(nullptr);
  if (!m_nMainIndex) return false;
  const int found = x_FindElem(m_nMainIndex, m_nChildIndex, name);
  if (!found) return false;
  x_SetPos(x_Pos(m_nMainIndex).nParent, m_nMainIndex, found);
  return true;
}

bool CMarkup::IntoElem() {
  if (!m_nMainIndex || m_nCurrentKind != 1) return false;
  x_SetPos(m_nMainIndex, m_nChildIndex, 0);
  return true;
}

bool CMarkup::OutOfElem() {
  if (!m_nParentIndex) return false;
  x_SetPos(x_Pos(m_nParentIndex).nParent, m_nParentIndex, m_nMainIndex);
  return true;
}

int CMarkup::x_FindElem(int parent, int after, const WCHAR* name) {
  int index = after ? x_Pos(after).nNextSibling : x_Pos(parent).nFirstChild;
  if (!name || !*name) return index;
  const int nameLength = Length(name);
  const auto lookupFits = [&] { return LookupCandidates(name, nameLength) <= kMaxLookupCandidates; };
  if (!after && m_pLookup && m_pLookup->Find(parent) && lookupFits())
    return x_LookUpChild(parent, name, nameLength);
  const WCHAR* const doc = m_sDocument.c_str();
  TokenPos token(doc);
  int walked = 0;
  for (; index; index = x_Pos(index).nNextSibling, ++walked) {
    const int start = x_Pos(index).nTagOpen + 1;
    if (StartsName(doc[start])) {
      if (NameRunMatches(doc + start, name, nameLength)) break;
      continue;
    }
    token.nScan = start;
    ScanToken(token);
    if (x_TagMatches(token, name, nameLength)) break;
  }
  if (!after && walked >= NameLookup::kWalkBeforeRecording && lookupFits()) {
    if (!m_pLookup) m_pLookup = std::make_unique<NameLookup>();
    m_pLookup->Start(parent, x_Pos(parent).nFirstChild);
  }
  return index;
}

// The name of the tag of `index` as the token scanner reads it.
std::u16string_view CMarkup::x_TagToken(int index) const {
  const WCHAR* const doc = m_sDocument.c_str();
  const int start = x_Pos(index).nTagOpen + 1;
  if (StartsName(doc[start]))
    return std::u16string_view(doc + start, static_cast<std::size_t>(NameEnd(doc, start) - start));
  TokenPos token(doc);
  token.nScan = start;
  ScanToken(token);
  return std::u16string_view(doc + token.nFirst, static_cast<std::size_t>(token.nLast - token.nFirst + 1));
}

// The first child of `parent` whose tag is `name`, from the recorded children of
// `parent`, recording more of them while it has to walk on.
int CMarkup::x_LookUpChild(int parent, const WCHAR* name, int nameLength) {
  NameLookup::Children& children = *m_pLookup->Find(parent);
  // The tags that match: the whole name, or the part of it before a space, '=', '/' or '['.
  const std::u16string_view whole(name, static_cast<std::size_t>(nameLength));
  int found = 0;
  int foundAt = 0;
  for (int length = 1; length <= nameLength; ++length) {
    if (length < nameLength && !EndsTagName(name[length])) continue;
    const auto hit = children.first.find(whole.substr(0, static_cast<std::size_t>(length)));
    if (hit != children.first.end() && (!found || hit->second.second < foundAt)) {
      found = hit->second.first;
      foundAt = hit->second.second;
    }
  }
  if (found) return found;
  while (children.next) {
    const int index = children.next;
    const std::u16string_view tag = x_TagToken(index);
    children.first.try_emplace(tag, index, children.count++);
    children.next = x_Pos(index).nNextSibling;
    if (TokenMatches(tag, name, nameLength)) return index;
  }
  return 0;
}

CStdStrW CMarkup::x_GetTagName(int index) const {
  if (!index) return CStdStrW();
  TokenPos token(m_sDocument.c_str());
  token.nScan = x_Pos(index).nTagOpen + 1;
  ScanToken(token);
  return x_GetToken(token);
}

bool CMarkup::x_FindAttrib(TokenPos& token, const WCHAR* name) const {
  int named = 0;  // token number of the last attribute name that matched
  for (int count = 1; ScanToken(token); ++count) {
    if (token.bQuoted) {
      if (named && count == named + 2) return true;
      continue;
    }
    const WCHAR* text = token.pText + token.nFirst;
    if (*text == u'>' || *text == u'?' || *text == u'/') return false;
    if (count > 1 && *text != u'=' &&
        (!name || NameEquals(text, token.nLast - token.nFirst + 1, name)))
      named = count;
  }
  return false;
}

// An attribute of `index` whose value, closing quote included, lies inside the start tag.
// A quoted value that runs past the tag's '>' is not the element's attribute.
bool CMarkup::x_FindAttribOf(int index, TokenPos& token, const WCHAR* name) const {
  const ElemPos& elem = x_Pos(index);
  token.nScan = elem.nTagOpen + 1;
  return x_FindAttrib(token, name) && token.nLast + 1 < elem.nTagClose;
}

CStdStrW CMarkup::x_GetAttrib(int index, const WCHAR* name) const {
  if (!index || !name) return CStdStrW();
  TokenPos token(m_sDocument.c_str());
  if (!x_FindAttribOf(index, token, name)) return CStdStrW();
  return x_TextFromDoc(token.nFirst, token.nLast);
}

bool CMarkup::x_GetCData(const ElemPos& elem, CStdStrW& data) const {
  static constexpr WCHAR kOpen[] = u"<![CDATA[";
  const WCHAR* doc = m_sDocument.c_str();
  int pos = elem.nTagClose + 1;
  SkipSpace(doc, pos);
  if (pos + 11 >= elem.nEndOpen) return false;
  for (int i = 0; i < 9; ++i)
    if (doc[pos + i] != kOpen[i]) return false;
  for (int close = pos + 9; close + 2 < elem.nEndOpen; ++close) {
    if (doc[close] == u']' && doc[close + 1] == u']' && doc[close + 2] == u'>') {
      data.assign(doc + pos + 9, static_cast<std::size_t>(close - pos - 9));
      return true;
    }
  }
  return false;
}

CStdStrW CMarkup::x_GetData(int index) const {
  if (!index) return CStdStrW();
  const ElemPos& elem = x_Pos(index);
  if (elem.nFirstChild || x_IsEmptyElem(index)) return CStdStrW();
  CStdStrW data;
  if (x_GetCData(elem, data)) return data;
  return x_TextFromDoc(elem.nTagClose + 1, elem.nEndOpen - 1);
}

CStdStrW CMarkup::x_TextFromDoc(int left, int right) const {
  CStdStrW text;
  if (right < left) return text;
  if (left < 0 || right >= m_sDocument.GetLength())
    throw std::invalid_argument("CMarkup text range out of the document");
  const WCHAR* doc = m_sDocument.c_str();
  const std::u16string_view whole(doc + left, static_cast<std::size_t>(right - left + 1));
  const std::size_t ampersand = whole.find(u'&');
  if (ampersand == std::u16string_view::npos) {
    text.assign(whole);
    return text;
  }
  text.reserve(whole.size());
  text.assign(whole.substr(0, ampersand));
  for (int pos = left + static_cast<int>(ampersand); pos <= right; ++pos) {
    WCHAR c = doc[pos];
    if (c == u'&') {
      for (const Entity& entity : kEntities) {
        if (pos + entity.length <= right &&
            std::char_traits<WCHAR>::compare(doc + pos + 1, entity.name,
                                             static_cast<std::size_t>(entity.length)) == 0) {
          c = entity.character;
          pos += entity.length;
          break;
        }
      }
    }
    text.push_back(c);
  }
  return text;
}

bool CMarkup::x_FindData(const CStdStrW& name, CStdStrW& data) {
  // Always from the first child, so fields may be read in any order.
  ResetChildPos();
  if (!FindChildElem(name.c_str())) return false;
  IntoElem();
  data = x_GetData(m_nMainIndex);
  OutOfElem();
  return true;
}

int CMarkup::GetDataInt(const CStdStrW& name, int def) {
  CStdStrW data;
  return x_FindData(name, data) ? _wtoi(data.c_str()) : def;
}

double CMarkup::GetDataDouble(const CStdStrW& name, double def) {
  CStdStrW data;
  return x_FindData(name, data) ? _wtof(data.c_str()) : def;
}

WCHAR CMarkup::GetDataChar(const CStdStrW& name, WCHAR def) {
  CStdStrW data;
  if (!x_FindData(name, data)) return def;
  // A zero character is written as the letter c.
  if (data.empty() || data[0] == u'c') return 0;
  return data[0];
}

CStdStrW CMarkup::GetDataStr(const CStdStrW& name, const CStdStrW& def) {
  CStdStrW data;
  if (!x_FindData(name, data)) return def;
  return data;
}
