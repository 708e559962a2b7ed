#include "clipboard/LatLonpt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "ClipboardTestSupport.h"
#include "clipboard/Vantrel1Frame.h"
#include "platform/Clipboard.h"
#include "platform/WinThread.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelWinApp.h"

namespace {

CCoordSysX Epsg(int code) {
  CCoordSysX system;
  EXPECT_EQ(system.FromEPSG(nullptr, code, 1), 1) << code;
  return system;
}

CLatLonpt Point(double lat, double lon) {
  CLatLonpt point;
  EXPECT_EQ(point.Set(lat, lon), 1);
  return point;
}

// An in-memory clipboard, a main frame that owns the suite's clipboard object, and an
// application with a context, all for one test.
class LatLonptClipboard : public ::testing::Test {
 protected:
  LatLonptClipboard() : m_app(1, &context) {
    frame.Attach(TestWindow(5));
    AfxGetThread()->m_pMainWnd = &frame;
  }
  ~LatLonptClipboard() override { AfxGetThread()->m_pMainWnd = nullptr; }

  UINT Id(int index) { return frame.m_pClipboard->GetID(index); }
  std::vector<UINT> Sorted(std::vector<UINT> ids) {
    std::sort(ids.begin(), ids.end());
    return ids;
  }
  // The four formats of a copy, put as another program would.
  void PutAll(const CCoordSysX& system, const std::u16string& point, bool own = true, bool plain = true) {
    WCHAR units[80];
    backend.PutText(Id(5), system.ToStrings(units, 80, u"|", 0));
    backend.PutText(Id(7), units);
    if (own) backend.PutText(Id(2), point);
    if (plain) backend.PutText(CF_UNICODETEXT, point);
  }
  // Counts the conversions the application is asked for, and refuses them.
  int* CountConversions() {
    context.SetCoordConverter([this](double*, double*, int, const CCoordSysX&, const CCoordSysX&, int) {
      ++m_conversions;
      return 0;
    });
    return &m_conversions;
  }

  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  CVantrelAppBaseX context;

 private:
  CVantrelWinApp m_app;
  int m_conversions = 0;
};

TEST(LatLonptZones, EdgesLieAThousandthOfADegreeWest) {
  const struct {
    double lon;
    int zone;
  } cases[] = {{-180.0, 1},   {-174.0, 2},   {-174.0005, 2}, {-174.001, 2}, {-174.002, 1},  {0.0, 31},
               {-0.0005, 31}, {-0.002, 30},  {20.4633, 34},  {179.998, 60}, {-180.0005, 1}, {-180.002, 1},
               {179.999, 60}, {180.0, 60}};  // the last three lie in no zone: clamped
  for (const auto& c : cases) EXPECT_EQ(CLatLonpt::UtmZone(c.lon), c.zone) << c.lon;
}

TEST(LatLonptZones, SystemOfTheZoneAndHemisphere) {
  const struct {
    double lat, lon;
    int code;
  } cases[] = {{44.8176, 20.4633, 32634}, {-0.0005, 20.4633, 32634}, {-0.002, 20.4633, 32734},
               {-33.9, -180.0, 32701},    {10.0, 179.998, 32660},    {-90.0, 180.0, 32760}};
  for (const auto& c : cases) {
    const CCoordSysX system = Point(c.lat, c.lon).DetermineCoordSysUTM(nullptr, 0);
    EXPECT_EQ(system.GetEPSGCode(), c.code) << c.lat << " " << c.lon;
  }
  const CCoordSysX feet = Point(44.8176, 20.4633).DetermineCoordSysUTM(nullptr, 0.3048);
  EXPECT_EQ(feet.GetName(), u"WGS 84 / UTM zone 34N (foot)");
  EXPECT_EQ(Point(44.8176, 20.4633).DetermineCoordSysUTM(nullptr, -1).IsValid(), 0);
}

TEST(LatLonptValue, CopiesAndComparesAsItsBase) {
  CLatLonpt a = Point(44.8176, 20.4633);
  CLatLonpt b(a);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  b = Point(44.8176, 20.4634);
  EXPECT_TRUE(a != b);
  CLatLonptBaseX* base = new CLatLonpt(a);
  EXPECT_EQ(base->GetLongitude(), 20.4633);
  delete base;
}

TEST_F(LatLonptClipboard, CopyPutsSystemUnitsPointAndPlainText) {
  backend.PutText(Id(0), u"stari teren");
  CLatLonpt point = Point(-44.8176, 20.4633);
  CCoordSysX utm = Epsg(32634);
  ASSERT_EQ(point.ToClipboard(utm), 1);
  EXPECT_EQ(backend.Formats(), Sorted({Id(2), Id(5), Id(7), CF_UNICODETEXT}));
  WCHAR units[80];
  EXPECT_EQ(backend.Bytes(Id(5)), TextBytes(utm.ToStrings(units, 80, u"|", 0)));
  EXPECT_EQ(backend.Bytes(Id(7)), TextBytes(u"metre|1"));
  EXPECT_EQ(backend.Bytes(Id(2)), TextBytes(u"-44.8176 20.4633"));
  EXPECT_EQ(backend.Bytes(CF_UNICODETEXT), TextBytes(u"44.81760°S 20.46330°E"));
  EXPECT_EQ(backend.ownerWhenSet, TestWindow(5));
  EXPECT_EQ(frame.m_pClipboard->IsClipboardOpen(), 0);
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

TEST_F(LatLonptClipboard, CopyWithoutSystemTextPutsNothing) {
  backend.PutText(Id(5), u"stari sistem");
  CLatLonpt point = Point(44.8176, 20.4633);
  CCoordSysX none;
  EXPECT_EQ(point.ToClipboard(none), 0);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{});  // opened, so emptied
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
  EXPECT_EQ(point.ToClipboard(none, nullptr), 0);
}

TEST_F(LatLonptClipboard, CopyFailsWhenTheClipboardRefuses) {
  CLatLonpt point = Point(44.8176, 20.4633);
  CCoordSysX utm = Epsg(32634);
  backend.refuseData = true;
  EXPECT_EQ(point.ToClipboard(utm), 0);
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
  backend.refuseData = false;
  ASSERT_EQ(OpenClipboard(TestWindow(99)), TRUE);  // another window holds it
  EXPECT_EQ(point.ToClipboard(utm), 0);
  CloseClipboard();
  AfxGetThread()->m_pMainWnd = nullptr;
  EXPECT_EQ(point.ToClipboard(utm), 0);
}

TEST_F(LatLonptClipboard, PasteInTheSameSystemConvertsNothing) {
  int* conversions = CountConversions();
  CLatLonpt copied = Point(44.8176, 20.4633);
  CCoordSysX utm = Epsg(32634);
  ASSERT_EQ(copied.ToClipboard(utm), 1);
  CLatLonpt pasted;
  CCoordSysX target = Epsg(32634);
  ASSERT_EQ(pasted.FromClipboard(&context, target, 0), 1);
  EXPECT_EQ(pasted.GetLatitude(), 44.8176);
  EXPECT_EQ(pasted.GetLongitude(), 20.4633);
  // Nor when either side is not a place on the earth.
  CCoordSysX none;
  EXPECT_EQ(pasted.FromClipboard(&context, none, 0), 1);
  CCoordSysX local;
  ASSERT_EQ(local.FromWktStr(u"LOCAL_CS[\"Gradiliste\",LOCAL_DATUM[\"Osovina\",32767],UNIT[\"metre\",1],"
                                 u"AXIS[\"X\",EAST],AXIS[\"Y\",NORTH]]", 1), 1);
  EXPECT_EQ(pasted.FromClipboard(&context, local, 0), 1);
  ASSERT_EQ(copied.ToClipboard(local), 1);
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 1);
  EXPECT_EQ(*conversions, 0);
}

TEST_F(LatLonptClipboard, PasteIntoAnotherDatumConvertsWithProj) {
  CLatLonpt copied = Point(44.8176, 20.4633);
  CCoordSysX wgs84 = Epsg(4326);
  ASSERT_EQ(copied.ToClipboard(wgs84), 1);
  CLatLonpt pasted;
  CCoordSysX mgi = Epsg(31276);
  ASSERT_EQ(pasted.FromClipboard(&context, mgi, 0), 1);
  // cs2cs of PROJ 9.1 from EPSG:4326 to MGI (EPSG:4312), the datum of EPSG:31276.
  EXPECT_NEAR(pasted.GetLatitude(), 44.8175561274, 1e-9);
  EXPECT_NEAR(pasted.GetLongitude(), 20.4647738428, 1e-9);
}

TEST_F(LatLonptClipboard, PasteHandsThePointsValuesToTheApplication) {
  PutAll(Epsg(4326), u"44.8176 20.4633");
  CLatLonpt pasted;
  CCoordSysX target = Epsg(32634);
  int calls = 0;
  context.SetCoordConverter([&](double* first, double* second, int reserved, const CCoordSysX& from,
                                const CCoordSysX& to, int flag) {
    ++calls;
    EXPECT_EQ(first, pasted.GetCoords());
    EXPECT_EQ(second, pasted.GetCoords() + 1);
    EXPECT_EQ(reserved, 0);
    EXPECT_TRUE(from == Epsg(4326));
    EXPECT_EQ(&to, &target);
    *first = 45.0;
    return flag == 7 ? 1 : 0;
  });
  EXPECT_EQ(pasted.FromClipboard(&context, target, 7), 1);
  EXPECT_EQ(pasted.GetLatitude(), 45.0);
  EXPECT_EQ(pasted.FromClipboard(&context, target, 3), 0);  // the application's failure
  EXPECT_EQ(calls, 2);
}

TEST_F(LatLonptClipboard, PasteFallsBackToPlainTextBesideTheSystem) {
  PutAll(Epsg(32634), u"44.81760°S 20.46330°W", false);
  CLatLonpt pasted;
  CCoordSysX target = Epsg(32634);
  ASSERT_EQ(pasted.FromClipboard(&context, target, 0), 1);
  EXPECT_EQ(pasted.GetLatitude(), -44.8176);
  EXPECT_EQ(pasted.GetLongitude(), -20.4633);
}

TEST_F(LatLonptClipboard, PasteFailsWithoutWhatItNeeds) {
  CLatLonpt pasted = Point(1, 2);
  CCoordSysX target = Epsg(32634);
  const CCoordSysX utm = Epsg(32634);
  // Plain text alone, however good, does not paste.
  backend.PutText(CF_UNICODETEXT, u"44.8176 20.4633");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  // Each of the system's formats is required.
  PutAll(utm, u"44.8176 20.4633");
  std::vector<BYTE> system = backend.Bytes(Id(5)), units = backend.Bytes(Id(7));
  backend.Empty();
  backend.Put(Id(7), units);
  backend.PutText(Id(2), u"44.8176 20.4633");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  backend.Empty();
  backend.Put(Id(5), system);
  backend.PutText(Id(2), u"44.8176 20.4633");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  // A system that does not read, units that do not agree, no point, a point that does not read.
  backend.PutText(Id(7), u"metre|1");
  backend.PutText(Id(5), u"VKS1||nije sistem");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  backend.Put(Id(5), system);
  backend.PutText(Id(7), u"foot|0.3048");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  backend.Empty();
  PutAll(utm, u"", false, false);
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  PutAll(utm, u"44.8176 200");
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  EXPECT_EQ(pasted.GetLatitude(), 1);
  EXPECT_EQ(pasted.GetLongitude(), 2);
  // A conversion that fails leaves the values as read.
  PutAll(Epsg(4326), u"44.8176 20.4633");
  CountConversions();
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
  EXPECT_EQ(pasted.GetLatitude(), 44.8176);
  AfxGetThread()->m_pMainWnd = nullptr;
  EXPECT_EQ(pasted.FromClipboard(&context, target, 0), 0);
}

}  // namespace
