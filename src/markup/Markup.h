#pragma once
// CMarkup: the library's position-based XML document. The whole document is one UTF-16
// string; beside it an index records, for each element, where its start and end tags lie
// and how it links to its parent, first child and next sibling. Reading returns
// substrings of the document; writing splices the string and shifts the stored positions
// so that the index always equals what a fresh parse of the new text would give.
#include <memory>
#include <string_view>
#include <vector>

#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CMarkup {
 public:
  // The byte form of a document file. A loaded file is saved back in the form it came in;
  // a document that was never loaded is saved as UTF-8 without a byte order mark.
  enum Encoding {
    EncodingUtf8 = 0,
    EncodingUtf8Bom = 1,
    EncodingUtf16Le = 2,     // without a byte order mark
    EncodingUtf16LeBom = 3,
  };

  CMarkup();
  explicit CMarkup(const WCHAR* doc);
  CMarkup(const CMarkup& other);
  virtual ~CMarkup();
  // Assigning an object to itself throws std::invalid_argument.
  void operator=(const CMarkup& other);

  bool SetDoc(const WCHAR* doc);
  // The whole string is kept, but the scanner stops at a null character as it does at the
  // end: whatever follows one is never read and never indexed.
  bool SetDoc(const CStdStrW& doc);
  bool SetDoc(CStdStrW&& doc);
  bool IsWellFormed() const;
  CStdStrW GetDoc() const { return m_sDocument; }
  const CStdStrW& GetDocRef() const { return m_sDocument; }
  CStdStrW GetError() const { return m_sLastError; }

  // Files: UTF-8 with or without a byte order mark, UTF-16LE with or without one. Load
  // returns SetDoc's result, or false without touching the object when the file cannot be
  // read. Save writes the document in GetEncoding() and returns false on any I/O failure.
  bool Load(const WCHAR* path);
  bool Save(const WCHAR* path) const;
  Encoding GetEncoding() const { return m_nEncoding; }
  void SetEncoding(Encoding encoding) { m_nEncoding = encoding; }

  // Cursor.
  void ResetPos() { x_SetPos(0, 0, 0); }
  void ResetMainPos();
  void ResetChildPos();
  bool FindElem(const WCHAR* name = nullptr);
  bool FindChildElem(const WCHAR* name = nullptr);
  bool IntoElem();
  bool OutOfElem();

  // Reading.
  CStdStrW GetTagName() const { return x_GetTagName(m_nMainIndex); }
  CStdStrW GetChildTagName() const { return x_GetTagName(m_nChildIndex); }
  CStdStrW GetAttrib(const WCHAR* name) const { return x_GetAttrib(m_nMainIndex, name); }
  CStdStrW GetChildAttrib(const WCHAR* name) const { return x_GetAttrib(m_nChildIndex, name); }
  CStdStrW GetData() const { return x_GetData(m_nMainIndex); }
  CStdStrW GetChildData() const { return x_GetData(m_nChildIndex); }
  int GetDataInt(const CStdStrW& name, int def);
  double GetDataDouble(const CStdStrW& name, double def);
  WCHAR GetDataChar(const CStdStrW& name, WCHAR def);
  CStdStrW GetDataStr(const CStdStrW& name, const CStdStrW& def);

  // Writing.
  bool AddElem(const WCHAR* name, const WCHAR* data = nullptr) {
    return x_AddElem(name, data, false, false);
  }
  bool AddChildElem(const WCHAR* name, const WCHAR* data = nullptr) {
    return x_AddElem(name, data, false, true);
  }
  bool AddAttrib(const WCHAR* name, const WCHAR* value) { return SetAttrib(name, value); }
  bool SetAttrib(const WCHAR* name, const WCHAR* value) {
    return x_SetAttrib(m_nMainIndex, name, value);
  }
  bool AddChildAttrib(const WCHAR* name, const WCHAR* value) {
    return SetChildAttrib(name, value);
  }
  bool SetChildAttrib(const WCHAR* name, const WCHAR* value) {
    return x_SetAttrib(m_nChildIndex, name, value);
  }

 protected:
  struct ElemPos {
    int nTagOpen = 0;
    int nTagClose = 0;
    int nEndOpen = 0;   // also the scan cursor of an element while it is being parsed
    int nEndClose = 0;
    int nSpare = 0;
    int nParent = 0;
    int nFirstChild = 0;
    int nNextSibling = 0;
  };

  struct TokenPos {
    explicit TokenPos(const WCHAR* text) : pText(text) {}
    int nFirst = 0;
    int nLast = 0;
    int nScan = 0;
    const WCHAR* pText;
    int bQuoted = 0;
  };

  // Scanner.
  static bool x_FindChar(const WCHAR* doc, int& pos, WCHAR c);
  static bool x_FindAny(const WCHAR* doc, int& pos);
  static bool x_FindToken(TokenPos& token);
  CStdStrW x_GetToken(const TokenPos& token) const;

  // Parser.
  int x_ParseNode(TokenPos& token);
  int x_ParseElem(int parentIndex);
  int x_ParseError(const WCHAR* format, const WCHAR* arg);
  int x_GetFreePos();
  int x_ReleasePos();

  // Navigation and reading.
  void x_SetPos(int parent, int main, int child);
  int x_FindElem(int parent, int after, const WCHAR* name);
  CStdStrW x_GetTagName(int index) const;
  bool x_FindAttrib(TokenPos& token, const WCHAR* name) const;
  CStdStrW x_GetAttrib(int index, const WCHAR* name) const;
  CStdStrW x_GetData(int index) const;

  // Writing.
  bool x_AddElem(const WCHAR* name, const WCHAR* data, bool insert, bool child);
  bool x_LocateNew(int parent, int& reference, int& offset, int length, int flags);
  void x_DocChange(int offset, int replaced, std::u16string_view text);
  void x_Adjust(int index, int shift, bool afterPos);
  bool x_SetAttrib(int index, const WCHAR* name, const WCHAR* value);
  static CStdStrW x_TextToDoc(const WCHAR* text, bool attribute);
  CStdStrW x_TextFromDoc(int left, int right) const;

  // Entry `index` of the index; an index outside the entries in use throws
  // std::invalid_argument.
  ElemPos& x_Pos(int index) {
    if (index < 0 || index >= m_nFreeIndex) x_ThrowBadIndex();
    return m_aIndex[static_cast<std::size_t>(index)];
  }
  const ElemPos& x_Pos(int index) const {
    if (index < 0 || index >= m_nFreeIndex) x_ThrowBadIndex();
    return m_aIndex[static_cast<std::size_t>(index)];
  }
  [[noreturn]] static void x_ThrowBadIndex();

  CStdStrW m_sDocument;
  CStdStrW m_sLastError;
  std::vector<ElemPos> m_aIndex;
  int m_nParentIndex = 0;
  int m_nMainIndex = 0;
  int m_nChildIndex = 0;
  int m_nFreeIndex = 1;
  int m_nCurrentKind = 0;
  Encoding m_nEncoding = EncodingUtf8;

 private:
  struct NameLookup;
  std::unique_ptr<NameLookup> m_pLookup;  // made by the first long search; never copied

  enum { kInsertBefore = 1 };
  bool x_ParseDoc();
  int x_ParseStartTag(int parentIndex);
  int x_ParseEndTag(int index);
  bool x_SkipNode(TokenPos& token);
  bool x_HasNoStartTag();
  bool x_IsEmptyElem(int index) const;
  bool x_FindAttribOf(int index, TokenPos& token, const WCHAR* name) const;
  bool x_TagMatches(const TokenPos& token, const WCHAR* name, int nameLength) const;
  std::u16string_view x_TagToken(int index) const;
  int x_LookUpChild(int parent, const WCHAR* name, int nameLength);
  void x_ForgetLookup();
  int x_LastChild(int parent) const;
  int x_PreviousSibling(int index) const;
  void x_Link(int index, int parent, int previous);
  void x_AddIntoEmpty(int index, int parent, std::u16string_view text);
  void x_SetNewPos(int index, int tagOpen, std::u16string_view text);
  bool x_GetCData(const ElemPos& elem, CStdStrW& data) const;
  bool x_FindData(const CStdStrW& name, CStdStrW& data);
};
