#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "ClipboardTestSupport.h"
#include "platform/Clipboard.h"
#include "platform/GlobalMemory.h"

namespace {

TEST(GlobalMemory, BlocksCountTheirLocksAndUnknownHandlesTouchNothing) {
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 6);
  auto* bytes = static_cast<BYTE*>(GlobalLock(block));
  ASSERT_NE(bytes, nullptr);
  EXPECT_EQ(std::vector<BYTE>(bytes, bytes + 6), std::vector<BYTE>(6, 0));
  EXPECT_EQ(GlobalLock(block), bytes);
  EXPECT_EQ(GlobalFlags(block), 2u);
  EXPECT_EQ(GlobalUnlock(block), TRUE);
  EXPECT_EQ(GlobalUnlock(block), FALSE);
  EXPECT_EQ(GlobalUnlock(block), FALSE);
  EXPECT_EQ(GlobalFlags(block), 0u);
  EXPECT_EQ(GlobalFree(block), nullptr);

  int local = 0;
  for (HGLOBAL handle : {HGLOBAL(nullptr), block, HGLOBAL(&local)}) {
    EXPECT_EQ(GlobalLock(handle), nullptr);
    EXPECT_EQ(GlobalSize(handle), 0u);
    EXPECT_EQ(GlobalFlags(handle), GMEM_INVALID_HANDLE);
    EXPECT_EQ(GlobalFree(handle), handle);
  }
  EXPECT_EQ(GlobalAlloc(GMEM_SHARE, vantrel1::kMaxGlobalBlockBytes + 1), nullptr);
  HGLOBAL empty = GlobalAlloc(GMEM_SHARE, 0);
  EXPECT_EQ(GlobalLock(empty), nullptr);
  EXPECT_EQ(GlobalFree(empty), nullptr);
}

TEST(ClipboardFormats, NamesRegisterOnceForTheProcessWithoutRegardToCase) {
  CTestClipboardBackend clipboard;
  const UINT first = RegisterClipboardFormatW(u"Test Format Alpha");
  EXPECT_GE(first, kFirstRegisteredClipboardFormat);
  EXPECT_EQ(RegisterClipboardFormatW(u"TEST FORMAT alpha"), first);
  EXPECT_NE(RegisterClipboardFormatW(u"Test Format Beta"), first);
  EXPECT_EQ(RegisterClipboardFormatW(u""), 0u);

  WCHAR buffer[8];
  EXPECT_EQ(GetClipboardFormatNameW(first, buffer, 8), 7);
  EXPECT_EQ(CStdStrW(buffer), u"Test Fo");
  WCHAR whole[32];
  EXPECT_EQ(GetClipboardFormatNameW(first, whole, 32), 17);
  EXPECT_EQ(CStdStrW(whole), u"Test Format Alpha");  // the first spelling stays
  for (UINT unknown : {CF_UNICODETEXT, kFirstRegisteredClipboardFormat - 1, kLastRegisteredClipboardFormat}) {
    EXPECT_EQ(GetClipboardFormatNameW(unknown, whole, 32), 0) << unknown;
    EXPECT_EQ(whole[0], 0) << unknown;
  }
  EXPECT_EQ(GetClipboardFormatNameW(first, whole, 0), 0);
}

TEST(ClipboardOpening, OneWindowAtATimeAndAClosedClipboardOnlyAnswersAvailability) {
  CTestClipboardBackend clipboard;
  clipboard.PutText(CF_UNICODETEXT, u"held");
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 2);
  EXPECT_EQ(EmptyClipboard(), FALSE);
  EXPECT_EQ(SetClipboardData(CF_UNICODETEXT, block), nullptr);
  EXPECT_EQ(GetClipboardData(CF_UNICODETEXT), nullptr);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_UNICODETEXT), TRUE);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), FALSE);
  EXPECT_EQ(clipboard.Bytes(CF_UNICODETEXT), TextBytes(u"held"));
  EXPECT_EQ(GlobalFree(block), nullptr);  // still the caller's

  ASSERT_EQ(OpenClipboard(TestWindow(1)), TRUE);
  EXPECT_EQ(OpenClipboard(TestWindow(2)), FALSE);
  EXPECT_EQ(OpenClipboard(TestWindow(1)), FALSE);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(1));
  EXPECT_EQ(CloseClipboard(), TRUE);
  EXPECT_EQ(CloseClipboard(), FALSE);
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

TEST(ClipboardData, AHandedBlockBelongsToTheClipboardUntilCloseAndARefusedOneStaysTheCallers) {
  CTestClipboardBackend clipboard;
  ASSERT_EQ(OpenClipboard(TestWindow(1)), TRUE);
  HGLOBAL refused = GlobalAlloc(GMEM_SHARE, 2);
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 4);
  std::memcpy(GlobalLock(block), "ab\0\0", 4);
  GlobalUnlock(block);
  EXPECT_EQ(SetClipboardData(700, block), block);
  HGLOBAL lent = GetClipboardData(700);
  ASSERT_NE(lent, nullptr);
  EXPECT_EQ(GlobalSize(lent), 4u);
  EXPECT_EQ(std::memcmp(GlobalLock(lent), "ab\0\0", 4), 0);
  GlobalUnlock(lent);
  EXPECT_EQ(GetClipboardData(700), lent);  // the same data, the same block
  EXPECT_EQ(GetClipboardData(701), nullptr);
  // New data under the format: the block handed before and the one lent for it stay
  // valid, and distinct from new ones, until close.
  HGLOBAL second = GlobalAlloc(GMEM_SHARE, 2);
  EXPECT_EQ(SetClipboardData(700, second), second);
  HGLOBAL lentAgain = GetClipboardData(700);
  EXPECT_NE(lentAgain, lent);
  EXPECT_EQ(GlobalSize(block), 4u);
  EXPECT_EQ(GlobalSize(lent), 4u);
  EXPECT_EQ(GlobalSize(lentAgain), 2u);

  int local = 0;
  EXPECT_EQ(SetClipboardData(701, &local), nullptr);
  clipboard.refuseData = true;
  EXPECT_EQ(SetClipboardData(702, refused), nullptr);
  CloseClipboard();
  EXPECT_EQ(GlobalFlags(block), GMEM_INVALID_HANDLE);
  EXPECT_EQ(GlobalFlags(lent), GMEM_INVALID_HANDLE);
  EXPECT_EQ(GlobalFlags(second), GMEM_INVALID_HANDLE);
  EXPECT_EQ(GlobalFlags(lentAgain), GMEM_INVALID_HANDLE);
  EXPECT_EQ(GlobalSize(refused), 2u);
  EXPECT_EQ(clipboard.Formats(), std::vector<UINT>{700});
  EXPECT_EQ(clipboard.Bytes(700), (std::vector<BYTE>{0, 0}));
  GlobalFree(refused);
}

}  // namespace
