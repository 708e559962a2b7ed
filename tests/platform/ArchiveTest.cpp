#include "platform/Archive.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/Utf.h"

namespace {

using Bytes = std::vector<BYTE>;

// A string of n units that is not the same unit repeated, so order and bytes are checked.
std::u16string Units(std::size_t n) {
  std::u16string s;
  for (std::size_t i = 0; i < n; ++i) s += static_cast<char16_t>(0x0100 + i % 0x7F00);
  return s;
}

Bytes Stored(std::u16string_view text) {
  CArchive ar(CArchive::store);
  ar << text;
  return ar.GetBytes();
}

std::u16string Loaded(const Bytes& bytes) {
  CArchive ar(bytes);
  std::u16string text = u"unchanged";
  ar >> text;
  EXPECT_TRUE(ar.IsBufferEmpty());
  return text;
}

int CauseOf(auto&& action) {
  try {
    action();
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
  return CArchiveException::none;
}

std::string TempPath(const char* name) { return testing::TempDir() + name; }

Bytes FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

TEST(Archive, NumbersAreLittleEndianWithWindowsWidths) {
  CArchive out(CArchive::store);
  out << BYTE{0x12} << WORD{0x3456} << std::int16_t{-2} << -2 << DWORD{0x89ABCDEF}
      << std::int64_t{-3} << std::uint64_t{0x0102030405060708} << 1.5f << -2.0 << u'ž' << 'A'
      << 7u;
  const Bytes expected = {
      0x12,                                            // BYTE
      0x56, 0x34,                                      // WORD
      0xFE, 0xFF,                                      // int16
      0xFE, 0xFF, 0xFF, 0xFF,                          // int32
      0xEF, 0xCD, 0xAB, 0x89,                          // DWORD
      0xFD, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  // int64
      0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // uint64
      0x00, 0x00, 0xC0, 0x3F,                          // float 1.5
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0,  // double -2
      0x7E, 0x01,                                      // UTF-16 unit
      0x41,                                            // char
      0x07, 0x00, 0x00, 0x00,                          // unsigned
  };
  EXPECT_EQ(out.GetBytes(), expected);

  // Writing is pinned above, so values that store back to the same bytes were read right.
  CArchive in(expected);
  BYTE by = 0;
  WORD w = 0;
  std::int16_t n16 = 0;
  int n32 = 0;
  DWORD dw = 0;
  std::int64_t n64 = 0;
  std::uint64_t u64 = 0;
  float f = 0;
  double d = 0;
  WCHAR ch = 0;
  char c = 0;
  unsigned u = 0;
  in >> by >> w >> n16 >> n32 >> dw >> n64 >> u64 >> f >> d >> ch >> c >> u;
  EXPECT_TRUE(in.IsBufferEmpty());
  CArchive again(CArchive::store);
  again << by << w << n16 << n32 << dw << n64 << u64 << f << d << ch << c << u;
  EXPECT_EQ(again.GetBytes(), expected);
}

TEST(ArchiveStrings, LengthTakesAByteAWordOrADwordAsItGrows) {
  const std::pair<std::size_t, Bytes> cases[] = {
      {0, {0xFF, 0xFE, 0xFF, 0x00}},
      {254, {0xFF, 0xFE, 0xFF, 0xFE}},
      {255, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}},
      {0xFFFD, {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}},
      {0xFFFE, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
      {70000, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
  };
  for (const auto& [length, head] : cases) {
    SCOPED_TRACE(length);
    const Bytes bytes = Stored(Units(length));
    ASSERT_EQ(bytes.size(), head.size() + 2 * length);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(head.size())), head);
    EXPECT_EQ(Loaded(bytes), Units(length));
  }
  EXPECT_EQ(Stored(u"Až"), Bytes({0xFF, 0xFE, 0xFF, 0x02, 0x41, 0x00, 0x7E, 0x01}));
}

TEST(ArchiveStrings, PointersAndStringsWriteTheSameForm) {
  const WCHAR text[10] = u"Niš";
  CArchive ar(CArchive::store);
  ar << text << static_cast<LPCWSTR>(nullptr);
  EXPECT_EQ(ar.GetBytes(), Bytes({0xFF, 0xFE, 0xFF, 0x03, 0x4E, 0x00, 0x69, 0x00, 0x61, 0x01,
                                  0xFF, 0xFE, 0xFF, 0x00}));
}

TEST(ArchiveStrings, EightBitStringsAreReadAsCodePage1250) {
  // "Šđčćž ok" as written by an ANSI program on a Central European system.
  EXPECT_EQ(Loaded({0x08, 0x8A, 0xF0, 0xE8, 0xE6, 0x9E, 0x20, 0x6F, 0x6B}), u"Šđčćž ok");
  EXPECT_EQ(Loaded({0x03, 0x80, 0x81, 0xFF}), u"€\u0081˙");
  EXPECT_EQ(Loaded({0x00}), u"");
  Bytes word = {0xFF, 0x2C, 0x01};  // 300 bytes
  word.insert(word.end(), 300, 0x9A);
  EXPECT_EQ(Loaded(word), std::u16string(300, u'š'));
  EXPECT_EQ(Loaded({0xFF, 0xFF, 0xFF, 0x02, 0x00, 0x00, 0x00, 0x8E, 0x61}), u"Ža");
}

TEST(ArchiveStrings, ImplausibleLengthsFailBeforeAllocating) {
  // 0x7FFFFFFF units announced, one present.
  const Bytes dword = {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x41, 0x00};
  // 2^63 units: twice that many bytes does not fit in 64 bits.
  const Bytes qword = {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80, 0x41, 0x00};
  const Bytes oneShort = {0xFF, 0xFE, 0xFF, 0x02, 0x41, 0x00, 0x42};
  const Bytes ansiShort = {0x03, 0x41, 0x42};
  const Bytes cutLength = {0xFF, 0xFE, 0xFF, 0xFF};
  for (const Bytes& bytes : {dword, qword, oneShort, ansiShort, cutLength}) {
    CArchive ar(bytes);
    CStdStrW text(u"kept");
    EXPECT_EQ(CauseOf([&] { ar >> text; }), CArchiveException::endOfFile);
    EXPECT_EQ(text, u"kept");
  }

  // A file measures what is left differently from memory.
  const std::string path = TempPath("implausible.bin");
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(dword.data()), 12);
  CArchive file(vantrel1::FromUtf8(path), CArchive::load);
  CStdStrW text;
  EXPECT_EQ(CauseOf([&] { file >> text; }), CArchiveException::endOfFile);
  std::remove(path.c_str());
}

TEST(ArchiveFile, RoundTripMatchesTheMemoryForm) {
  const std::string path = TempPath("arhiva_šđž.bin");
  const CStdStrW name = vantrel1::FromUtf8(path);
  const std::u16string longText = Units(300);
  {
    CArchive out(name, CArchive::store);
    out << 2 << CStdStrW(u"Čelična ograda") << 0.25 << longText << BYTE{238};
    out.Close();
  }
  CArchive memory(CArchive::store);
  memory << 2 << CStdStrW(u"Čelična ograda") << 0.25 << longText << BYTE{238};
  EXPECT_EQ(FileBytes(path), memory.GetBytes());

  CArchive in(name, CArchive::load);
  int version = 0;
  CStdStrW desc;
  double scale = 0;
  std::u16string text;
  BYTE charSet = 0;
  in >> version >> desc >> scale >> text >> charSet;
  EXPECT_EQ(version, 2);
  EXPECT_EQ(desc, u"Čelična ograda");
  EXPECT_EQ(scale, 0.25);
  EXPECT_EQ(text, longText);
  EXPECT_EQ(charSet, 238);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(CauseOf([&] { in >> charSet; }), CArchiveException::endOfFile);
  std::remove(path.c_str());
}

TEST(ArchiveFile, DestructorWritesWhatWasStored) {
  const std::string path = TempPath("destructor.bin");
  {
    CArchive out(vantrel1::FromUtf8(path), CArchive::store);
    out << DWORD{0xA1B2C3D4};
  }
  EXPECT_EQ(FileBytes(path), Bytes({0xD4, 0xC3, 0xB2, 0xA1}));
  std::remove(path.c_str());
}

TEST(ArchiveErrors, EachMisuseHasItsCause) {
  EXPECT_EQ(CauseOf([] { CArchive ar(Bytes{1, 2, 3}); int n = 0; ar >> n; }), CArchiveException::endOfFile);
  EXPECT_EQ(CauseOf([] { CArchive ar(Bytes{1}); ar << 1; }), CArchiveException::readOnly);
  EXPECT_EQ(CauseOf([] { CArchive ar(CArchive::load); ar.Write("x", 1); }), CArchiveException::readOnly);
  EXPECT_EQ(CauseOf([] { CArchive ar(CArchive::store); ar << 1; BYTE b = 0; ar >> b; }),
            CArchiveException::writeOnly);
  EXPECT_EQ(CauseOf([] { CArchive ar(CArchive::store); char b[1]; ar.Read(b, 1); }), CArchiveException::writeOnly);
  EXPECT_EQ(CauseOf([] { CArchive ar(CArchive::store); ar.Close(); ar << 1; }), CArchiveException::genericException);
}

TEST(ArchiveErrors, FilesThatCannotBeOpenedNameThePath) {
  const CStdStrW missing = vantrel1::FromUtf8(TempPath("nema/takve.bin"));
  const CStdStrW folder = vantrel1::FromUtf8(testing::TempDir());
  for (const auto& [path, mode] : {std::pair(missing, CArchive::load), std::pair(missing, CArchive::store),
                                   std::pair(folder, CArchive::load)}) {
    try {
      CArchive ar(path, mode);
      ADD_FAILURE() << "opened " << vantrel1::ToUtf8(path);
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::genericException);
      EXPECT_EQ(e.m_strFileName, path);
    }
  }
}

TEST(ArchiveErrors, ShortReadsReturnTheCountWithoutThrowing) {
  CArchive ar(Bytes{0x0A, 0x0B, 0x0C});
  BYTE buffer[8] = {};
  EXPECT_EQ(ar.Read(buffer, 2), 2u);
  EXPECT_FALSE(ar.IsBufferEmpty());
  EXPECT_EQ(ar.Read(buffer, 8), 1u);
  EXPECT_EQ(buffer[0], 0x0C);
  EXPECT_EQ(ar.Read(buffer, 8), 0u);
  EXPECT_TRUE(ar.IsBufferEmpty());
}
