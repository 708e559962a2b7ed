#include "suite/CoordSysX.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

// WGS 84 as GDAL wrote it before axes were stated: no identifiers, longitude first.
constexpr char16_t kPlainWgs84[] =
    u"GEOGCS[\"WGS 84\",DATUM[\"WGS_1984\",SPHEROID[\"WGS 84\",6378137,298.257223563]],"
    u"PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]]";
constexpr char16_t kEsriUtm34N[] =
    u"PROJCS[\"WGS_1984_UTM_Zone_34N\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\","
    u"6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]],"
    u"PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",0.0],"
    u"PARAMETER[\"Central_Meridian\",21.0],PARAMETER[\"Scale_Factor\",0.9996],PARAMETER[\"Latitude_Of_Origin\",0.0],"
    u"UNIT[\"Meter\",1.0]]";
// The same projection half a degree further east: no registry entry.
constexpr char16_t kSiteGrid[] =
    u"PROJCS[\"Gradiliste\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\","
    u"6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]],"
    u"PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",0.0],"
    u"PARAMETER[\"Central_Meridian\",21.5],PARAMETER[\"Scale_Factor\",0.9996],PARAMETER[\"Latitude_Of_Origin\",0.0],"
    u"UNIT[\"Meter\",1.0]]";
constexpr char16_t kLocalGrid[] =
    u"ENGCRS[\"Gradiliste\",EDATUM[\"Osovina\"],CS[Cartesian,2],AXIS[\"x\",east,ORDER[1],LENGTHUNIT[\"metre\",1]],"
    u"AXIS[\"y\",north,ORDER[2],LENGTHUNIT[\"metre\",1]]]";

// Belgrade, and where it lies in each system (cs2cs of PROJ 9.1, EPSG:4326 to the code).
constexpr double kLat = 44.8176, kLon = 20.4633;

CCoordSysX Epsg(int code) {
  CCoordSysX system;
  EXPECT_EQ(system.FromEPSG(nullptr, code, 1), 1) << code;
  return system;
}

CCoordSysX Wkt(const char16_t* wkt) {
  CCoordSysX system;
  EXPECT_EQ(system.FromWktStr(wkt, 1), 1);
  return system;
}

CStdStrW WktOf(const CCoordSysX& system, int style, int* extra = nullptr) {
  CStdStrW wkt;
  system.ToWktStr(&wkt, extra, style);
  return wkt;
}

struct Texts {
  CStdStrW main;
  std::u16string units;
};

Texts Strings(const CCoordSysX& system, int capacity = 80, const char16_t* separator = u"|") {
  WCHAR units[80] = u"old";
  Texts texts;
  texts.main = system.ToStrings(units, capacity, separator, 0);
  texts.units = units;
  return texts;
}

// A file of the test's own in the temporary folder, removed afterwards.
class TempFile {
 public:
  explicit TempFile(const std::string& name)
      : m_path(fs::temp_directory_path() / ("vantrel1-" + std::to_string(::getpid()) + "-" + name)) {}
  ~TempFile() { fs::remove(m_path); }
  CStdStrW Path() const { return CStdStrW::FromUtf8(m_path.string()); }
  void Write(const std::string& bytes) const { std::ofstream(m_path, std::ios::binary) << bytes; }
  std::string Read() const {
    std::stringstream text;
    text << std::ifstream(m_path, std::ios::binary).rdbuf();
    return text.str();
  }

 private:
  fs::path m_path;
};

void ExpectTransform(const CCoordSysX& from, const CCoordSysX& to, int geographic, double first, double second,
                     double expectedFirst, double expectedSecond, double tolerance) {
  ASSERT_EQ(CCoordSysX::Transform(from, to, &first, &second, geographic), 1);
  EXPECT_NEAR(first, expectedFirst, tolerance);
  EXPECT_NEAR(second, expectedSecond, tolerance);
}

TEST(CoordSysXStates, NoneIsNeitherValidNorDefinedAndHasNoTexts) {
  const CCoordSysX none;
  EXPECT_EQ(none.IsValid(), 0);
  EXPECT_EQ(none.IsDefinedCSys(), 0);
  CStdStrW text = u"stari";
  int extra = 7;
  EXPECT_EQ(none.ToWktStr(&text, &extra, CCoordSysX::kWkt2), 0);
  EXPECT_EQ(text, u"");
  EXPECT_EQ(extra, 0);
  text = u"stari";
  EXPECT_EQ(none.GetEPSG(&text), 0);
  EXPECT_EQ(text, u"");
  EXPECT_EQ(none.GetName(), u"");
  const Texts texts = Strings(none);
  EXPECT_EQ(texts.main, u"");
  EXPECT_EQ(texts.units, u"");
  EXPECT_TRUE(none == CCoordSysX());
  EXPECT_TRUE(none != Epsg(4326));
}

TEST(CoordSysXEpsg, RegistrySystemsAreDefinedAndKeepTheirCode) {
  for (const int code : {4326, 3857, 32634, 31276}) {
    const CCoordSysX system = Epsg(code);
    EXPECT_EQ(system.IsValid(), 1);
    EXPECT_EQ(system.IsDefinedCSys(), 1);
    EXPECT_EQ(system.GetEPSGCode(), code);
    CStdStrW text;
    EXPECT_EQ(system.GetEPSG(&text), 1);
    EXPECT_EQ(text, CStdStrW::FromUtf8(std::to_string(code)));
  }
  EXPECT_EQ(Epsg(32634).GetName(), u"WGS 84 / UTM zone 34N");
  EXPECT_EQ(Epsg(4326).GetName(), u"WGS 84");
}

TEST(CoordSysXEpsg, CodesThatNameNoSystemLeaveTheSystemAsItWas) {
  CCoordSysX system = Epsg(32634);
  // 7030 is the WGS 84 ellipsoid and 5703 a height system: registry entries, not places.
  for (const int code : {0, -4326, 1, 999999, 7030, 5703}) {
    EXPECT_EQ(system.FromEPSG(nullptr, code, 0), 0) << code;
    EXPECT_EQ(system.GetEPSGCode(), 32634) << code;
  }
}

TEST(CoordSysXWkt, EachStyleReadsBackAsTheSameSystem) {
  for (const int code : {4326, 3857, 32634, 31276}) {
    const CCoordSysX system = Epsg(code);
    for (const int style : {CCoordSysX::kWktGdal, CCoordSysX::kWktEsri, CCoordSysX::kWkt2}) {
      int extra = -1;
      const CStdStrW wkt = WktOf(system, style, &extra);
      EXPECT_EQ(extra, code);
      CCoordSysX back;
      ASSERT_EQ(back.FromWktStr(wkt.c_str(), 1), 1) << code << " style " << style;
      EXPECT_TRUE(back == system) << code << " style " << style;
      EXPECT_EQ(back.GetEPSGCode(), code) << code << " style " << style;
    }
  }
}

TEST(CoordSysXWkt, StylesHaveTheirDialectsAndLayout) {
  const CCoordSysX system = Epsg(32634);
  const CStdStrW gdal = WktOf(system, CCoordSysX::kWktGdal);
  const CStdStrW esri = WktOf(system, CCoordSysX::kWktEsri);
  const CStdStrW wkt2 = WktOf(system, CCoordSysX::kWkt2);
  EXPECT_EQ(gdal.rfind(u"PROJCS[\"WGS 84 / UTM zone 34N\",GEOGCS[\"WGS 84\"", 0), 0u) << gdal.ToUtf8();
  EXPECT_EQ(gdal.find(u'\n'), CStdStrW::npos);
  EXPECT_EQ(esri, kEsriUtm34N);
  EXPECT_EQ(wkt2.rfind(u"PROJCRS[\"WGS 84 / UTM zone 34N\",\n    BASEGEOGCRS[\"WGS 84\",", 0), 0u) << wkt2.ToUtf8();
  EXPECT_NE(wkt2.find(u"ID[\"EPSG\",32634]"), CStdStrW::npos);

  CStdStrW text = u"stari";
  for (const int style : {0, 4}) {
    EXPECT_EQ(system.ToWktStr(&text, nullptr, style), 0) << style;
    EXPECT_EQ(text, u"");
  }
  EXPECT_EQ(system.ToWktStr(nullptr, nullptr, CCoordSysX::kWkt2), 0);
}

TEST(CoordSysXWkt, TextEditedWithWindowsLineEndsStillReads) {
  CStdStrW wkt = WktOf(Epsg(31276), CCoordSysX::kWkt2);
  CStdStrW edited;
  for (const char16_t c : wkt) edited += c == u'\n' ? std::u16string(u"\r\n") : std::u16string(1, c);
  EXPECT_TRUE(Wkt(edited.c_str()) == Epsg(31276));
}

TEST(CoordSysXWkt, SystemsWithoutIdentifierAreIdentifiedWhenUnambiguous) {
  CStdStrW code;
  EXPECT_EQ(Wkt(kPlainWgs84).GetEPSG(&code), 1);
  EXPECT_EQ(code, u"4326");
  EXPECT_EQ(Wkt(kEsriUtm34N).GetEPSGCode(), 32634);
  EXPECT_TRUE(Wkt(kEsriUtm34N) == Epsg(32634));

  const CCoordSysX site = Wkt(kSiteGrid);
  EXPECT_EQ(site.IsDefinedCSys(), 1);
  EXPECT_EQ(site.GetEPSG(&code), 0);
  EXPECT_EQ(code, u"");
  int extra = -1;
  EXPECT_FALSE(WktOf(site, CCoordSysX::kWkt2, &extra).empty());
  EXPECT_EQ(extra, 0);
  EXPECT_TRUE(site != Epsg(32634));
}

TEST(CoordSysXWkt, RefusedTextLeavesTheSystemAsItWas) {
  CCoordSysX system = Epsg(32634);
  const std::u16string valid = WktOf(Epsg(4326), CCoordSysX::kWkt2);
  const std::u16string tooLong = valid + std::u16string(CCoordSysX::kMaxTextLength - valid.size() + 1, u' ');
  const char16_t* refused[] = {
      nullptr, u"", u"   ", u"WGS 84", u"GEOGCS[\"WGS 84\"", u"ELLIPSOID[\"WGS 84\",6378137,298.257223563]",
      u"VERTCRS[\"EGM96 height\",VDATUM[\"EGM96 geoid\"],CS[vertical,1],AXIS[\"up\",up,LENGTHUNIT[\"metre\",1]]]",
      tooLong.c_str()};
  for (const char16_t* text : refused) {
    EXPECT_EQ(system.FromWktStr(text, 0), 0) << (text ? CStdStrW(CStdStrW(text).substr(0, 40)).ToUtf8() : "null");
    EXPECT_EQ(system.GetEPSGCode(), 32634);
  }
  // Text after the system is tolerated only when not asked to be strict.
  const std::u16string trailing = valid + u" dodatak";
  EXPECT_EQ(system.FromWktStr(trailing.c_str(), 1), 0);
  EXPECT_EQ(system.GetEPSGCode(), 32634);
  EXPECT_EQ(system.FromWktStr(trailing.c_str(), 0), 1);
  EXPECT_EQ(system.GetEPSGCode(), 4326);
  const std::u16string longest = valid + std::u16string(CCoordSysX::kMaxTextLength - valid.size(), u' ');
  EXPECT_EQ(system.FromWktStr(longest.c_str(), 1), 1);
}

TEST(CoordSysXLocal, EngineeringSystemIsValidButNotDefined) {
  const CCoordSysX local = Wkt(kLocalGrid);
  EXPECT_EQ(local.IsValid(), 1);
  EXPECT_EQ(local.IsDefinedCSys(), 0);
  EXPECT_EQ(local.GetEPSGCode(), 0);
  EXPECT_EQ(local.GetName(), u"Gradiliste");
  EXPECT_TRUE(local == Wkt(kLocalGrid));
  EXPECT_TRUE(local != CCoordSysX());
  EXPECT_TRUE(local != Epsg(32634));
  const Texts texts = Strings(local);
  EXPECT_EQ(texts.units, u"metre|1");
  CCoordSysX back;
  ASSERT_EQ(back.FromStrings(nullptr, texts.main.c_str(), texts.units.c_str(), 1, u"|"), 1);
  EXPECT_EQ(back.IsDefinedCSys(), 0);
  EXPECT_TRUE(back == local);
  double x = 100, y = 200;
  EXPECT_EQ(CCoordSysX::Transform(local, local, &x, &y, 0), 0);
  EXPECT_EQ(CCoordSysX::Transform(Epsg(32634), local, &x, &y, 0), 0);
  EXPECT_EQ(x, 100);
  EXPECT_EQ(y, 200);
}

TEST(CoordSysXFile, EsriFileIsOneLineOfUtf8AndReadsBack) {
  TempFile file("utm.prj");
  const CCoordSysX system = Epsg(32634);
  ASSERT_EQ(system.ToWktFileESRI(nullptr, file.Path().c_str()), 1);
  EXPECT_EQ(file.Read(), CStdStrW(kEsriUtm34N).ToUtf8());
  CCoordSysX back;
  ASSERT_EQ(back.FromWktFileESRI(file.Path().c_str()), 1);
  EXPECT_TRUE(back == system);
  EXPECT_EQ(back.GetEPSGCode(), 32634);
  EXPECT_EQ(CCoordSysX().ToWktFileESRI(nullptr, file.Path().c_str()), 0);
  EXPECT_EQ(file.Read(), CStdStrW(kEsriUtm34N).ToUtf8());  // not touched
}

TEST(CoordSysXFile, ReadsByteOrderMarkAndLatin1Names) {
  TempFile file("named.prj");
  const std::string wkt = CStdStrW(kPlainWgs84).ToUtf8();
  const std::string named = "GEOGCS[\"Gel\xE4nde\"" + wkt.substr(wkt.find(','));  // ä in Latin-1
  CCoordSysX system;
  file.Write(named);
  ASSERT_EQ(system.FromWktFileESRI(file.Path().c_str()), 1);
  EXPECT_EQ(system.GetName(), u"Gel\u00E4nde");
  file.Write("\xEF\xBB\xBFGEOGCS[\"Gradili\xC5\xA1te\"" + wkt.substr(wkt.find(',')) + "\r\n");
  ASSERT_EQ(system.FromWktFileESRI(file.Path().c_str()), 1);
  EXPECT_EQ(system.GetName(), u"Gradili\u0161te");
}

TEST(CoordSysXFile, UnreadableOrUnwritablePathsFail) {
  CCoordSysX system = Epsg(3857);
  const TempFile missing("missing.prj");
  EXPECT_EQ(system.FromWktFileESRI(missing.Path().c_str()), 0);
  EXPECT_EQ(system.FromWktFileESRI(nullptr), 0);
  const TempFile garbage("garbage.prj");
  garbage.Write("nije projekcija");
  EXPECT_EQ(system.FromWktFileESRI(garbage.Path().c_str()), 0);
  EXPECT_EQ(system.GetEPSGCode(), 3857);
  const TempFile inMissingFolder("no-such-folder/x.prj");
  EXPECT_EQ(system.ToWktFileESRI(nullptr, inMissingFolder.Path().c_str()), 0);
  EXPECT_EQ(system.ToWktFileESRI(nullptr, nullptr), 0);
}

TEST(CoordSysXStrings, CarryCodeWktAndUnitsAndReadBack) {
  const Texts utm = Strings(Epsg(32634));
  EXPECT_EQ(utm.main.rfind(u"VKS1|32634|PROJCRS[\"WGS 84 / UTM zone 34N\",BASEGEOGCRS[", 0), 0u) << utm.main.ToUtf8();
  EXPECT_EQ(utm.main.find(u'\n'), CStdStrW::npos);
  EXPECT_EQ(utm.units, u"metre|1");
  EXPECT_EQ(Strings(Epsg(4326)).units, u"degree|0.017453292519943295");
  EXPECT_EQ(Strings(Wkt(kSiteGrid)).main.rfind(u"VKS1||PROJCRS[\"Gradiliste\"", 0), 0u);

  for (const int code : {4326, 3857, 32634, 31276}) {
    const Texts texts = Strings(Epsg(code), 80, u";");
    CCoordSysX back;
    ASSERT_EQ(back.FromStrings(nullptr, texts.main.c_str(), texts.units.c_str(), 1, u";"), 1) << code;
    EXPECT_TRUE(back == Epsg(code));
    EXPECT_EQ(back.GetEPSGCode(), code);
  }
  // A system only a lenient reading takes (a local system without its datum) crosses too.
  CCoordSysX lenient;
  ASSERT_EQ(lenient.FromWktStr(u"LOCAL_CS[\"Gradiliste\",UNIT[\"metre\",1]]", 1), 0);
  ASSERT_EQ(lenient.FromWktStr(u"LOCAL_CS[\"Gradiliste\",UNIT[\"metre\",1]]", 0), 1);
  const Texts texts = Strings(lenient);
  CCoordSysX back;
  ASSERT_EQ(back.FromStrings(nullptr, texts.main.c_str(), texts.units.c_str(), 1, u"|"), 1);
  EXPECT_TRUE(back == lenient);
  CCoordSysX fromCode;
  EXPECT_EQ(fromCode.FromStrings(nullptr, u"VKS1|3857|", u"", 1, u"|"), 1);
  EXPECT_EQ(fromCode.GetEPSGCode(), 3857);
}

TEST(CoordSysXStrings, UnitsMustAgreeWhenAsked) {
  const CCoordSysX utm = Epsg(32634);
  const Texts cut = Strings(utm, 4);
  EXPECT_EQ(cut.units, u"met");
  CCoordSysX system = Epsg(4326);
  EXPECT_EQ(system.FromStrings(nullptr, cut.main.c_str(), cut.units.c_str(), 1, u"|"), 0);
  EXPECT_EQ(system.FromStrings(nullptr, cut.main.c_str(), u"foot|0.3048", 1, u"|"), 0);
  EXPECT_EQ(system.FromStrings(nullptr, cut.main.c_str(), u"metre|1x", 1, u"|"), 0);
  EXPECT_EQ(system.GetEPSGCode(), 4326);
  EXPECT_EQ(system.FromStrings(nullptr, cut.main.c_str(), u"metar|1.0000000000001", 1, u"|"), 1);
  EXPECT_EQ(system.GetEPSGCode(), 32634);
  system = Epsg(4326);
  EXPECT_EQ(system.FromStrings(nullptr, cut.main.c_str(), cut.units.c_str(), 0, u"|"), 1);
  EXPECT_EQ(system.GetEPSGCode(), 32634);
  EXPECT_EQ(Strings(utm, 0).units, u"old");  // no room: the buffer is not touched
  EXPECT_EQ(Strings(utm, 1).units, u"");
}

TEST(CoordSysXStrings, MalformedTextsAreRefused) {
  CCoordSysX system = Epsg(3857);
  const Texts good = Strings(Epsg(4326));
  const std::u16string wkt = good.main.substr(good.main.find(u"GEOGCRS"));
  const std::u16string refused[] = {u"", u"VKS1", u"VKS1|4326", u"VKS1||", u"VKS1|x|", u"VKS1|-4326|",
                                    u"VKS2|4326|" + wkt, u"|4326|" + wkt, u"VKS1|4326|nije"};
  for (const std::u16string& text : refused) {
    EXPECT_EQ(system.FromStrings(nullptr, text.c_str(), u"", 1, u"|"), 0) << CStdStrW(text.substr(0, 20)).ToUtf8();
    EXPECT_EQ(system.GetEPSGCode(), 3857);
  }
  EXPECT_EQ(system.FromStrings(nullptr, good.main.c_str(), u"", 1, u";"), 0);  // another separator
  EXPECT_EQ(system.FromStrings(nullptr, nullptr, u"", 1, u"|"), 0);
  const std::u16string tooLong = good.main + std::u16string(CCoordSysX::kMaxTextLength, u' ');
  EXPECT_EQ(system.FromStrings(nullptr, tooLong.c_str(), u"", 0, u"|"), 0);
  EXPECT_EQ(system.GetEPSGCode(), 3857);
}

TEST(CoordSysXUtm, ZoneCodesGiveTheRegistrySystems) {
  const struct {
    int zone;
    int code;
  } zones[] = {{10001, 32601}, {10034, 32634}, {10060, 32660}, {10101, 32701}, {10134, 32734}, {10160, 32760}};
  for (const auto& zone : zones) {
    for (const double unit : {0.0, 1.0}) {
      CCoordSysX system;
      ASSERT_EQ(system.From3int2(nullptr, 10000, 51, zone.zone, unit, 0), 1) << zone.zone;
      EXPECT_TRUE(system == Epsg(zone.code)) << zone.zone;
      EXPECT_EQ(system.GetEPSGCode(), zone.code);
    }
  }
}

TEST(CoordSysXUtm, OtherUnitsMeasureTheSameProjection) {
  CCoordSysX feet;
  ASSERT_EQ(feet.From3int2(nullptr, 10000, 51, 10034, 0.3048, 0), 1);
  EXPECT_EQ(feet.GetName(), u"WGS 84 / UTM zone 34N (foot)");
  EXPECT_EQ(feet.GetEPSGCode(), 0);
  EXPECT_EQ(Strings(feet).units, u"foot|0.30480000000000002");
  EXPECT_TRUE(feet != Epsg(32634));
  ExpectTransform(Epsg(4326), feet, 0, kLon, kLat, 457565.831928 / 0.3048, 4962828.484551 / 0.3048, 0.003);
  const Texts texts = Strings(feet);
  CCoordSysX back;
  ASSERT_EQ(back.FromStrings(nullptr, texts.main.c_str(), texts.units.c_str(), 1, u"|"), 1);
  EXPECT_TRUE(back == feet);
}

TEST(CoordSysXUtm, OtherCodesFailAndLeaveTheSystem) {
  CCoordSysX system = Epsg(3857);
  const struct {
    int family, datum, zone;
    double unit;
  } refused[] = {{10001, 51, 10034, 1},  {10000, 50, 10034, 1},  {10000, 51, 10000, 1},    {10000, 51, 10061, 1},
                 {10000, 51, 10100, 1},  {10000, 51, 10161, 1},  {10000, 51, 34, 1},       {10000, 51, 10034, -1},
                 {10000, 51, 10034, NAN}, {10000, 51, 10034, INFINITY}};
  for (const auto& r : refused) {
    EXPECT_EQ(system.From3int2(nullptr, r.family, r.datum, r.zone, r.unit, 0), 0) << r.zone << " " << r.unit;
    EXPECT_EQ(system.GetEPSGCode(), 3857);
  }
}

TEST(CoordSysXEquality, IgnoresNamesAndFollowsCopies) {
  EXPECT_TRUE(Wkt(kEsriUtm34N) == Epsg(32634));
  EXPECT_TRUE(Wkt(kPlainWgs84) == Epsg(4326));  // longitude first, the registry latitude first
  EXPECT_TRUE(Epsg(32634) != Epsg(32633));
  EXPECT_TRUE(Epsg(32634) != Epsg(32734));
  EXPECT_TRUE(Epsg(4326) != Epsg(32634));
  CCoordSysX copy(Epsg(31276));
  EXPECT_TRUE(copy == Epsg(31276));
  copy = CCoordSysX();
  EXPECT_EQ(copy.IsValid(), 0);
  copy = Epsg(3857);
  const CCoordSysX& self = copy;
  copy = self;
  EXPECT_EQ(copy.GetEPSGCode(), 3857);
}

TEST(CoordSysXTransform, CarriesBelgradeBetweenSystems) {
  const CCoordSysX wgs84 = Epsg(4326);
  // Own coordinates in display order: longitude, latitude; easting, northing.
  ExpectTransform(wgs84, Epsg(32634), 0, kLon, kLat, 457565.831928, 4962828.484551, 0.001);
  ExpectTransform(wgs84, Epsg(3857), 0, kLon, kLat, 2277964.135950, 5592851.901228, 0.001);
  ExpectTransform(wgs84, Epsg(31276), 0, kLon, kLat, 6694796.060707, 4966627.402835, 0.001);
  ExpectTransform(Epsg(32634), wgs84, 0, 457565.831928, 4962828.484551, kLon, kLat, 1e-8);
  // Geographic values, latitude first, on each system's datum.
  ExpectTransform(Epsg(32634), Epsg(31276), 1, kLat, kLon, 44.8175561274, 20.4647738428, 1e-9);
  ExpectTransform(Epsg(32634), wgs84, 1, kLat, kLon, kLat, kLon, 1e-12);
}

TEST(CoordSysXTransform, FailureLeavesTheValues) {
  const CCoordSysX wgs84 = Epsg(4326);
  double first = kLon, second = kLat;
  EXPECT_EQ(CCoordSysX::Transform(CCoordSysX(), wgs84, &first, &second, 0), 0);
  EXPECT_EQ(CCoordSysX::Transform(wgs84, CCoordSysX(), &first, &second, 1), 0);
  EXPECT_EQ(CCoordSysX::Transform(wgs84, wgs84, nullptr, &second, 1), 0);
  EXPECT_EQ(first, kLon);
  EXPECT_EQ(second, kLat);
  double nan = NAN;
  EXPECT_EQ(CCoordSysX::Transform(wgs84, Epsg(32634), &nan, &second, 0), 0);
  EXPECT_EQ(second, kLat);
  double lon = 1e10, lat = 1e10;
  EXPECT_EQ(CCoordSysX::Transform(Epsg(32634), wgs84, &lon, &lat, 0), 0);
  EXPECT_EQ(lon, 1e10);
  // Earth-centred x, y, z have no latitude and longitude to hand over.
  EXPECT_EQ(CCoordSysX::Transform(Epsg(4978), wgs84, &first, &second, 1), 0);
  EXPECT_EQ(first, kLon);
}

}  // namespace
