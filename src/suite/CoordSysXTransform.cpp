// Systems built from codes, and points carried from one system to another.
#include <proj_experimental.h>

#include <cmath>
#include <string>

#include "suite/CoordSysX.h"
#include "suite/CoordSysXImpl.h"

using vantrel1::PjPtr;
using vantrel1::ProjLock;

namespace vantrel1 {
namespace {

constexpr int kWgs84UtmNorth = 32600;
constexpr int kWgs84UtmSouth = 32700;
constexpr int kWgs84Geographic = 4326;
constexpr double kInternationalFoot = 0.3048;
constexpr double kUsSurveyFoot = 1200.0 / 3937.0;

struct UtmZone {
  int number = 0;
  bool north = true;
};

bool DecodeUtmZone(int code, UtmZone* zone) {
  const bool south = code > CCoordSysX::kZoneSouth;
  zone->number = code - (south ? CCoordSysX::kZoneSouth : CCoordSysX::kZoneNorth);
  zone->north = !south;
  return zone->number >= 1 && zone->number <= 60;
}

std::string UnitName(double size) {
  if (size == kInternationalFoot) return "foot";
  if (size == kUsSurveyFoot) return "US survey foot";
  return "unit of " + std::to_string(size) + " m";
}

// WGS 84 / UTM measured in another linear unit: the registry has no such systems, so the
// projection is put together from its parts, which keeps the false easting in metres.
PJ* UtmInUnit(PJ_CONTEXT* context, const UtmZone& zone, double unitSize) {
  const PjPtr base(proj_create_from_database(context, "EPSG", std::to_string(kWgs84Geographic).c_str(),
                                             PJ_CATEGORY_CRS, 0, nullptr));
  const PjPtr conversion(proj_create_conversion_utm(context, zone.number, zone.north ? 1 : 0));
  const std::string unit = UnitName(unitSize);
  const PjPtr cs(proj_create_cartesian_2D_cs(context, PJ_CART2D_EASTING_NORTHING, unit.c_str(), unitSize));
  if (!base || !conversion || !cs) return nullptr;
  const std::string name =
      "WGS 84 / UTM zone " + std::to_string(zone.number) + (zone.north ? "N" : "S") + " (" + unit + ")";
  return proj_create_projected_crs(context, name.c_str(), base.get(), conversion.get(), cs.get());
}

// The system the values are given in: the system itself, or with `geographic` its
// geodetic base, which PROJ orders latitude, longitude for EPSG systems and longitude,
// latitude for others; the caller normalises the order. A geocentric system has no
// latitude and longitude of its own to give.
PjPtr TransformEnd(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, bool geographic) {
  if (!geographic) return PjPtr(proj_clone(context, impl.crs.get()));
  PjPtr base(proj_crs_get_geodetic_crs(context, impl.crs.get()));
  if (base && proj_get_type(base.get()) == PJ_TYPE_GEOCENTRIC_CRS) base.reset();
  return base;
}

bool TransformPoint(PJ_CONTEXT* context, const CCoordSysX::Impl& source, const CCoordSysX::Impl& target, double* x,
                    double* y, bool geographic) {
  const PjPtr from = TransformEnd(context, source, geographic);
  const PjPtr to = TransformEnd(context, target, geographic);
  if (!from || !to) return false;
  const PjPtr operation(proj_create_crs_to_crs_from_pj(context, from.get(), to.get(), nullptr, nullptr));
  const PjPtr normalised(operation ? proj_normalize_for_visualization(context, operation.get()) : nullptr);
  if (!normalised) return false;
  proj_errno_reset(normalised.get());
  const PJ_COORD result = proj_trans(normalised.get(), PJ_FWD, proj_coord(*x, *y, 0, 0));
  if (proj_errno(normalised.get()) != 0 || !std::isfinite(result.xy.x) || !std::isfinite(result.xy.y)) return false;
  *x = result.xy.x;
  *y = result.xy.y;
  return true;
}

}  // namespace
}  // namespace vantrel1

int CCoordSysX::From3int2(const CVantrelAppBaseX* /*app*/, int family, int datum, int zone, double unitSize,
                          int /*flag*/) {
  vantrel1::UtmZone utm;
  if (family != kFamilyUTM || datum != kDatumWGS84 || !vantrel1::DecodeUtmZone(zone, &utm)) return 0;
  if (!std::isfinite(unitSize) || unitSize < 0) return 0;
  ProjLock lock;
  const bool metres = unitSize == 0 || unitSize == 1;
  std::unique_ptr<Impl> impl =
      metres ? vantrel1::CoordSysFromEpsg(
                   lock.Context(), (utm.north ? vantrel1::kWgs84UtmNorth : vantrel1::kWgs84UtmSouth) + utm.number)
             : vantrel1::MakeCoordSysImpl(lock.Context(), vantrel1::UtmInUnit(lock.Context(), utm, unitSize));
  if (!impl) return 0;
  if (!metres) impl->epsg = 0;
  m_pImpl = std::move(impl);
  return 1;
}

int CCoordSysX::Transform(const CCoordSysX& source, const CCoordSysX& target, double* first, double* second,
                          int geographic) {
  if (!first || !second || !source.IsDefinedCSys() || !target.IsDefinedCSys()) return 0;
  if (!std::isfinite(*first) || !std::isfinite(*second)) return 0;
  // In display order a geographic system takes longitude first.
  double x = geographic ? *second : *first;
  double y = geographic ? *first : *second;
  ProjLock lock;
  if (!vantrel1::TransformPoint(lock.Context(), *source.m_pImpl, *target.m_pImpl, &x, &y, geographic != 0)) return 0;
  *first = geographic ? y : x;
  *second = geographic ? x : y;
  return 1;
}
