// vantrel1 render: GeoJSON drawings onto images, and every way a drawing can be refused.
//
// The drawings are rendered at 254 dpi, where one logical unit (0.1 mm) is one pixel; a
// page's pixel (col, row) is the logical point (left + col, top - row).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CliRunner.h"

namespace {

using vantrel1::test::CliResult;
using vantrel1::test::Darkest;
using vantrel1::test::Quoted;
using vantrel1::test::RunCli;
using vantrel1::test::ScratchDir;
using vantrel1::test::WriteText;

std::string Collection(const std::string& features) {
  return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

std::string Line(const std::string& coordinates, const std::string& properties) {
  return R"({"type":"Feature","properties":{)" + properties +
         R"(},"geometry":{"type":"LineString","coordinates":)" + coordinates + "}}";
}

class Render : public ::testing::Test {
 protected:
  ScratchDir dir{"render"};

  CliResult Run(const std::string& document, const std::string& options = "--dpi 254",
                const std::string& output = "out.png") {
    WriteText(dir / "in.geojson", document);
    return RunCli("render " + Quoted(dir / "in.geojson") + " " + Quoted(dir / output) + " " + options);
  }

  // The message the program gives for a refused drawing.
  std::string Refusal(const std::string& what) {
    return "vantrel1 render: " + (dir / "in.geojson") + ": " + what + "\n";
  }

  QImage Image() { return QImage(QString::fromStdString(dir / "out.png")); }
};

TEST_F(Render, PageIsTheDataWithAMarginAndLinesLieOnTheirCoordinates) {
  // Red by text, blue by a COLORREF integer (0x00BBGGRR).
  const CliResult r = Run(Collection(Line("[[0,0],[1000,0]]", R"("line":0,"color":"#FF0000")") + "," +
                                     Line("[[0,-60],[1000,-60]]", R"("color":16711680)")));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, (dir / "out.png") + ": 120 x 26 mm, 2 features\n");
  EXPECT_EQ(r.err, "");
  const QImage image = Image();
  // 10 mm around the data: x -100 .. 1100, y -160 .. 100.
  ASSERT_EQ(image.size(), QSize(1200, 260));
  // A line of one unit on a row boundary covers two pixel rows half each.
  const QColor red = Darkest(image, 598, 98, 602, 102);
  EXPECT_GT(red.red(), 240);
  EXPECT_LT(red.green(), 140);
  EXPECT_EQ(red.green(), red.blue());
  const QColor blue = Darkest(image, 598, 158, 602, 162);
  EXPECT_GT(blue.blue(), 240);
  EXPECT_LT(blue.red(), 140);
  EXPECT_EQ(blue.red(), blue.green());
  EXPECT_EQ(Darkest(image, 0, 120, 1199, 140), QColor(Qt::white));
  EXPECT_EQ(Darkest(image, 1110, 0, 1199, 259), QColor(Qt::white));  // the lines end at x = 1000
}

TEST_F(Render, ClipRectangleIsThePage) {
  const CliResult r = Run(Collection(Line("[[0,0],[1000,0]]", "")), "--dpi 254 --clip 200,-50,400,50");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, (dir / "out.png") + ": 20 x 10 mm, 1 features\n");
  const QImage image = Image();
  ASSERT_EQ(image.size(), QSize(200, 100));
  EXPECT_LT(Darkest(image, 0, 48, 199, 52).lightness(), 160);
}

TEST_F(Render, LineNumbersReachTheLineTypeTable) {
  // Columns 150 .. 1049 (x = 50 .. 949) with ink within a pixel of the row.
  const auto darkAlongRow = [&](int row) {
    const QImage image = Image();
    int dark = 0;
    for (int x = 150; x < 1050; ++x) dark += Darkest(image, x, row - 1, x, row + 1).lightness() < 192;
    return dark;
  };
  // The solid line is unbroken, the dashed one (number 1) is not.
  ASSERT_EQ(Run(Collection(Line("[[0,0],[1000,0]]", R"("line":0)"))).status, 0);
  EXPECT_EQ(darkAlongRow(100), 900);
  ASSERT_EQ(Run(Collection(Line("[[0,0],[1000,0]]", R"("line":1)"))).status, 0);
  EXPECT_GT(darkAlongRow(100), 500);
  EXPECT_LT(darkAlongRow(100), 850);
  // A user number beyond the table falls back to the first user line type, two dashed
  // lines 15 units either side of the path.
  ASSERT_EQ(Run(Collection(Line("[[0,0],[1000,0]]", R"("line":5000)"))).status, 0);
  EXPECT_EQ(darkAlongRow(100), 0);
  EXPECT_GT(darkAlongRow(85), 500);
  EXPECT_GT(darkAlongRow(115), 500);
  // The invisible line draws nothing.
  ASSERT_EQ(Run(Collection(Line("[[0,0],[1000,0]]", R"("line":-1)"))).status, 0);
  EXPECT_EQ(Darkest(Image(), 0, 0, 1199, 199), QColor(Qt::white));
}

TEST_F(Render, FilledPolygonsLeaveTheirHolesOpen) {
  const std::string square = "[[0,0],[1000,0],[1000,1000],[0,1000],[0,0]]";
  const std::string hole = "[[400,400],[600,400],[600,600],[400,600]]";  // left open: closed on reading
  const CliResult r = Run(Collection(R"({"type":"Feature","properties":{"fill":true,"color":"#0000FF","line":-1},)"
                                     R"("geometry":{"type":"Polygon","coordinates":[)" +
                                     square + "," + hole + "]}}"));
  ASSERT_EQ(r.status, 0) << r.err;
  const QImage image = Image();
  ASSERT_EQ(image.size(), QSize(1200, 1200));
  EXPECT_EQ(image.pixelColor(300, 900), QColor(0, 0, 255));   // (200, 200)
  EXPECT_EQ(image.pixelColor(600, 600), QColor(Qt::white));  // (500, 500), in the hole
  EXPECT_EQ(image.pixelColor(50, 50), QColor(Qt::white));    // outside
}

TEST_F(Render, TableFileGivesTheUserLineTypes) {
  // One user line type: a stroke 2 mm wide.
  WriteText(dir / "wide.lin",
            "[LineType0]\nLineDesc=1,1,0,0,wide\nLineItem0=20,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\n");
  const CliResult r = Run(Collection(Line("[[0,0],[1000,0]]", R"("line":1026)")),
                          "--dpi 254 --lin " + Quoted(dir / "wide.lin"));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_LT(Darkest(Image(), 600, 92, 600, 92).lightness(), 80);
  EXPECT_LT(Darkest(Image(), 600, 108, 600, 108).lightness(), 80);
}

TEST_F(Render, SymbolsAreDrawnAndUnknownNumbersMarkedWithACross) {
  const auto point = [](const std::string& properties, const std::string& at) {
    return R"({"type":"Feature","properties":{)" + properties + R"(},"geometry":{"type":"Point","coordinates":)" +
           at + "}}";
  };
  const CliResult r = Run(Collection(Line("[[0,0],[500,0]]", "") + "," + point(R"("symbol":1024)", "[250,300]") +
                                     "," + point(R"("symbol":777)", "[400,300]") + "," + point("", "[400,150]")));
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "vantrel1 render: no such symbol; a cross marks the points of 1 feature(s): 2\n");
  const QImage image = Image();  // x -100 .. 600, y -100 .. 400
  EXPECT_LT(Darkest(image, 345, 95, 355, 105).lightness(), 80);     // the benchmark's filled quarters
  EXPECT_EQ(Darkest(image, 320, 20, 380, 60), QColor(Qt::white));     // and nothing far above it
  EXPECT_LT(Darkest(image, 498, 98, 502, 102).lightness(), 80);     // the cross's centre
  EXPECT_LT(Darkest(image, 513, 83, 517, 87).lightness(), 80);      // an arm, 15 units out
  EXPECT_EQ(Darkest(image, 480, 230, 520, 270), QColor(Qt::white));  // no symbol, no mark
}

TEST_F(Render, VectorFormatsAreWritten) {
  const std::string document = Collection(Line("[[0,0],[1000,0]]", ""));
  ASSERT_EQ(Run(document, "", "out.pdf").status, 0);
  EXPECT_EQ(vantrel1::test::ReadText(dir / "out.pdf").substr(0, 5), "%PDF-");
  ASSERT_EQ(Run(document, "", "out.svg").status, 0);
  const std::string svg = vantrel1::test::ReadText(dir / "out.svg");
  EXPECT_NE(svg.find("<svg width=\""), std::string::npos);
  EXPECT_NE(svg.find("</svg>"), std::string::npos);
}

TEST_F(Render, MalformedDrawingsAreRefusedNamingTheFeature) {
  const std::string ok = Line("[[0,0],[10,10]]", "");
  const auto geometry = [](const std::string& type, const std::string& coordinates) {
    return R"({"type":"Feature","properties":null,"geometry":{"type":")" + type + R"(","coordinates":)" +
           coordinates + "}}";
  };
  const struct {
    std::string document, message;
  } cases[] = {
      {Collection(ok + "," + Line(R"([[0,0],[1,"a"]])", "")),
       "feature 1: coordinates must be an array of [x, y] pairs"},
      {Collection(ok + "," + ok + "," + Line("[[0,0]]", "")), "feature 2: a LineString needs at least 2 positions"},
      {Collection(Line("[[0,0],[1e300,0]]", "")), "feature 0: coordinates must lie within -1e9 .. 1e9"},
      {Collection(geometry("Polygon", "[[[0,0],[5,5],[0,0]]]")),
       "feature 0: a polygon ring needs at least 3 distinct positions"},
      {Collection(geometry("Point", "[1,2,3,4]")), "feature 0: coordinates must be an [x, y] pair"},
      {Collection(geometry("GeometryCollection", "[]")),
       "feature 0: geometry type \"GeometryCollection\" is not supported"},
      {Collection(R"({"type":"Feature","geometry":{"type":"LineString"}})"),
       "feature 0: LineString has no coordinates"},
      {Collection("[0,0]"), "feature 0: not a GeoJSON Feature"},
      {Collection(Line("[[0,0],[1,1]]", R"("color":"red")")),
       "feature 0: \"color\" must be \"#RRGGBB\" or a COLORREF integer 0 .. 16777215"},
      {Collection(Line("[[0,0],[1,1]]", R"("color":16777216)")),
       "feature 0: \"color\" must be \"#RRGGBB\" or a COLORREF integer 0 .. 16777215"},
      {Collection(Line("[[0,0],[1,1]]", R"("line":1.5)")), "feature 0: \"line\" must be an integer line number"},
      {Collection(Line("[[0,0],[1,1]]", R"("line":3000000000)")),
       "feature 0: \"line\" must be an integer line number"},
      {Collection(Line("[[0,0],[1,1]]", R"("scale":0)")), "feature 0: \"scale\" must be a number from 1e-6 to 1e6"},
      {Collection(Line("[[0,0],[1,1]]", R"("fill":"yes")")), "feature 0: \"fill\" must be true or false"},
      {Collection(R"({"type":"Feature","properties":[],"geometry":null})"),
       "feature 0: properties must be an object or null"},
      {R"({"type":"Feature"})", "the document is not a GeoJSON FeatureCollection"},
      {R"({"type":"FeatureCollection","features":{}})", "a FeatureCollection needs a \"features\" array"},
      {std::string(100000, '[') + std::string(100000, ']'), "the document is not a GeoJSON FeatureCollection"},
      {Collection(Line("[[0,0],[1e400,0]]", "")), "not valid JSON: number overflow parsing '1e400'"},
      {"{\"type\":", "not valid JSON: parse error at line 1, column 9: syntax error while parsing value - "
                     "unexpected end of input; expected '[', '{', or a literal"},
  };
  for (const auto& c : cases) {
    const CliResult r = Run(c.document);
    EXPECT_EQ(r.status, 1) << c.message;
    EXPECT_EQ(r.err, Refusal(c.message));
    EXPECT_FALSE(std::filesystem::exists(dir / "out.png")) << c.message;
  }
}

TEST_F(Render, EmptyDrawingNeedsAClipRectangle) {
  const std::string empty = Collection(R"({"type":"Feature","properties":{},"geometry":null})");
  const CliResult refused = Run(empty);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, Refusal("holds nothing to draw (give --clip for an empty page)"));
  const CliResult drawn = Run(empty, "--dpi 254 --clip 0,0,100,50");
  EXPECT_EQ(drawn.status, 0);
  EXPECT_EQ(Image().size(), QSize(100, 50));
}

TEST_F(Render, OversizedFilesAndPagesAreRefused) {
  WriteText(dir / "in.geojson", std::string((16u << 20) + 1, ' '));
  CliResult r = RunCli("render " + Quoted(dir / "in.geojson") + " " + Quoted(dir / "out.png"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, Refusal("larger than 16 MiB"));
  // 10 m of line and its margins cannot be an image at 300 dpi; a PDF holds them.
  const std::string longLine = Collection(Line("[[0,0],[100000,0]]", ""));
  r = Run(longLine, "");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "vantrel1 render: " + (dir / "out.png") +
                       ": the page (11000 x 1000 mm at 300 dpi) is too large for an image; lower --dpi or write a "
                       ".pdf or .svg\n");
  EXPECT_EQ(Run(longLine, "", "out.pdf").status, 0);
}

TEST_F(Render, CommandLineErrors) {
  WriteText(dir / "in.geojson", Collection(Line("[[0,0],[1,1]]", "")));
  const std::string in = Quoted(dir / "in.geojson");
  const struct {
    std::string args;
    int status;
    std::string message;
  } cases[] = {
      {in + " out.jpg", 2, "vantrel1 render: out.jpg: the output must be a .png, .pdf or .svg file\n"},
      {in + " out.png --scale 2", 2, "vantrel1 render: unknown option '--scale'\n"},
      {in + " out.png --dpi", 2, "vantrel1 render: option --dpi needs a value\n"},
      {in + " out.png --dpi 5", 2, "vantrel1 render: --dpi must be a number from 10 to 2400\n"},
      {in + " out.png --clip 1,2,3", 2,
       "vantrel1 render: --clip must be four whole numbers left,bottom,right,top with right > left and top > bottom\n"},
      {in + " out.png --clip 0,0,-5,5", 2,
       "vantrel1 render: --clip must be four whole numbers left,bottom,right,top with right > left and top > bottom\n"},
      {in, 2, "usage: vantrel1 render IN.geojson OUT.(png|pdf|svg) [--clip left,bottom,right,top] [--lin FILE.lin] "
              "[--dpi N]\n"},
      {"/nonexistent/plan.geojson out.png", 1, "vantrel1 render: /nonexistent/plan.geojson: cannot be read\n"},
      {in + " out.png --lin /nonexistent/road.lin", 1, "vantrel1 render: /nonexistent/road.lin: cannot be read\n"},
      {in + " /nonexistent/out.png", 1, "vantrel1 render: /nonexistent/out.png: cannot be written\n"},
  };
  for (const auto& c : cases) {
    const CliResult r = RunCli("render " + c.args);
    EXPECT_EQ(r.status, c.status) << c.args;
    EXPECT_EQ(r.err, c.message);
    EXPECT_EQ(r.out, "");
  }
}

}  // namespace
