#include "suite/CoordSysX.h"

#include <charconv>
#include <string>

#include "platform/Utf.h"
#include "suite/CoordSysXImpl.h"

using vantrel1::PjPtr;
using vantrel1::ProjLock;
using vantrel1::ProjText;

namespace vantrel1 {
namespace {

// Confidence PROJ gives a registry entry that describes the same system under another
// name; lower values mean only the datum and the axes agree.
constexpr int kSameSystemConfidence = 90;

bool IsEngineering(const PJ* crs) { return proj_get_type(crs) == PJ_TYPE_ENGINEERING_CRS; }

// A system that has a place on the earth has a geodetic system under it (a compound or a
// bound system through its horizontal part).
bool HasGeodeticBase(PJ_CONTEXT* context, const PJ* crs) {
  return PjPtr(proj_crs_get_geodetic_crs(context, crs)) != nullptr;
}

int ParseCode(const char* text) {
  if (!text || !*text) return 0;
  const std::string code(text);
  int value = 0;
  const auto [end, error] = std::from_chars(code.data(), code.data() + code.size(), value);
  return error == std::errc() && end == code.data() + code.size() && value > 0 ? value : 0;
}

int CodeFromIdentifiers(const PJ* crs) {
  for (int i = 0;; ++i) {
    const char* authority = proj_get_id_auth_name(crs, i);
    if (!authority) return 0;
    if (std::string(authority) == "EPSG") return ParseCode(proj_get_id_code(crs, i));
  }
}

// The registry entry PROJ identifies the system with, when exactly one entry matches it
// best and that match is of the same system.
int CodeFromIdentification(PJ_CONTEXT* context, const PJ* crs) {
  int* confidence = nullptr;
  PJ_OBJ_LIST* candidates = proj_identify(context, crs, "EPSG", nullptr, &confidence);
  int code = 0, best = 0, bestCount = 0;
  const int count = candidates ? proj_list_get_count(candidates) : 0;
  for (int i = 0; i < count; ++i) {
    if (confidence[i] < best) continue;
    PjPtr candidate(proj_list_get(context, candidates, i));
    const int candidateCode = candidate ? CodeFromIdentifiers(candidate.get()) : 0;
    bestCount = confidence[i] == best ? bestCount + 1 : 1;
    best = confidence[i];
    code = candidateCode;
  }
  proj_int_list_destroy(confidence);
  proj_list_destroy(candidates);
  return best >= kSameSystemConfidence && bestCount == 1 ? code : 0;
}

// The system with its axes in display order (easting or longitude first): the library
// hands coordinates over in that order only, so systems that differ just in the order
// of their axes (a registry entry and its WKT1 form) describe the same coordinates.
PjPtr DisplayOrder(PJ_CONTEXT* context, const PJ* crs) { return PjPtr(proj_normalize_for_visualization(context, crs)); }

PJ_WKT_TYPE WktType(int style) {
  switch (style) {
    case CCoordSysX::kWktGdal: return PJ_WKT1_GDAL;
    case CCoordSysX::kWktEsri: return PJ_WKT1_ESRI;
    default: return PJ_WKT2_2019;
  }
}

}  // namespace

std::unique_ptr<CCoordSysX::Impl> MakeCoordSysImpl(PJ_CONTEXT* context, PJ* object) {
  PjPtr crs(object);
  if (!crs || !proj_is_crs(crs.get())) return nullptr;
  const bool local = IsEngineering(crs.get());
  if (!local && !HasGeodeticBase(context, crs.get())) return nullptr;
  auto impl = std::make_unique<CCoordSysX::Impl>();
  impl->crs = std::move(crs);
  impl->local = local;
  return impl;
}

std::unique_ptr<CCoordSysX::Impl> CoordSysFromWkt(PJ_CONTEXT* context, const std::string& wkt, bool strict) {
  const char* const options[] = {strict ? "STRICT=YES" : "STRICT=NO", nullptr};
  return MakeCoordSysImpl(context, proj_create_from_wkt(context, wkt.c_str(), options, nullptr, nullptr));
}

std::unique_ptr<CCoordSysX::Impl> CoordSysFromEpsg(PJ_CONTEXT* context, int code) {
  if (code <= 0) return nullptr;
  const std::string text = std::to_string(code);
  auto impl = MakeCoordSysImpl(
      context, proj_create_from_database(context, "EPSG", text.c_str(), PJ_CATEGORY_CRS, 0, nullptr));
  if (impl) impl->epsg = code;
  return impl;
}

int CoordSysEpsg(PJ_CONTEXT* context, const CCoordSysX::Impl& impl) {
  if (impl.epsg == CCoordSysX::Impl::kNotIdentified) {
    const int code = CodeFromIdentifiers(impl.crs.get());
    impl.epsg = code ? code : CodeFromIdentification(context, impl.crs.get());
  }
  return impl.epsg;
}

std::string CoordSysWkt(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, int style, bool multiline) {
  const char* const options[] = {multiline ? "MULTILINE=YES" : "MULTILINE=NO", nullptr};
  return ProjText(proj_as_wkt(context, impl.crs.get(), WktType(style), options));
}

bool InputText(LPCWSTR text, std::string* utf8) {
  if (!text) return false;
  const std::u16string_view view(text);
  if (view.size() > static_cast<std::size_t>(CCoordSysX::kMaxTextLength)) return false;
  *utf8 = ToUtf8(view);
  return true;
}

}  // namespace vantrel1

CCoordSysX::CCoordSysX() = default;

CCoordSysX::CCoordSysX(const CCoordSysX& other) { *this = other; }

CCoordSysX& CCoordSysX::operator=(const CCoordSysX& other) {
  if (this == &other) return *this;
  ProjLock lock;
  std::unique_ptr<Impl> copy;
  if (other.m_pImpl) {
    copy = std::make_unique<Impl>();
    copy->crs.reset(proj_clone(lock.Context(), other.m_pImpl->crs.get()));
    copy->local = other.m_pImpl->local;
    copy->epsg = other.m_pImpl->epsg;
    if (!copy->crs) copy.reset();
  }
  m_pImpl = std::move(copy);
  return *this;
}

CCoordSysX::~CCoordSysX() {
  if (!m_pImpl) return;
  ProjLock lock;
  m_pImpl.reset();
}

int CCoordSysX::FromWktStr(LPCWSTR wkt, int flag) {
  std::string text;
  if (!vantrel1::InputText(wkt, &text)) return 0;
  ProjLock lock;
  auto impl = vantrel1::CoordSysFromWkt(lock.Context(), text, (flag & 1) != 0);
  if (!impl) return 0;
  m_pImpl = std::move(impl);
  return 1;
}

int CCoordSysX::ToWktStr(CStdStrW* wkt, int* extra, int style) const {
  if (!wkt) return 0;
  wkt->clear();
  if (extra) *extra = 0;
  if (!m_pImpl || style < kWktGdal || style > kWkt2) return 0;
  ProjLock lock;
  const std::string text = vantrel1::CoordSysWkt(lock.Context(), *m_pImpl, style, style == kWkt2);
  if (text.empty()) return 0;
  *wkt = CStdStrW::FromUtf8(text);
  if (extra) *extra = vantrel1::CoordSysEpsg(lock.Context(), *m_pImpl);
  return 1;
}

int CCoordSysX::FromEPSG(const CVantrelAppBaseX* /*app*/, int code, int flag) {
  ProjLock lock;
  auto impl = vantrel1::CoordSysFromEpsg(lock.Context(), code);
  if (!impl || ((flag & 1) && impl->local)) return 0;
  m_pImpl = std::move(impl);
  return 1;
}

int CCoordSysX::GetEPSG(CStdStrW* code) const {
  if (!code) return 0;
  code->clear();
  const int value = GetEPSGCode();
  if (value == 0) return 0;
  *code = CStdStrW::FromUtf8(std::to_string(value));
  return 1;
}

int CCoordSysX::GetEPSGCode() const {
  if (!m_pImpl) return 0;
  ProjLock lock;
  return vantrel1::CoordSysEpsg(lock.Context(), *m_pImpl);
}

int CCoordSysX::IsValid() const { return m_pImpl ? 1 : 0; }

int CCoordSysX::IsDefinedCSys() const { return m_pImpl && !m_pImpl->local ? 1 : 0; }

CStdStrW CCoordSysX::GetName() const {
  if (!m_pImpl) return CStdStrW();
  ProjLock lock;
  return CStdStrW::FromUtf8(ProjText(proj_get_name(m_pImpl->crs.get())));
}

bool CCoordSysX::operator==(const CCoordSysX& other) const {
  if (!m_pImpl || !other.m_pImpl) return !m_pImpl && !other.m_pImpl;
  if (m_pImpl->local != other.m_pImpl->local) return false;
  ProjLock lock;
  const PjPtr mine = vantrel1::DisplayOrder(lock.Context(), m_pImpl->crs.get());
  const PjPtr theirs = vantrel1::DisplayOrder(lock.Context(), other.m_pImpl->crs.get());
  return mine && theirs && proj_is_equivalent_to_with_ctx(lock.Context(), mine.get(), theirs.get(), PJ_COMP_EQUIVALENT);
}
