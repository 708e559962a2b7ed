#include "platform/MessageSink.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/RecordingMessageSink.h"

TEST(MessageSink, HandsEachMessageToTheSinkWithItsIdTextAndType) {
  CRecordingMessageSink sink;
  EXPECT_EQ(AfxMessageBox(21004u, MB_OK | MB_ICONEXCLAMATION), IDOK);
  AfxMessageBox(21099u);
  AfxMessageBox(u"Gotovo", MB_ICONINFORMATION);
  ASSERT_EQ(sink.Requests().size(), 3u);
  const MessageRequest& found = sink.Requests()[0];
  EXPECT_EQ(found.kind, MessageKind::Box);
  EXPECT_EQ(found.id, 21004u);
  EXPECT_EQ(found.text, u"Unesite broj");
  EXPECT_EQ(found.type, MB_OK | MB_ICONEXCLAMATION);
  // An unknown id still shows something the user can report.
  EXPECT_EQ(sink.Requests()[1].id, 21099u);
  EXPECT_EQ(sink.Requests()[1].text, u"Message 21099 (its text is missing)");
  EXPECT_EQ(sink.Requests()[2].id, 0u);
  EXPECT_EQ(sink.Requests()[2].text, u"Gotovo");
  EXPECT_EQ(sink.Requests()[2].type, MB_ICONINFORMATION);
}

TEST(MessageSink, RecordingSinkAnswersFromItsScriptThenWithItsDefault) {
  CRecordingMessageSink sink;
  sink.QueueAnswer(IDYES);
  sink.QueueAnswer(IDCANCEL);
  sink.SetDefaultAnswer(IDNO);
  EXPECT_EQ(AfxMessageBox(u"a", MB_YESNOCANCEL), IDYES);
  EXPECT_EQ(AfxMessageBox(u"b", MB_YESNOCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(u"c", MB_YESNOCANCEL), IDNO);
}

TEST(MessageSink, RecordingSinksNestAndRestoreThePreviousSink) {
  CMessageSink* const original = GetMessageSink();
  {
    CRecordingMessageSink outer;
    {
      CRecordingMessageSink inner;
      AfxMessageBox(u"inner");
      EXPECT_EQ(inner.Requests().size(), 1u);
    }
    EXPECT_EQ(GetMessageSink(), &outer);
    EXPECT_TRUE(outer.Requests().empty());
  }
  EXPECT_EQ(GetMessageSink(), original);
}

TEST(MessageSink, WithoutAUserQuestionsGetTheirSafeAnswerOnStandardError) {
  ASSERT_EQ(SetMessageSink(nullptr), GetMessageSink());
  testing::internal::CaptureStderr();
  EXPECT_EQ(AfxMessageBox(21005u, MB_YESNO), IDNO);
  EXPECT_EQ(AfxMessageBox(u"Sačuvati?", MB_YESNOCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(u"Nastaviti?", MB_OKCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(u"Gotovo", MB_OK | MB_ICONINFORMATION), IDOK);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vantrel1 message 21005: ESPG mora biti broj\n"
            "vantrel1 message: Sa\xC4\x8Duvati?\n"
            "vantrel1 message: Nastaviti?\n"
            "vantrel1 message: Gotovo\n");
}
