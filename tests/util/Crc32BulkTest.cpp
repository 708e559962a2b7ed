#include "util/Crc32Bulk.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "util/Crc32Table.h"

namespace {

std::uint32_t ByteByByte(std::uint32_t reg, const unsigned char* p, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) reg = vantrel1::kCrc32Table[(reg ^ p[i]) & 0xFFu] ^ (reg >> 8);
  return reg;
}

std::vector<unsigned char> RandomBytes(std::size_t count, unsigned seed) {
  std::mt19937 generator(seed);
  std::vector<unsigned char> bytes(count);
  for (auto& b : bytes) b = static_cast<unsigned char>(generator());
  return bytes;
}

using BulkPath = std::uint32_t (*)(std::uint32_t, const void*, std::size_t);

}  // namespace

// Every length up to 600 at every alignment within 16 bytes, from a register that is
// neither 0 nor all ones so that the way it enters the first block matters; then large
// buffers at odd starts and ends.
TEST(Crc32Bulk, EveryPathEqualsTheByteStep) {
  struct Path {
    const char* name;
    BulkPath update;
    bool available;
  };
  const Path paths[] = {{"sliced", vantrel1::Crc32UpdateSliced, true},
                        {"carry-less", vantrel1::Crc32UpdateCarryless, vantrel1::Crc32HasCarrylessMultiply()},
                        {"chosen", vantrel1::Crc32Update, true}};
  const auto small = RandomBytes(600 + 16, 1);
  for (const Path& path : paths) {
    if (!path.available) continue;
    SCOPED_TRACE(path.name);
    for (std::size_t alignment = 0; alignment < 16; ++alignment) {
      for (std::size_t length = 0; length <= 600; ++length) {
        const unsigned char* p = small.data() + alignment;
        ASSERT_EQ(path.update(0x9E3779B9u, p, length), ByteByByte(0x9E3779B9u, p, length))
            << "length " << length << ", alignment " << alignment;
      }
    }
    std::mt19937 generator(2);
    for (unsigned seed = 0; seed < 4; ++seed) {
      const auto bytes = RandomBytes(1 << 20, seed);
      const std::size_t start = generator() % 64;
      const std::size_t length = bytes.size() - start - generator() % 4096;
      const auto reg = static_cast<std::uint32_t>(generator());
      ASSERT_EQ(path.update(reg, bytes.data() + start, length), ByteByByte(reg, bytes.data() + start, length))
          << "seed " << seed;
    }
  }
}

TEST(Crc32Bulk, RegisterCarriesAcrossCallsAndCheckValueHolds) {
  const auto bytes = RandomBytes(5000, 3);
  const std::uint32_t whole = vantrel1::Crc32Update(0xFFFFFFFFu, bytes.data(), bytes.size());
  for (std::size_t split : {0u, 1u, 63u, 64u, 65u, 4096u, 5000u}) {
    const std::uint32_t head = vantrel1::Crc32Update(0xFFFFFFFFu, bytes.data(), split);
    EXPECT_EQ(vantrel1::Crc32Update(head, bytes.data() + split, bytes.size() - split), whole) << split;
  }
  EXPECT_EQ(~vantrel1::Crc32Update(0xFFFFFFFFu, "123456789", 9), 0xCBF43926u);
}
