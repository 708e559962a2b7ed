#pragma once
// The Win32 types and constants that the library's interfaces are written in, with the
// numeric values Windows gives them, so that records, archives and clipboard blocks
// exchanged with the suite's Windows programs mean the same here.
#include <cstdint>

#include "platform/Export.h"

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using BOOL = int;
using LONG = std::int32_t;  // 32 bits as on Windows; `long` is 64 bits on Linux
using ULONG = std::uint32_t;
using WCHAR = char16_t;     // a UTF-16 code unit, the wchar_t of the library's interfaces
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using COLORREF = std::uint32_t;  // 0x00BBGGRR
using LPARAM = std::intptr_t;
using WPARAM = std::uintptr_t;
using UINT_PTR = std::uintptr_t;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

constexpr COLORREF RGB(unsigned r, unsigned g, unsigned b) {
  return static_cast<COLORREF>((r & 0xFFu) | ((g & 0xFFu) << 8) | ((b & 0xFFu) << 16));
}
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c & 0xFFu); }
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>((c >> 8) & 0xFFu); }
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>((c >> 16) & 0xFFu); }

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};
using LPRECT = RECT*;

struct POINT {
  LONG x;
  LONG y;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

constexpr int LF_FACESIZE = 32;

struct LOGFONTW {
  LONG lfHeight;
  LONG lfWidth;
  LONG lfEscapement;   // tenths of a degree, counter-clockwise
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};

struct TEXTMETRICW {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  WCHAR tmFirstChar;
  WCHAR tmLastChar;
  WCHAR tmDefaultChar;
  WCHAR tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};

// Handles. A device context is the platform's drawing device (platform/Gdi.h); GDI objects
// and the rest are opaque, distinct types as under STRICT, all convertible to HGDIOBJ.
class GdiDevice;
using HDC = GdiDevice*;
using HGDIOBJ = void*;
using HPEN = struct HPEN__*;
using HBRUSH = struct HBRUSH__*;
using HFONT = struct HFONT__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HWND = struct HWND__*;
using HGLOBAL = void*;
using HANDLE = void*;

// Pen styles.
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_DASHDOT = 3;
constexpr int PS_DASHDOTDOT = 4;
constexpr int PS_NULL = 5;
constexpr int PS_INSIDEFRAME = 6;

// Background modes.
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Text alignment.
constexpr UINT TA_NOUPDATECP = 0;
constexpr UINT TA_UPDATECP = 1;
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
constexpr UINT TA_RTLREADING = 256;
constexpr UINT TA_MASK = TA_BASELINE + TA_CENTER + TA_UPDATECP + TA_RTLREADING;
constexpr UINT GDI_ERROR = 0xFFFFFFFFu;

// Font weights and character sets.
constexpr LONG FW_DONTCARE = 0;
constexpr LONG FW_NORMAL = 400;
constexpr LONG FW_BOLD = 700;
constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr BYTE EASTEUROPE_CHARSET = 238;

// Message boxes.
constexpr UINT MB_OK = 0x0;
constexpr UINT MB_OKCANCEL = 0x1;
constexpr UINT MB_YESNOCANCEL = 0x3;
constexpr UINT MB_YESNO = 0x4;
constexpr UINT MB_ICONHAND = 0x10;
constexpr UINT MB_ICONSTOP = MB_ICONHAND;
constexpr UINT MB_ICONERROR = MB_ICONHAND;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr UINT MB_ICONASTERISK = 0x40;
constexpr UINT MB_ICONINFORMATION = MB_ICONASTERISK;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Global memory.
constexpr UINT GMEM_FIXED = 0x0000;
constexpr UINT GMEM_MOVEABLE = 0x0002;
constexpr UINT GMEM_ZEROINIT = 0x0040;
constexpr UINT GMEM_DDESHARE = 0x2000;
constexpr UINT GMEM_SHARE = 0x2000;
constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;

// File dialog flags.
constexpr DWORD OFN_READONLY = 0x00000001;
constexpr DWORD OFN_OVERWRITEPROMPT = 0x00000002;
constexpr DWORD OFN_HIDEREADONLY = 0x00000004;
constexpr DWORD OFN_NOCHANGEDIR = 0x00000008;
constexpr DWORD OFN_SHOWHELP = 0x00000010;
constexpr DWORD OFN_ENABLEHOOK = 0x00000020;
constexpr DWORD OFN_ALLOWMULTISELECT = 0x00000200;
constexpr DWORD OFN_PATHMUSTEXIST = 0x00000800;
constexpr DWORD OFN_FILEMUSTEXIST = 0x00001000;
constexpr DWORD OFN_EXPLORER = 0x00080000;
constexpr DWORD OFN_LONGNAMES = 0x00200000;

// Folder browser flags.
constexpr UINT BIF_RETURNONLYFSDIRS = 0x0001;
constexpr UINT BIF_DONTGOBELOWDOMAIN = 0x0002;
constexpr UINT BIF_EDITBOX = 0x0010;
constexpr UINT BIF_NEWDIALOGSTYLE = 0x0040;

// Windows error codes that the file utilities return (0 is success).
constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_CRC = 23;
constexpr DWORD ERROR_BAD_LENGTH = 24;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
