#include "clipboard/LatLonpt.h"

#include "clipboard/Vantrel1Frame.h"
#include "clipboard/VantrelClipboard.h"
#include "platform/Clipboard.h"
#include "suite/VantrelWinApp.h"

namespace {

// Format indexes of the suite's clipboard table.
constexpr int kLatLonFormat = 2;
constexpr int kCoordSysFormat = 5;
constexpr int kUnitsFormat = 7;
constexpr int kUnitsCapacity = 80;
constexpr WCHAR kSeparator[] = u"|";

constexpr int kZoneCount = 60;

CVantrelClipboard* MainClipboard() {
  CVantrel1Frame* frame = CVantrel1Frame::GetMainFrame();
  return frame ? frame->m_pClipboard : nullptr;
}

bool Pull(CVantrel1Frame* frame, UINT format, CStdStrW* text) {
  return format != 0 && frame->PullFromClipboard(format, text) != 0;
}

}  // namespace

CLatLonpt::~CLatLonpt() = default;

int CLatLonpt::ToClipboard(CCoordSysX& csys, CVantrelClipboard* pClipboard) {
  if (!pClipboard) return 0;
  WCHAR unitsBuffer[kUnitsCapacity] = {};
  CStdStrW system = csys.ToStrings(unitsBuffer, kUnitsCapacity, kSeparator, 0);
  if (system.empty()) return 0;
  CStdStrW units = unitsBuffer;
  CStdStrW point = ToString();
  CStdStrW plain = FormatLatitude(kHemisphereDegrees, kDecimals) + u" " + FormatLongitude(kHemisphereDegrees, kDecimals);
  return pClipboard->AppendCB(pClipboard->GetID(kCoordSysFormat), system) &&
                 pClipboard->AppendCB(pClipboard->GetID(kUnitsFormat), units) &&
                 pClipboard->AppendCB(pClipboard->GetID(kLatLonFormat), point) &&
                 pClipboard->AppendCB(CF_UNICODETEXT, plain)
             ? 1
             : 0;
}

int CLatLonpt::ToClipboard(CCoordSysX& csys) {
  CVantrelClipboard* clipboard = MainClipboard();
  if (!clipboard || !clipboard->OpenCB()) return 0;
  const int result = ToClipboard(csys, clipboard);
  clipboard->CloseCB();
  return result;
}

int CLatLonpt::FromClipboard(const CVantrelAppBaseX* app, CCoordSysX& target, int flag) {
  CVantrel1Frame* frame = CVantrel1Frame::GetMainFrame();
  CVantrelClipboard* clipboard = frame ? frame->m_pClipboard : nullptr;
  if (!clipboard) return 0;
  CStdStrW system, units, point;
  if (!Pull(frame, clipboard->GetID(kCoordSysFormat), &system)) return 0;
  if (!Pull(frame, clipboard->GetID(kUnitsFormat), &units)) return 0;
  CCoordSysX source;
  if (!source.FromStrings(app, system.c_str(), units.c_str(), 1, kSeparator)) return 0;
  if (!Pull(frame, clipboard->GetID(kLatLonFormat), &point) && !Pull(frame, CF_UNICODETEXT, &point)) return 0;
  if (!FromString(app, point, 0)) return 0;
  if (source == target || !source.IsDefinedCSys() || !target.IsDefinedCSys()) return 1;
  CVantrelWinApp* application = GetVantrelWinApp();
  return application && application->ConvertCoords(&m_dCoord[0], &m_dCoord[1], 0, source, target, flag) ? 1 : 0;
}

int CLatLonpt::UtmZone(double longitude) {
  for (int zone = 1; zone <= kZoneCount; ++zone) {
    const double west = (-180.0 + 6.0 * (zone - 1)) - kZoneEdgeShift;
    const double east = (-174.0 + 6.0 * (zone - 1)) - kZoneEdgeShift;
    if (longitude >= west && longitude < east) return zone;
  }
  return longitude > 0 ? kZoneCount : 1;
}

CCoordSysX CLatLonpt::DetermineCoordSysUTM(const CVantrelAppBaseX* app, double unitSize) {
  CCoordSysX system;
  const int hemisphere = GetLatitude() < -kEquatorTolerance ? CCoordSysX::kZoneSouth : CCoordSysX::kZoneNorth;
  system.From3int2(app, CCoordSysX::kFamilyUTM, CCoordSysX::kDatumWGS84, hemisphere + UtmZone(GetLongitude()),
                   unitSize, 0);
  return system;
}
