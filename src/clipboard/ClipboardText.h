#pragma once
// Unicode text on the open clipboard: a global block of UTF-16 code units ending in one
// zero unit, under any format number.
#include "platform/StdStr.h"
#include "platform/Types.h"

namespace vantrel1 {

enum class TextPut {
  NotLocked,  // no block could be had (allocation refused); nothing was handed over
  Refused,    // the clipboard did not take the block
  Accepted,
};

// Puts `text` (every unit, an embedded zero included, then the terminator) in a block of
// (length + 1) * 2 bytes and hands it to the clipboard, which owns it from then on.
TextPut PutClipboardText(UINT format, const CStdStrW& text);

// False, with `text` untouched, when the format is not on the clipboard. Otherwise true
// and the text of its block up to the first zero unit, or up to the block's end when the
// block (put there by another program) has no zero unit; a block that cannot be read
// gives an empty text.
bool TakeClipboardText(UINT format, CStdStrW& text);

}  // namespace vantrel1
