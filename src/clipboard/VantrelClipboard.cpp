#include "clipboard/VantrelClipboard.h"

#include "clipboard/ClipboardText.h"
#include "clipboard/Vantrel1Frame.h"
#include "platform/Clipboard.h"

namespace {

// The names every program of the suite registers; index 1 is the odd one out in its
// spelling, and must stay so for the numbers to agree.
constexpr const WCHAR* kFormatNames[CVantrelClipboard::kFormatCount] = {
    u"Vantrel Terrain File",       // terrain data
    u"VTRL_COORD",                 // coordinates
    u"Vantrel Lat Lon",            // a latitude/longitude point
    u"Vantrel GPS",                // GPS data
    u"Vantrel Kestrane Measure",   // road-logging measurements
    u"Vantrel Coordinate System",  // a coordinate system's description
    u"Vantrel Units",              // units
    u"Vantrel LM Units",           // the units text that goes with a coordinate system
};

}  // namespace

CVantrelClipboard::CVantrelClipboard(CVantrel1Frame* frame) : m_formatIds{}, m_pFrame(frame), m_bOpen(0) {}

CVantrelClipboard::~CVantrelClipboard() = default;

CStdStrW CVantrelClipboard::GetName(int index) const {
  if (index < 0 || index >= kFormatCount) return {};
  return CStdStrW(kFormatNames[index]);
}

UINT CVantrelClipboard::GetID(int index) {
  const auto slot = static_cast<unsigned>(index);
  if (slot >= kFormatCount) return 0;
  if (m_formatIds[slot] == 0) m_formatIds[slot] = RegisterClipboardFormatW(kFormatNames[slot]);
  return m_formatIds[slot];
}

HWND CVantrelClipboard::Owner() const { return m_pFrame ? m_pFrame->GetSafeHwnd() : nullptr; }

int CVantrelClipboard::OpenCB() {
  if (!OpenClipboard(Owner())) return 0;
  EmptyClipboard();
  m_bOpen = 1;
  return 1;
}

int CVantrelClipboard::CloseCB() {
  CloseClipboard();
  m_bOpen = 0;
  return 1;
}

int CVantrelClipboard::AppendCB(UINT format, CStdStrW& text) {
  return vantrel1::PutClipboardText(format, text) == vantrel1::TextPut::Accepted ? 1 : 0;
}

int CVantrelClipboard::SetTextData(UINT format, const CStdStrW& text, int bEmpty) const {
  if (!OpenClipboard(Owner())) return 0;
  if (bEmpty) EmptyClipboard();
  const bool locked = vantrel1::PutClipboardText(format, text) != vantrel1::TextPut::NotLocked;
  CloseClipboard();
  return locked ? 1 : 0;
}

CStdStrW CVantrelClipboard::GetTextData(UINT format) const {
  CStdStrW text;
  if (!OpenClipboard(Owner())) return text;
  vantrel1::TakeClipboardText(format, text);
  CloseClipboard();
  return text;
}
