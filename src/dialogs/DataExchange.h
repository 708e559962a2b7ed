#pragma once
// Dialog data exchange between fields and the controls named by their resource ids, with
// the framework's validation. On saving (controls to fields) a value that does not
// validate shows a message, puts the focus on its control and fails the exchange; the
// fields exchanged before it keep their new values, and every later exchange of the same
// pass does nothing. A missing control exchanges nothing.
#include "dialogs/Dialog.h"

namespace vantrel1 {

// Messages of the data exchange (resources/strings/dialogs.str).
constexpr UINT DSTR_PARSE_REAL = 21140;
constexpr UINT DSTR_PARSE_REAL_RANGE = 21141;

}  // namespace vantrel1

// A number in an edit field, shown with 15 significant digits (so values read from
// radians show as the degrees typed, 30 rather than 29.999999999999996). Saving accepts
// a finite decimal number with optional blanks around it, '.' as the decimal point and an
// optional exponent; anything else is refused.
VANTREL1_QT_EXPORT void DDX_Text(CDataExchange* exchange, int id, double& value);
// On saving, refuses a value outside min … max (both included). The value has already
// been stored by DDX_Text, as the framework does; the exchange fails.
VANTREL1_QT_EXPORT void DDV_MinMaxDouble(CDataExchange* exchange, int id, double value, double min, double max);
// A check box: 0 unchecked, 1 checked, 2 undetermined.
VANTREL1_QT_EXPORT void DDX_Check(CDataExchange* exchange, int id, int& value);

// Whether the user has changed the edit field since its text was last set (EM_GETMODIFY).
// FALSE for a missing control.
VANTREL1_QT_EXPORT BOOL GetEditModify(HWND dialog, int id);
