#include "linestyle/SymbolItem.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "linestyle/RecordText.h"
#include "platform/Archive.h"
#include "platform/WideCrt.h"
#include "suite/AppMessages.h"
#include "suite/CoordBaseX.h"

IMPLEMENT_SERIAL(CSymbolItem, CObject, 2)

namespace {

// The record's start fraction as a percentage, truncated toward zero: 0.33333 gives 33
// and 0.29 gives 28 (0.29 × 100 is just below 29). Out-of-range values saturate.
int StartPercent(double fraction) {
  const double percent = std::trunc(fraction * 100.0);
  if (std::isnan(percent)) return 0;
  if (percent <= static_cast<double>(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
  if (percent >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
  return static_cast<int>(percent);
}

// A negative start selects placement at the ends and vertices of the line instead.
int ModeForNegativeStart(int start) {
  if (start >= -100) return 5;
  if (start >= -200) return 6;
  return 7;
}

}  // namespace

CSymbolItem::CSymbolItem() { Init(); }

CSymbolItem::CSymbolItem(double scale, int fill, int penWidth, int interval, int start, const SIZE* points,
                         const char* penDown, int nPoints, int shift, int mode) {
  Init();
  m_dScale = scale > 0.0 ? scale : 1.0;
  m_nFill = fill;
  m_nPenWidth = penWidth;
  m_nInterval = interval;
  m_nStart = start;
  m_nShift = shift;
  m_nMode = mode;
  if (nPoints > 0 && (points == nullptr || penDown == nullptr)) nPoints = 0;
  m_nPoints = std::min(nPoints, kMaxPoints);
  for (int i = 0; i < UsedPoints(); ++i) {
    m_ptPoints[i] = POINT{points[i].cx, points[i].cy};
    m_bPenDown[i] = static_cast<signed char>(penDown[i]);
  }
}

CSymbolItem::CSymbolItem(const CSymbolItem& other) : CObject(other) {
  Init();
  *this = other;
}

CSymbolItem& CSymbolItem::operator=(const CSymbolItem& other) {
  m_dScale = other.m_dScale;
  m_nFill = other.m_nFill;
  m_nPenWidth = other.m_nPenWidth;
  m_nInterval = other.m_nInterval;
  m_nStart = other.m_nStart;
  m_nMode = other.m_nMode;
  m_nPoints = other.m_nPoints;
  m_nShift = other.m_nShift;
  for (int i = 0; i < other.UsedPoints(); ++i) {
    m_ptPoints[i] = other.m_ptPoints[i];
    m_bPenDown[i] = other.m_bPenDown[i];
  }
  return *this;
}

CSymbolItem::~CSymbolItem() = default;

void CSymbolItem::Init() {
  m_dScale = 1.0;
  m_nFill = 0;
  m_nPenWidth = 0;
  m_nInterval = 1000;
  m_nStart = 0;
  m_nMode = 1;
  std::fill(m_ptPoints, m_ptPoints + kMaxPoints, POINT{0, 0});
  m_bPenDown[0] = 0;
  std::fill(m_bPenDown + 1, m_bPenDown + kMaxPoints, static_cast<signed char>(1));
  m_nPoints = 0;
  m_nShift = 0;
}

int CSymbolItem::UsedPoints() const { return std::clamp(m_nPoints, 0, kMaxPoints); }

int CSymbolItem::FromAscii(const WCHAR* text) {
  const WCHAR form = text != nullptr ? text[0] : u'\0';
  const bool hasShift = form == u'A' || form == u'B';
  vantrel1::RecordTokens tokens;
  if (!tokens.Split(hasShift ? text + 1 : text)) return 0;

  const WCHAR* token = tokens.Next();
  if (token == nullptr) return 0;
  m_dScale = _wtof(token);
  for (int* field : {&m_nFill, &m_nPenWidth, &m_nInterval}) {
    if ((token = tokens.Next()) == nullptr) return 0;
    *field = _wtoi(token);
  }
  m_nMode = 0;
  if (m_nInterval < 1) {
    m_nMode = 4;
    m_nInterval = 1000;
  }
  if ((token = tokens.Next()) == nullptr) return 0;
  m_nStart = StartPercent(_wtof(token));
  if (m_nStart < 0) {
    m_nMode = ModeForNegativeStart(m_nStart);
    m_nStart = 0;
  }
  m_nShift = 0;
  if (hasShift) {
    if ((token = tokens.Next()) == nullptr) return 0;
    m_nShift = _wtoi(token);
  }
  if (form == u'B') {
    if ((token = tokens.Next()) == nullptr) return 0;
    m_nMode = _wtoi(token);
  }
  if ((token = tokens.Next()) == nullptr) return 0;
  const int count = _wtoi(token);
  if (count > kMaxPoints) return 0;
  m_nPoints = count;
  for (int i = 0; i < UsedPoints(); ++i) {
    int values[3];
    for (int& value : values) {
      if ((token = tokens.Next()) == nullptr) return 0;
      value = _wtoi(token);
    }
    m_ptPoints[i] = POINT{values[0], values[1]};
    m_bPenDown[i] = static_cast<signed char>(values[2]);
  }
  return 1;
}

WCHAR* CSymbolItem::ToAscii(WCHAR* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return nullptr;
  if (_snwprintf_s(buffer, size, _TRUNCATE, u"B%.12g,%d,%d,%d,%.12g,%d,%d,%d", m_dScale, m_nFill, m_nPenWidth,
                   m_nInterval, m_nStart / 100.0, m_nShift, m_nMode, m_nPoints) < 0) {
    return nullptr;
  }
  vantrel1::RecordWriter writer(buffer, size);
  for (int i = 0; i < UsedPoints(); ++i) {
    if (!writer.AppendNumber(m_ptPoints[i].x) || !writer.AppendNumber(m_ptPoints[i].y) ||
        !writer.AppendNumber(m_bPenDown[i])) {
      return nullptr;
    }
  }
  return buffer;
}

void CSymbolItem::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_dScale << m_nFill << m_nPenWidth << m_nInterval << m_nStart << m_nPoints << m_nShift << m_nMode;
    for (int i = 0; i < UsedPoints(); ++i) {
      ar << m_ptPoints[i].x << m_ptPoints[i].y << static_cast<BYTE>(m_bPenDown[i]);
    }
    return;
  }
  int count = 0;
  ar >> m_dScale >> m_nFill >> m_nPenWidth >> m_nInterval >> m_nStart >> count >> m_nShift >> m_nMode;
  if (count > kMaxPoints) AfxThrowArchiveException(CArchiveException::badIndex, ar.GetFileName().c_str());
  m_nPoints = count;
  for (int i = 0; i < UsedPoints(); ++i) {
    BYTE penDown = 0;
    ar >> m_ptPoints[i].x >> m_ptPoints[i].y >> penDown;
    m_bPenDown[i] = static_cast<signed char>(penDown);
  }
}

// The break in the figure survives: when a move is removed, the point that takes its
// place becomes a move.
void CSymbolItem::RemovePoint(int index) {
  const int count = UsedPoints();
  const bool wasMove = m_bPenDown[index] != 1;
  for (int i = index; i + 1 < count; ++i) {
    m_ptPoints[i] = m_ptPoints[i + 1];
    m_bPenDown[i] = m_bPenDown[i + 1];
  }
  m_nPoints = count - 1;
  if (wasMove && index < m_nPoints) m_bPenDown[index] = 0;
}

int CSymbolItem::DeletePoint(int index) {
  if (m_nPoints < 1) return 0;
  if (index < 0 || index >= UsedPoints()) return m_nPoints;
  RemovePoint(index);
  return m_nPoints;
}

// A move is redundant at the end of the figure (checked again after each removal, so a
// run of trailing moves goes) and when another move follows it.
int CSymbolItem::CleanPoints() {
  if (m_nPoints < 1) return 0;
  for (int i = UsedPoints() - 1; i >= 0; --i) {
    if (i >= m_nPoints || m_bPenDown[i] == 1) continue;
    if (i == m_nPoints - 1 || m_bPenDown[i + 1] != 1) RemovePoint(i);
  }
  return m_nPoints;
}

// At most 19 points can result from this route, one fewer than a record may hold; the
// editors have always stopped there.
int CSymbolItem::SetPolyline(PolylineVector* polyline, int* report, CStdStrW name, CCoordBaseX* coords) {
  if (polyline == nullptr) return 0;
  const int existing = UsedPoints();
  if (polyline->size() >= static_cast<std::size_t>(kMaxPoints - existing)) {
    if (report != nullptr && *report != 0) {
      CStdStrW prefix;
      prefix.Format(u"%s:  ", name);
      AppError(VMSG_FIGURE_TOO_MANY_POINTS, nullptr, prefix);
    }
    return 0;
  }
  POINT converted[kMaxPoints];
  int count = 0;
  for (const PolylinePoint& vertex : *polyline) {
    if (!CCoordBaseX::ToItem(coords, vertex.x, vertex.y, &converted[count])) return 0;
    ++count;
  }
  for (int i = 0; i < count; ++i) {
    m_ptPoints[existing + i] = converted[i];
    m_bPenDown[existing + i] = static_cast<signed char>(i == 0 ? 0 : 1);
  }
  m_nPoints = existing + count;
  return 1;
}

int CSymbolItem::GetPolylines(std::vector<PolylineVector>* out) {
  // Exported figures are in hundredths, in single precision, unlike the tenths of drawing.
  const double k = static_cast<double>(0.01f);
  double penX = 0.0;
  double penY = -m_nShift * k;
  if (out == nullptr || m_nPoints < 1) return 1;
  PolylineVector run;
  bool open = false;
  for (int i = 0; i < UsedPoints(); ++i) {
    if (m_bPenDown[i] == 1) {
      if (!open) run.clear();
      open = true;
      run.AddPoint(penX, penY, 0.0);
    } else if (open) {
      run.AddPoint(penX, penY, 0.0);
      out->push_back(run);
      open = false;
    }
    penX = m_ptPoints[i].x * m_dScale * k;
    penY = m_ptPoints[i].y * m_dScale * k - m_nShift * k;
  }
  if (open) {
    run.AddPoint(penX, penY, 0.0);
    out->push_back(run);
  }
  return 1;
}
