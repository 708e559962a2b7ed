#include "platform/Gdi.h"
#include "suite/OldStyleSymbol.h"
#include "symbols/Symbol.h"

void CSymbol::Draw(HDC hdc, HDC hdcText, double x, double y, RECT* clip, double angle) {
  const double turn = m_bRotatable ? angle : 0.0;
  for (int i = 0; i < UsedSymbols(); ++i) m_pSymbolItems[i].Draw(hdc, m_crColor, x, y, clip, m_dScale, turn);
  if (UsedTexts() > 0) {
    const COLORREF previous = SetTextColor(hdc, m_crColor);
    for (int i = 0; i < UsedTexts(); ++i)
      m_pTextItems[i].Draw(hdc, hdcText, x, y, GetFont(), clip, m_dScale, turn);
    SetTextColor(hdc, previous);
  }
  if (IsOldSymbol()) DrawSymbol(hdc, x, y, m_nIndex, m_hPen, m_dScale, clip, turn, &m_crColor);
}
