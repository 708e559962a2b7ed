// Feeds text (UTF-8) to the readers of coordinate systems and geographic points: as a
// point, as WKT, and as the clipboard pair of a system (split at the first line feed).
// What reads must write back to a text that reads again, as strictly as it was read, as
// the same thing.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/StdStr.h"
#include "suite/CoordSysX.h"
#include "suite/LatLonptBaseX.h"

namespace {

// PROJ's parser and identification take time in proportion to the text; longer inputs add
// nothing a fuzzer could find in the time it has.
constexpr std::size_t kMaxInput = 4096;

void Check(bool condition) {
  if (!condition) std::abort();
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void CheckPoint(const CStdStrW& text) {
  CLatLonptBaseX point;
  if (!point.FromString(nullptr, text, 0)) {
    Check(point.GetLatitude() == 0 && point.GetLongitude() == 0);
    return;
  }
  Check(std::fabs(point.GetLatitude()) <= 90 && std::fabs(point.GetLongitude()) <= 180);
  CLatLonptBaseX back;
  Check(back.FromString(nullptr, point.ToString(), 0));
  Check(SameBits(back.GetLatitude(), point.GetLatitude()) && SameBits(back.GetLongitude(), point.GetLongitude()));
  for (int style = 0; style <= 2; ++style) {
    const CStdStrW shown = point.FormatLatitude(style, 5) + u" " + point.FormatLongitude(style, 5);
    Check(back.FromString(nullptr, shown, 0));
    Check(std::fabs(back.GetLatitude() - point.GetLatitude()) <= 1e-5);
  }
}

void CheckWkt(const CStdStrW& text, int flag) {
  CCoordSysX system;
  if (!system.FromWktStr(text.c_str(), flag)) {
    Check(!system.IsValid());
    return;
  }
  CStdStrW wkt;
  Check(system.ToWktStr(&wkt, nullptr, CCoordSysX::kWkt2));
  CCoordSysX back;
  Check(back.FromWktStr(wkt.c_str(), flag));
  Check(back == system);
}

void CheckStrings(const CStdStrW& text) {
  const std::size_t split = text.find(u'\n');
  const CStdStrW first = text.substr(0, split);
  const CStdStrW second = split == CStdStrW::npos ? CStdStrW() : CStdStrW(text.substr(split + 1));
  CCoordSysX system;
  if (!system.FromStrings(nullptr, first.c_str(), second.c_str(), 1, u"|")) return;
  WCHAR units[80];
  const CStdStrW main = system.ToStrings(units, 80, u"|", 0);
  CCoordSysX back;
  Check(back.FromStrings(nullptr, main.c_str(), units, 1, u"|"));
  Check(back == system);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  const CStdStrW text = CStdStrW::FromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  const CStdStrW untilZero(text.c_str());  // as C text ends
  CheckPoint(text);
  CheckWkt(untilZero, 1);
  CheckWkt(untilZero, 0);
  CheckStrings(text);
  return 0;
}
