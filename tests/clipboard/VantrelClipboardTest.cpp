#include <gtest/gtest.h>

#include <vector>

#include "ClipboardTestSupport.h"
#include "clipboard/VantrelClipboard.h"
#include "platform/Clipboard.h"

namespace {

TEST(VantrelClipboardFormats, NamesAreTheSuitesExactSpellingsRegisteredOnFirstUse) {
  CTestClipboardBackend backend;
  CVantrelClipboard clipboard(nullptr);
  const std::vector<CStdStrW> expected = {
      u"Vantrel Terrain File", u"VTRL_COORD",      u"Vantrel Lat Lon",           u"Vantrel GPS",
      u"Vantrel Kestrane Measure", u"Vantrel Coordinate System", u"Vantrel Units", u"Vantrel LM Units"};
  for (int i : {-1, 8, -2147483647 - 1}) {
    EXPECT_EQ(clipboard.GetName(i), u"") << i;
    EXPECT_EQ(clipboard.GetID(i), 0u) << i;
  }
  EXPECT_EQ(backend.registrations, 0);
  WCHAR name[40];
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(clipboard.GetName(i), expected[static_cast<std::size_t>(i)]) << i;
    ASSERT_GT(GetClipboardFormatNameW(clipboard.GetID(i), name, 40), 0) << i;
    EXPECT_EQ(CStdStrW(name), expected[static_cast<std::size_t>(i)]) << i;
  }
  EXPECT_EQ(clipboard.GetID(5), RegisterClipboardFormatW(u"Vantrel Coordinate System"));
  EXPECT_EQ(backend.registrations, 8 + 1);
}

TEST(VantrelClipboardFormats, FailedRegistrationIsTriedAgainAndCopiesShareTheNumbers) {
  CTestClipboardBackend backend;
  CVantrelClipboard clipboard(nullptr);
  backend.refuseRegistration = true;
  EXPECT_EQ(clipboard.GetID(2), 0u);
  backend.refuseRegistration = false;
  const UINT latLon = clipboard.GetID(2);
  EXPECT_NE(latLon, 0u);
  EXPECT_EQ(backend.registrations, 2);

  CVantrelClipboard copy(clipboard);
  EXPECT_EQ(copy.GetID(2), latLon);
  EXPECT_EQ(backend.registrations, 2);
}

TEST(VantrelClipboardTransfer, OpenAppendCloseLeavesEveryFormatOnTheClipboard) {
  CTestClipboardBackend backend;
  backend.PutText(CF_UNICODETEXT, u"earlier");
  CVantrelClipboard clipboard(nullptr);
  ASSERT_EQ(clipboard.OpenCB(), 1);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 1);
  CStdStrW system = u"Gauss-Krüger, zona 7";
  CStdStrW units = u"m";
  CStdStrW empty;
  EXPECT_EQ(clipboard.AppendCB(600, system), 1);
  EXPECT_EQ(clipboard.AppendCB(601, units), 1);
  EXPECT_EQ(clipboard.AppendCB(602, empty), 1);
  EXPECT_EQ(clipboard.CloseCB(), 1);
  EXPECT_EQ(clipboard.IsClipboardOpen(), 0);

  EXPECT_EQ(backend.Formats(), (std::vector<UINT>{600, 601, 602}));
  EXPECT_EQ(backend.Bytes(600), TextBytes(u"Gauss-Krüger, zona 7"));
  EXPECT_EQ(backend.Bytes(601), (std::vector<BYTE>{'m', 0, 0, 0}));
  EXPECT_EQ(backend.Bytes(602), (std::vector<BYTE>{0, 0}));
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
  // Every unit is put, an embedded zero included.
  const CStdStrW split(std::u16string(u"ab\0cd", 5));
  EXPECT_EQ(clipboard.SetTextData(602, split, 1), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{602});
  EXPECT_EQ(backend.Bytes(602), TextBytes(split));

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
      {"surrogate pair", TextBytes(u"\U0001F600!"), u"\U0001F600!"},
  };
  for (const Case& c : cases) {
    backend.Put(650, c.block);
    EXPECT_EQ(clipboard.GetTextData(650), c.expected) << c.what;
  }
  EXPECT_EQ(clipboard.GetTextData(651), u"");
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

}  // namespace
