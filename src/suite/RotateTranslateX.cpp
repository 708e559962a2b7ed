#include "suite/RotateTranslateX.h"

namespace {

// The suite writes π with these digits everywhere it converts angles.
constexpr double kPi = 3.141592653589793;

}  // namespace

CRotateTranslateX::~CRotateTranslateX() = default;

void CRotateTranslateX::SetAngleDegrees(double degrees) { m_dAngle = degrees * kPi / 180.0; }

CRotTransCoord::~CRotTransCoord() = default;
