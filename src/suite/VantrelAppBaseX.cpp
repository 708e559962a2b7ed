#include "suite/VantrelAppBaseX.h"

#include "platform/Profile.h"
#include "platform/Registry.h"
#include "suite/CoordSysX.h"

CVantrelAppBaseX::~CVantrelAppBaseX() = default;

DWORD CVantrelAppBaseX::GetProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer,
                                          DWORD size, LPCWSTR file) const {
  return GetPrivateProfileStringW(section, key, defaultValue, buffer, size, file);
}

BOOL CVantrelAppBaseX::WriteProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) const {
  return WritePrivateProfileStringW(section, key, value, file);
}

int CVantrelAppBaseX::GetDefaultLineWidth() const {
  const int width = CorviaRegistryReadInt(nullptr, kDefaultLineWidthName, kFallbackLineWidth);
  return (width >= 0 && width <= kMaxLineWidth) ? width : kFallbackLineWidth;
}

int CVantrelAppBaseX::SetDefaultLineWidth(int width) {
  if (width < 0 || width > kMaxLineWidth) return 0;
  return CorviaRegistryWriteInt(nullptr, kDefaultLineWidthName, width);
}

int CVantrelAppBaseX::ConvertCoords(double* first, double* second, int reserved, const CCoordSysX& source,
                                    const CCoordSysX& target, int flag) const {
  if (!first || !second) return 0;
  if (!m_converter) return CCoordSysX::Transform(source, target, first, second, reserved == 0);
  return m_converter(first, second, reserved, source, target, flag);
}
