#include "platform/Version.h"

#include "vantrel1/Version.h"

const char* Vantrel1Version() { return VANTREL1_VERSION; }
