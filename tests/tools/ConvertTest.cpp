// vantrel1 convert: line type tables between table files, XML documents and archives.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "CliRunner.h"
#include "linetable/LineTypeTable.h"
#include "markup/Markup.h"
#include "platform/Utf.h"

namespace fs = std::filesystem;

namespace {

struct Result {
  int status;
  std::string out;  // what the program wrote, standard output then standard error
};

Result Convert(const std::string& args) {
  const vantrel1::test::CliResult r = vantrel1::test::RunCli("convert " + args);
  return {r.status, r.out + r.err};
}

class ConvertTables : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-convert-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }

  std::string File(const char* name) const { return (m_dir / name).string(); }
  std::u16string Wide(const char* name) const { return vantrel1::FromUtf8(File(name)); }
  void Write(const char* name, const std::string& bytes) const { std::ofstream(m_dir / name, std::ios::binary) << bytes; }
  std::string Read(const char* name) const {
    std::ifstream in(m_dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  // The built-in table less its last 40 user line types, as a table file.
  void WriteSmallTable(const char* name) const {
    CLineTypeTable table;
    table.FromFile(nullptr, nullptr, nullptr);
    while (table.m_nUserLines > 3) table.DeleteLineType(5000);
    ASSERT_EQ(table.ToFile(nullptr, Wide(name).c_str(), 1), 1);
  }

  fs::path m_dir;
};

TEST_F(ConvertTables, GoesThroughXmlAndArchiveBackToTheSameTableFile) {
  WriteSmallTable("start.lin");
  const Result toXml = Convert(File("start.lin") + " " + File("table.xml"));
  EXPECT_EQ(toXml.status, 0) << toXml.out;
  EXPECT_EQ(toXml.out, File("table.xml") + ": 3 user line types\n");
  const Result toArchive = Convert(File("table.xml") + " " + File("table.VLT"));
  EXPECT_EQ(toArchive.status, 0) << toArchive.out;
  const Result toLin = Convert(File("table.VLT") + " " + File("end.LIN"));
  EXPECT_EQ(toLin.status, 0) << toLin.out;

  EXPECT_EQ(Read("end.LIN"), Read("start.lin"));
  const std::string xml = Read("table.xml");
  EXPECT_EQ(xml.rfind("<LINETYPETABLE>\r\n<USERLINES>3</USERLINES>\r\n<SYSTEMLINES>9</SYSTEMLINES>\r\n", 0), 0u);
  EXPECT_EQ(Read("table.VLT").substr(0, 12), std::string("\x02\0\0\0\x03\0\0\0\x09\0\0\0", 12));
}

TEST_F(ConvertTables, RefusesAnUnknownExtensionOrAWrongNumberOfArguments) {
  WriteSmallTable("start.lin");
  Result r = Convert(File("start.lin") + " " + File("table.txt"));
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("table.txt") + ": unknown extension (use .lin, .xml or .vlt)\n");
  r = Convert(File("start"));
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out, "usage: vantrel1 convert IN OUT  (line type tables: .lin, .xml, .vlt)\n");
  EXPECT_FALSE(fs::exists(m_dir / "table.txt"));
}

TEST_F(ConvertTables, SaysWhyAnInputCannotBeUsed) {
  Result r = Convert(File("missing.xml") + " " + File("out.lin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("missing.xml") + ": cannot be read\n");

  Write("symbols.xml", "<SYMBOLTABLE><USERSYMBOLS>0</USERSYMBOLS></SYMBOLTABLE>");
  r = Convert(File("symbols.xml") + " " + File("out.lin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("symbols.xml") +
                       ": not a line type table: its first element is <SYMBOLTABLE>, not <LINETYPETABLE>\n");

  Write("broken.xml", "<LINETYPETABLE><USERLINES>1</USERLINES>");
  r = Convert(File("broken.xml") + " " + File("out.lin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out.rfind("vantrel1 convert: " + File("broken.xml") + ": not a line type table: ", 0), 0u) << r.out;

  Write("short.vlt", std::string("\x02\0\0\0\x03\0\0\0\x09\0\0\0\0\0", 14));
  r = Convert(File("short.vlt") + " " + File("out.lin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("short.vlt") + ": not a line type table: archive: unexpected end of data\n");

  Write("empty.lin", "[Other]\r\nKey=1\r\n");
  r = Convert(File("empty.lin") + " " + File("out.xml"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("empty.lin") +
                       ": not a line type table: no LineType0 section, or a line type that does not read\n");
  EXPECT_FALSE(fs::exists(m_dir / "out.lin"));
  EXPECT_FALSE(fs::exists(m_dir / "out.xml"));
}

TEST_F(ConvertTables, AnArchiveWithoutTheNineSystemLineTypesIsRefused) {
  Write("partial.vlt", std::string("\x02\0\0\0\0\0\0\0\0\0\0\0", 12));
  const Result r = Convert(File("partial.vlt") + " " + File("out.xml"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("partial.vlt") + ": not a line type table: it holds 0 system line types, not 9\n");
}

TEST_F(ConvertTables, AnOutputThatCannotBeWrittenFails) {
  WriteSmallTable("start.lin");
  const Result r = Convert(File("start.lin") + " " + File("nowhere/table.xml"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 convert: " + File("nowhere/table.xml") + ": cannot be written\n");
}

}  // namespace
