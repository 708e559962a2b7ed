#include <QtGlobal>

#include "platform/Export.h"

// The Qt version the Qt half of the library was built against.
VANTREL1_QT_EXPORT const char* Vantrel1QtVersion() { return QT_VERSION_STR; }
