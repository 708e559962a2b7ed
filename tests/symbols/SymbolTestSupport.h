#pragma once
// Figures and texts for the symbol tests, built from plain lists, and a scratch directory.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "linestyle/SymbolItem.h"
#include "linestyle/TextItem.h"
#include "markup/Markup.h"
#include "platform/Utf.h"
#include "symbols/Symbol.h"

namespace symboltest {

struct Vertex {
  int x, y;
  signed char penDown = 1;
};

// A figure of at most twenty vertices; the rest of the list is dropped.
inline CSymbolItem Figure(std::initializer_list<Vertex> vertices) {
  CSymbolItem item;
  item.m_nPoints = 0;
  for (const Vertex& v : vertices) {
    if (item.m_nPoints == CSymbolItem::kMaxPoints) break;
    item.m_ptPoints[item.m_nPoints] = POINT{v.x, v.y};
    item.m_bPenDown[item.m_nPoints] = v.penDown;
    ++item.m_nPoints;
  }
  return item;
}

// A figure whose vertices run from (x0, y) one unit at a time along x: a move to the
// first, strokes to the others.
inline CSymbolItem Path(int x0, int y, int count) {
  CSymbolItem item;
  item.m_nPoints = count;
  for (int i = 0; i < count; ++i) {
    item.m_ptPoints[i] = POINT{x0 + i, y};
    item.m_bPenDown[i] = static_cast<signed char>(i == 0 ? 0 : 1);
  }
  return item;
}

// A text anchored at (x, y) in symbol units, `height` high.
inline CTextItem Text(const char* text, double x, int y, double height = 1.0) {
  const std::u16string wide = vantrel1::FromUtf8(text);
  return CTextItem(height, 0, 1, 1000, x, y, wide.c_str());
}

inline std::vector<std::pair<int, int>> Vertices(const CSymbolItem& item) {
  std::vector<std::pair<int, int>> vertices;
  for (int i = 0; i < item.UsedPoints(); ++i) vertices.emplace_back(item.m_ptPoints[i].x, item.m_ptPoints[i].y);
  return vertices;
}

inline CSymbol Composite(std::initializer_list<CSymbolItem> items, std::initializer_list<CTextItem> texts = {}) {
  CSymbol symbol(0, 0, 1.0);
  symbol.SetDesc(u"test");
  for (const CSymbolItem& item : items) symbol.AddSymbolItem(&item);
  for (const CTextItem& text : texts) symbol.AddTextItem(&text);
  return symbol;
}

// The symbol's XML form inside a SYMBOL0 element: every field it keeps, in one string.
inline std::u16string ToXml(CSymbol& symbol) {
  CMarkup xml;
  xml.AddElem(u"SYMBOL0");
  xml.IntoElem();
  symbol.SerializeXML(&xml, 1);
  xml.OutOfElem();
  return xml.GetDoc();
}

// A fresh directory for each test, removed with its files afterwards.
class TempDirTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel1-symbols-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(m_dir); }

  std::u16string PathOf(const char* name) const { return vantrel1::FromUtf8((m_dir / name).string()); }
  void Write(const char* name, const std::string& text) const {
    std::ofstream(m_dir / name, std::ios::binary) << text;
  }
  std::string Read(const char* name) const {
    std::ifstream in(m_dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  std::filesystem::path m_dir;
};

}  // namespace symboltest
