// The texts a coordinate system travels in: ESRI projection files and the clipboard pair.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/Utf.h"
#include "suite/CoordSysX.h"
#include "suite/CoordSysXImpl.h"

using vantrel1::PjPtr;
using vantrel1::ProjLock;

namespace vantrel1 {
namespace {

constexpr char16_t kTextTag[] = u"VKS1";
constexpr char16_t kDefaultSeparator[] = u"|";
// A UTF-8 text of the longest accepted length takes at most three bytes per unit.
constexpr std::uintmax_t kMaxFileBytes = 3u * CCoordSysX::kMaxTextLength;
// Unit sizes written on one side and read on the other agree to this (relative).
constexpr double kUnitTolerance = 1e-12;

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// The length of the well-formed UTF-8 sequence at `i`, 0 when it is not one.
std::size_t Utf8SequenceLength(const std::string& bytes, std::size_t i) {
  const unsigned char lead = static_cast<unsigned char>(bytes[i]);
  std::size_t length = lead < 0x80 ? 1 : lead >= 0xC2 && lead <= 0xDF ? 2 : lead >= 0xE0 && lead <= 0xEF ? 3
                                     : lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
  if (length == 0 || i + length > bytes.size()) return 0;
  for (std::size_t k = 1; k < length; ++k)
    if (!IsContinuation(static_cast<unsigned char>(bytes[i + k]))) return 0;
  const unsigned char second = static_cast<unsigned char>(length > 1 ? bytes[i + 1] : 0);
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0)) return 0;  // overlong, surrogate
  if ((lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90)) return 0;  // overlong, > U+10FFFF
  return length;
}

bool IsUtf8(const std::string& bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = Utf8SequenceLength(bytes, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

// Projection files written on Windows are often in the ANSI code page; Latin-1 reads
// their Western letters, and WKT itself is ASCII.
std::u16string DecodeFile(std::string bytes) {
  if (bytes.rfind("\xEF\xBB\xBF", 0) == 0) bytes.erase(0, 3);
  if (IsUtf8(bytes)) return FromUtf8(bytes);
  std::u16string text;
  text.reserve(bytes.size());
  for (const char c : bytes) text.push_back(static_cast<unsigned char>(c));
  return text;
}

bool ReadFileBytes(const std::filesystem::path& path, std::string* bytes) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size > kMaxFileBytes) return false;
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  bytes->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  return !file.bad() && bytes->size() <= kMaxFileBytes;
}

std::filesystem::path FilePath(LPCWSTR path) { return std::filesystem::path(ToUtf8(std::u16string_view(path))); }

// The horizontal part of a compound system, the base of a bound one.
PjPtr HorizontalCrs(PJ_CONTEXT* context, const PJ* crs) {
  PjPtr current(proj_clone(context, crs));
  for (int depth = 0; current && depth < 4; ++depth) {
    const PJ_TYPE type = proj_get_type(current.get());
    if (type == PJ_TYPE_BOUND_CRS)
      current.reset(proj_get_source_crs(context, current.get()));
    else if (type == PJ_TYPE_COMPOUND_CRS)
      current.reset(proj_crs_get_sub_crs(context, current.get(), 0));
    else
      break;
  }
  return current;
}

std::string SizeText(double size) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, size, std::chars_format::general, 17);
  return std::string(buffer, result.ptr);
}

bool ParseSize(const std::u16string& text, double* size) {
  std::string ascii;
  for (const char16_t c : text) {
    if (c > 0x7F) return false;
    ascii.push_back(static_cast<char>(c));
  }
  const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), *size);
  return !ascii.empty() && error == std::errc() && end == ascii.data() + ascii.size() && std::isfinite(*size);
}

bool SameSize(double a, double b) { return std::fabs(a - b) <= kUnitTolerance * std::fmax(std::fabs(a), std::fabs(b)); }

// The units text names the system's unit when its size (after the last separator) is
// the system's unit size; the name is only for people.
bool UnitsMatch(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, const std::u16string& units,
                const std::u16string& separator) {
  const std::size_t at = units.rfind(separator);
  double written = 0, actual = 0;
  std::string name;
  return at != std::u16string::npos && ParseSize(units.substr(at + separator.size()), &written) &&
         CoordSysUnit(context, impl, &name, &actual) && SameSize(written, actual);
}

void CopyBounded(const std::u16string& text, LPWSTR buffer, int capacity) {
  if (!buffer || capacity < 1) return;
  const std::size_t count = std::min(text.size(), static_cast<std::size_t>(capacity - 1));
  text.copy(buffer, count);
  buffer[count] = 0;
}

std::unique_ptr<CCoordSysX::Impl> ImplFromMainText(PJ_CONTEXT* context, const std::u16string& text,
                                                   const std::u16string& separator) {
  const std::u16string tag = std::u16string(kTextTag) + separator;
  if (text.rfind(tag, 0) != 0) return nullptr;
  const std::size_t codeEnd = text.find(separator, tag.size());
  if (codeEnd == std::u16string::npos) return nullptr;
  const std::u16string code = text.substr(tag.size(), codeEnd - tag.size());
  const std::u16string wkt = text.substr(codeEnd + separator.size());
  // Not strict: a system read leniently (from a projection file) writes WKT that only a
  // lenient reader takes back, and it must still cross the clipboard.
  if (!wkt.empty()) return CoordSysFromWkt(context, ToUtf8(wkt), false);
  std::string digits = ToUtf8(code);
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) return nullptr;
  return CoordSysFromEpsg(context, value);
}

}  // namespace

bool CoordSysUnit(PJ_CONTEXT* context, const CCoordSysX::Impl& impl, std::string* name, double* size) {
  const PjPtr horizontal = HorizontalCrs(context, impl.crs.get());
  const PjPtr cs(horizontal ? proj_crs_get_coordinate_system(context, horizontal.get()) : nullptr);
  const char* unitName = nullptr;
  if (!cs || !proj_cs_get_axis_info(context, cs.get(), 0, nullptr, nullptr, nullptr, size, &unitName, nullptr,
                                    nullptr))
    return false;
  *name = ProjText(unitName);
  return true;
}

}  // namespace vantrel1

int CCoordSysX::FromWktFileESRI(LPCWSTR path) {
  std::string bytes;
  if (!path || !vantrel1::ReadFileBytes(vantrel1::FilePath(path), &bytes)) return 0;
  const std::u16string text = vantrel1::DecodeFile(std::move(bytes));
  return FromWktStr(text.c_str(), 0);
}

int CCoordSysX::ToWktFileESRI(const CVantrelAppBaseX* /*app*/, LPCWSTR path) const {
  CStdStrW wkt;
  if (!path || !ToWktStr(&wkt, nullptr, kWktEsri)) return 0;
  std::ofstream file(vantrel1::FilePath(path), std::ios::binary | std::ios::trunc);
  const std::string bytes = wkt.ToUtf8();
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  return file ? 1 : 0;
}

CStdStrW CCoordSysX::ToStrings(LPWSTR second, int secondCapacity, LPCWSTR separator, int /*flag*/) const {
  vantrel1::CopyBounded(std::u16string(), second, secondCapacity);
  if (!m_pImpl) return CStdStrW();
  const std::u16string sep = separator && *separator ? separator : vantrel1::kDefaultSeparator;
  ProjLock lock;
  const std::string wkt = vantrel1::CoordSysWkt(lock.Context(), *m_pImpl, kWkt2, false);
  std::string unitName;
  double unitSize = 0;
  if (wkt.empty() || !vantrel1::CoordSysUnit(lock.Context(), *m_pImpl, &unitName, &unitSize)) return CStdStrW();
  const int code = vantrel1::CoordSysEpsg(lock.Context(), *m_pImpl);
  vantrel1::CopyBounded(vantrel1::FromUtf8(unitName) + sep + vantrel1::FromUtf8(vantrel1::SizeText(unitSize)), second,
                        secondCapacity);
  const std::u16string codeText = code ? vantrel1::FromUtf8(std::to_string(code)) : std::u16string();
  return CStdStrW(std::u16string(vantrel1::kTextTag) + sep + codeText + sep + vantrel1::FromUtf8(wkt));
}

int CCoordSysX::FromStrings(const CVantrelAppBaseX* /*app*/, LPCWSTR first, LPCWSTR second, int flag,
                            CStdStrW separator) {
  if (!first || std::u16string_view(first).size() > static_cast<std::size_t>(kMaxTextLength)) return 0;
  const std::u16string sep = separator.empty() ? std::u16string(vantrel1::kDefaultSeparator) : separator;
  ProjLock lock;
  auto impl = vantrel1::ImplFromMainText(lock.Context(), first, sep);
  if (!impl) return 0;
  const std::u16string units = second ? std::u16string(second).substr(0, kMaxTextLength) : std::u16string();
  if ((flag & 1) && !units.empty() && !vantrel1::UnitsMatch(lock.Context(), *impl, units, sep)) return 0;
  m_pImpl = std::move(impl);
  return 1;
}
