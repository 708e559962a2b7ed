// vantrel1 catalogue: the sheet of line styles, and its refusals.
//
// The sheet is laid out in logical units of 0.1 mm: cells of 900 by 250 run down the
// columns of a grid centred on the page, whose top lies 26 mm below the page's top edge
// (margin and title). Each cell's sample path lies between 4 mm and 14 mm above its
// bottom and 5 mm in from its sides. The tests render at 100 dpi.
#include <gtest/gtest.h>

#include <string>

#include "CliRunner.h"

namespace {

using vantrel1::test::CliResult;
using vantrel1::test::Darkest;
using vantrel1::test::Quoted;
using vantrel1::test::RunCli;
using vantrel1::test::ScratchDir;
using vantrel1::test::WriteText;

constexpr double kPixelsPerUnit = 100.0 / 254.0;

struct Sheet {
  int width, height;  // logical units
  int columns, rows;

  // The darkest pixel of the band in which entry i's sample path runs.
  QColor PathInk(const QImage& image, int i) const {
    const int left = (width - columns * 900) / 2 + (i / rows) * 900;
    const int bottom = height - 260 - (i % rows + 1) * 250;
    const auto px = [](double units) { return static_cast<int>(units * kPixelsPerUnit); };
    return Darkest(image, px(left + 50), px(height - bottom - 140), px(left + 850), px(height - bottom - 40));
  }
  // The darkest pixel around the point where entry i's symbol stands (mid-cell, 15 mm up),
  // below the label.
  QColor SymbolInk(const QImage& image, int i) const {
    const int middle = (width - columns * 900) / 2 + (i / rows) * 900 + 450;
    const int bottom = height - 260 - (i % rows + 1) * 250;
    const auto px = [](double units) { return static_cast<int>(units * kPixelsPerUnit); };
    return Darkest(image, px(middle - 120), px(height - bottom - 180), px(middle + 120), px(height - bottom - 80));
  }
};

constexpr Sheet kA2{4200, 5940, 4, 15};  // 60 entries
constexpr Sheet kA3{2970, 4200, 3, 9};   // 27 entries
constexpr Sheet kA4{2100, 2970, 2, 9};   // 18 entries

class Catalogue : public ::testing::Test {
 protected:
  ScratchDir dir{"catalogue"};

  CliResult Run(const std::string& options, const std::string& output = "sheet.png") {
    return RunCli("catalogue " + Quoted(dir / output) + " --dpi 100 " + options);
  }
  QImage Image() { return QImage(QString::fromStdString(dir / "sheet.png")); }

  // A table file with one user line type that is only a text, "ABC" every 20 mm.
  std::string TextOnlyTable() {
    WriteText(dir / "text.lin", "[LineType0]\nLineDesc=1,0,0,1,oznaka\nTextItem0=1,0,1,2000,0.5,0,ABC\n");
    return "--lin " + Quoted(dir / "text.lin");
  }
};

TEST_F(Catalogue, BuiltInTableFillsAnA2Sheet) {
  const CliResult r = Run("");
  ASSERT_EQ(r.status, 0) << r.err;
  // -1, 0 ... 15 and the 43 default user line types.
  EXPECT_EQ(r.out, (dir / "sheet.png") + ": 60 line styles, 420 x 594 mm\n");
  EXPECT_EQ(r.err, "");
  const QImage image = Image();
  ASSERT_EQ(image.size(), QSize(1654, 2339));
  EXPECT_EQ(kA2.PathInk(image, 0), QColor(Qt::white));  // the invisible line
  EXPECT_LT(kA2.PathInk(image, 1).lightness(), 64);     // solid
  EXPECT_LT(kA2.PathInk(image, 59).lightness(), 64);    // the last user line type, 1068
}

TEST_F(Catalogue, ColourOptionColoursTheLines) {
  ASSERT_EQ(Run("--color 0000FF").status, 0);
  const QColor ink = kA2.PathInk(Image(), 1);
  EXPECT_GT(ink.blue(), 200);
  EXPECT_LT(ink.red(), 60);
  EXPECT_LT(ink.green(), 60);
}

TEST_F(Catalogue, TableFileLinesFollowTheSystemOnesAndTextModeControlsTheirText) {
  CliResult r = Run(TextOnlyTable());
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, (dir / "sheet.png") + ": 18 line styles, 210 x 297 mm\n");
  QImage image = Image();
  ASSERT_EQ(image.size(), QSize(827, 1169));
  EXPECT_LT(kA4.PathInk(image, 17).lightness(), 128);
  // White text on the white sheet, then no text at all.
  ASSERT_EQ(Run(TextOnlyTable() + " --text-mode 1").status, 0);
  EXPECT_EQ(kA4.PathInk(Image(), 17), QColor(Qt::white));
  ASSERT_EQ(Run(TextOnlyTable() + " --text-mode 2").status, 0);
  EXPECT_EQ(kA4.PathInk(Image(), 17), QColor(Qt::white));
  EXPECT_LT(kA4.PathInk(Image(), 1).lightness(), 64);  // lines without text still draw
}

TEST_F(Catalogue, TablesConvertedToXmlAndArchivesDrawTheirLineTypes) {
  ASSERT_EQ(Run(TextOnlyTable()).status, 0);
  const QColor fromLin = kA4.PathInk(Image(), 17);
  ASSERT_LT(fromLin.lightness(), 128);
  for (const char* form : {"table.xml", "table.vlt"}) {
    const std::string stored = Quoted(dir / form);
    ASSERT_EQ(RunCli("convert " + Quoted(dir / "text.lin") + " " + stored).status, 0) << form;
    const CliResult r = Run(std::string(form).ends_with(".xml") ? "--xml " + stored : "--lin " + stored);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, (dir / "sheet.png") + ": 18 line styles, 210 x 297 mm\n");
    EXPECT_EQ(kA4.PathInk(Image(), 17), fromLin) << form;
  }
}

TEST_F(Catalogue, SymbolSheetShowsTheOldStyleSymbolsThenTheTableOnes) {
  const CliResult r = Run("--sheet symbols --color 0000FF");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, (dir / "sheet.png") + ": 27 symbols, 297 x 420 mm\n");
  const QImage image = Image();
  ASSERT_EQ(image.size(), QSize(1169, 1654));
  // 1 "Kvadrat", 19 "Popunjen krug (veliki)", then the table's 1024 ... 1031, in blue.
  for (int entry : {0, 18, 19, 26}) {
    const QColor ink = kA3.SymbolInk(image, entry);
    EXPECT_LT(ink.red(), 100) << entry;
    EXPECT_GT(ink.blue(), 200) << entry;
  }
  EXPECT_EQ(kA3.SymbolInk(image, 1), QColor(Qt::white));  // 2 "Sim2" has no shape
}

TEST_F(Catalogue, VectorFormatsAreWritten) {
  ASSERT_EQ(Run("", "sheet.pdf").status, 0);
  EXPECT_EQ(vantrel1::test::ReadText(dir / "sheet.pdf").substr(0, 5), "%PDF-");
  ASSERT_EQ(Run("", "sheet.svg").status, 0);
  EXPECT_NE(vantrel1::test::ReadText(dir / "sheet.svg").find("</svg>"), std::string::npos);
}

TEST_F(Catalogue, Refusals) {
  WriteText(dir / "empty.lin", "[Other]\nKey=1\n");
  const std::string sheet = Quoted(dir / "sheet.png");
  const struct {
    std::string args;
    int status;
    std::string message;
  } cases[] = {
      {"sheet.bmp", 2, "vantrel1 catalogue: sheet.bmp: the output must be a .png, .pdf or .svg file\n"},
      {sheet + " --xml table.xml", 1, "vantrel1 catalogue: table.xml: cannot be read\n"},
      {sheet + " --xml table.txt", 1,
       "vantrel1 catalogue: table.txt: unknown extension (use .lin, .xml or .vlt)\n"},
      {sheet + " --xml table.xml --lin table.lin", 2, "vantrel1 catalogue: give --lin or --xml, not both\n"},
      {sheet + " --color blue", 2,
       "vantrel1 catalogue: --color must be RRGGBB in hexadecimal, for example 0000FF for blue\n"},
      {sheet + " --text-mode 3", 2,
       "vantrel1 catalogue: --text-mode must be 0 (text in the line's colour), 1 (white) or 2 (none)\n"},
      {sheet + " --dpi 3000", 2, "vantrel1 catalogue: --dpi must be a number from 10 to 2400\n"},
      {sheet + " --width 2", 2, "vantrel1 catalogue: unknown option '--width'\n"},
      {sheet + " other.png", 2,
       "usage: vantrel1 catalogue OUT.(png|pdf|svg) [--lin FILE.lin | --xml FILE.xml] [--color RRGGBB] "
       "[--text-mode 0|1|2] [--dpi N] [--sheet lines|symbols]\n"},
      {sheet + " --sheet maps", 2, "vantrel1 catalogue: --sheet must be lines or symbols\n"},
      {sheet + " --sheet symbols --text-mode 1", 2,
       "vantrel1 catalogue: --lin, --xml and --text-mode belong to the sheet of lines\n"},
      {sheet + " --lin /nonexistent/road.lin", 1, "vantrel1 catalogue: /nonexistent/road.lin: cannot be read\n"},
      {sheet + " --lin " + Quoted(dir / "empty.lin"), 1,
       "vantrel1 catalogue: " + (dir / "empty.lin") +
           ": not a line type table: no LineType0 section, or a line type that does not read\n"},
      {"/nonexistent/sheet.pdf", 1,
       "vantrel1 catalogue: /nonexistent/sheet.pdf: cannot be written (420 x 594 mm at 300 dpi)\n"},
  };
  for (const auto& c : cases) {
    const CliResult r = RunCli("catalogue " + c.args);
    EXPECT_EQ(r.status, c.status) << c.args;
    EXPECT_EQ(r.err, c.message);
    EXPECT_EQ(r.out, "");
  }
  EXPECT_FALSE(std::filesystem::exists(dir / "sheet.png"));
}

}  // namespace
