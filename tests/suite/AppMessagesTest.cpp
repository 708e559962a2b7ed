#include "suite/AppMessages.h"

#include <gtest/gtest.h>

#include "platform/RecordingMessageSink.h"
#include "suite/VantrelStrings.h"

// The argument goes where "%s" is, as text, or on a line of its own when there is no
// "%s"; a missing argument leaves the place empty.
TEST(AppMessages, ArgumentTakesThePlaceOfItsMarkOrALineOfItsOwn) {
  const struct {
    UINT id;
    const char16_t* argument;
    const char* text;
  } cases[] = {
      {VMSG_PATH_TOO_LONG, u"/a/b.lin", "Putanja datoteke je predugačka (najviše 250 znakova):\n/a/b.lin"},
      {VMSG_TABLE_FULL, nullptr, "Tabela je puna: nije moguće dodati novu stavku."},
      {VMSG_FIGURE_TOO_MANY_POINTS, u"benchmark:  ",
       "benchmark:  Figura simbola može imati najviše 19 tačaka; linija nije dodata."},
      {VMSG_FIGURE_TOO_MANY_POINTS, nullptr, "Figura simbola može imati najviše 19 tačaka; linija nije dodata."},
      {VMSG_CONFIRM_OVERWRITE, u"%s%d.lin", "Datoteka %s%d.lin već postoji.\nDa li želite da je zamenite?"},
      {VMSG_RESERVED_FILE_NAME, u"Normal.lin", "Ovaj naziv datoteke je rezervisan. Izaberite drugi naziv.\nNormal.lin"},
      {VMSG_TOO_MANY_FILES, nullptr, "Izabrano je previše datoteka; najviše ih može biti 200."},
      {7, u"x", "Poruka 7\nx"},  // no text: the id stands in for it
  };
  for (const auto& c : cases) EXPECT_EQ(AppMessageText(c.id, c.argument).ToUtf8(), c.text) << c.id;
}

TEST(AppMessages, GoThroughTheSinkWithTheirKindIdAndType) {
  CRecordingMessageSink sink;
  sink.QueueAnswer(IDOK);
  sink.QueueAnswer(IDOK);
  sink.QueueAnswer(IDYES);
  EXPECT_EQ(AppError(VMSG_PATH_TOO_LONG, nullptr, CStdStrW(u"p")), IDOK);
  EXPECT_EQ(AppWarning(VMSG_TABLE_FULL, nullptr, nullptr, MB_ICONEXCLAMATION), IDOK);
  EXPECT_EQ(AppPrompt(VMSG_CONFIRM_OVERWRITE, nullptr, u"f.lin"), IDYES);
  ASSERT_EQ(sink.Requests().size(), 3u);
  const MessageRequest& error = sink.Requests()[0];
  EXPECT_EQ(error.kind, MessageKind::Error);
  EXPECT_EQ(error.id, VMSG_PATH_TOO_LONG);
  EXPECT_EQ(error.type, MB_OK | MB_ICONSTOP);
  EXPECT_EQ(error.text, AppMessageText(VMSG_PATH_TOO_LONG, u"p"));
  EXPECT_EQ(sink.Requests()[1].kind, MessageKind::Warning);
  EXPECT_EQ(sink.Requests()[1].type, MB_ICONEXCLAMATION);
  EXPECT_EQ(sink.Requests()[2].kind, MessageKind::Prompt);
  EXPECT_EQ(sink.Requests()[2].type, MB_YESNO | MB_ICONQUESTION);
}

TEST(VantrelStrings, HoldTheFiltersAndTheReservedNameAndCutToTheLength) {
  EXPECT_EQ(LoadVantrelString(VSTR_ALL_FILES_FILTER).ToUtf8(), "Sve datoteke (*.*)|*.*");
  EXPECT_EQ(LoadVantrelString(VSTR_PROJECTION_FILE_FILTER).ToUtf8(), "Datoteke projekcije (*.prj)|*.prj");
  EXPECT_EQ(LoadVantrelString(VSTR_RESERVED_FILE_NAME).ToUtf8(), "Normal");
  EXPECT_EQ(LoadVantrelString(1), CStdStrW());
  EXPECT_EQ(VantrelLoadResString(nullptr, 20000).ToUtf8(), "Nijedan");
  EXPECT_EQ(VantrelLoadResString(nullptr, 20000, 3).ToUtf8(), "Nij");
  EXPECT_EQ(VantrelLoadResString(nullptr, 20000, 0), CStdStrW());
  // A module that is not loaded has no strings.
  EXPECT_EQ(VantrelLoadResString(reinterpret_cast<HINSTANCE>(0x1234), 20000), CStdStrW());
}
