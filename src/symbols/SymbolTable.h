#pragma once
// CSymbolTable: the point symbols of a document, every drawable symbol named by one
// integer, the symbol number.
//
//   0              no symbol; its name is string 20000 ("Nijedan")
//   1 … 19         the old-style symbols, drawn by the suite (names: strings 20001 … 20019)
//   1024 + i       entry i of the table: the eight built-in symbols loaded from the string
//                  resources first, user symbols after them
//
// Symbols that a user may pick come in the order 0, 1, 6, 7, …, 19, 1024, 1025, …: the
// old-style symbols 2 to 5 are never offered and never found by name.
//
// The table is filled from the string resources or from a table file (one "Symbol<i>"
// section per entry) and saved with a document in the XML form. Its archive form carries
// only the number of entries: a symbol writes nothing there.
#include "platform/Object.h"
#include "platform/StdStr.h"
#include "platform/Types.h"
#include "symbols/Symbol.h"

class CMarkup;
class CVantrelAppBaseX;

class VANTREL1_EXPORT CSymbolTable : public CObject {
  DECLARE_SERIAL(CSymbolTable)

 public:
  static constexpr int kFirstTableNumber = 1024;
  // AddSymbol refuses the 251st entry, while CheckValid already refuses a table of 250:
  // the two limits differ by one, deliberately.
  static constexpr int kMaxSymbols = 250;
  static constexpr int kMaxValidSymbols = 249;
  // Storage grows in steps of this many entries.
  static constexpr int kGrowStep = 100;

  // Strings of this library's own module.
  static constexpr UINT kBuiltInCountId = 20700;  // "8"
  static constexpr int kBuiltInChainId = 20701;
  static constexpr UINT kNoneNameId = 20000;

  // An empty table: no storage, no entries.
  CSymbolTable();
  // An empty table that is then assigned `other`.
  CSymbolTable(const CSymbolTable& other);
  ~CSymbolTable() override;
  // Takes other's entries; the storage grows in steps of 100 to hold them and never
  // shrinks.
  CSymbolTable& operator=(const CSymbolTable& other);
  // Tables compare equal, whatever they hold (deliberate).
  int operator==(CSymbolTable& other);

  // Appends a copy of `symbol`. 1 when it went straight into a spare slot, the new count
  // when the storage was rebuilt for it (any positive result is success); -2 for a negative count, -3
  // (after warning 265) when the table holds 250 entries, -1 when memory runs out. Names
  // are not checked here: callers ask GetSymbolNumber first. `owner` is not used.
  int AddSymbol(CSymbol& symbol, HWND owner);
  // Removes the entry at table index `index` (an index at or beyond the last removes the
  // last) and returns the new count; -1 for an empty table, -2 for a negative index.
  int DeleteSymbol(int index);
  // Frees a symbol made by CreateSymbol; null is ignored.
  void DeleteSymbol(CSymbol* symbol);
  // Swaps the entry at table index `index` with its neighbour `direction` (-1 or 1); 1
  // when swapped, 0 when the table is empty or the move would leave it.
  virtual int ShiftSymbol(int index, int direction);

  // A new symbol for `number` that the caller frees with DeleteSymbol(CSymbol*): an
  // old-style symbol, a copy of a table entry in `colour` (scaled to `scale` only when the
  // entry is scalable; with `descOnly` just its number, colour, scale and name), or for
  // any other number the "none" symbol. Never null.
  CSymbol* CreateSymbol(int number, COLORREF colour, double scale, int descOnly);
  // The entry for table number `number`, or null.
  CSymbol* GetSymbolPtr(int number);
  // 1 for a number that names an entry of the table (built-in ones included).
  int IsUserSymbol(int number) const;
  // The number after `number` in the order of selectable symbols; -1 after the last and
  // for numbers below -1.
  int NextUserSymbol(int number) const;
  // The first selectable number whose name equals `name` ignoring case; -1 when none does.
  int GetSymbolNumber(CStdStrW name);
  // The name of the symbol `number` names; the name of symbol 0 for any other number.
  CStdStrW GetDesc(int number);
  static CStdStrW GetSymbolNoneDesc();
  // 1 when there is storage, at most 249 entries and every entry has a name.
  int CheckValid() const;

  // Loads the entries from the "Symbol<i>" sections of the table file `file`, or, when it
  // has none (or `file` is null), the built-in symbols from `module` (null: this library's
  // own). Returns 1 when they came from the file and 0 when they came from the resources,
  // however well that went; 0 also on failure, the entries read so far kept.
  int FromFile(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE module);
  // Writes every entry to the table file `file` (Normal.sym in the installation directory
  // when null), one "Symbol<i>" section each, deleting the file first when `removeFirst`
  // is non-zero. 1 on success (an empty table writes nothing), 0 on failure.
  int ToFile(CVantrelAppBaseX* app, const WCHAR* file, int removeFirst);
  // Archive form: version 2 and the number of entries. Loading gives that many default
  // symbols; a count outside 0 … 250 is refused with CArchiveException::badIndex.
  void Serialize(CArchive& ar) override;
  // XML form: `mode` 1 writes a SYMBOLTABLE element holding NSYMBOLS and SYMBOL<i> at the
  // markup's position and leaves the markup inside it; anything else reads the document's
  // first element. Reading a table of no entries with mode 0 loads the built-in symbols.
  virtual void SerializeXML(CVantrelAppBaseX* app, CMarkup* xml, int mode);

  int GetCount() const { return m_nCount; }

  CSymbol* m_pSymbols;
  int m_nCount;
  int m_nCapacity;

 protected:
  // Clears the fields without freeing anything.
  void Init();
  // Replaces the storage by at least `n` default symbols (capacity in steps of 100); the
  // count is not changed. 1, or 0 when memory runs out (then there is no storage).
  int Allocate(int n);
  int Deallocate();

 private:
  // Entries that can be touched without leaving the storage, whatever the count says.
  int Used() const;
  int CountFileSections(CVantrelAppBaseX* app, const WCHAR* file) const;
};
