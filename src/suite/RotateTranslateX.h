#pragma once
// CRotateTranslateX: a plane coordinate transformation of the suite's core library. A
// point is rotated about the origin by the angle (counter-clockwise), scaled about the
// origin by the scale factors, then shifted. The Z origin and Z scale serve elevations.
//
// The record holds the angle in radians; editors that show degrees set it through
// SetAngleDegrees. The flags word carries the "centre on the screen" choice: kCenterAllowed
// says that the owner can take the horizontal shifts from its view, kCenterOn that it does.
//
// CRotTransCoord is the same record as bound to an editor for live update.
#include "platform/Types.h"

class VANTREL1_EXPORT CRotateTranslateX {
 public:
  static constexpr DWORD kCenterAllowed = 0x1;
  static constexpr DWORD kCenterOn = 0x2;

  CRotateTranslateX() = default;
  virtual ~CRotateTranslateX();
  CRotateTranslateX(const CRotateTranslateX&) = default;
  CRotateTranslateX& operator=(const CRotateTranslateX&) = default;

  double GetOriginX() const { return m_dOriginX; }
  double GetOriginY() const { return m_dOriginY; }
  double GetOriginZ() const { return m_dOriginZ; }
  void SetOriginX(double value) { m_dOriginX = value; }
  void SetOriginY(double value) { m_dOriginY = value; }
  void SetOriginZ(double value) { m_dOriginZ = value; }

  // Radians, counter-clockwise.
  double GetAngle() const { return m_dAngle; }
  // degrees × π / 180.
  void SetAngleDegrees(double degrees);

  double GetShiftX() const { return m_dShiftX; }
  double GetShiftY() const { return m_dShiftY; }
  double GetShiftZ() const { return m_dShiftZ; }
  void SetShiftX(double value) { m_dShiftX = value; }
  void SetShiftY(double value) { m_dShiftY = value; }
  void SetShiftZ(double value) { m_dShiftZ = value; }

  double GetScaleX() const { return m_dScaleX; }
  double GetScaleY() const { return m_dScaleY; }
  double GetScaleZ() const { return m_dScaleZ; }
  void SetScaleX(double value) { m_dScaleX = value; }
  void SetScaleY(double value) { m_dScaleY = value; }
  void SetScaleZ(double value) { m_dScaleZ = value; }

  DWORD GetFlags() const { return m_dwFlags; }
  void SetFlags(DWORD flags) { m_dwFlags = flags; }

 private:
  double m_dOriginX = 0.0;
  double m_dOriginY = 0.0;
  double m_dOriginZ = 0.0;
  double m_dAngle = 0.0;
  double m_dShiftX = 0.0;
  double m_dShiftY = 0.0;
  double m_dShiftZ = 0.0;
  double m_dScaleX = 1.0;
  double m_dScaleY = 1.0;
  double m_dScaleZ = 1.0;
  DWORD m_dwFlags = 0;
};

class VANTREL1_EXPORT CRotTransCoord : public CRotateTranslateX {
 public:
  CRotTransCoord() = default;
  ~CRotTransCoord() override;
  CRotTransCoord(const CRotTransCoord&) = default;
  CRotTransCoord& operator=(const CRotTransCoord&) = default;
};
