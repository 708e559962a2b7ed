#include "suite/VantrelWinApp.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/Registry.h"
#include "suite/CoordSysX.h"
#include "suite/VantrelAppBaseX.h"

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

CCoordSysX Epsg(int code) {
  CCoordSysX system;
  EXPECT_EQ(system.FromEPSG(nullptr, code, 1), 1);
  return system;
}

}  // namespace

TEST(CVantrelAppBaseX, ProfileKeysGoToTheNamedFileAndComeBack) {
  const fs::path file = fs::temp_directory_path() / ("vantrel1-app-" + std::to_string(::getpid()) + ".lin");
  fs::remove(file);
  const CStdStrW path = CStdStrW::FromUtf8(file.string());
  const CVantrelAppBaseX app;
  EXPECT_TRUE(app.WriteProfileStringX(u"LineType0", u"LineDesc", u"dvostruka crtica", path.c_str()));
  EXPECT_TRUE(app.WriteProfileStringX(nullptr, nullptr, nullptr, path.c_str()));  // flush
  std::stringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  EXPECT_EQ(text.str(), "[LineType0]\r\nLineDesc=dvostruka crtica\r\n");
  WCHAR buffer[8];
  EXPECT_EQ(app.GetProfileStringX(u"LineType0", u"LineDesc", u"", buffer, 8, path.c_str()), 7u);
  EXPECT_EQ(std::u16string(buffer), u"dvostru");
  EXPECT_EQ(app.GetProfileStringX(u"LineType1", u"LineDesc", u"nema", buffer, 8, path.c_str()), 4u);
  EXPECT_EQ(std::u16string(buffer), u"nema");
  fs::remove(file);
}

TEST(CVantrelAppBaseX, DefaultLineWidthIsTheUserSettingWithinItsRange) {
  ScopedRegistry registry;
  CVantrelAppBaseX app;
  EXPECT_EQ(app.GetDefaultLineWidth(), 2);
  for (const int width : {0, 100, 5}) EXPECT_EQ(app.SetDefaultLineWidth(width), 1) << width;
  EXPECT_EQ(app.GetDefaultLineWidth(), 5);
  WCHAR stored[16];
  EXPECT_EQ(CorviaRegistryRead(nullptr, u"DefaultLineWidth", stored, 16), 1);
  EXPECT_EQ(std::u16string(stored), u"5");
  EXPECT_EQ(app.SetDefaultLineWidth(-1), 0);
  EXPECT_EQ(app.SetDefaultLineWidth(101), 0);
  EXPECT_EQ(app.GetDefaultLineWidth(), 5);
  for (const char16_t* edited : {u"1000", u"-1", u"široka"}) {  // edited by hand
    CorviaRegistryWrite(nullptr, u"DefaultLineWidth", edited);
    EXPECT_EQ(app.GetDefaultLineWidth(), 2);
  }
}

TEST(CVantrelAppBaseX, ConvertsLatitudeAndLongitudeWithProjUnlessAConverterIsInstalled) {
  const CCoordSysX wgs84 = Epsg(4326), mgi = Epsg(31276), none;
  CVantrelAppBaseX context;
  // Belgrade from WGS 84 to the MGI datum (cs2cs of PROJ 9.1).
  double lat = 44.8176, lon = 20.4633;
  EXPECT_EQ(context.ConvertCoords(&lat, &lon, 0, wgs84, mgi, 1), 1);
  EXPECT_NEAR(lat, 44.8175561274, 1e-9);
  EXPECT_NEAR(lon, 20.4647738428, 1e-9);
  // Any other `reserved`: the systems' own coordinates, easting first.
  double x = 20.4633, y = 44.8176;
  EXPECT_EQ(context.ConvertCoords(&x, &y, 1, wgs84, Epsg(32634), 1), 1);
  EXPECT_NEAR(x, 457565.831928, 0.001);
  EXPECT_NEAR(y, 4962828.484551, 0.001);
  lat = 44.8;
  EXPECT_EQ(context.ConvertCoords(&lat, &lon, 0, none, mgi, 1), 0);
  EXPECT_EQ(context.ConvertCoords(nullptr, &lon, 0, wgs84, mgi, 1), 0);
  EXPECT_EQ(lat, 44.8);

  context.SetCoordConverter([&](double* a, double* b, int reserved, const CCoordSysX& from, const CCoordSysX& to,
                                int flag) {
    EXPECT_EQ(reserved, 0);
    EXPECT_EQ(&from, &none);
    EXPECT_EQ(&to, &mgi);
    *a += 1;
    *b -= 1;
    return flag == 1 ? 1 : 0;
  });
  lat = 44.8, lon = 20.4;
  EXPECT_EQ(context.ConvertCoords(&lat, &lon, 0, none, mgi, 1), 1);
  EXPECT_EQ(lat, 45.8);
  EXPECT_EQ(lon, 19.4);

  CVantrelWinApp app(1, &context);
  EXPECT_EQ(app.ConvertCoords(&lat, &lon, 0, none, mgi, 2), 0);
  EXPECT_EQ(lat, 46.8);  // converted, but the converter reported failure
  app.SetAppBase(nullptr);
  EXPECT_EQ(app.ConvertCoords(&lat, &lon, 0, none, mgi, 1), 0);
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
    EXPECT_EQ(GetVantrelWinApp(), app);
    EXPECT_EQ(GetVantrelAppBase(), &context);
    EXPECT_EQ(GetVantrelWinApp()->GetModuleType(), 3);
    {
      CVantrelWinApp inner(2);
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
