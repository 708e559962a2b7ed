#pragma once
// Fonts of the suite's drawing library: a logical font made at an angle, and a one-line
// text form of a LOGFONTW for profile files and documents.
#include "platform/Gdi.h"
#include "platform/Types.h"

// Room FntToString needs at most, terminator included: 13 numbers (five of up to 11
// units, eight of up to 3), 13 commas, two quotes and a face name of 31 units, each
// escaped in at most 6.
constexpr int FNT_TEXT_SIZE = 288;

// A new font (the caller deletes it) like `font` but turned to `angle` radians,
// counter-clockwise: escapement and orientation are the angle in tenths of a degree,
// normalised to (-1800, 1800] and rounded to the nearest tenth. Null when the angle is not
// finite or the font cannot be made. The window is not needed and may be null.
VANTREL1_EXPORT HFONT FntGraphic2(double angle, const LOGFONTW& font, HWND window);

// Writes every field of `font` into `text` (FNT_TEXT_SIZE units suffice) as
//     height,width,escapement,orientation,weight,italic,underline,strikeOut,charSet,
//     outPrecision,clipPrecision,quality,pitchAndFamily,"face"
// on one line, for example 12,0,0,0,700,0,0,0,238,0,0,0,0,"DejaVu Sans, Bold". The face
// name (up to its terminator, at most 31 units) is quoted so that blanks and commas
// survive; inside the quotes \ and " are escaped by a \, and control units and lone
// surrogates are written as \uXXXX, so the text stays one printable line and passes
// through a UTF-8 file unchanged. Returns `text`, or null when either pointer is null.
VANTREL1_EXPORT WCHAR* FntToString(const LOGFONTW* font, WCHAR* text);

// Reads the text form back. Non-zero on success; 0, with `font` untouched, for a null
// pointer or any text that is not exactly that form: a missing or extra field, a number
// out of its field's range, a face longer than 31 units, a bad escape, anything after the
// closing quote. Never reads past the text's terminator.
VANTREL1_EXPORT int FntFromString(const WCHAR* text, LOGFONTW* font);
