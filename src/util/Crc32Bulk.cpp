#include "util/Crc32Bulk.h"

#include <array>
#include <bit>
#include <cstring>

#include "util/Crc32Table.h"

#if defined(__x86_64__) || defined(__i386__)
#include <emmintrin.h>
#include <wmmintrin.h>
#define VANTREL1_CRC_CARRYLESS 1
#else
#define VANTREL1_CRC_CARRYLESS 0
#endif

namespace vantrel1 {
namespace {

using SlicingTables = std::array<std::array<std::uint32_t, 256>, 16>;

// Entry [k][b] is the register after folding the byte b followed by k zero bytes, so one
// lookup per byte of a 16-byte block gives that byte's whole contribution to the block.
constexpr SlicingTables MakeSlicingTables() {
  SlicingTables tables{};
  for (std::size_t b = 0; b < 256; ++b) tables[0][b] = kCrc32Table[b];
  for (std::size_t k = 1; k < 16; ++k) {
    for (std::size_t b = 0; b < 256; ++b) {
      const std::uint32_t previous = tables[k - 1][b];
      tables[k][b] = (previous >> 8) ^ kCrc32Table[previous & 0xFFu];
    }
  }
  return tables;
}

constexpr SlicingTables kSlicing = MakeSlicingTables();

std::uint32_t LoadLe32(const unsigned char* p) {
  std::uint32_t value;
  std::memcpy(&value, p, sizeof value);
  if constexpr (std::endian::native == std::endian::big) value = __builtin_bswap32(value);
  return value;
}

// The four bytes of `word` sit `k` + 3 ... `k` bytes before the end of their block.
std::uint32_t Slice(std::uint32_t word, std::size_t k) {
  return kSlicing[k + 3][word & 0xFFu] ^ kSlicing[k + 2][(word >> 8) & 0xFFu] ^
         kSlicing[k + 1][(word >> 16) & 0xFFu] ^ kSlicing[k][word >> 24];
}

std::uint32_t FoldBlock16(std::uint32_t reg, const unsigned char* p) {
  return Slice(LoadLe32(p) ^ reg, 12) ^ Slice(LoadLe32(p + 4), 8) ^
         Slice(LoadLe32(p + 8), 4) ^ Slice(LoadLe32(p + 12), 0);
}

std::uint32_t ByteSteps(std::uint32_t reg, const unsigned char* p, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) reg = kCrc32Table[(reg ^ p[i]) & 0xFFu] ^ (reg >> 8);
  return reg;
}

#if VANTREL1_CRC_CARRYLESS

// x^n mod P in the register's reflected order: bit i holds the coefficient of x^(31 - i).
constexpr std::uint32_t PowerOfXModP(unsigned n) {
  std::uint32_t r = 0x80000000u;
  for (unsigned i = 0; i < n; ++i) r = (r >> 1) ^ ((r & 1u) ? 0xEDB88320u : 0u);
  return r;
}

// Carrying a 16-byte lane D bits forward: its first 8 bytes H stand for H * x^(D + 64) and
// its last 8 bytes L for L * x^D. The reflected 64 x 64 product comes out shifted by one
// bit, which supplies one factor of x; so H is multiplied by x^(D + 63) mod P and L by
// x^(D - 1) mod P, each put in the top half of its 64-bit operand. Both products are
// below 96 bits and land inside the lane D bits ahead.
constexpr std::uint64_t FoldMultiplier(unsigned degree) {
  return std::uint64_t{PowerOfXModP(degree)} << 32;
}

struct FoldConstants {
  std::uint64_t first;   // multiplies the lane's first 8 bytes
  std::uint64_t second;  // multiplies its last 8 bytes
};

constexpr FoldConstants MakeFoldConstants(unsigned distance) {
  return {FoldMultiplier(distance + 63), FoldMultiplier(distance - 1)};
}

constexpr FoldConstants kFourLanes = MakeFoldConstants(512);
constexpr FoldConstants kOneLane = MakeFoldConstants(128);

__attribute__((target("sse2"))) inline __m128i ToVector(FoldConstants k) {
  return _mm_set_epi64x(static_cast<long long>(k.second), static_cast<long long>(k.first));
}

__attribute__((target("pclmul,sse2"))) inline __m128i Fold(__m128i lane, __m128i k) {
  return _mm_xor_si128(_mm_clmulepi64_si128(lane, k, 0x00), _mm_clmulepi64_si128(lane, k, 0x11));
}

__attribute__((target("sse2"))) inline __m128i Load(const unsigned char* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

__attribute__((target("pclmul,sse2"))) std::uint32_t FoldCarryless(
    std::uint32_t reg, const unsigned char* p, std::size_t length) {
  const __m128i by4 = ToVector(kFourLanes);
  const __m128i by1 = ToVector(kOneLane);
  // Folding from a zero register with the incoming register xor-ed into the first four
  // bytes gives the same result as folding from the incoming register.
  __m128i x0 = _mm_xor_si128(Load(p), _mm_cvtsi32_si128(static_cast<int>(reg)));
  __m128i x1 = Load(p + 16);
  __m128i x2 = Load(p + 32);
  __m128i x3 = Load(p + 48);
  for (p += 64, length -= 64; length >= 64; p += 64, length -= 64) {
    x0 = _mm_xor_si128(Fold(x0, by4), Load(p));
    x1 = _mm_xor_si128(Fold(x1, by4), Load(p + 16));
    x2 = _mm_xor_si128(Fold(x2, by4), Load(p + 32));
    x3 = _mm_xor_si128(Fold(x3, by4), Load(p + 48));
  }
  __m128i x = _mm_xor_si128(Fold(x0, by1), x1);
  x = _mm_xor_si128(Fold(x, by1), x2);
  x = _mm_xor_si128(Fold(x, by1), x3);
  for (; length >= 16; p += 16, length -= 16) x = _mm_xor_si128(Fold(x, by1), Load(p));
  // The folded lane is congruent to everything before it: its 16 bytes, fed to a zero
  // register, leave the register the whole prefix would have left.
  alignas(16) unsigned char lane[16];
  _mm_store_si128(reinterpret_cast<__m128i*>(lane), x);
  return Crc32UpdateSliced(FoldBlock16(0, lane), p, length);
}

#endif

}  // namespace

std::uint32_t Crc32UpdateSliced(std::uint32_t reg, const void* data, std::size_t length) {
  auto p = static_cast<const unsigned char*>(data);
  for (; length >= 16; p += 16, length -= 16) reg = FoldBlock16(reg, p);
  return ByteSteps(reg, p, length);
}

bool Crc32HasCarrylessMultiply() {
#if VANTREL1_CRC_CARRYLESS
  static const bool has = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse2");
  }();
  return has;
#else
  return false;
#endif
}

std::uint32_t Crc32UpdateCarryless(std::uint32_t reg, const void* data, std::size_t length) {
#if VANTREL1_CRC_CARRYLESS
  // Below four lanes the set-up costs more than the sliced path.
  if (length >= 64 && Crc32HasCarrylessMultiply())
    return FoldCarryless(reg, static_cast<const unsigned char*>(data), length);
#endif
  return Crc32UpdateSliced(reg, data, length);
}

std::uint32_t Crc32Update(std::uint32_t reg, const void* data, std::size_t length) {
  return Crc32UpdateCarryless(reg, data, length);
}

}  // namespace vantrel1
