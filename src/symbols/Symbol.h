#pragma once
// CSymbol: a point symbol, a small drawing placed at a point of a feature (a benchmark, a
// monument, a borrow pit) in one colour, at a scale and, when the symbol allows it, turned
// by an angle.
//
// A composite symbol is made of symbol items (polylines) and text items; an old-style
// symbol, numbered 1 to 19, has no items of its own and is drawn by the suite's DrawSymbol
// with a solid pen that the symbol owns. Symbol 0 is "none". The names of symbols 0 to 19
// are string resources 20000 + n.
//
// Item coordinates are in symbol units: a symbol item's vertices are its integer points.
// A text item placed by a symbol uses its scale as the text height, its start as the
// horizontal anchor (a double) and its offset as the vertical anchor (an integer).
#include <vector>

#include "linestyle/SymbolItem.h"
#include "linestyle/TextItem.h"
#include "platform/Object.h"
#include "platform/StdStr.h"
#include "platform/Types.h"
#include "suite/PolylineVector.h"

class CMarkup;
class CVantrelAppBaseX;

class VANTREL1_EXPORT CSymbol : public CObject {
  DECLARE_DYNCREATE(CSymbol)

 public:
  static constexpr UINT kNameStringBase = 20000;  // string id of the name of symbol 0
  static constexpr int kMaxNameLength = 256;
  static constexpr int kOldSymbolCount = 19;
  // A consolidated run keeps at most this many vertices: one fewer than a figure holds,
  // as a figure built from a polyline cannot take more.
  static constexpr int kMaxRunVertices = CSymbolItem::kMaxPoints - 1;
  // Every record of the text and XML forms is written into and read through a buffer of
  // this size.
  static constexpr int kRecordSize = 512;
  // The most items of one kind that a stored symbol may ask for, as for a line type: a
  // count beyond it comes from a damaged file or document.
  static constexpr int kMaxStoredItems = 1000;

  // The "none" symbol, CSymbol(0, 0, 1.0).
  CSymbol();
  // An old-style index (1 to 19) gets a solid pen of width 1 in `colour`, owned by the
  // symbol. Any index up to 19 (0 and negative ones included) takes its description from
  // string 20000 + index, empty when there is no such string; larger indices have none.
  CSymbol(int index, COLORREF colour, double scale);
  CSymbol(const CSymbol& other);
  // Copies everything. An owned pen is not shared: the copy makes its own of the same
  // width and colour; a borrowed pen handle is passed on as it is, still borrowed.
  CSymbol& operator=(const CSymbol& src);
  ~CSymbol() override;

  // Every field to its default without freeing anything (for a new or emptied symbol).
  void Init();
  // Frees both item arrays and the owned pen, then Init.
  void Delete();
  // Writes and reads nothing: symbols keep their contents in the XML and text forms, and
  // a table's archive record carries only their number.
  void Serialize(CArchive& ar) override;

  // XML form, as child elements at the markup's current level: COLOR, SCALE, PENWIDTH,
  // DELETEPEN, NSYMBOL, NTEXT, ISYMBOL, ROTATABLE, SCALABLE, DESC, B_FONT, the fourteen
  // LF... elements of the font when there is one, then SYMBOLITEM<i> and TEXTITEM<i>
  // holding the items' records. `mode` 1 writes; anything else reads, each missing element
  // giving its default (ROTATABLE and SCALABLE 0, although a new symbol has them 1). The
  // pen is not made when reading: the caller's SetColor makes it.
  virtual void SerializeXML(CMarkup* xml, int mode);
  // Text form, as keys of `section` of a profile file: SymbolDesc holds the header
  // "index,pen width,symbol items,text items,description,rotatable,scalable", FontItem
  // the font, SymbolItem<i> and TextItem<i> the items' records. Writes and flushes the
  // file; 1, or 0 when the header does not fit its record or the flush fails.
  int ToFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section);
  // Reads a symbol from `section` of `file` when both are given; otherwise, when
  // `stringId` is given, from the strings of `module` (null: this library's own) from
  // *stringId on: the header, the font (an empty string for none; its id is always
  // taken), one string per symbol item and per text item, *stringId moving past every
  // string read. 1 on success; 0 on failure, the symbol keeping what was read.
  int FromFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module, int* stringId);

  // Append a copy, growing the array by exactly one; 1, or 0 for a null item or a failed
  // allocation. The item may live in this symbol's own array.
  int AddSymbolItem(const CSymbolItem* item);
  int AddTextItem(const CTextItem* item);
  // -1 when there are no items of that kind, -2 for a negative index, else the new count.
  // An index at or beyond the last item removes the last item, deliberately. The array is
  // kept at its size.
  int DeleteSymbolItem(int index);
  int DeleteTextItem(int index);
  // Null outside 0 … count − 1.
  CSymbolItem* GetSymbolItem(int index) const;
  CTextItem* GetTextItem(int index) const;
  int SymbolItemsNum() const { return m_nSymbol; }
  int TextItemsNum() const { return m_nText; }
  int GetIndex() const { return m_nIndex; }

  int IsOldSymbol() const { return IsOldSymbol(m_nIndex); }
  static int IsOldSymbol(int n) { return n >= 1 && n <= kOldSymbolCount ? 1 : 0; }
  // 1 when either item array exists, whatever the counts: a symbol whose items were all
  // deleted one by one stays complex until Delete (deliberate).
  int IsComplexSymbol() const;
  // 1 when the symbol has a description.
  int CheckValid() const;

  // Stores the colour and gives an old-style symbol a new pen in it; an owned pen of the
  // old colour is deleted.
  void SetColor(COLORREF colour);
  COLORREF GetColor() const { return m_crColor; }
  // 1, or 0 (and the old description kept) for null or a text holding a terminator.
  int SetDesc(const CStdStrW& desc);
  int SetDesc(const WCHAR* desc);
  CStdStrW GetDesc() const { return m_szDesc; }
  // Null clears the font-set flag (the stored font stays); otherwise copies the font.
  void SetFont(const LOGFONTW* font);
  // The stored font, or null when none is set.
  const LOGFONTW* GetFont() const { return m_bHaveFont ? &m_lf : nullptr; }
  void SetScale(double scale) { m_dScale = scale; }
  double GetScale() const { return m_dScale; }
  HPEN GetPen() const { return m_hPen; }

  // Changes the definition itself (unlike the drawing scale): every vertex and anchor is
  // multiplied by `factor` and truncated toward zero; text heights keep their fractions.
  void ApplyScalefactor(double factor);
  // Moves every vertex and anchor by (dx, dy), both first truncated toward zero.
  void ApplyShift(double dx, double dy);
  // The bounds of the vertices and text anchors (the texts themselves are not measured);
  // 99999 / −99999 sentinels (min above max) for a symbol without items. Null outputs are
  // skipped.
  void GetExtents(double* minX, double* maxX, double* minY, double* maxY) const;
  // The middle of the extents; (0, 0) for a symbol without items.
  void GetCenterPoint(double* x, double* y) const;

  // Draws the symbol at (x, y): symbol items, then text items in the symbol's colour
  // (`hdcText` measures text and may equal `hdc`), then the old-style shape. A symbol that
  // is not rotatable ignores `angle` (radians).
  void Draw(HDC hdc, HDC hdcText, double x, double y, RECT* clip, double angle);

  // Rewrites the symbol items so that runs of items joined end to end become single items
  // of at most 19 vertices. Text items and every other field are untouched.
  void Consolidate();
  // Appends the symbol's line work to `out` for export: a composite symbol's figures, or
  // the fixed outline of an old-style shape. 1, or 0 for a null list or as soon as a
  // figure cannot be exported (what was appended stays).
  int GetAcadPolylines(std::vector<PolylineVector>* out);

  COLORREF m_crColor;
  double m_dScale;
  HPEN m_hPen;
  int m_bDeletePen;  // 1: the symbol made m_hPen and deletes it
  LOGFONTW m_lf;
  int m_bHaveFont;
  CStdStrW m_szDesc;
  CSymbolItem* m_pSymbolItems;
  CTextItem* m_pTextItems;
  int m_nIndex;  // old-style number 1 to 19, 0 for a composite symbol
  int m_nPenWidth;
  int m_nSymbol;
  int m_nText;
  int m_bRotatable;
  int m_bScalable;  // kept with the symbol; drawing does not consult it

 private:
  // Items that can be touched without leaving their arrays, whatever the public counts
  // have been set to.
  int UsedSymbols() const;
  int UsedTexts() const;
  void ReleasePen();
  void MakeOwnPen();
  // The outline of old-style shape m_nIndex, centred on (0, 0) and unscaled; always 1.
  int ExportOldStyleSymbol(std::vector<PolylineVector>* out) const;
  // Replaces both item arrays by new ones of the given sizes, every item at its defaults.
  void ReplaceItemArrays(int nSymbol, int nText);

  int m_nSymbolCapacity;
  int m_nTextCapacity;
};
