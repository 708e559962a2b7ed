#pragma once
// CVantrelHelp: opens the suite's help at the page that fits what the user is doing. The
// main frame owns one; a dialog swaps its own topic in while it is open and puts the
// previous one back when it closes, and help buttons call Help.
//
// Help is shown by the current application object (CWinApp::HtmlHelp) from its help
// file; a derived class may show online help from a web folder instead.
#include "platform/StdStr.h"
#include "platform/Types.h"

class CFileName;

class VANTREL1_QT_EXPORT CVantrelHelp {
 public:
  // The page shown when no topic is set.
  static constexpr const WCHAR* kDefaultTopic = u"vtrl0000.htm";
  // Requests this close to the last shown one (a double click, a repeated key) are ignored.
  static constexpr DWORD kRepeatIntervalMs = 600;

  CVantrelHelp();
  CVantrelHelp(const CVantrelHelp&) = default;
  CVantrelHelp& operator=(const CVantrelHelp&) = default;
  virtual ~CVantrelHelp();

  // Does nothing here, deliberately: only derived classes (or assignment from another help
  // object) change the preference.
  virtual void SetHelpPreference(int preference);
  // 1 prefers online help; anything else the local help file.
  virtual int GetHelpPreference() const;

  // Makes `topic` current and returns the topic it replaces, for the caller to restore.
  CStdStrW SetTopicIndex(CStdStrW topic);
  // Sets the help file's name (empty for null) and returns the previous one.
  CStdStrW SetHTMLHelpName(const CFileName* name);
  void SetHelpWebFolder(const CStdStrW& folder);

  // Shows help for the current topic.
  void Help(HWND owner);

  // The page of the current topic inside the help file: "html\" and the topic.
  CStdStrW GetTopicPath() const;

 protected:
  // The hook of online help: shows the current topic from m_strWebFolder and returns
  // true. Here nothing is shown and the result is false, so local help follows.
  virtual bool OnlineHelp(HWND owner);

  CStdStrW m_strHTMLHelpName;
  CStdStrW m_strTopic;
  int m_nHelpPreference = 0;
  CStdStrW m_strWebFolder;
  DWORD m_dwLastHelpTicks = 0;
};

namespace vantrel1 {

// Milliseconds from an arbitrary start, wrapping at 2^32, as the help objects read them.
using HelpTickSource = DWORD (*)();

// Replaces the clock of the help objects (tests set the time by hand) and returns the
// previous one; null restores the system's monotonic clock.
VANTREL1_QT_EXPORT HelpTickSource SetHelpTickSource(HelpTickSource source);
VANTREL1_QT_EXPORT DWORD HelpTickCount();

}  // namespace vantrel1
