#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "ClipboardTestSupport.h"
#include "platform/Clipboard.h"
#include "platform/GlobalMemory.h"

namespace {

TEST(GlobalMemory, BlockLivesFromAllocationToFreeWithCountedLocks) {
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 6);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(GlobalSize(block), 6u);
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
  EXPECT_EQ(GlobalFlags(block), GMEM_INVALID_HANDLE);
}

TEST(GlobalMemory, UnknownHandlesAndRefusedSizesTouchNothing) {
  HGLOBAL freed = GlobalAlloc(GMEM_FIXED, 4);
  GlobalFree(freed);
  int local = 0;
  for (HGLOBAL handle : {HGLOBAL(nullptr), freed, HGLOBAL(&local)}) {
    EXPECT_EQ(GlobalLock(handle), nullptr);
    EXPECT_EQ(GlobalUnlock(handle), FALSE);
    EXPECT_EQ(GlobalSize(handle), 0u);
    EXPECT_EQ(GlobalFlags(handle), GMEM_INVALID_HANDLE);
    EXPECT_EQ(GlobalFree(handle), handle);
  }
  EXPECT_EQ(GlobalAlloc(GMEM_SHARE, vantrel1::kMaxGlobalBlockBytes + 1), nullptr);
  HGLOBAL empty = GlobalAlloc(GMEM_SHARE, 0);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(GlobalLock(empty), nullptr);
  GlobalFree(empty);
}

TEST(ClipboardFormats, NamesRegisterOnceForTheProcessWithoutRegardToCase) {
  CTestClipboardBackend clipboard;
  const UINT first = RegisterClipboardFormatW(u"Test Format Alpha");
  EXPECT_GE(first, kFirstRegisteredClipboardFormat);
  EXPECT_EQ(RegisterClipboardFormatW(u"TEST FORMAT alpha"), first);
  const UINT second = RegisterClipboardFormatW(u"Test Format Beta");
  EXPECT_NE(second, first);
  EXPECT_GE(second, kFirstRegisteredClipboardFormat);
  EXPECT_EQ(RegisterClipboardFormatW(u""), 0u);
  EXPECT_EQ(RegisterClipboardFormatW(nullptr), 0u);

  WCHAR buffer[8];
  EXPECT_EQ(GetClipboardFormatNameW(first, buffer, 8), 7);
  EXPECT_EQ(CStdStrW(buffer), u"Test Fo");
  WCHAR whole[32];
  EXPECT_EQ(GetClipboardFormatNameW(first, whole, 32), 17);
  EXPECT_EQ(CStdStrW(whole), u"Test Format Alpha");  // the first spelling stays
  for (UINT unknown : {0u, CF_UNICODETEXT, kFirstRegisteredClipboardFormat - 1, kLastRegisteredClipboardFormat}) {
    EXPECT_EQ(GetClipboardFormatNameW(unknown, whole, 32), 0) << unknown;
    EXPECT_EQ(whole[0], 0) << unknown;
  }
  EXPECT_EQ(GetClipboardFormatNameW(first, nullptr, 32), 0);
  EXPECT_EQ(GetClipboardFormatNameW(first, whole, 0), 0);
}

TEST(ClipboardOpening, OneWindowAtATimeUntilClosed) {
  CTestClipboardBackend clipboard;
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
  ASSERT_EQ(OpenClipboard(TestWindow(1)), TRUE);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(1));
  EXPECT_EQ(OpenClipboard(TestWindow(2)), FALSE);
  EXPECT_EQ(OpenClipboard(TestWindow(1)), FALSE);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(1));
  EXPECT_EQ(CloseClipboard(), TRUE);
  EXPECT_EQ(CloseClipboard(), FALSE);
  EXPECT_EQ(OpenClipboard(TestWindow(2)), TRUE);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(2));
}

TEST(ClipboardOpening, ClosedClipboardRefusesEveryChangeButAnswersAvailability) {
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
}

TEST(ClipboardData, HandedBlockBelongsToTheClipboardUntilItIsClosed) {
  CTestClipboardBackend clipboard;
  ASSERT_EQ(OpenClipboard(TestWindow(1)), TRUE);
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 4);
  std::memcpy(GlobalLock(block), "ab\0\0", 4);
  GlobalUnlock(block);
  EXPECT_EQ(SetClipboardData(700, block), block);
  EXPECT_EQ(clipboard.Bytes(700), (std::vector<BYTE>{'a', 'b', 0, 0}));
  EXPECT_EQ(GlobalSize(block), 4u);

  HGLOBAL lent = GetClipboardData(700);
  ASSERT_NE(lent, nullptr);
  EXPECT_EQ(GlobalSize(lent), 4u);
  EXPECT_EQ(std::memcmp(GlobalLock(lent), "ab\0\0", 4), 0);
  GlobalUnlock(lent);
  EXPECT_EQ(GetClipboardData(701), nullptr);

  CloseClipboard();
  EXPECT_EQ(GlobalFlags(block), GMEM_INVALID_HANDLE);
  EXPECT_EQ(GlobalFlags(lent), GMEM_INVALID_HANDLE);
  EXPECT_EQ(clipboard.Bytes(700), (std::vector<BYTE>{'a', 'b', 0, 0}));
}

TEST(ClipboardData, RefusedOrUnknownBlocksStayWithTheCaller) {
  CTestClipboardBackend clipboard;
  ASSERT_EQ(OpenClipboard(nullptr), TRUE);
  int local = 0;
  EXPECT_EQ(SetClipboardData(700, nullptr), nullptr);
  EXPECT_EQ(SetClipboardData(700, &local), nullptr);
  clipboard.refuseData = true;
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 2);
  EXPECT_EQ(SetClipboardData(700, block), nullptr);
  CloseClipboard();
  EXPECT_EQ(GlobalSize(block), 2u);
  EXPECT_EQ(clipboard.Formats(), std::vector<UINT>{});
  GlobalFree(block);
}

}  // namespace
