#pragma once
// CVantrelClipboard: the suite's private clipboard formats and Unicode text on the
// clipboard under them.
//
// Every program of the suite registers the same eight format names, so the numbers the
// window system gives them agree between the programs; they are registered on first use,
// per object, and never written into code. A transfer of several formats runs
// OpenCB (which also empties the clipboard), one AppendCB per format, CloseCB. SetTextData
// and GetTextData open and close the clipboard themselves and must not run inside such a
// transfer: the second open would be refused.
//
// Failures show no message; they are the results below. Nothing here throws.
#include "platform/Export.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

class CVantrel1Frame;

class VANTREL1_QT_EXPORT CVantrelClipboard {
 public:
  static constexpr int kFormatCount = 8;

  // The frame (not owned, may be null) whose window holds the clipboard while it is open.
  explicit CVantrelClipboard(CVantrel1Frame* frame);
  // Copies share the frame and the numbers registered so far.
  CVantrelClipboard(const CVantrelClipboard&) = default;
  CVantrelClipboard& operator=(const CVantrelClipboard&) = default;
  virtual ~CVantrelClipboard();

  // The format name for an index 0..7; empty for any other index.
  CStdStrW GetName(int index) const;
  // The format number for an index 0..7, registered on first use; 0 for any other index
  // or when registration fails (the next call tries again).
  UINT GetID(int index);

  // Opens the clipboard for the frame's window and empties it: 1, or 0 (and nothing
  // changes) when it cannot be opened.
  int OpenCB();
  // Closes the clipboard whatever state it is in; always 1.
  int CloseCB();
  // 1 between a successful OpenCB and CloseCB.
  int IsClipboardOpen() const { return m_bOpen; }
  // Adds the text under `format` to a clipboard opened with OpenCB (the open flag is not
  // consulted). 1 when the clipboard took it.
  int AppendCB(UINT format, CStdStrW& text);
  // Opens, empties when `bEmpty` is non-zero, puts the text, closes: 1, or 0 when the
  // clipboard cannot be opened or no memory block can be had. Whether the clipboard took
  // the text is not reported.
  int SetTextData(UINT format, const CStdStrW& text, int bEmpty) const;
  // The text under `format` up to its first zero unit; empty when the clipboard cannot be
  // opened or does not hold the format (indistinguishable from empty text).
  CStdStrW GetTextData(UINT format) const;

 protected:
  HWND Owner() const;

  UINT m_formatIds[kFormatCount];
  CVantrel1Frame* m_pFrame;
  int m_bOpen;
};
