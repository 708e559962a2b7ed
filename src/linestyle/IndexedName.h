#pragma once
// Names and numbers of the persistent forms: element and section names made of a prefix
// and a 0-based index ("LINEITEM0", "USER3", "LineType12"), and decimal texts of counts.
#include "platform/StdStr.h"

namespace vantrel1 {

inline CStdStrW DecimalText(int value) {
  CStdStrW text;
  text.Format(u"%d", value);
  return text;
}

inline CStdStrW IndexedName(const WCHAR* prefix, int index) {
  CStdStrW name;
  name.Format(u"%s%d", prefix, index);
  return name;
}

}  // namespace vantrel1
