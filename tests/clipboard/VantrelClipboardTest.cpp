#include <gtest/gtest.h>

#include <vector>

#include "ClipboardTestSupport.h"
#include "clipboard/Vantrel1Frame.h"
#include "clipboard/VantrelClipboard.h"
#include "platform/Clipboard.h"

namespace {

TEST(VantrelClipboardFormats, NamesAreTheSuitesExactSpellings) {
  const CVantrelClipboard clipboard(nullptr);
  const std::vector<CStdStrW> expected = {
      u"Vantrel Terrain File", u"VTRL_COORD",      u"Vantrel Lat Lon",           u"Vantrel GPS",
      u"Vantrel Kestrane Measure", u"Vantrel Coordinate System", u"Vantrel Units", u"Vantrel LM Units"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(clipboard.GetName(i), expected[static_cast<std::size_t>(i)]) << i;
  for (int i : {-1, 8, 9, -2147483647 - 1, 2147483647}) EXPECT_EQ(clipboard.GetName(i), u"") << i;
}

TEST(VantrelClipboardFormats, NumbersAreRegisteredByNameOnFirstUseOnly) {
  CTestClipboardBackend backend;
  CVantrelClipboard clipboard(nullptr);
  for (int i : {-1, 8, -2147483647 - 1}) EXPECT_EQ(clipboard.GetID(i), 0u) << i;
  EXPECT_EQ(backend.registrations, 0);

  const UINT coordSys = clipboard.GetID(5);
  EXPECT_EQ(coordSys, RegisterClipboardFormatW(u"Vantrel Coordinate System"));
  EXPECT_EQ(backend.registrations, 2);
  EXPECT_EQ(clipboard.GetID(5), coordSys);
  EXPECT_EQ(backend.registrations, 2);

  WCHAR name[40];
  for (int i = 0; i < 8; ++i) {
    ASSERT_GT(GetClipboardFormatNameW(clipboard.GetID(i), name, 40), 0) << i;
    EXPECT_EQ(CStdStrW(name), clipboard.GetName(i)) << i;
  }
  EXPECT_EQ(backend.registrations, 2 + 7);
}

TEST(VantrelClipboardFormats, FailedRegistrationIsTriedAgainAndCopiesShareTheNumbers) {
  CTestClipboardBackend backend;
  CVantrelClipboard clipboard(nullptr);
  backend.refuseRegistration = true;
  EXPECT_EQ(clipboard.GetID(2), 0u);
  EXPECT_EQ(clipboard.GetID(2), 0u);
  EXPECT_EQ(backend.registrations, 2);
  backend.refuseRegistration = false;
  const UINT latLon = clipboard.GetID(2);
  EXPECT_NE(latLon, 0u);
  EXPECT_EQ(backend.registrations, 3);

  CVantrelClipboard copy(clipboard);
  CVantrelClipboard assigned(nullptr);
  assigned = clipboard;
  EXPECT_EQ(copy.GetID(2), latLon);
  EXPECT_EQ(assigned.GetID(2), latLon);
  EXPECT_EQ(backend.registrations, 3);
  EXPECT_EQ(CVantrelClipboard(nullptr).GetID(2), latLon);  // a fresh object asks again, same answer
  EXPECT_EQ(backend.registrations, 4);
}

TEST(VantrelClipboardTransfer, OpenAppendCloseLeavesEveryFormatOnTheClipboard) {
  CTestClipboardBackend backend;
  backend.PutText(CF_UNICODETEXT, u"earlier");
  CVantrelClipboard clipboard(nullptr);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 0);
  ASSERT_EQ(clipboard.OpenCB(), 1);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 1);
  CStdStrW system = u"Gauss-Krüger, zona 7";
  CStdStrW units = u"m";
  CStdStrW empty;
  EXPECT_EQ(clipboard.AppendCB(clipboard.GetID(5), system), 1);
  EXPECT_EQ(clipboard.AppendCB(clipboard.GetID(7), units), 1);
  EXPECT_EQ(clipboard.AppendCB(clipboard.GetID(2), empty), 1);
  EXPECT_EQ(clipboard.CloseCB(), 1);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 0);

  EXPECT_EQ(backend.Formats(), (std::vector<UINT>{clipboard.GetID(5), clipboard.GetID(7), clipboard.GetID(2)}));
  EXPECT_EQ(backend.Bytes(clipboard.GetID(5)), TextBytes(u"Gauss-Krüger, zona 7"));
  EXPECT_EQ(backend.Bytes(clipboard.GetID(7)), (std::vector<BYTE>{'m', 0, 0, 0}));
  EXPECT_EQ(backend.Bytes(clipboard.GetID(2)), (std::vector<BYTE>{0, 0}));
  EXPECT_EQ(clipboard.GetTextData(clipboard.GetID(5)), u"Gauss-Krüger, zona 7");
}

TEST(VantrelClipboardTransfer, FailuresReportZeroAndChangeNothing) {
  CTestClipboardBackend backend;
  backend.PutText(CF_UNICODETEXT, u"held");
  CVantrelClipboard clipboard(nullptr);
  CStdStrW text = u"x";

  ASSERT_EQ(OpenClipboard(TestWindow(9)), TRUE);  // another window holds it
  EXPECT_EQ(clipboard.OpenCB(), 0);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 0);
  EXPECT_EQ(clipboard.SetTextData(CF_UNICODETEXT, text, 1), 0);
  EXPECT_EQ(clipboard.GetTextData(CF_UNICODETEXT), u"");
  CloseClipboard();
  EXPECT_EQ(backend.Bytes(CF_UNICODETEXT), TextBytes(u"held"));

  EXPECT_EQ(clipboard.AppendCB(CF_UNICODETEXT, text), 0);  // not opened
  ASSERT_EQ(clipboard.OpenCB(), 1);
  backend.refuseData = true;
  EXPECT_EQ(clipboard.AppendCB(CF_UNICODETEXT, text), 0);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 1);
  clipboard.CloseCB();
  EXPECT_EQ(clipboard.CloseCB(), 1);  // closing a closed clipboard is still a success
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{});
}

TEST(VantrelClipboardTransfer, SetTextDataEmptiesOnlyWhenAskedAndIgnoresTheHandOver) {
  CTestClipboardBackend backend;
  const CVantrelClipboard clipboard(nullptr);
  backend.PutText(600, u"other");
  EXPECT_EQ(clipboard.SetTextData(601, u"kept beside", 0), 1);
  EXPECT_EQ(backend.Formats(), (std::vector<UINT>{600, 601}));
  EXPECT_EQ(clipboard.SetTextData(602, u"alone", 1), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{602});
  EXPECT_EQ(backend.Bytes(602), TextBytes(u"alone"));

  backend.refuseData = true;
  EXPECT_EQ(clipboard.SetTextData(603, u"lost", 0), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{602});
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);  // closed again in every case
}

TEST(VantrelClipboardTransfer, TextReadsBackUpToItsFirstZeroUnitWithinTheBlock) {
  CTestClipboardBackend backend;
  const CVantrelClipboard clipboard(nullptr);
  struct Case {
    const char* what;
    std::vector<BYTE> block;
    CStdStrW expected;
  };
  const std::vector<Case> cases = {
      {"plain", TextBytes(u"Beograd"), u"Beograd"},
      {"embedded zero", TextBytes(std::u16string(u"ab\0cd", 5)), u"ab"},
      {"no terminator", {'a', 0, 'b', 0}, u"ab"},
      {"odd byte count", {'a', 0, 'b'}, u"a"},
      {"single byte", {'a'}, u""},
      {"empty block", {}, u""},
      {"surrogate pair", TextBytes(u"\U0001F600!"), u"\U0001F600!"},
  };
  for (const Case& c : cases) {
    backend.Put(650, c.block);
    EXPECT_EQ(clipboard.GetTextData(650), c.expected) << c.what;
  }
  EXPECT_EQ(clipboard.GetTextData(651), u"");
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);

  EXPECT_EQ(clipboard.SetTextData(652, CStdStrW(std::u16string(u"ab\0cd", 5)), 1), 1);
  EXPECT_EQ(backend.Bytes(652), TextBytes(std::u16string(u"ab\0cd", 5)));  // every unit is put
  EXPECT_EQ(clipboard.GetTextData(652), u"ab");
}

TEST(VantrelClipboardTransfer, ClipboardIsOpenedForItsFramesWindow) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  ASSERT_EQ(frame.Attach(TestWindow(42)), TRUE);
  CVantrelClipboard clipboard(&frame);
  clipboard.SetTextData(660, u"a", 1);
  EXPECT_EQ(backend.ownerWhenSet, TestWindow(42));
  ASSERT_EQ(clipboard.OpenCB(), 1);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(42));
  clipboard.CloseCB();
  frame.Detach();
}

}  // namespace
