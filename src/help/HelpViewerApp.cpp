#include "help/HelpViewerApp.h"

#include <QDesktopServices>
#include <QDir>

#include "dialogs/QtText.h"

namespace vantrel1 {
namespace {

bool OpenWithDesktop(const QUrl& page) { return QDesktopServices::openUrl(page); }

HelpPageOpener g_opener = OpenWithDesktop;

}  // namespace

QUrl HelpPageUrl(const CStdStrW& helpFolder, const CStdStrW& topicPath) {
  if (helpFolder.IsEmpty() || topicPath.IsEmpty()) return QUrl();
  QString topic = ToQString(topicPath);
  // Topic paths are written for the compiled help file, with '\' between folders.
  topic.replace(u'\\', u'/');
  QString folder = QDir::cleanPath(ToQString(helpFolder));
  if (!folder.endsWith(u'/')) folder += u'/';
  const QString page = QDir::cleanPath(folder + topic);
  if (!page.startsWith(folder) || page.size() == folder.size()) return QUrl();
  return QUrl::fromLocalFile(page);
}

bool OpenHelpPage(const QUrl& page) { return !page.isEmpty() && g_opener(page); }

HelpPageOpener SetHelpPageOpener(HelpPageOpener opener) {
  const HelpPageOpener previous = g_opener;
  g_opener = opener ? opener : OpenWithDesktop;
  return previous;
}

}  // namespace vantrel1

void CHelpViewerApp::HtmlHelp(UINT_PTR data, UINT command) {
  if (command != HH_DISPLAY_TOPIC || data == 0) return;
  const QUrl page = vantrel1::HelpPageUrl(GetHelpFilePath(), CStdStrW(reinterpret_cast<LPCWSTR>(data)));
  if (page.isEmpty()) return;
  vantrel1::OpenHelpPage(page);
}
