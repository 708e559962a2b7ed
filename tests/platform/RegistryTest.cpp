#include "platform/Registry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Each test starts from an empty store of its own.
class Registry : public ::testing::Test {
 protected:
  void SetUp() override { m_previous = SetRegistryStore(&m_store); }
  void TearDown() override { SetRegistryStore(m_previous); }
  CMemoryRegistryStore m_store;
  CRegistryStore* m_previous = nullptr;
};

// A store that refuses to write, as a read-only settings file would.
class ReadOnlyStore : public CRegistryStore {
 public:
  bool Read(const CStdStrW&, const CStdStrW& name, CStdStrW& value) override {
    m_reads.push_back(name);
    value = u"3";
    return true;
  }
  bool Write(const CStdStrW&, const CStdStrW&, const CStdStrW&) override { return false; }
  bool Delete(const CStdStrW&, const CStdStrW&) override { return false; }
  std::vector<std::u16string> m_reads;
};

}  // namespace

TEST_F(Registry, FirstUseFlagsRoundTripUnderTheProductKey) {
  WCHAR buffer[80] = u"stale";
  EXPECT_EQ(CorviaRegistryRead(nullptr, u"StartInSamples", buffer, 80), 0);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_EQ(CorviaRegistryWrite(nullptr, u"StartInSamples", u"1,0,1"), 1);
  EXPECT_EQ(CorviaRegistryRead(nullptr, u"startinsamples", buffer, 80), 1);
  EXPECT_EQ(std::u16string(buffer), u"1,0,1");
  // A null section and an empty one are both the product key itself.
  EXPECT_EQ(CorviaRegistryRead(u"", u"StartInSamples", buffer, 80), 1);
  EXPECT_EQ(CorviaRegistryRead(u"Dialogs", u"StartInSamples", buffer, 80), 0);
}

TEST_F(Registry, ReadTruncatesToTheBufferAndNullValueDeletes) {
  ASSERT_EQ(CorviaRegistryWrite(u"Paths", u"Samples", u"/usr/share/vantrel1/samples"), 1);
  WCHAR buffer[6];
  EXPECT_EQ(CorviaRegistryRead(u"PATHS", u"Samples", buffer, 6), 1);
  EXPECT_EQ(std::u16string(buffer), u"/usr/");
  EXPECT_EQ(CorviaRegistryWrite(u"Paths", u"samples", nullptr), 1);
  EXPECT_EQ(CorviaRegistryRead(u"Paths", u"Samples", buffer, 6), 0);
  EXPECT_EQ(CorviaRegistryWrite(u"Paths", nullptr, u"x"), 0);
  EXPECT_EQ(CorviaRegistryRead(u"Paths", nullptr, buffer, 6), 0);
}

TEST_F(Registry, IntegersAreDecimalTextAndAnythingElseGivesTheDefault) {
  EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"Count", 9), 9);
  ASSERT_EQ(CorviaRegistryWriteInt(nullptr, u"Count", -2147483647 - 1), 1);
  EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"count", 9), -2147483647 - 1);
  WCHAR buffer[16];
  ASSERT_EQ(CorviaRegistryRead(nullptr, u"Count", buffer, 16), 1);
  EXPECT_EQ(std::u16string(buffer), u"-2147483648");
  for (const char16_t* text : {u"1,0,1", u"", u"-", u" 5", u"2147483648", u"12x"}) {
    ASSERT_EQ(CorviaRegistryWrite(nullptr, u"Count", text), 1);
    EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"Count", 9), 9) << std::string(text, text + std::u16string(text).size());
  }
  ASSERT_EQ(CorviaRegistryWrite(nullptr, u"Count", u"+2147483647"), 1);
  EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"Count", 9), 2147483647);
}

TEST_F(Registry, CallsGoToTheInstalledStoreUntilTheDefaultIsRestored) {
  ReadOnlyStore readOnly;
  EXPECT_EQ(SetRegistryStore(&readOnly), &m_store);
  EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"StartInSamples", 0), 3);
  EXPECT_EQ(CorviaRegistryWrite(nullptr, u"StartInSamples", u"0,0,0"), 0);
  EXPECT_EQ(CorviaRegistryWrite(nullptr, u"StartInSamples", nullptr), 0);
  EXPECT_EQ(readOnly.m_reads, std::vector<std::u16string>{u"StartInSamples"});
  EXPECT_EQ(SetRegistryStore(nullptr), &readOnly);
  EXPECT_NE(GetRegistryStore(), &readOnly);
  EXPECT_NE(GetRegistryStore(), nullptr);
}
