#include "dialogs/DialogStrings.h"

#include "suite/VantrelStrings.h"

namespace vantrel1 {

CStdStrW DialogString(UINT id) { return VantrelLoadResString(nullptr, id, 1024); }

}  // namespace vantrel1
