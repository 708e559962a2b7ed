#include "help/VantrelHelp.h"

#include <chrono>

#include "suite/FileName.h"
#include "suite/VantrelWinApp.h"

namespace vantrel1 {
namespace {

// The monotonic clock in milliseconds, cut to 32 bits as the system tick count is.
DWORD SystemTicks() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
}

HelpTickSource g_tickSource = SystemTicks;

}  // namespace

HelpTickSource SetHelpTickSource(HelpTickSource source) {
  const HelpTickSource previous = g_tickSource;
  g_tickSource = source ? source : SystemTicks;
  return previous;
}

DWORD HelpTickCount() { return g_tickSource(); }

}  // namespace vantrel1

CVantrelHelp::CVantrelHelp() : m_strTopic(kDefaultTopic), m_dwLastHelpTicks(vantrel1::HelpTickCount()) {}

CVantrelHelp::~CVantrelHelp() = default;

void CVantrelHelp::SetHelpPreference(int /*preference*/) {}

int CVantrelHelp::GetHelpPreference() const { return m_nHelpPreference; }

CStdStrW CVantrelHelp::SetTopicIndex(CStdStrW topic) {
  CStdStrW previous = std::move(m_strTopic);
  m_strTopic = std::move(topic);
  return previous;
}

CStdStrW CVantrelHelp::SetHTMLHelpName(const CFileName* name) {
  CStdStrW previous = std::move(m_strHTMLHelpName);
  m_strHTMLHelpName = name ? name->GetPath() : CStdStrW();
  return previous;
}

void CVantrelHelp::SetHelpWebFolder(const CStdStrW& folder) { m_strWebFolder = folder; }

bool CVantrelHelp::OnlineHelp(HWND /*owner*/) { return false; }

CStdStrW CVantrelHelp::GetTopicPath() const {
  return CStdStrW(u"html\\") + (m_strTopic.IsEmpty() ? CStdStrW(kDefaultTopic) : m_strTopic);
}

void CVantrelHelp::Help(HWND owner) {
  const DWORD now = vantrel1::HelpTickCount();
  // Unsigned difference: correct across the counter's wrap-around.
  if (static_cast<DWORD>(now - m_dwLastHelpTicks) <= kRepeatIntervalMs) return;
  m_dwLastHelpTicks = now;
  if (m_nHelpPreference == 1 && OnlineHelp(owner)) return;
  CWinApp* app = AfxGetApp();
  if (app == nullptr) return;
  const CStdStrW path = GetTopicPath();
  app->HtmlHelp(reinterpret_cast<UINT_PTR>(path.c_str()), HH_DISPLAY_TOPIC);
}
