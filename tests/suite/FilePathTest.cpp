#include "suite/FilePath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include <unistd.h>

#include "suite/FileName.h"

namespace {

namespace fs = std::filesystem;

// Sets VANTREL1_DIR for its lifetime and puts the old value back.
class ScopedDataDir {
 public:
  explicit ScopedDataDir(const char* value) {
    if (const char* old = std::getenv("VANTREL1_DIR")) m_old = old;
    if (value)
      setenv("VANTREL1_DIR", value, 1);
    else
      unsetenv("VANTREL1_DIR");
  }
  ~ScopedDataDir() {
    if (m_old)
      setenv("VANTREL1_DIR", m_old->c_str(), 1);
    else
      unsetenv("VANTREL1_DIR");
  }

 private:
  std::optional<std::string> m_old;
};

std::string MakePath(CStdStrArg<WCHAR> dir, CStdStrArg<WCHAR> name, CStdStrArg<WCHAR> ext, int size = 260) {
  WCHAR buffer[300] = {u'#'};
  const int ok = FileMakePathX(nullptr, buffer, dir, name, ext, size);
  return ok ? CStdStrW(buffer).ToUtf8() : "failed:" + CStdStrW(buffer).ToUtf8();
}

struct Parts {
  std::string dir, name, ext;
  bool operator==(const Parts&) const = default;
};

Parts Split(const char16_t* path) {
  CStdStrW dir, name, ext;
  splitpath2(path, &dir, &name, &ext);
  return {dir.ToUtf8(), name.ToUtf8(), ext.ToUtf8()};
}

}  // namespace

TEST(GetCorviaDIR, ComesFromTheEnvironmentElseTheInstalledDataDirectory) {
  {
    ScopedDataDir dir("/opt/corvia");
    EXPECT_EQ(GetCorviaDIR().ToUtf8(), "/opt/corvia/");
    EXPECT_EQ(GetCorviaDIRsamples().ToUtf8(), "/opt/corvia/samples/");
  }
  {
    ScopedDataDir dir("/opt/čvor/");  // UTF-8 in the environment
    EXPECT_EQ(GetCorviaDIR(), CStdStrW(u"/opt/čvor/"));
  }
  for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
    ScopedDataDir dir(unset);
    const std::string installed = GetCorviaDIR().ToUtf8();
    EXPECT_EQ(installed.front(), '/');
    EXPECT_TRUE(installed.ends_with("/vantrel1/")) << installed;
  }
}

TEST(FileMakePathX, JoinsFolderNameAndExtensionWithinTheBuffer) {
  EXPECT_EQ(MakePath(u"/opt/corvia/", u"Normal.lin", nullptr), "/opt/corvia/Normal.lin");
  EXPECT_EQ(MakePath(u"/opt/corvia", u"Normal", u"lin"), "/opt/corvia/Normal.lin");
  EXPECT_EQ(MakePath(u"C:\\Corvia\\", u"Normal", u".sym"), "C:\\Corvia\\Normal.sym");
  EXPECT_EQ(MakePath(nullptr, u"Normal.lin", nullptr), "Normal.lin");
  EXPECT_EQ(MakePath(u"/a", u"/b", nullptr), "/a/b");
  EXPECT_EQ(MakePath(u"/opt", nullptr, u"lin"), "failed:");
  // "/ab/c.d" is 7 units: it needs a buffer of 8.
  EXPECT_EQ(MakePath(u"/ab", u"c", u"d", 8), "/ab/c.d");
  EXPECT_EQ(MakePath(u"/ab", u"c", u"d", 7), "failed:");
  WCHAR buffer[4] = {u'x', u'x', u'x', u'x'};
  EXPECT_EQ(FileMakePathX(nullptr, buffer, u"/", u"a", nullptr, 0), 0);
  EXPECT_EQ(buffer[0], u'x');  // a size of 0 writes nothing
  EXPECT_EQ(FileMakePathX(nullptr, nullptr, u"/", u"a", nullptr, 4), 0);
}

TEST(FileExistsX, TellsFilesFromFoldersAsAsked) {
  const fs::path dir = fs::temp_directory_path() / ("vantrel1-exists-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  const fs::path file = dir / "Čvor.lin";
  std::ofstream(file) << "x";
  const CStdStrW filePath = CStdStrW::FromUtf8(file.string());
  const CStdStrW dirPath = CStdStrW::FromUtf8(dir.string());
  EXPECT_EQ(FileExistsX(filePath.c_str(), 3), 1);
  EXPECT_EQ(FileExistsX(filePath.c_str(), FILE_EXISTS_FILE), 1);
  EXPECT_EQ(FileExistsX(filePath.c_str(), FILE_EXISTS_DIRECTORY), 0);
  EXPECT_EQ(FileExistsX(dirPath.c_str(), FILE_EXISTS_FILE), 0);
  EXPECT_EQ(FileExistsX(dirPath.c_str(), FILE_EXISTS_DIRECTORY), 1);
  EXPECT_EQ(FileExistsX(dirPath.c_str(), 0), 1);
  EXPECT_EQ(FileExistsX((filePath + u"x").c_str(), 3), 0);
  EXPECT_EQ(FileExistsX(u"", 3), 0);
  EXPECT_EQ(FileExistsX(nullptr, 3), 0);
  EXPECT_EQ(CFileName(filePath).Exists(), 1);
  EXPECT_EQ(CFileName(dirPath).Exists(), 0);
  fs::remove_all(dir);
}

TEST(splitpath2, SplitsFolderNameAndExtensionSoThatTheyJoinBack) {
  EXPECT_EQ(Split(u"/opt/corvia/Normal.lin"), (Parts{"/opt/corvia/", "Normal", ".lin"}));
  EXPECT_EQ(Split(u"C:\\tabele\\a.b.sym"), (Parts{"C:\\tabele\\", "a.b", ".sym"}));
  EXPECT_EQ(Split(u"mixed\\dir/name"), (Parts{"mixed\\dir/", "name", ""}));
  EXPECT_EQ(Split(u"/opt/.profile"), (Parts{"/opt/", ".profile", ""}));
  EXPECT_EQ(Split(u"notes."), (Parts{"", "notes.", ""}));
  EXPECT_EQ(Split(u"/dir.d/file"), (Parts{"/dir.d/", "file", ""}));
  EXPECT_EQ(Split(u"/opt/"), (Parts{"/opt/", "", ""}));
  EXPECT_EQ(Split(u""), (Parts{"", "", ""}));
  splitpath2(u"a.b", nullptr, nullptr, nullptr);  // outputs are optional
}

TEST(FileNameFitsSpec, MatchesWildcardsWithoutRegardToCase) {
  EXPECT_EQ(FileNameFitsSpec(u"Normal.LIN", u"*.lin"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"/home/a/Normal.lin", u"*.lin"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"Normal.lin.bak", u"*.lin"), 0);
  EXPECT_EQ(FileNameFitsSpec(u"a.lin", u"?.lin"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"ab.lin", u"?.lin"), 0);
  EXPECT_EQ(FileNameFitsSpec(u".lin", u"*.lin"), 1);  // a star may stand for nothing
  EXPECT_EQ(FileNameFitsSpec(u"tabela", u"tab*"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"tabela", u"*b*l?"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"ČVOR.lin", u"čvor.lin"), 0);  // only ASCII letters fold
  EXPECT_EQ(FileNameFitsSpec(u"", u"*"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"a", u""), 0);
  EXPECT_EQ(FileNameFitsSpec(nullptr, u"*"), 1);
}

TEST(FileNameFitsSpec, AllFilesPatternAlsoTakesNamesWithoutExtension) {
  EXPECT_EQ(FileNameFitsSpec(u"README", u"*.*"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"a.prj", u"*.*"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"README", u"R*.*"), 1);
  EXPECT_EQ(FileNameFitsSpec(u"README", u"X*.*"), 0);
  EXPECT_EQ(FileNameFitsSpec(u"README", u"*.prj"), 0);
}

TEST(FileNameFitsSpec, ManyStarsAgainstALongNameStayFast) {
  const std::u16string name(20000, u'a');
  EXPECT_EQ(FileNameFitsSpec(name, u"*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"), 0);
  EXPECT_EQ(FileNameFitsSpec(name + u"b", u"*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"), 1);
}

TEST(CFileName, GivesAndChangesThePartsOfItsPath) {
  CFileName name(u"/opt/corvia/help/Vantrel.chm");
  EXPECT_EQ(name.GetDirectory(), CStdStrW(u"/opt/corvia/help/"));
  EXPECT_EQ(name.GetTitle(), CStdStrW(u"Vantrel"));
  EXPECT_EQ(name.GetExtension(), CStdStrW(u".chm"));
  EXPECT_EQ(name.GetFileName(), CStdStrW(u"Vantrel.chm"));
  name.SetExtension(u"htm");
  EXPECT_EQ(name.GetPath(), CStdStrW(u"/opt/corvia/help/Vantrel.htm"));
  name.SetExtension(u"");
  EXPECT_EQ(name.GetPath(), CStdStrW(u"/opt/corvia/help/Vantrel"));
  name.SetExtension(u".chm");
  name.SetDirectory(u"/tmp");
  EXPECT_EQ(name.GetPath(), CStdStrW(u"/tmp/Vantrel.chm"));
  EXPECT_TRUE(CFileName().IsEmpty());
}
