#pragma once
// What a CCoordSysX holds, shared by the files that implement it. Everything here is
// used with a vantrel1::ProjLock held.
#include <memory>
#include <string>

#include "suite/CoordSysX.h"
#include "suite/ProjContext.h"

struct CCoordSysX::Impl {
  static constexpr int kNotIdentified = -1;

  vantrel1::PjPtr crs;
  bool local = false;  // an engineering system: valid, but nowhere on the earth
  // The EPSG code once looked up (0: none); identification asks the registry, so it is
  // done on first request only.
  mutable int epsg = kNotIdentified;
};

namespace vantrel1 {

// The state for a PROJ object, or null when it is not a coordinate reference system this
// class can hold (a datum, an ellipsoid, a vertical system alone...). Takes the object.
std::unique_ptr<CCoordSysX::Impl> MakeCoordSysImpl(PJ_CONTEXT* context, PJ* object);
// A system read from WKT (UTF-8), or null.
std::unique_ptr<CCoordSysX::Impl> CoordSysFromWkt(PJ_CONTEXT* context, const std::string& wkt, bool strict);
// A system of the EPSG registry, or null.
std::unique_ptr<CCoordSysX::Impl> CoordSysFromEpsg(PJ_CONTEXT* context, int code);
// The system's EPSG code, 0 when it has none.
int CoordSysEpsg(PJ_CONTEXT* context, const CCoordSysX::Impl& impl);
// The system as WKT of a CCoordSysX style, "" when it cannot be written so.
std::string CoordSysWkt(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, int style, bool multiline);
// The horizontal coordinates' unit: its name and size in metres (radians for angles).
bool CoordSysUnit(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, std::string* name, double* size);

// UTF-16 input text as UTF-8, or false when it is null or longer than the limit.
bool InputText(LPCWSTR text, std::string* utf8);

}  // namespace vantrel1
