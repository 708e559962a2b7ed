#pragma once
// Global memory blocks, the currency of the clipboard: a block is allocated, locked for
// its address, filled or read, unlocked, and handed over or freed.
//
// A handle is checked before use: a null, freed or made-up handle gives a null address
// or a failure result instead of touching memory. Blocks above kMaxGlobalBlockBytes are
// refused, so a size read from outside never becomes an unbounded allocation.
#include <cstddef>

#include "platform/Types.h"

constexpr UINT GMEM_INVALID_HANDLE = 0x8000;
constexpr UINT GMEM_LOCKCOUNT = 0x00FF;

namespace vantrel1 {
inline constexpr std::size_t kMaxGlobalBlockBytes = 0x7FFFFFFF;
}

// A zero-filled block of `bytes` bytes (GMEM_ZEROINIT or not: fresh blocks are always
// cleared here), or null when the size is refused or memory runs out. Flags are kept for
// the caller's sake only; every block is movable and shareable alike.
VANTREL1_EXPORT HGLOBAL GlobalAlloc(UINT flags, std::size_t bytes);
// The block's address, or null for an unknown handle or an empty block. Locks count up.
VANTREL1_EXPORT void* GlobalLock(HGLOBAL block);
// TRUE while the block is still locked after this call, FALSE once the count reaches 0
// (also for an unknown handle or a block that was not locked).
VANTREL1_EXPORT BOOL GlobalUnlock(HGLOBAL block);
// Null when the block was freed; the handle itself when it is unknown.
VANTREL1_EXPORT HGLOBAL GlobalFree(HGLOBAL block);
// The size given at allocation; 0 for an unknown handle.
VANTREL1_EXPORT std::size_t GlobalSize(HGLOBAL block);
// The lock count of a live block; GMEM_INVALID_HANDLE for any other handle.
VANTREL1_EXPORT UINT GlobalFlags(HGLOBAL block);
