#pragma once
// CCoordSysX: a project's coordinate system, a coordinate reference system of PROJ.
//
// A system is in one of three states:
//   - none: default-constructed, or after a failed rebuild that cleared it; neither
//     valid nor defined, its texts are empty;
//   - valid but not defined: a local (engineering) system, coordinates without a place
//     on the earth; it round-trips through its texts but nothing converts to or from it;
//   - defined: a geographic, projected or compound system PROJ can transform.
//
// Every From... operation leaves the object unchanged when it fails, so a caller can
// try a text on its own system without a temporary.
//
// The EPSG registry is PROJ's database (proj-data); nothing is fetched from a network.
// PROJ objects are reached under one process-wide lock, so systems may be used from any
// thread.
#include <memory>

#include "platform/StdStr.h"
#include "platform/Types.h"

class CVantrelAppBaseX;

class VANTREL1_EXPORT CCoordSysX {
 public:
  // WKT styles of ToWktStr.
  static constexpr int kWktGdal = 1;  // WKT1 as GDAL writes it, on one line
  static constexpr int kWktEsri = 2;  // WKT1 of ESRI .prj files, on one line
  static constexpr int kWkt2 = 3;     // WKT2:2019, indented over several lines

  // From3int2: the family code of the UTM systems, and the datum code of WGS 84.
  static constexpr int kFamilyUTM = 10000;
  static constexpr int kDatumWGS84 = 51;
  // Zone codes: 10000 + zone north of the equator, 10100 + zone south, zone 1..60.
  static constexpr int kZoneNorth = 10000;
  static constexpr int kZoneSouth = 10100;

  // Longest accepted input text (WKT, .prj file, clipboard text), in UTF-16 units; longer
  // input is refused rather than handed to the parser.
  static constexpr int kMaxTextLength = 1 << 20;

  CCoordSysX();
  CCoordSysX(const CCoordSysX& other);
  CCoordSysX& operator=(const CCoordSysX& other);
  ~CCoordSysX();

  // Builds the system from WKT (WKT1 of GDAL or ESRI, or WKT2). With flag & 1 the text
  // must hold one coordinate reference system and nothing after it; without, trailing
  // text PROJ tolerates is accepted. Non-zero on success.
  int FromWktStr(LPCWSTR wkt, int flag);
  // Writes the system as WKT of `style` into *wkt. *extra, when not null, receives the
  // system's EPSG code (0 when it has none). Non-zero on success; 0 with *wkt emptied
  // for the none system, an unknown style, or a system PROJ cannot write in that style.
  int ToWktStr(CStdStrW* wkt, int* extra, int style) const;

  // Builds the system from EPSG code `code` of the registry. With flag & 1 the code must
  // name a system that is defined (not a local one). Non-zero on success. `app` may be null.
  int FromEPSG(const CVantrelAppBaseX* app, int code, int flag);
  // The system's EPSG code as decimal text into *code (empty when it has none: neither
  // its identifier nor an unambiguous identification names one). Non-zero when a code
  // was written.
  int GetEPSG(CStdStrW* code) const;
  // The EPSG code as a number, 0 when there is none.
  int GetEPSGCode() const;

  int IsValid() const;
  int IsDefinedCSys() const;
  // The system's name as PROJ gives it ("WGS 84 / UTM zone 34N"); empty for none.
  CStdStrW GetName() const;

  // An ESRI projection file: one WKT text, UTF-8 (a byte-order mark is skipped) or, when
  // not valid UTF-8, Latin-1. Non-zero on success; a file that cannot be read or parsed
  // leaves the system unchanged.
  int FromWktFileESRI(LPCWSTR path);
  // Writes the system as ESRI WKT on one line, UTF-8 without a byte-order mark, replacing
  // the file. Non-zero on success; 0 for the none system or when the file cannot be
  // written. `app` may be null.
  int ToWktFileESRI(const CVantrelAppBaseX* app, LPCWSTR path) const;

  // The two texts that carry the system between programs (the clipboard). The returned
  // main text is "VKS1" + separator + EPSG code (may be empty) + separator + the system's
  // WKT2 on one line; empty for the none system. The units text, written into `second`
  // (at most secondCapacity - 1 units and a terminator; nothing when it is null or the
  // capacity is below 1), is the unit's name, the separator and its size in metres (or
  // radians for angular units) with 17 significant digits: "metre|1". `flag` is reserved
  // (0).
  CStdStrW ToStrings(LPWSTR second, int secondCapacity, LPCWSTR separator, int flag) const;
  // Rebuilds the system from the two texts of ToStrings. With flag & 1 a non-empty units
  // text must name the units of the rebuilt system (same size within 1e-12 relative).
  // Non-zero on success. `app` may be null.
  int FromStrings(const CVantrelAppBaseX* app, LPCWSTR first, LPCWSTR second, int flag, CStdStrW separator);

  // Builds a system from codes: family kFamilyUTM with datum kDatumWGS84 and a zone code
  // (10001..10060 north, 10101..10160 south) gives WGS 84 / UTM zone nn N or S (EPSG
  // 326nn / 327nn). `unitSize` is the linear unit in metres; 0 or 1 means metres (the
  // registry's system); another finite positive size gives the same projection measured
  // in that unit (0.3048 for international feet), without an EPSG code. `flag` is
  // reserved (0). Non-zero on success; other codes fail and leave the system unchanged.
  int From3int2(const CVantrelAppBaseX* app, int family, int datum, int zone, double unitSize, int flag);

  // Equal: both none, or PROJ finds the two systems equivalent, names and the order of
  // their axes aside (coordinates are handed over in display order only).
  bool operator==(const CCoordSysX& other) const;
  bool operator!=(const CCoordSysX& other) const { return !(*this == other); }

  // Converts one point in place from `source` to `target`. With `geographic` non-zero the
  // values are latitude and longitude in degrees on each system's geographic base (the
  // datum change between them); otherwise they are the systems' own coordinates in their
  // own axis order (x, y as PROJ orders them for display: easting, northing or
  // longitude, latitude). Non-zero on success; on failure the values are unchanged. Both
  // systems must be defined.
  static int Transform(const CCoordSysX& source, const CCoordSysX& target, double* first, double* second,
                       int geographic);

  // The PROJ object behind a system; opaque outside the library's own files.
  struct Impl;

 private:
  std::unique_ptr<Impl> m_pImpl;  // null for the none system
};
