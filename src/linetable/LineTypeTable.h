#pragma once
// CLineTypeTable: every line style of a drawing named by one integer, the line number.
//
//   negative       the invisible line (a null pen, no description)
//   0 … 6          simple pen lines: solid, dash, dot, dash-dot, dash-dot-dot, and solid
//                  lines of width 6 and 9; their names are strings 20102 … 20108
//   7 … 15         the nine system line types
//   16 … 1025      no line; resolves to system line type 7 wherever a line is built
//   1026 …         user line types (at most 250), 1026 + index
//
// Building a line for a number that holds none falls back: a system index out of range
// to the first system line type, a user index out of range to the first user line type
// (or the first system line type when there are none). DeleteLineType and ShiftLine
// address user line types as 16 + index, deliberately unlike everything else.
//
// The table hands out drawable copies of its line types, each with its own pen, through
// CreateLine and takes them back with DeleteLine. Coloured copies are shared through a
// reference-counted cache of 100 slots (LineTypeCache.cpp), so that drawing many lines
// of one style and colour makes one pen.
#include "linestyle/LineType.h"
#include "platform/Object.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

class CMarkup;
class CVantrelAppBaseX;

class VANTREL1_EXPORT CLineTypeTable : public CObject {
  DECLARE_SERIAL(CLineTypeTable)

 public:
  static constexpr int kSystemLines = 9;
  static constexpr int kMaxUserLines = 250;
  static constexpr int kCacheSize = 100;
  static constexpr int kFirstSystemNumber = 7;
  static constexpr int kLastSystemNumber = 15;
  static constexpr int kFirstUserNumber = 1026;
  // DeleteLineType and ShiftLine take user line type k as this number + k.
  static constexpr int kShiftedUserBase = 16;

  // Strings of this library's own module.
  static constexpr UINT kSimpleLineNameId = 20102;  // + number, for 0 … 6
  static constexpr UINT kUserCountId = 20299;       // "43"
  static constexpr int kUserChainId = 20302;
  static constexpr int kSystemChainId = 20500;

  // An empty table: nothing loaded, every cache slot empty, default width 1.
  CLineTypeTable();
  // Frees every cached line and its pen, whatever its reference count, and both arrays.
  ~CLineTypeTable() override;
  // An empty table that is then assigned `other`.
  CLineTypeTable(const CLineTypeTable& other);
  // Copies both sets (the system array always has nine entries) and the default width.
  // The cache is emptied: unreferenced lines are freed, lines still held are let go of
  // without being freed, so that their holders' DeleteLine frees them.
  CLineTypeTable& operator=(const CLineTypeTable& other);

  // Non-zero for number > 15: 16 … 1025 count as user numbers here although no line
  // type lives there.
  static int IsUserLineType(int number);
  // The number after `number` in the order -1, 0, …, 15, 1026, …, 1025 + user count;
  // -1 at the end and for numbers below -1.
  int NextUserLineType(int number) const;
  // The user line type 1026 … 1025 + user count; null for every other number.
  CLineType* GetLineTypePtr(int number);
  // Assigns `line` to that user line type; 0 for a null line or a number that is not one.
  int SetLineType(const CLineType* line, int number);
  // Appends a copy as the last user line type and returns the new user count; -2 when the
  // count is negative, -3 (after warning 265) when the table is full, -1 when memory runs
  // out. Names need not be unique. `parent` is not used.
  int AddLineType(CLineType& line, HWND parent);
  // Removes the user line type at index number - 16 (an index at or beyond the last
  // removes the last) and returns the new count; -1 when there is none, -2 for an index
  // below 0.
  int DeleteLineType(int number);
  // Swaps the user line type at index number - 16 with the one `direction` places on;
  // 1 when swapped, 0 when refused (no user line types, or either index out of range).
  int ShiftLine(int number, int direction);

  // The lowest number whose description equals `name` ignoring case (simple lines, then
  // system, then user line types); -1 when none does.
  int FindLine(const WCHAR* name) const;
  // The first of 0 … 15, 1026 … whose description (numbered = 0) or numbered description
  // (numbered != 0) equals `desc` ignoring case; -1 when none does.
  int GetLineNumber(CStdStrW desc, int numbered);
  // `name`-shown, shown being number - 1000 for numbers above 15 (1026 is shown as 26).
  static CStdStrW MakeDesc(int number, CStdStrW name);
  // MakeDesc of the number and the description of the line it resolves to.
  CStdStrW GetDesc(int number);
  // 1 when there are 9 system line types, a user array and a user count of 0 or more.
  int CheckValid();

  // Loads the nine system line types from `resources` (this library's module when null)
  // and the user line types from the "LineType<i>" sections of the table file `file`, or,
  // when it has none, the default user line types from `resources`. Leading sections
  // named HILITE_BW or HILITE_COLOR are read but not kept. Returns 1 when the user line
  // types came from the file, 0 when they came from the resources or anything failed.
  int FromFile(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE resources);

  // Archive form: version 2, user count, system count, then the system and the user line
  // types' records. Loading refuses a user count outside 0 … 250 and a system count
  // outside 0 … 9 with CArchiveException::badIndex.
  void Serialize(CArchive& ar) override;
  // XML form: `storing` 1 writes a LINETYPETABLE element at the markup's position and
  // leaves the markup inside it; anything else reads the document's first element. A
  // table left without system line types is reloaded from the built-in resources.
  virtual void SerializeXML(CVantrelAppBaseX* app, CMarkup* xml, int storing);
  // Writes the user line types to the table file `file` (Normal.lin in the installation
  // directory when null), one "LineType<i>" section each, deleting the file first when
  // `remove` is non-zero. 1 on success, 0 on failure.
  int ToFile(CVantrelAppBaseX* app, const WCHAR* file, int remove);

  // Tables compare equal, whatever they hold (deliberate).
  int operator==(CLineTypeTable& other);

  // A drawable line for `number` in `*color` (null: uncoloured, never cached): a copy of
  // the line type with its own pen, or with `plain` just the pen. With `useCache` a
  // coloured line comes from and goes into the cache. Null when memory runs out.
  CLineType* CreateLine(int number, COLORREF* color, int plain, int useCache, int textMode);
  // Gives a line back: a cached line loses a reference (and stays cached), any other line
  // is deleted with its pen. Pass the `useCache` given to CreateLine.
  void DeleteLine(CLineType* line, int useCache);

  CLineType* m_pUserLines;
  CLineType* m_pSystemLines;
  int m_nUserLines;
  int m_nSystemLines;
  int m_nCacheCount;
  CLineType* m_pCacheLine[kCacheSize];
  int m_nCacheNumber[kCacheSize];
  COLORREF m_crCacheColor[kCacheSize];
  int m_nCacheRef[kCacheSize];
  int m_nDefaultWidth;

 private:
  friend struct LineTypeTableInternals;  // the tests' view of the cache operations

  // The line type a number resolves to with the fallbacks above; null only when the
  // table has no line type to fall back on.
  const CLineType* Resolve(int number) const;
  // A fresh line for `number` as CreateLine builds it, without the cache.
  CLineType* BuildLine(int number, const COLORREF* color, int plain, int textMode) const;
  void FreeArrays();
  int LoadSystemLines(CVantrelAppBaseX* app, HINSTANCE resources);
  int CountFileSections(CVantrelAppBaseX* app, const WCHAR* file) const;
  int LoadUserLines(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE resources, int count);

  CLineType* GetCacheLine(int number, COLORREF* color, int textMode);
  void AddCacheLine(int number, COLORREF* color, CLineType* line);
  int DecrementCache(CLineType* line);
  int IsCached(CLineType* line);
  int DeleteCacheLine(int slot, int force);
  void DeleteUnusedCacheLines();
  int FindCacheSlot(const CLineType* line) const;
  void MoveCacheSlot(int from, int to);
  void ClearCacheSlot(int slot);
  static void FreeLine(CLineType* line);

  int m_nLastCacheSlot = -1;  // where FindCacheSlot looks first; checked before use
};
