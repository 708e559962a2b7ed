// The symbol table: numbering, lookup by name, editing, and its archive, XML and file forms.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/RecordingMessageSink.h"
#include "platform/Utf.h"
#include "symbols/SymbolTable.h"
#include "symbols/SymbolTestSupport.h"

namespace {

using vantrel1::ToUtf8;

CSymbolTable& LoadBuiltIn(CSymbolTable& table) {
  EXPECT_EQ(table.FromFile(nullptr, nullptr, nullptr), 0);
  return table;
}

std::vector<std::string> Names(const CSymbolTable& table) {
  std::vector<std::string> names;
  for (int i = 0; i < table.m_nCount; ++i) names.push_back(ToUtf8(table.m_pSymbols[i].GetDesc()));
  return names;
}

const std::vector<std::string> kBuiltInNames = {
    "benchmark", "spomenik šumarske službe", "P.I.", "močvara", "izdanak stene", "toranj i žičnica",
    "Borrow pit", "Waste area"};

CSymbol Named(const char16_t* name) {
  CSymbol symbol(0, 0, 1.0);
  symbol.SetDesc(name);
  return symbol;
}

std::optional<int> ArchiveError(CSymbolTable& table, const std::vector<BYTE>& bytes) {
  try {
    CArchive ar(bytes);
    table.Serialize(ar);
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
  return std::nullopt;
}

void FromXml(CSymbolTable& table, const std::u16string& doc, int mode = 0) {
  CMarkup xml(doc.c_str());
  ASSERT_TRUE(xml.IsWellFormed()) << ToUtf8(xml.GetError());
  table.SerializeXML(nullptr, &xml, mode);
}

}  // namespace

TEST(SymbolTableNumbering, BuiltInsFrom1024AndSelectableNumbersSkipOldStyleTwoToFive) {
  CSymbolTable table;
  LoadBuiltIn(table);
  EXPECT_EQ(Names(table), kBuiltInNames);
  EXPECT_EQ(table.m_nCapacity, 100);
  EXPECT_EQ(table.GetSymbolPtr(1031), &table.m_pSymbols[7]);
  EXPECT_EQ(table.GetSymbolPtr(1032), nullptr);
  for (const auto& [number, user] : {std::pair{1023, 0}, {1024, 1}, {1031, 1}, {1032, 0}, {7, 0}})
    EXPECT_EQ(table.IsUserSymbol(number), user) << number;

  CSymbolTable empty;
  const struct {
    int number, next, nextEmpty;
  } cases[] = {{-5, -1, -1},     {-1, 0, 0},        {1, 6, 6},        {5, 6, 6},         {18, 19, 19},
               {19, 1024, 1024}, {600, 1024, 1024}, {1024, 1025, -1}, {1030, 1031, -1}, {1031, -1, -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(table.NextUserSymbol(c.number), c.next) << c.number;
    EXPECT_EQ(empty.NextUserSymbol(c.number), c.nextEmpty) << c.number;
  }
}

TEST(SymbolTableLookup, NamesAreFoundIgnoringAsciiCaseAmongSelectableSymbolsOnly) {
  CSymbolTable table;
  LoadBuiltIn(table);
  CSymbol circle = Named(u"Circle");  // a second "Circle", as 1032
  table.AddSymbol(circle, nullptr);
  const struct {
    const char16_t* name;
    int number;
  } cases[] = {{u"BENCHMARK", 1024}, {u"Nijedan", 0},     {u"circle", 7},   {u"Sim2", -1},
               {u"MOčVARA", 1027},   {u"MOČVARA", -1},   {u"Waste Area", 1031}, {u"", -1}};
  for (const auto& c : cases) EXPECT_EQ(table.GetSymbolNumber(c.name), c.number) << ToUtf8(c.name);

  for (const auto& [number, name] : {std::pair{1030, "Borrow pit"}, {7, "Circle"}, {-3, "Nijedan"}, {1033, "Nijedan"}})
    EXPECT_EQ(ToUtf8(table.GetDesc(number)), name) << number;
}

TEST(SymbolTableCreate, CopiesEntriesInTheColourAndScalesOnlyScalableOnes) {
  CSymbolTable table;
  LoadBuiltIn(table);
  const COLORREF red = RGB(255, 0, 0);
  struct Case {
    int number, descOnly;
    double scale;  // what the new symbol gets
    int items;
    COLORREF colour;
  };
  table.m_pSymbols[7].m_bScalable = 1;
  const Case cases[] = {
      {1030, 0, 1.0, 2, red},  // the built-in header has no scalable field
      {1031, 0, 2.0, 2, red},  {1031, 1, 2.0, 0, red}, {7, 0, 2.0, 0, red}, {1032, 0, 1.0, 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.number);
    CSymbol* symbol = table.CreateSymbol(c.number, red, 2.0, c.descOnly);
    EXPECT_EQ(symbol->GetScale(), c.scale);
    EXPECT_EQ(symbol->SymbolItemsNum(), c.items);
    EXPECT_EQ(symbol->GetColor(), c.colour);
    EXPECT_EQ(symbol->GetDesc(), table.GetDesc(c.number));
    table.DeleteSymbol(symbol);
  }
}

TEST(SymbolTableEditing, AddGrowsByHundredsAndRefusesThe251stWithAWarning) {
  CRecordingMessageSink sink;
  CSymbolTable table;
  CSymbol symbol = Named(u"s");
  std::vector<int> results;
  for (int i = 0; i < 251; ++i) results.push_back(table.AddSymbol(symbol, nullptr));
  // An add that would leave no spare slot rebuilds the storage (growing it by 100 once it
  // is full) and returns the new count; the others return 1.
  for (int i = 0; i < 250; ++i) {
    const int expected = i == 0 || i == 99 || i == 100 || i == 199 || i == 200 ? i + 1 : 1;
    EXPECT_EQ(results[static_cast<std::size_t>(i)], expected) << i;
  }
  EXPECT_EQ(results[250], -3);
  EXPECT_EQ(table.m_nCount, 250);
  EXPECT_EQ(table.m_nCapacity, 300);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 265u);

  EXPECT_EQ(table.CheckValid(), 0);  // 250 is one more than a valid table holds
  table.DeleteSymbol(0);
  EXPECT_EQ(table.CheckValid(), 1);
  table.m_pSymbols[3].SetDesc(u"");
  EXPECT_EQ(table.CheckValid(), 0);
  table.m_nCount = -1;
  EXPECT_EQ(table.AddSymbol(symbol, nullptr), -2);
}

TEST(SymbolTableEditing, DeleteAndShiftByTableIndex) {
  CSymbolTable empty;
  EXPECT_EQ(empty.DeleteSymbol(0), -1);
  EXPECT_EQ(empty.ShiftSymbol(0, 1), 0);

  CSymbolTable table;
  LoadBuiltIn(table);
  EXPECT_EQ(table.DeleteSymbol(-1), -2);
  EXPECT_EQ(table.DeleteSymbol(10), 7);  // beyond the end: the last goes
  EXPECT_EQ(table.DeleteSymbol(0), 6);
  EXPECT_EQ(Names(table), std::vector<std::string>(kBuiltInNames.begin() + 1, kBuiltInNames.end() - 1));

  const struct {
    int index, direction, result;
  } shifts[] = {{0, -1, 0}, {5, 1, 0}, {6, -1, 0}, {0, 1, 1}, {5, -1, 1}};
  for (const auto& s : shifts) EXPECT_EQ(table.ShiftSymbol(s.index, s.direction), s.result) << s.index;
  EXPECT_EQ(Names(table), (std::vector<std::string>{"P.I.", "spomenik šumarske službe", "močvara", "izdanak stene",
                                                    "Borrow pit", "toranj i žičnica"}));
}

TEST(SymbolTableCopy, TakesEveryEntryAndNeverShrinksItsStorage) {
  CSymbolTable table;
  LoadBuiltIn(table);
  CSymbolTable big;
  CSymbol symbol = Named(u"s");
  for (int i = 0; i < 150; ++i) big.AddSymbol(symbol, nullptr);
  big = table;
  EXPECT_EQ(Names(big), kBuiltInNames);
  EXPECT_EQ(big.m_nCapacity, 200);
  EXPECT_EQ(big.m_pSymbols[6].TextItemsNum(), 1);
}

// Persistent forms --------------------------------------------------------------------------

TEST(SymbolTableArchive, CarriesOnlyTheNumberOfSymbols) {
  CSymbolTable table;
  LoadBuiltIn(table);
  CArchive out(CArchive::store);
  table.Serialize(out);
  EXPECT_EQ(out.GetBytes(), (std::vector<BYTE>{2, 0, 0, 0, 8, 0, 0, 0}));

  CSymbolTable loaded;
  CArchive in(out.GetBytes());
  loaded.Serialize(in);
  EXPECT_EQ(Names(loaded), std::vector<std::string>(8, "Nijedan"));

  for (std::int32_t count : {-1, 251}) {
    std::vector<BYTE> bytes = {2, 0, 0, 0};
    for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<BYTE>(static_cast<std::uint32_t>(count) >> (8 * i)));
    EXPECT_EQ(ArchiveError(loaded, bytes), CArchiveException::badIndex) << count;
  }
  EXPECT_EQ(loaded.m_nCount, 8);
  EXPECT_EQ(ArchiveError(loaded, {2, 0, 0, 0, 8, 0}), CArchiveException::endOfFile);
}

TEST(SymbolTableXml, WritesEachEntryInItsOwnElementAndReadsTheTableBack) {
  CSymbolTable table;
  LoadBuiltIn(table);
  CMarkup xml;
  table.SerializeXML(nullptr, &xml, 1);
  const std::u16string doc = xml.GetDoc();
  const std::string text = ToUtf8(doc);
  EXPECT_EQ(text.rfind("<SYMBOLTABLE>\r\n<NSYMBOLS>8</NSYMBOLS>\r\n<SYMBOL0>\r\n<COLOR>0</COLOR>", 0), 0u) << text;
  EXPECT_EQ(xml.GetTagName(), u"SYMBOL7");  // the markup stays inside SYMBOLTABLE

  CSymbolTable back;
  FromXml(back, doc);
  EXPECT_EQ(Names(back), kBuiltInNames);
  EXPECT_EQ(back.m_pSymbols[6].SymbolItemsNum(), 2);
  EXPECT_EQ(back.m_pSymbols[6].TextItemsNum(), 1);
}

TEST(SymbolTableXml, UntrustedCountsMissingEntriesAndEmptyTables) {
  CSymbolTable table;
  FromXml(table, u"<SYMBOLTABLE><NSYMBOLS>3</NSYMBOLS><SYMBOL1><DESC>b</DESC></SYMBOL1></SYMBOLTABLE>");
  EXPECT_EQ(Names(table), (std::vector<std::string>{"Nijedan", "b", "Nijedan"}));

  FromXml(table, u"<SYMBOLTABLE><NSYMBOLS>99999</NSYMBOLS></SYMBOLTABLE>");
  EXPECT_EQ(table.m_nCount, 250);

  // No entries: mode 0 falls back on the built-in symbols, any other reading mode does not.
  for (const char16_t* doc : {u"<SYMBOLTABLE/>", u"<SYMBOLTABLE><NSYMBOLS>-7</NSYMBOLS></SYMBOLTABLE>"}) {
    FromXml(table, doc, 0);
    EXPECT_EQ(Names(table), kBuiltInNames);
    FromXml(table, doc, 2);
    EXPECT_EQ(table.m_nCount, 0);
  }
}

using SymbolTableFile = symboltest::TempDirTest;

TEST_F(SymbolTableFile, WritesOneSectionPerEntryAndReadsThemBackAsAFileTable) {
  CSymbolTable table;
  LoadBuiltIn(table);
  const std::u16string path = PathOf("t.sym");
  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 1), 1);
  CSymbolTable loaded;
  EXPECT_EQ(loaded.FromFile(nullptr, path.c_str(), nullptr), 1);
  EXPECT_EQ(Names(loaded), kBuiltInNames);
  EXPECT_EQ(loaded.m_pSymbols[0].SymbolItemsNum(), 3);

  // Without removing first, the sections of a longer table written before stay.
  table.DeleteSymbol(7);
  table.DeleteSymbol(6);
  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 0), 1);
  EXPECT_EQ(loaded.FromFile(nullptr, path.c_str(), nullptr), 1);
  EXPECT_EQ(loaded.m_nCount, 8);
  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 1), 1);
  EXPECT_EQ(loaded.FromFile(nullptr, path.c_str(), nullptr), 1);
  EXPECT_EQ(loaded.m_nCount, 6);

  // A file without a first section gives the built-in symbols; a broken section stops
  // the load after the entries before it.
  Write("other.sym", "[Symbol1]\r\nSymbolDesc=0,0,0,0,x\r\n");
  EXPECT_EQ(loaded.FromFile(nullptr, PathOf("other.sym").c_str(), nullptr), 0);
  EXPECT_EQ(Names(loaded), kBuiltInNames);
  Write("broken.sym", "[Symbol0]\r\nSymbolDesc=0,0,0,0,a\r\n[Symbol1]\r\nSymbolDesc=0,0,1,0,b\r\n");
  EXPECT_EQ(loaded.FromFile(nullptr, PathOf("broken.sym").c_str(), nullptr), 0);
  EXPECT_EQ(Names(loaded), std::vector<std::string>{"a"});

  EXPECT_EQ(table.ToFile(nullptr, PathOf("nema/t.sym").c_str(), 1), 0);
}

TEST_F(SymbolTableFile, WithoutAFileNameWritesNormalSymInTheInstallationDirectory) {
  const char* previous = std::getenv("VANTREL1_DIR");
  const std::optional<std::string> saved = previous ? std::optional<std::string>(previous) : std::nullopt;
  ASSERT_EQ(::setenv("VANTREL1_DIR", m_dir.c_str(), 1), 0);
  CSymbolTable table;
  LoadBuiltIn(table);
  const int result = table.ToFile(nullptr, nullptr, 1);
  if (saved) ::setenv("VANTREL1_DIR", saved->c_str(), 1); else ::unsetenv("VANTREL1_DIR");
  EXPECT_EQ(result, 1);
  CSymbolTable loaded;
  EXPECT_EQ(loaded.FromFile(nullptr, PathOf("Normal.sym").c_str(), nullptr), 1);
  EXPECT_EQ(Names(loaded), kBuiltInNames);
}
