#include "linestyle/LineItem.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

#include "linestyle/RecordText.h"
#include "platform/Archive.h"
#include "platform/WideCrt.h"

IMPLEMENT_SERIAL(CLineItem, CObject, 2)

namespace {

// Sums and merged lengths wrap around in 32 bits, as the records' writers computed them.
int WrapAdd(int a, int b) {
  return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace

CLineItem::CLineItem() { Init(); }

CLineItem::CLineItem(int width, int offset, const int* dashes, const int* gaps, int count) {
  Init();
  m_nWidth = width;
  m_nOffset = offset;
  if (dashes != nullptr) std::copy(dashes, dashes + kMaxPairs, m_nDash);
  if (gaps != nullptr) std::copy(gaps, gaps + kMaxPairs, m_nGap);
  m_nCount = count;
}

CLineItem::CLineItem(const CLineItem& other) : CObject(other) { *this = other; }

CLineItem& CLineItem::operator=(const CLineItem& other) {
  m_nWidth = other.m_nWidth;
  m_nOffset = other.m_nOffset;
  std::copy(other.m_nDash, other.m_nDash + kMaxPairs, m_nDash);
  std::copy(other.m_nGap, other.m_nGap + kMaxPairs, m_nGap);
  m_nCount = other.m_nCount;
  return *this;
}

CLineItem::~CLineItem() = default;

void CLineItem::Init() {
  m_nWidth = 0;
  m_nOffset = 0;
  std::fill(m_nDash, m_nDash + kMaxPairs, 0);
  std::fill(m_nGap, m_nGap + kMaxPairs, 0);
  m_nCount = 0;
}

int CLineItem::UsedPairs() const { return std::clamp(m_nCount, 0, kMaxPairs); }

int CLineItem::IsEmpty() const {
  if (m_nCount < 1) return 0;
  int sum = 0;
  for (int i = 0; i < UsedPairs(); ++i) sum = WrapAdd(sum, m_nDash[i]);
  return sum == 0 ? 1 : 0;
}

int CLineItem::FromAscii(const WCHAR* text) {
  vantrel1::RecordTokens tokens;
  if (!tokens.Split(text)) return 0;

  const WCHAR* token = tokens.Next();
  if (token == nullptr) return 0;
  m_nWidth = _wtoi(token);
  if ((token = tokens.Next()) == nullptr) return 0;
  m_nOffset = _wtoi(token);
  // Older records carry the count in the fourth or fifth field (0,1,1 or 0,3,3); the
  // largest of the three is the count.
  int count = 0;
  for (int field = 0; field < 3; ++field) {
    if ((token = tokens.Next()) == nullptr) return 0;
    const int value = _wtoi(token);
    count = field == 0 ? value : std::max(count, value);
    if (count > kMaxPairs) return 0;
    m_nCount = count;
  }

  bool zeroInUse = false;
  for (int* lengths : {m_nDash, m_nGap}) {
    for (int i = 0; i < kMaxPairs; ++i) {
      if ((token = tokens.Next()) == nullptr) return 0;
      lengths[i] = _wtoi(token);
      if (i < m_nCount && lengths[i] == 0) zeroInUse = true;
    }
  }
  if (zeroInUse && m_nCount > 0) NormalisePattern();
  return 1;
}

// A pair with a zero dash or gap is not a pattern element of its own: the pair after it
// is folded into it. Each merged pair is left as it is (not examined again), the folded
// pair does not count towards the sums, the last pair is never merged, and entries
// vacated beyond the new count keep their values. Files written by the suite rely on
// exactly this reading.
void CLineItem::NormalisePattern() {
  int sumDash = 0;
  int sumGap = 0;
  for (int i = 0; i < m_nCount; ++i) {
    sumDash = WrapAdd(sumDash, m_nDash[i]);
    sumGap = WrapAdd(sumGap, m_nGap[i]);
    if (i + 1 >= m_nCount) continue;
    const bool zero = m_nDash[i] == 0 || m_nGap[i] == 0 || m_nDash[i + 1] == 0 || m_nGap[i + 1] == 0;
    if (!zero) continue;
    m_nDash[i] = WrapAdd(m_nDash[i], m_nDash[i + 1]);
    m_nGap[i] = WrapAdd(m_nGap[i], m_nGap[i + 1]);
    for (int j = i + 1; j + 1 < m_nCount; ++j) {
      m_nDash[j] = m_nDash[j + 1];
      m_nGap[j] = m_nGap[j + 1];
    }
    --m_nCount;
  }
  // Dashes without gaps are a continuous stroke.
  if (sumDash != 0 && sumGap == 0) m_nCount = 0;
}

WCHAR* CLineItem::ToAscii(WCHAR* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return nullptr;
  if (_snwprintf_s(buffer, size, _TRUNCATE, u"%d,%d,%d,%d,%d", m_nWidth, m_nOffset, m_nCount, 0, 0) < 0) {
    return nullptr;
  }
  vantrel1::RecordWriter writer(buffer, size);
  for (const int* lengths : {m_nDash, m_nGap}) {
    for (int i = 0; i < kMaxPairs; ++i) {
      if (!writer.AppendNumber(lengths[i])) return nullptr;
    }
  }
  return buffer;
}

void CLineItem::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_nWidth << m_nOffset << m_nCount;
    for (int i = 0; i < kMaxPairs; ++i) ar << m_nDash[i] << m_nGap[i];
    return;
  }
  int count = 0;
  ar >> m_nWidth >> m_nOffset >> count;
  if (count > kMaxPairs) AfxThrowArchiveException(CArchiveException::badIndex, ar.GetFileName().c_str());
  m_nCount = count;
  for (int i = 0; i < kMaxPairs; ++i) ar >> m_nDash[i] >> m_nGap[i];
}
