#pragma once
// Folding whole buffers into a CRC-32 register. Every function here leaves the register
// exactly as folding the bytes one at a time through the table would (no initial value,
// no final complement: callers keep the register, as with the byte step), only faster.
#include <cstddef>
#include <cstdint>

#include "platform/Export.h"

namespace vantrel1 {

// The fastest path this processor supports.
VANTREL1_EXPORT std::uint32_t Crc32Update(std::uint32_t reg, const void* data,
                                          std::size_t length);

// Sixteen bytes per step through sixteen derived tables; runs on any processor.
VANTREL1_EXPORT std::uint32_t Crc32UpdateSliced(std::uint32_t reg, const void* data,
                                                std::size_t length);

// Carry-less multiplication folding four 16-byte lanes at a time. Only call it when
// Crc32HasCarrylessMultiply() is true; elsewhere it falls back to the sliced path.
VANTREL1_EXPORT std::uint32_t Crc32UpdateCarryless(std::uint32_t reg, const void* data,
                                                   std::size_t length);
VANTREL1_EXPORT bool Crc32HasCarrylessMultiply();

}  // namespace vantrel1
