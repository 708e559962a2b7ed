#include "suite/VantrelWinApp.h"

#include <algorithm>
#include <vector>

#include "suite/VantrelAppBaseX.h"

namespace {

CWinApp* g_currentApp = nullptr;
// In order of construction. Never destroyed: an application object may well be a static
// of the program, destroyed after this library's own statics.
std::vector<CWinApp*>& LiveApps() {
  static auto* apps = new std::vector<CWinApp*>;
  return *apps;
}

}  // namespace

CWinApp::CWinApp() {
  LiveApps().push_back(this);
  g_currentApp = this;
}

CWinApp::~CWinApp() {
  std::vector<CWinApp*>& apps = LiveApps();
  apps.erase(std::remove(apps.begin(), apps.end(), this), apps.end());
  if (g_currentApp == this) g_currentApp = apps.empty() ? nullptr : apps.back();
}

void CWinApp::HtmlHelp(UINT_PTR /*data*/, UINT /*command*/) {}

CWinApp* AfxGetApp() { return g_currentApp; }

CWinApp* AfxSetApp(CWinApp* app) {
  CWinApp* previous = g_currentApp;
  g_currentApp = app;
  return previous;
}

int CVantrelWinApp::ConvertCoords(double* first, double* second, int reserved, const CCoordSysX& source,
                                  const CCoordSysX& target, int flag) const {
  const CVantrelAppBaseX* context = GetAppBase();
  return context ? context->ConvertCoords(first, second, reserved, source, target, flag) : 0;
}

CVantrelWinApp* GetVantrelWinApp() { return dynamic_cast<CVantrelWinApp*>(AfxGetApp()); }

CVantrelAppBaseX* GetVantrelAppBase() {
  const CVantrelWinApp* app = GetVantrelWinApp();
  return app ? app->GetAppBase() : nullptr;
}
