// XML throughput on a large line type table: 22,000 user line types, about 30 MB as UTF-8,
// laid out as the table writer lays it out ("\r\n" after every element, no indentation).
// Each CMarkup benchmark runs beside pugixml doing the same work on the same content:
// parsing the whole text, building the document element by element, and reading the line
// types back field by field, each found either by stepping from the one before or by
// looking it up from the top. Every benchmark reports the UTF-8 size of what it handled
// as its bytes processed, so the throughputs of the two libraries compare directly.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "markup/Markup.h"
#include "platform/Utf.h"

#ifdef VANTREL1_BENCH_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

constexpr int kLineTypes = 22000;

// One element with text, in both encodings.
struct Field {
  std::string name;
  std::string value;
  CStdStrW wideName;
  CStdStrW wideValue;
};

struct LineType {
  std::string name;
  CStdStrW wideName;
  std::vector<Field> fields;  // the header, the font and the items, in document order
  int lines = 0;
  int symbols = 0;
  int texts = 0;
  bool font = false;
};

const char* const kHeader[] = {"COLOR",   "WIDTH",     "NLINE",   "NSYMBOL",  "NTEXT",
                               "MAXLINE", "MAXSYMBOL", "MAXTEXT", "HAVEFONT", "DESC"};
const char* const kFont[] = {"LFCHAR", "LFCLIP", "LFESCA", "LFFACE", "LFHEIG", "LFITAL", "LFORIE",
                             "LFOUTP", "LFPITC", "LFQUAL", "LFSTRI", "LFUNDE", "LFWEIG", "LFWIDT"};
constexpr int kDescField = 9;
constexpr int kFaceField = 3;

Field MakeField(const std::string& name, const std::string& value) {
  return Field{name, value, vantrel1::FromUtf8(name), vantrel1::FromUtf8(value)};
}

std::string LineRecord(int i, int k) {
  return "-1," + std::to_string(150 + (i + k) % 50) + ",0,1,1," + std::to_string(300 + k * 25) +
         ",0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0";
}

std::string SymbolRecord(int i, int k) {
  return "B0.3,1,0," + std::to_string(1000 + (i % 9) * 250) + ",0,0,2,4,0,0,0,-" +
         std::to_string(800 + k * 10) + ",300,1,-800,-300,1,0,0,1";
}

std::string TextRecord(int i, int k) {
  static const char* const kTexts[] = {"V", "KAN", "\xC5\xBD" "EL", "NASIP", "\xC4\x8C" "6"};
  return "1,0,1,5000,0." + std::to_string(k + 1) + ",-150," + kTexts[(i + k) % 5];
}

LineType MakeLineType(int i) {
  LineType type;
  type.name = "USER" + std::to_string(i);
  type.wideName = vantrel1::FromUtf8(type.name);
  type.lines = 2 + i % 9;
  type.symbols = i % 8;
  type.texts = i % 6;
  type.font = i % 4 != 3;
  const int values[] = {static_cast<int>((static_cast<unsigned>(i) * 2654435761u) & 0xFFFFFFu),
                        1 + i % 5,
                        type.lines,
                        type.symbols,
                        type.texts,
                        type.lines + 2,
                        type.symbols + 1,
                        type.texts + 1,
                        type.font ? 1 : 0};
  for (int f = 0; f < kDescField; ++f) type.fields.push_back(MakeField(kHeader[f], std::to_string(values[f])));
  type.fields.push_back(
      MakeField(kHeader[kDescField], "Korisni\xC4\x8Dki tip linije " + std::to_string(i) + " \xE2\x80\x94 put"));
  if (type.font) {
    const int font[] = {238, 0, 0, 0, -12 - i % 7, 0, 0, 3, 34, 1, 0, 0, 400, 0};
    for (int f = 0; f < 14; ++f)
      type.fields.push_back(MakeField(kFont[f], f == kFaceField ? "Arial Narrow" : std::to_string(font[f])));
  }
  for (int k = 0; k < type.lines; ++k)
    type.fields.push_back(MakeField("LINEITEM" + std::to_string(k), LineRecord(i, k)));
  for (int k = 0; k < type.symbols; ++k)
    type.fields.push_back(MakeField("SYMBOLITEM" + std::to_string(k), SymbolRecord(i, k)));
  for (int k = 0; k < type.texts; ++k)
    type.fields.push_back(MakeField("TEXTITEM" + std::to_string(k), TextRecord(i, k)));
  return type;
}

struct Table {
  std::vector<LineType> types;
  std::string utf8;
  CStdStrW utf16;
};

std::string Element(const std::string& name, const std::string& value) {
  return "<" + name + ">" + value + "</" + name + ">\r\n";
}

const Table& TheTable() {
  static const Table table = [] {
    Table t;
    t.utf8 = "<LINETYPETABLE>\r\n" + Element("USERLINES", std::to_string(kLineTypes));
    for (int i = 0; i < kLineTypes; ++i) {
      t.types.push_back(MakeLineType(i));
      const LineType& type = t.types.back();
      t.utf8 += "<" + type.name + ">\r\n";
      for (const Field& field : type.fields) t.utf8 += Element(field.name, field.value);
      t.utf8 += "</" + type.name + ">\r\n";
    }
    t.utf8 += "</LINETYPETABLE>\r\n";
    t.utf16 = vantrel1::FromUtf8(t.utf8);
    return t;
  }();
  return table;
}

// `types` line types of the table were handled; bytes in proportion.
void Finish(benchmark::State& state, int types = kLineTypes) {
  char label[32];
  std::snprintf(label, sizeof label, "%.1f MB", static_cast<double>(TheTable().utf8.size()) / 1e6);
  state.SetLabel(label);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(TheTable().utf8.size()) * types / kLineTypes);
}

// The table as the table writer produces it.
void BuildMarkup(CMarkup& doc, const Table& table) {
  doc.AddElem(u"LINETYPETABLE");
  doc.IntoElem();
  doc.AddElem(u"USERLINES", vantrel1::FromUtf8(std::to_string(kLineTypes)).c_str());
  for (const LineType& type : table.types) {
    doc.AddElem(type.wideName.c_str());
    doc.IntoElem();
    for (const Field& field : type.fields) doc.AddElem(field.wideName.c_str(), field.wideValue.c_str());
    doc.OutOfElem();
  }
}

// A sum over every value read, to check that both libraries read the same things.
struct Digest {
  std::int64_t numbers = 0;
  std::int64_t textUnits = 0;
};

// The names a reader would pass, made once so that only the reading is timed.
struct ReadNames {
  std::vector<CStdStrW> header;
  std::vector<CStdStrW> font;
  std::vector<CStdStrW> items[3];
  std::vector<std::string> narrowItems[3];
  CStdStrW empty;
};

const ReadNames& Names() {
  static const ReadNames names = [] {
    ReadNames n;
    for (const char* name : kHeader) n.header.push_back(vantrel1::FromUtf8(name));
    for (const char* name : kFont) n.font.push_back(vantrel1::FromUtf8(name));
    const char* const prefixes[] = {"LINEITEM", "SYMBOLITEM", "TEXTITEM"};
    for (int kind = 0; kind < 3; ++kind)
      for (int k = 0; k < 16; ++k) {
        n.narrowItems[kind].push_back(prefixes[kind] + std::to_string(k));
        n.items[kind].push_back(vantrel1::FromUtf8(n.narrowItems[kind].back()));
      }
    return n;
  }();
  return names;
}

// A search from the top walks all earlier entries for every entry unless it remembers
// them, so reading that way takes only the first quarter of the table, lest the peer take
// minutes.
constexpr int kFromTopTypes = kLineTypes / 4;

int TypesRead(bool fromTop) { return fromTop ? kFromTopTypes : kLineTypes; }

// Line types read field by field as the table reader does. Each line type element is found
// either from the previous one, the cursor stepping along, or from the top of the
// document, as a reader that looks every entry up by its name does.
Digest ReadMarkup(CMarkup& doc, const Table& table, bool fromTop) {
  const ReadNames& names = Names();
  Digest digest;
  doc.ResetPos();
  doc.FindElem();
  for (int i = 0; i < TypesRead(fromTop); ++i) {
    const LineType& type = table.types[static_cast<std::size_t>(i)];
    if (fromTop) doc.ResetPos();
    if (!doc.FindChildElem(type.wideName.c_str())) break;
    doc.IntoElem();
    int counts[9] = {};
    for (int f = 0; f < 9; ++f) counts[f] = doc.GetDataInt(names.header[static_cast<std::size_t>(f)], 0);
    for (int f = 0; f < 9; ++f) digest.numbers += counts[f];
    digest.textUnits += static_cast<std::int64_t>(doc.GetDataStr(names.header[kDescField], names.empty).size());
    if (counts[8] == 1) {
      for (int f = 0; f < 14; ++f) {
        if (f == kFaceField)
          digest.textUnits += static_cast<std::int64_t>(doc.GetDataStr(names.font[kFaceField], names.empty).size());
        else
          digest.numbers += doc.GetDataInt(names.font[static_cast<std::size_t>(f)], 0);
      }
    }
    for (int kind = 0; kind < 3; ++kind)
      for (int k = 0; k < counts[2 + kind]; ++k)
        digest.textUnits += static_cast<std::int64_t>(
            doc.GetDataStr(names.items[kind][static_cast<std::size_t>(k)], names.empty).size());
    doc.OutOfElem();
  }
  return digest;
}

void BM_XmlMarkupSetDoc(benchmark::State& state) {
  const Table& table = TheTable();
  CMarkup doc;
  for (auto _ : state) {
    if (!doc.SetDoc(table.utf16)) state.SkipWithError("the table did not parse");
    benchmark::DoNotOptimize(doc.GetDocRef().data());
  }
  Finish(state);
}

void BM_XmlMarkupBuild(benchmark::State& state) {
  const Table& table = TheTable();
  {
    CMarkup check;
    BuildMarkup(check, table);
    if (check.GetDocRef() != table.utf16) state.SkipWithError("the built table differs from the text");
  }
  for (auto _ : state) {
    CMarkup doc;
    BuildMarkup(doc, table);
    benchmark::DoNotOptimize(doc.GetDocRef().data());
  }
  Finish(state);
}

template <bool kFromTop>
void BM_XmlMarkupRead(benchmark::State& state) {
  const Table& table = TheTable();
  CMarkup doc;
  doc.SetDoc(table.utf16);
  for (auto _ : state) benchmark::DoNotOptimize(ReadMarkup(doc, table, kFromTop));
  const Digest digest = ReadMarkup(doc, table, kFromTop);
  state.counters["numbers"] = static_cast<double>(digest.numbers);
  state.counters["units"] = static_cast<double>(digest.textUnits);
  Finish(state, TypesRead(kFromTop));
}

#ifdef VANTREL1_BENCH_PUGIXML

void BM_XmlPugiParseUtf8(benchmark::State& state) {
  const Table& table = TheTable();
  pugi::xml_document doc;
  for (auto _ : state) {
    if (!doc.load_buffer(table.utf8.data(), table.utf8.size())) state.SkipWithError("pugixml refused the table");
    benchmark::DoNotOptimize(doc.first_child());
  }
  Finish(state);
}

void BM_XmlPugiParseUtf16(benchmark::State& state) {
  const Table& table = TheTable();
  pugi::xml_document doc;
  for (auto _ : state) {
    if (!doc.load_buffer(table.utf16.data(), table.utf16.size() * sizeof(char16_t), pugi::parse_default,
                         pugi::encoding_utf16_le))
      state.SkipWithError("pugixml refused the table");
    benchmark::DoNotOptimize(doc.first_child());
  }
  Finish(state);
}

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

void BM_XmlPugiBuild(benchmark::State& state) {
  const Table& table = TheTable();
  for (auto _ : state) {
    pugi::xml_document doc;
    pugi::xml_node root = doc.append_child("LINETYPETABLE");
    root.append_child("USERLINES").text().set(kLineTypes);
    for (const LineType& type : table.types) {
      pugi::xml_node node = root.append_child(type.name.c_str());
      for (const Field& field : type.fields) node.append_child(field.name.c_str()).text().set(field.value.c_str());
    }
    // One element a line without indentation, the layout closest to the table writer's.
    StringWriter writer;
    doc.save(writer, "", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    benchmark::DoNotOptimize(writer.text.data());
  }
  Finish(state);
}

// UTF-16 code units of well-formed UTF-8 text, counted in place: pugixml hands out its
// text without a copy, and that is how a reader would use it.
std::int64_t Utf16Units(const char* text) {
  std::int64_t count = 0;
  for (auto p = reinterpret_cast<const unsigned char*>(text); *p; ++p)
    count += ((*p & 0xC0) != 0x80 ? 1 : 0) + (*p >= 0xF0 ? 1 : 0);
  return count;
}

Digest ReadPugi(const pugi::xml_document& doc, const Table& table, bool fromTop) {
  const ReadNames& names = Names();
  Digest digest;
  const pugi::xml_node root = doc.first_child();
  pugi::xml_node type;
  for (int i = 0; i < TypesRead(fromTop); ++i) {
    const char* const name = table.types[static_cast<std::size_t>(i)].name.c_str();
    type = type && !fromTop ? type.next_sibling(name) : root.child(name);
    if (!type) break;
    int counts[9] = {};
    for (int f = 0; f < 9; ++f) counts[f] = type.child(kHeader[f]).text().as_int();
    for (int f = 0; f < 9; ++f) digest.numbers += counts[f];
    digest.textUnits += Utf16Units(type.child(kHeader[kDescField]).text().get());
    if (counts[8] == 1) {
      for (int f = 0; f < 14; ++f) {
        if (f == kFaceField)
          digest.textUnits += Utf16Units(type.child(kFont[kFaceField]).text().get());
        else
          digest.numbers += type.child(kFont[f]).text().as_int();
      }
    }
    for (int kind = 0; kind < 3; ++kind) {
      for (int k = 0; k < counts[2 + kind]; ++k) {
        const std::string& item = names.narrowItems[kind][static_cast<std::size_t>(k)];
        digest.textUnits += Utf16Units(type.child(item.c_str()).text().get());
      }
    }
  }
  return digest;
}

template <bool kFromTop>
void BM_XmlPugiRead(benchmark::State& state) {
  const Table& table = TheTable();
  pugi::xml_document doc;
  doc.load_buffer(table.utf8.data(), table.utf8.size());
  for (auto _ : state) benchmark::DoNotOptimize(ReadPugi(doc, table, kFromTop));
  const Digest digest = ReadPugi(doc, table, kFromTop);
  state.counters["numbers"] = static_cast<double>(digest.numbers);
  state.counters["units"] = static_cast<double>(digest.textUnits);
  Finish(state, TypesRead(kFromTop));
}

#endif

constexpr int kIterations = 8;

}  // namespace

BENCHMARK(BM_XmlMarkupSetDoc)->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#ifdef VANTREL1_BENCH_PUGIXML
BENCHMARK(BM_XmlPugiParseUtf8)->Unit(benchmark::kMillisecond)->Iterations(kIterations);
BENCHMARK(BM_XmlPugiParseUtf16)->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#endif
BENCHMARK(BM_XmlMarkupBuild)->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#ifdef VANTREL1_BENCH_PUGIXML
BENCHMARK(BM_XmlPugiBuild)->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#endif
BENCHMARK(BM_XmlMarkupRead<false>)->Name("BM_XmlMarkupRead")->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#ifdef VANTREL1_BENCH_PUGIXML
BENCHMARK(BM_XmlPugiRead<false>)->Name("BM_XmlPugiRead")->Unit(benchmark::kMillisecond)->Iterations(kIterations);
#endif
BENCHMARK(BM_XmlMarkupRead<true>)->Name("BM_XmlMarkupReadFromTop")->Unit(benchmark::kMillisecond)->Iterations(2);
#ifdef VANTREL1_BENCH_PUGIXML
BENCHMARK(BM_XmlPugiRead<true>)->Name("BM_XmlPugiReadFromTop")->Unit(benchmark::kMillisecond)->Iterations(2);
#endif
