#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/Registry.h"
#include "suite/CoordBaseX.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelWinApp.h"

namespace {

namespace fs = std::filesystem;

// A store of its own for each test, so that settings do not leak between tests.
class ScopedRegistry {
 public:
  ScopedRegistry() : m_previous(SetRegistryStore(&m_store)) {}
  ~ScopedRegistry() { SetRegistryStore(m_previous); }

 private:
  CMemoryRegistryStore m_store;
  CRegistryStore* m_previous;
};

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The conversion hook only hands the coordinate systems on; any object stands for one.
const CCoordSysX& System(const void* storage) { return *static_cast<const CCoordSysX*>(storage); }

}  // namespace

TEST(CVantrelAppBaseX, ReadsAndWritesProfileKeysAndFlushesWhenAllIsNull) {
  const fs::path file = fs::temp_directory_path() / ("vantrel1-app-" + std::to_string(::getpid()) + ".lin");
  fs::remove(file);
  const CStdStrW path = CStdStrW::FromUtf8(file.string());
  const CVantrelAppBaseX app;
  EXPECT_TRUE(app.WriteProfileStringX(u"LineType0", u"LineDesc", u"dvostruka crtica", path.c_str()));
  EXPECT_TRUE(app.WriteProfileStringX(nullptr, nullptr, nullptr, path.c_str()));
  EXPECT_EQ(ReadFile(file), "[LineType0]\r\nLineDesc=dvostruka crtica\r\n");

  WCHAR buffer[8];
  EXPECT_EQ(app.GetProfileStringX(u"linetype0", u"LINEDESC", u"", buffer, 8, path.c_str()), 7u);
  EXPECT_EQ(std::u16string(buffer), u"dvostru");
  EXPECT_EQ(app.GetProfileStringX(u"LineType1", u"LineDesc", u"nema", buffer, 8, path.c_str()), 4u);
  EXPECT_EQ(std::u16string(buffer), u"nema");
  fs::remove(file);
}

TEST(CVantrelAppBaseX, DefaultLineWidthIsTheUserSettingWithinItsRange) {
  ScopedRegistry registry;
  CVantrelAppBaseX app;
  EXPECT_EQ(app.GetDefaultLineWidth(), 2);
  EXPECT_EQ(app.SetDefaultLineWidth(5), 1);
  EXPECT_EQ(app.GetDefaultLineWidth(), 5);
  WCHAR stored[16];
  EXPECT_EQ(CorviaRegistryRead(nullptr, u"DefaultLineWidth", stored, 16), 1);
  EXPECT_EQ(std::u16string(stored), u"5");
  EXPECT_EQ(app.SetDefaultLineWidth(-1), 0);
  EXPECT_EQ(app.SetDefaultLineWidth(101), 0);
  EXPECT_EQ(app.GetDefaultLineWidth(), 5);
  CorviaRegistryWrite(nullptr, u"DefaultLineWidth", u"1000");  // edited by hand
  EXPECT_EQ(app.GetDefaultLineWidth(), 2);
  CorviaRegistryWrite(nullptr, u"DefaultLineWidth", u"široka");
  EXPECT_EQ(app.GetDefaultLineWidth(), 2);
}

TEST(CVantrelAppBaseX, ConvertsCoordinatesThroughTheInstalledConverter) {
  const int source = 0, target = 0;
  CVantrelAppBaseX context;
  double lat = 44.8, lon = 20.4;
  EXPECT_EQ(context.ConvertCoords(&lat, &lon, 0, System(&source), System(&target), 1), 0);
  context.SetCoordConverter([&](double* a, double* b, int reserved, const CCoordSysX& from, const CCoordSysX& to,
                                int flag) {
    EXPECT_EQ(reserved, 0);
    EXPECT_EQ(&from, &System(&source));
    EXPECT_EQ(&to, &System(&target));
    *a += 1;
    *b -= 1;
    return flag == 1 ? 1 : 0;
  });
  EXPECT_EQ(context.ConvertCoords(&lat, &lon, 0, System(&source), System(&target), 1), 1);
  EXPECT_EQ(lat, 45.8);
  EXPECT_EQ(lon, 19.4);
  EXPECT_EQ(context.ConvertCoords(nullptr, &lon, 0, System(&source), System(&target), 1), 0);

  CVantrelWinApp app(1, &context);
  EXPECT_EQ(app.ConvertCoords(&lat, &lon, 0, System(&source), System(&target), 2), 0);
  EXPECT_EQ(lat, 46.8);  // converted, but the converter reported failure
  app.SetAppBase(nullptr);
  EXPECT_EQ(app.ConvertCoords(&lat, &lon, 0, System(&source), System(&target), 1), 0);
  EXPECT_EQ(lat, 46.8);
}

TEST(CWinApp, NewestLiveApplicationIsCurrent) {
  CWinApp* const before = AfxGetApp();
  {
    CWinApp plain;
    EXPECT_EQ(AfxGetApp(), &plain);
    EXPECT_EQ(GetVantrelWinApp(), nullptr);  // not a CVantrelWinApp
    EXPECT_EQ(GetVantrelAppBase(), nullptr);
    CVantrelAppBaseX context;
    auto* app = new CVantrelWinApp(3, &context);
    EXPECT_EQ(AfxGetApp(), app);
    EXPECT_EQ(GetVantrelWinApp(), app);
    EXPECT_EQ(GetVantrelAppBase(), &context);
    EXPECT_EQ(GetVantrelWinApp()->GetModuleType(), 3);
    {
      CVantrelWinApp inner(2);
      EXPECT_EQ(GetVantrelWinApp()->GetModuleType(), 2);
      EXPECT_EQ(GetVantrelAppBase(), nullptr);
      delete app;  // not current: the current one stays
      EXPECT_EQ(AfxGetApp(), &inner);
    }
    EXPECT_EQ(AfxGetApp(), &plain);  // the one destroyed first is never current again
    EXPECT_EQ(AfxSetApp(nullptr), &plain);
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(AfxSetApp(&plain), nullptr);
  }
  EXPECT_EQ(AfxGetApp(), before);
}

TEST(CCoordBaseX, TurnsDrawingCoordinatesIntoRoundedVertexUnits) {
  POINT p{7, 7};
  // The default base takes hundredths, and gives back every vertex that was exported.
  for (const LONG v : {-86, 87, 100, -100, 2147483647, -2147483647 - 1}) {
    ASSERT_EQ(CCoordBaseX::ToItem(nullptr, v / 100.0, v * 0.01, &p), 1) << v;
    EXPECT_EQ(p.x, v);
    EXPECT_EQ(p.y, v);
  }
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 0.005, -0.005, &p), 1);  // halves away from zero
  EXPECT_EQ(p.x, 1);
  EXPECT_EQ(p.y, -1);

  const CCoordBaseX base(1000.0, 2000.0, 10.0);  // tenths of a drawing unit, around a point
  EXPECT_EQ(base.ToItem(1012.34, 1995.0, &p), 1);
  EXPECT_EQ(p.x, 123);
  EXPECT_EQ(p.y, -50);
  double x = 0, y = 0;
  base.FromItem(POINT{123, -50}, &x, &y);
  EXPECT_DOUBLE_EQ(x, 1012.3);
  EXPECT_DOUBLE_EQ(y, 1995.0);
}

TEST(CCoordBaseX, RefusesWhatNoVertexCanHold) {
  POINT p{7, 8};
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 21474836.48, 0, &p), 0);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 0, std::nan(""), &p), 0);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 1e308 * 10, 0, &p), 0);
  EXPECT_EQ(CCoordBaseX(0, 0, 0).ToItem(1, 1, &p), 0);
  EXPECT_EQ(CCoordBaseX(0, 0, -10).ToItem(1, 1, &p), 0);
  EXPECT_EQ(p.x, 7);
  EXPECT_EQ(p.y, 8);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 1, 1, nullptr), 0);
}
