#pragma once
// CLineType: one named line style: a colour, a pen width, an optional pen handle (owned
// by whoever gave it), an optional font, a description and three growable arrays of
// items. Drawing strokes a plain line when there are no items; otherwise every line item,
// then every symbol item, then every text item, along the same polyline.
//
// Archive record: colour, pen width, the three counts, the three capacities, the has-font
// flag (int32 each), the description (archive string), the font when the flag is 1
// (LOGFONTW members in the alphabetical order of their names), a "no pen" int32, then the
// items in use: line items, symbol items, text items.
#include <cstddef>

#include "linestyle/LineItem.h"
#include "linestyle/SymbolItem.h"
#include "linestyle/TextItem.h"
#include "platform/Object.h"
#include "platform/Types.h"

class CMarkup;
class CVantrelAppBaseX;

class VANTREL1_EXPORT CLineType : public CObject {
  DECLARE_SERIAL(CLineType)

 public:
  static constexpr int kDescSize = 32;  // 31 units and the terminator
  // Largest capacity of any item array. Line type files allow 250 items of each kind; a
  // document claiming far more is refused rather than allocated, so that a table of
  // damaged line types cannot take the memory of the machine.
  static constexpr int kMaxItems = 1000;

  CLineType();
  explicit CLineType(HGDIOBJ pen);
  CLineType(int nLine, int nSymbol, int nText);
  // Copies as operator= does (colour, pen and text mode are not carried over).
  CLineType(const CLineType& other);
  CLineType& operator=(const CLineType& src);
  ~CLineType() override;

  // Every field to its default without freeing anything (for freshly made objects).
  void Init();
  // Frees the item arrays and resets every field; the pen is dropped, never deleted.
  void Delete();
  // Reserves capacity on a line type without item storage; 1 on success, 0 when storage
  // exists already or an allocation fails (or exceeds kMaxItems).
  int Allocate(int nLine, int nSymbol, int nText);

  // Append a copy; 1, or 0 for a null item or a failed allocation.
  int AddLineItem(const CLineItem* item);
  int AddSymbolItem(const CSymbolItem* item);
  int AddTextItem(const CTextItem* item);
  // -1 when empty, -2 for a negative index, else the new count. An index at or beyond the
  // count removes the last item, deliberately.
  int DeleteLineItem(int index);
  int DeleteSymbolItem(int index);
  int DeleteTextItem(int index);
  // Null outside 0 … count − 1.
  CLineItem* GetLineItem(int index);
  CSymbolItem* GetSymbolItem(int index);
  CTextItem* GetTextItem(int index);

  int GetNLine() const { return m_nLine; }
  int GetNSymbol() const { return m_nSymbol; }
  int GetNText() const { return m_nText; }
  int GetPenWidth() const { return m_nPenWidth; }
  COLORREF GetColor() const { return m_crColor; }
  HPEN GetPen() const { return m_hPen; }
  const WCHAR* GetDesc() const { return m_szDesc; }
  WCHAR* GetDesc() { return m_szDesc; }
  LOGFONTW* GetFont() { return m_bHaveFont ? &m_lf : nullptr; }
  const LOGFONTW* GetFont() const { return m_bHaveFont ? &m_lf : nullptr; }
  void SetFont(const LOGFONTW* font);
  // 0 for a null pointer; otherwise copies at most 31 units and returns 1.
  int SetDesc(const WCHAR* desc);

  // Non-zero when any item array exists, whatever the counts: a line type that ever had
  // item storage counts as complex even when it is empty (deliberate).
  int IsComplexLine() const;
  int CheckValid();

  // Draws along the polyline x, y (n points, logical units, y upwards) clipped to `clip`
  // (null = unbounded). `fill` only concerns a plain line: non-zero fills the polygon.
  void Draw(HDC dc, HDC attribDC, const double* x, const double* y, long n, RECT* clip, int fill);

  // XML form: `store` 1 writes the child elements at the markup's position, else reads.
  void SerializeXML(CMarkup* xml, int store);
  // Text form, from a settings-file section or (file or section null) from consecutive
  // strings of `module` starting at *resId; 1 on success.
  int FromFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module,
               int* resId);
  int ToFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section);
  // Loading refuses counts above the capacities, negative counts and capacities above
  // kMaxItems with CArchiveException::badIndex.
  void Serialize(CArchive& ar) override;

  HPEN m_hPen;
  int m_nPenWidth;
  COLORREF m_crColor;
  int m_nLine;
  int m_nSymbol;
  int m_nText;
  int m_nMaxLine;
  int m_nMaxSymbol;
  int m_nMaxText;
  LOGFONTW m_lf;
  int m_bHaveFont;
  WCHAR m_szDesc[kDescSize];
  CLineItem* m_pLineItems;
  CSymbolItem* m_pSymbolItems;
  CTextItem* m_pTextItems;
  int m_nTextMode;  // 0 text in m_crColor, 1 in white, 2 no text

 private:
  void SerializeFont(CArchive& ar);
  // The items that can be touched without leaving their arrays, whatever the public
  // counts have been set to.
  int UsedLines() const;
  int UsedSymbols() const;
  int UsedTexts() const;
};
