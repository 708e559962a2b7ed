#include "linestyle/TextItem.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "linestyle/RecordText.h"
#include "platform/Archive.h"
#include "platform/WideCrt.h"
#include "platform/WideFormat.h"

IMPLEMENT_SERIAL(CTextItem, CObject, 2)

CTextItem::CTextItem() {
  Init();
  lstrcpynW(m_szText, u"*", kTextSize);
}

CTextItem::CTextItem(double scale, int angle, int bkMode, int interval, double start, int offset,
                     const WCHAR* text) {
  Init();
  m_dScale = scale;
  m_nAngle = angle;
  m_nBkMode = bkMode;
  m_nInterval = interval;
  m_dStart = start;
  m_nOffset = offset;
  lstrcpynW(m_szText, text != nullptr ? text : u"", kTextSize);
}

CTextItem::CTextItem(const CTextItem& other) : CObject(other) {
  Init();
  *this = other;
}

CTextItem& CTextItem::operator=(const CTextItem& other) {
  if (this == &other) return *this;
  m_dScale = other.m_dScale;
  m_nAngle = other.m_nAngle;
  m_nBkMode = other.m_nBkMode;
  m_nInterval = other.m_nInterval;
  m_dStart = other.m_dStart;
  m_nOffset = other.m_nOffset;
  lstrcpynW(m_szText, other.m_szText, kTextSize);
  return *this;
}

CTextItem::~CTextItem() = default;

void CTextItem::Init() {
  m_dScale = 1.0;
  m_nAngle = 0;
  m_nBkMode = 1;
  m_nInterval = 1000;
  m_dStart = 0.5;
  m_nOffset = 0;
  std::fill(m_szText, m_szText + kTextSize, u'\0');
}

int CTextItem::FromAscii(const WCHAR* text) {
  vantrel1::RecordTokens tokens;
  if (!tokens.Split(text)) return 0;
  const WCHAR* token = nullptr;
  if ((token = tokens.Next()) == nullptr) return 0;
  m_dScale = _wtof(token);
  for (int* field : {&m_nAngle, &m_nBkMode, &m_nInterval}) {
    if ((token = tokens.Next()) == nullptr) return 0;
    *field = _wtoi(token);
  }
  if ((token = tokens.Next()) == nullptr) return 0;
  m_dStart = _wtof(token);
  if ((token = tokens.Next()) == nullptr) return 0;
  m_nOffset = _wtoi(token);
  // A record may end after the offset: the item then has no text (and draws nothing).
  token = tokens.Next();
  lstrcpynW(m_szText, token != nullptr ? token : u"", kTextSize);
  return 1;
}

WCHAR* CTextItem::ToAscii(WCHAR* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return nullptr;
  if (_snwprintf_s(buffer, size, _TRUNCATE, u"%.12g,%d,%d,%d,%.12g,%d,%s", m_dScale, m_nAngle, m_nBkMode,
                   m_nInterval, m_dStart, m_nOffset, m_szText) < 0) {
    return nullptr;
  }
  return buffer;
}

void CTextItem::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_dScale << m_nAngle << m_nBkMode << m_nInterval << m_dStart << m_nOffset;
    ar << std::u16string_view(m_szText, vantrel1::ArrayTextLength(m_szText));
    return;
  }
  ar >> m_dScale >> m_nAngle >> m_nBkMode >> m_nInterval >> m_dStart >> m_nOffset;
  std::u16string text;
  ar >> text;
  text.resize(kTextSize);
  lstrcpynW(m_szText, text.c_str(), kTextSize);
}
