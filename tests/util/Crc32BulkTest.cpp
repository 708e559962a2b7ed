#include "util/Crc32Bulk.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
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

// Every length up to 600 at every alignment within 16 bytes, from a register that is
// neither 0 nor all ones, so that the way the register enters the first block matters.
void ExpectSameAsByteStepForSmallBuffers(BulkPath path) {
  const auto bytes = RandomBytes(600 + 16, 1);
  for (std::size_t alignment = 0; alignment < 16; ++alignment) {
    for (std::size_t length = 0; length <= 600; ++length) {
      const unsigned char* p = bytes.data() + alignment;
      ASSERT_EQ(path(0x9E3779B9u, p, length), ByteByByte(0x9E3779B9u, p, length))
          << "length " << length << ", alignment " << alignment;
    }
  }
}

void ExpectSameAsByteStepForLargeBuffers(BulkPath path) {
  std::mt19937 generator(2);
  for (unsigned seed = 0; seed < 8; ++seed) {
    const auto bytes = RandomBytes(1 << 20, seed);
    const std::size_t start = generator() % 64;
    const std::size_t length = bytes.size() - start - generator() % 4096;
    const std::uint32_t reg = static_cast<std::uint32_t>(generator());
    ASSERT_EQ(path(reg, bytes.data() + start, length), ByteByByte(reg, bytes.data() + start, length))
        << "seed " << seed;
  }
}

}  // namespace

TEST(Crc32Bulk, SlicedPathEqualsTheByteStep) {
  ExpectSameAsByteStepForSmallBuffers(vantrel1::Crc32UpdateSliced);
  ExpectSameAsByteStepForLargeBuffers(vantrel1::Crc32UpdateSliced);
}

TEST(Crc32Bulk, CarrylessPathEqualsTheByteStep) {
  if (!vantrel1::Crc32HasCarrylessMultiply()) GTEST_SKIP() << "no carry-less multiplication";
  ExpectSameAsByteStepForSmallBuffers(vantrel1::Crc32UpdateCarryless);
  ExpectSameAsByteStepForLargeBuffers(vantrel1::Crc32UpdateCarryless);
}

TEST(Crc32Bulk, ChosenPathEqualsTheByteStep) {
  ExpectSameAsByteStepForSmallBuffers(vantrel1::Crc32Update);
  ExpectSameAsByteStepForLargeBuffers(vantrel1::Crc32Update);
}

TEST(Crc32Bulk, RegisterCarriesAcrossCallsAndCheckValueHolds) {
  const auto bytes = RandomBytes(5000, 3);
  const std::uint32_t whole = vantrel1::Crc32Update(0xFFFFFFFFu, bytes.data(), bytes.size());
  for (std::size_t split : {0u, 1u, 63u, 64u, 65u, 4096u, 5000u}) {
    const std::uint32_t head = vantrel1::Crc32Update(0xFFFFFFFFu, bytes.data(), split);
    EXPECT_EQ(vantrel1::Crc32Update(head, bytes.data() + split, bytes.size() - split), whole) << split;
  }
  EXPECT_EQ(~vantrel1::Crc32Update(0xFFFFFFFFu, "123456789", 9), 0xCBF43926u);
  const std::string text(100, 'a');
  EXPECT_EQ(vantrel1::Crc32Update(0x12345678u, text.data(), 0), 0x12345678u);
}
