#include "suite/AppMessages.h"

#include <gtest/gtest.h>

#include "platform/RecordingMessageSink.h"
#include "suite/VantrelStrings.h"

namespace {

std::string Utf8(const CStdStrW& text) { return text.ToUtf8(); }

}  // namespace

TEST(AppMessages, EachMessageSaysWhatHappenedWithItsArgument) {
  EXPECT_EQ(Utf8(AppMessageText(44, u"/a/b.lin")), "Putanja datoteke je predugačka (najviše 250 znakova):\n/a/b.lin");
  EXPECT_EQ(Utf8(AppMessageText(138, u"x.txt")), "Naziv datoteke ne odgovara izabranom tipu datoteke:\nx.txt");
  EXPECT_EQ(Utf8(AppMessageText(265)), "Tabela je puna: nije moguće dodati novu stavku.");
  EXPECT_EQ(Utf8(AppMessageText(412, u"benchmark:  ")),
            "benchmark:  Figura simbola može imati najviše 19 tačaka; linija nije dodata.");
  EXPECT_EQ(Utf8(AppMessageText(504, u"a.lin")), "Datoteka a.lin već postoji.\nDa li želite da je zamenite?");
  EXPECT_EQ(Utf8(AppMessageText(743)), "Ovaj naziv datoteke je rezervisan. Izaberite drugi naziv.");
  EXPECT_EQ(Utf8(AppMessageText(812)), "Izabrano je previše datoteka; najviše ih može biti 200.");
  EXPECT_EQ(Utf8(AppMessageText(933, u"/x/p.prj")), "Nije moguće upisati datoteku projekcije:\n/x/p.prj");
}

TEST(AppMessages, ArgumentWithoutAPlaceGoesOnItsOwnLineAndAMissingOneLeavesThePlaceEmpty) {
  EXPECT_EQ(Utf8(AppMessageText(743, u"Normal.lin")),
            "Ovaj naziv datoteke je rezervisan. Izaberite drugi naziv.\nNormal.lin");
  EXPECT_EQ(Utf8(AppMessageText(412)), "Figura simbola može imati najviše 19 tačaka; linija nije dodata.");
  // The argument is text, not a format.
  EXPECT_EQ(Utf8(AppMessageText(504, u"%s%d.lin")), "Datoteka %s%d.lin već postoji.\nDa li želite da je zamenite?");
  EXPECT_EQ(Utf8(AppMessageText(7, u"x")), "Poruka 7\nx");
}

TEST(AppMessages, GoThroughTheSinkWithTheirKindIdAndType) {
  CRecordingMessageSink sink;
  sink.QueueAnswer(IDOK);
  sink.QueueAnswer(IDOK);
  sink.QueueAnswer(IDYES);
  EXPECT_EQ(AppError(44, nullptr, CStdStrW(u"p")), IDOK);
  EXPECT_EQ(AppWarning(265, nullptr, nullptr, MB_ICONEXCLAMATION), IDOK);
  EXPECT_EQ(AppPrompt(504, nullptr, u"f.lin"), IDYES);
  ASSERT_EQ(sink.Requests().size(), 3u);
  EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Error);
  EXPECT_EQ(sink.Requests()[0].id, 44u);
  EXPECT_EQ(sink.Requests()[0].type, MB_OK | MB_ICONSTOP);
  EXPECT_EQ(sink.Requests()[0].text, AppMessageText(44, u"p"));
  EXPECT_EQ(sink.Requests()[1].kind, MessageKind::Warning);
  EXPECT_EQ(sink.Requests()[1].id, 265u);
  EXPECT_EQ(sink.Requests()[1].type, MB_ICONEXCLAMATION);
  EXPECT_EQ(sink.Requests()[2].kind, MessageKind::Prompt);
  EXPECT_EQ(sink.Requests()[2].type, MB_YESNO | MB_ICONQUESTION);
}

TEST(VantrelStrings, HoldTheFiltersAndTheReservedName) {
  EXPECT_EQ(Utf8(LoadVantrelString(VSTR_ALL_FILES_FILTER)), "Sve datoteke (*.*)|*.*");
  EXPECT_EQ(Utf8(LoadVantrelString(VSTR_PROJECTION_FILE_FILTER)), "Datoteke projekcije (*.prj)|*.prj");
  EXPECT_EQ(Utf8(LoadVantrelString(VSTR_RESERVED_FILE_NAME)), "Normal");
  EXPECT_EQ(LoadVantrelString(1), CStdStrW());
}

TEST(VantrelStrings, ResourceStringIsCutToTheMaximumLength) {
  EXPECT_EQ(Utf8(VantrelLoadResString(nullptr, 20000)), "Nijedan");
  EXPECT_EQ(Utf8(VantrelLoadResString(nullptr, 20000, 3)), "Nij");
  EXPECT_EQ(VantrelLoadResString(nullptr, 20000, 0), CStdStrW());
  EXPECT_EQ(VantrelLoadResString(nullptr, 65000), CStdStrW());
  // A module that is not loaded has no strings.
  EXPECT_EQ(VantrelLoadResString(reinterpret_cast<HINSTANCE>(0x1234), 20000), CStdStrW());
}
