#pragma once
// CLatLonpt: a geographic point that travels between the suite's programs on the
// clipboard, together with the coordinate system it is expressed in, and that knows the
// UTM zone it lies in.
//
// A copy puts four formats: the system's text ("Vantrel Coordinate System"), its units
// ("Vantrel LM Units"), the point's own text ("Vantrel Lat Lon") and a plain text for
// other programs. A paste needs the system and its units; the point comes from its own
// format or, when only plain text stands beside the system, from that text. A clipboard
// that holds plain text alone does not paste, on purpose.
#include "platform/Export.h"
#include "suite/CoordSysX.h"
#include "suite/LatLonptBaseX.h"

class CVantrelClipboard;
class CVantrelAppBaseX;

class VANTREL1_QT_EXPORT CLatLonpt : public CLatLonptBaseX {
 public:
  // Zone edges lie this far west of the 6-degree meridians, so that a longitude on an
  // edge, or just west of it, belongs to the zone east of the edge.
  static constexpr double kZoneEdgeShift = 0.001;
  // Latitudes down to this far south of the equator count as north.
  static constexpr double kEquatorTolerance = 0.001;
  static constexpr int kDecimals = 5;  // of the plain text

  CLatLonpt() = default;
  CLatLonpt(const CLatLonpt& other) = default;
  CLatLonpt& operator=(const CLatLonpt& other) = default;
  ~CLatLonpt() override;

  int operator==(CLatLonpt& other) { return CLatLonptBaseX::operator==(other); }
  int operator!=(CLatLonpt& other) { return !(*this == other); }

  // Appends the point in `csys` to a clipboard the caller opened with OpenCB. 0 when the
  // system has no text (then nothing is put), when pClipboard is null, or when the
  // clipboard refuses a format (what went before stays on it).
  int ToClipboard(CCoordSysX& csys, CVantrelClipboard* pClipboard);
  // The whole copy through the main frame's clipboard: open (emptying it), append, close.
  int ToClipboard(CCoordSysX& csys);
  // Reads the point from the clipboard and expresses it in `target`: converted by the
  // current application (CVantrelWinApp::ConvertCoords, with `flag`) unless the two
  // systems are equal or either is not defined. 0 when a needed format is missing or
  // unreadable, or the conversion fails; the point then keeps what was read last.
  int FromClipboard(const CVantrelAppBaseX* app, CCoordSysX& target, int flag);

  // WGS 84 / UTM of the zone the point lies in (see the shifts above; every zone is 6
  // degrees wide, without exceptions). Longitudes east of the last zone's shifted edge
  // belong to zone 60 and those west of the first zone to zone 1. `unitSize` is the
  // linear unit in metres (0 or 1: metres), passed to CCoordSysX::From3int2.
  CCoordSysX DetermineCoordSysUTM(const CVantrelAppBaseX* app, double unitSize);
  // The zone number 1..60 for a longitude, by the same rule.
  static int UtmZone(double longitude);
};
