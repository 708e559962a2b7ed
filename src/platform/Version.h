#pragma once
#include "platform/Export.h"

// The library's version, "major.minor.patch".
VANTREL1_EXPORT const char* Vantrel1Version();
