#pragma once
// The help viewer of this platform. There is no compiled HTML help here: the application's
// help file path names a folder of pages, and a topic path such as
// "html\Edit Projection.htm" names the page html/Edit Projection.htm inside it, which the
// desktop's viewer opens. A program of the suite that wants its help shown makes its
// application object a CHelpViewerApp.
#include <QUrl>

#include "platform/StdStr.h"
#include "suite/VantrelWinApp.h"

namespace vantrel1 {

// The page of `topicPath` inside `helpFolder` as a file URL; an empty URL when either is
// empty or the page would lie outside the folder.
VANTREL1_QT_EXPORT QUrl HelpPageUrl(const CStdStrW& helpFolder, const CStdStrW& topicPath);

// Opens `page` with the current opener; false for an empty page or when it fails.
VANTREL1_QT_EXPORT bool OpenHelpPage(const QUrl& page);

// Opens a page; the default is the desktop's viewer (QDesktopServices).
using HelpPageOpener = bool (*)(const QUrl& page);
// Replaces the opener (tests record the page instead) and returns the previous one; null
// restores the desktop's.
VANTREL1_QT_EXPORT HelpPageOpener SetHelpPageOpener(HelpPageOpener opener);

}  // namespace vantrel1

class VANTREL1_QT_EXPORT CHelpViewerApp : public CVantrelWinApp {
 public:
  using CVantrelWinApp::CVantrelWinApp;

  // Opens the topic (HH_DISPLAY_TOPIC, `data` the topic path) from the help folder;
  // other commands and pages outside the folder show nothing.
  void HtmlHelp(UINT_PTR data, UINT command = HH_DISPLAY_TOPIC) override;
};
