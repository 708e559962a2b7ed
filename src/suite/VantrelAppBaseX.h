#pragma once
// CVantrelAppBaseX: what the library needs of the running application - its profile
// files, the user's default line width and its coordinate conversion. The application
// object (CVantrelWinApp, suite/VantrelWinApp.h) supplies one; the operations are virtual
// so that an application or a test may serve them otherwise.
#include <functional>
#include <utility>

#include "platform/Types.h"

class CCoordSysX;

class VANTREL1_EXPORT CVantrelAppBaseX {
 public:
  // Converts the two values at `first` and `second` in place from `source` to `target`
  // and returns non-zero on success. `reserved` is passed as 0.
  using CoordConverter = std::function<int(double* first, double* second, int reserved, const CCoordSysX& source,
                                           const CCoordSysX& target, int flag)>;

  // The user setting that holds the default line width, under the product key.
  static constexpr const WCHAR* kDefaultLineWidthName = u"DefaultLineWidth";
  static constexpr int kFallbackLineWidth = 2;
  static constexpr int kMaxLineWidth = 100;

  CVantrelAppBaseX() = default;
  virtual ~CVantrelAppBaseX();
  CVantrelAppBaseX(const CVantrelAppBaseX&) = delete;
  CVantrelAppBaseX& operator=(const CVantrelAppBaseX&) = delete;

  // Reads `key` of `section` of the profile file `file` into `buffer` (at most size - 1
  // units and a terminator; `defaultValue` when absent) and returns the number of units
  // read: GetPrivateProfileStringW (platform/Profile.h).
  virtual DWORD GetProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                                  LPCWSTR file) const;
  // Writes `value` as `key` of `section`; with section, key and value null it flushes
  // `file` (every profile file when `file` is null too): WritePrivateProfileStringW.
  virtual BOOL WriteProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) const;

  // The width new line types of the user's tables are drawn with: the user setting
  // "DefaultLineWidth" (platform/Registry.h), or 2 when it is absent or outside 0..100.
  virtual int GetDefaultLineWidth() const;
  // Stores the setting; 0 when the width is outside 0..100 or cannot be stored.
  int SetDefaultLineWidth(int width);

  // The application's coordinate conversion: the installed converter, or else PROJ's
  // (CCoordSysX::Transform; `reserved` 0 means the values are latitude and longitude in
  // degrees, which is how a geographic point converts itself).
  virtual int ConvertCoords(double* first, double* second, int reserved, const CCoordSysX& source,
                            const CCoordSysX& target, int flag) const;
  void SetCoordConverter(CoordConverter converter) { m_converter = std::move(converter); }

 private:
  CoordConverter m_converter;
};
