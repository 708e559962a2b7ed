#include "platform/MessageSink.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/RecordingMessageSink.h"

TEST(MessageSink, RecordsKindIdTextAndTypeOfAStringMessage) {
  CRecordingMessageSink sink;
  EXPECT_EQ(AfxMessageBox(21004u, MB_OK | MB_ICONEXCLAMATION), IDOK);
  ASSERT_EQ(sink.Requests().size(), 1u);
  const MessageRequest& r = sink.Requests()[0];
  EXPECT_EQ(r.kind, MessageKind::Box);
  EXPECT_EQ(r.id, 21004u);
  EXPECT_EQ(r.text, u"Unesite broj");
  EXPECT_EQ(r.type, MB_OK | MB_ICONEXCLAMATION);
}

TEST(MessageSink, UnknownStringIdShowsAFallbackNamingTheId) {
  CRecordingMessageSink sink;
  AfxMessageBox(21099u);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 21099u);
  EXPECT_EQ(sink.Requests()[0].text, u"Message 21099 (its text is missing)");
}

TEST(MessageSink, LiteralTextHasIdZero) {
  CRecordingMessageSink sink;
  AfxMessageBox(u"Gotovo", MB_ICONINFORMATION);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 0u);
  EXPECT_EQ(sink.Requests()[0].text, u"Gotovo");
  EXPECT_EQ(sink.Requests()[0].type, MB_ICONINFORMATION);
}

TEST(MessageSink, RecordingSinkAnswersFromItsScriptThenWithItsDefault) {
  CRecordingMessageSink sink;
  sink.QueueAnswer(IDYES);
  sink.QueueAnswer(IDCANCEL);
  sink.SetDefaultAnswer(IDNO);
  EXPECT_EQ(AfxMessageBox(u"a", MB_YESNOCANCEL), IDYES);
  EXPECT_EQ(AfxMessageBox(u"b", MB_YESNOCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(u"c", MB_YESNOCANCEL), IDNO);
  EXPECT_EQ(sink.Requests().size(), 3u);
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
