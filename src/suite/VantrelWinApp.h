#pragma once
// The application object. A program of the suite has one CWinApp-derived object, the
// current application, which library code reaches through AfxGetApp: for its HTML help,
// its module type (which of the suite's programs is running) and, when it is a
// CVantrelWinApp, its application context.
//
// Constructing an application object makes it the current one, as the framework does;
// destroying the current one makes the most recently constructed of those still alive
// current again (or none), so that a test may make its own application for its lifetime.
#include "platform/StdStr.h"
#include "platform/Types.h"

class CVantrelAppBaseX;
class CCoordSysX;

// The HTML help command that shows a topic.
constexpr UINT HH_DISPLAY_TOPIC = 0x0000;

class VANTREL1_EXPORT CWinApp {
 public:
  CWinApp();
  virtual ~CWinApp();
  CWinApp(const CWinApp&) = delete;
  CWinApp& operator=(const CWinApp&) = delete;

  // Shows help from the application's help file. `data` is, for HH_DISPLAY_TOPIC, a
  // pointer to the topic's path (a null-terminated UTF-16 string) inside the help file.
  // This object knows no help viewer and shows nothing; the suite's programs override it.
  virtual void HtmlHelp(UINT_PTR data, UINT command = HH_DISPLAY_TOPIC);

  const CStdStrW& GetHelpFilePath() const { return m_strHelpFilePath; }
  void SetHelpFilePath(CStdStrArg<WCHAR> path) { m_strHelpFilePath = CStdStrW(path.View()); }

 private:
  CStdStrW m_strHelpFilePath;
};

// The current application object, or null.
VANTREL1_EXPORT CWinApp* AfxGetApp();
// Makes `app` (null, or an application object that is alive) the current application and
// returns the previous one.
VANTREL1_EXPORT CWinApp* AfxSetApp(CWinApp* app);

class VANTREL1_EXPORT CVantrelWinAppSubBase : public CWinApp {
 public:
  explicit CVantrelWinAppSubBase(int moduleType = 1) : m_nModuleType(moduleType) {}
  // Which of the suite's programs runs (1, 2 or 3); the file dialogs keep a first-use
  // setting per type.
  virtual int GetModuleType() const { return m_nModuleType; }
  void SetModuleType(int moduleType) { m_nModuleType = moduleType; }

 private:
  int m_nModuleType;
};

class VANTREL1_EXPORT CVantrelWinApp : public CVantrelWinAppSubBase {
 public:
  explicit CVantrelWinApp(int moduleType = 1, CVantrelAppBaseX* context = nullptr)
      : CVantrelWinAppSubBase(moduleType), m_pAppBase(context) {}

  // The application context, or null when the program has none. Not owned.
  virtual CVantrelAppBaseX* GetAppBase() const { return m_pAppBase; }
  void SetAppBase(CVantrelAppBaseX* context) { m_pAppBase = context; }

  // The context's coordinate conversion; 0 without a context.
  int ConvertCoords(double* first, double* second, int reserved, const CCoordSysX& source, const CCoordSysX& target,
                    int flag) const;

 private:
  CVantrelAppBaseX* m_pAppBase;
};

// The current application when it is a CVantrelWinApp, else null.
VANTREL1_EXPORT CVantrelWinApp* GetVantrelWinApp();
// Its application context, or null when there is no such application or it has none.
VANTREL1_EXPORT CVantrelAppBaseX* GetVantrelAppBase();
