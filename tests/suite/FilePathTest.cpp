#include "suite/FilePath.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "suite/FileName.h"

namespace {

namespace fs = std::filesystem;

std::string DataDirWith(const char* value) {
  if (value)
    setenv("VANTREL1_DIR", value, 1);
  else
    unsetenv("VANTREL1_DIR");
  return GetCorviaDIR().ToUtf8();
}

}  // namespace

TEST(GetCorviaDIR, ComesFromTheEnvironmentElseTheInstalledDataDirectory) {
  const char* set = std::getenv("VANTREL1_DIR");
  const std::optional<std::string> old = set ? std::optional<std::string>(set) : std::nullopt;
  EXPECT_EQ(DataDirWith("/opt/čvor"), "/opt/čvor/");  // UTF-8 in the environment
  EXPECT_EQ(GetCorviaDIRsamples().ToUtf8(), "/opt/čvor/samples/");
  EXPECT_EQ(DataDirWith("/opt/corvia/"), "/opt/corvia/");
  for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
    const std::string installed = DataDirWith(unset);
    EXPECT_EQ(installed.front(), '/');
    EXPECT_TRUE(installed.ends_with("/vantrel1/")) << installed;
  }
  DataDirWith(old ? old->c_str() : nullptr);
}

TEST(FileMakePathX, JoinsFolderNameAndExtensionWithinTheBuffer) {
  const struct {
    const char16_t *dir, *name, *ext;
    int size;
    const char* path;  // null: refused, with an empty buffer
  } cases[] = {
      {u"/opt/corvia/", u"Normal.lin", nullptr, 260, "/opt/corvia/Normal.lin"},
      {u"/opt/corvia", u"Normal", u"lin", 260, "/opt/corvia/Normal.lin"},
      {u"C:\\Corvia\\", u"Normal", u".sym", 260, "C:\\Corvia\\Normal.sym"},
      {nullptr, u"Normal.lin", nullptr, 260, "Normal.lin"},
      {u"/a", u"/b", nullptr, 260, "/a/b"},
      {u"/opt", nullptr, u"lin", 260, nullptr},
      {u"/ab", u"c", u"d", 8, "/ab/c.d"},  // 7 units and the terminator
      {u"/ab", u"c", u"d", 7, nullptr},
  };
  for (const auto& c : cases) {
    WCHAR buffer[300] = {u'#'};
    EXPECT_EQ(FileMakePathX(nullptr, buffer, c.dir, c.name, c.ext, c.size), c.path ? 1 : 0) << c.size;
    EXPECT_EQ(CStdStrW(buffer).ToUtf8(), c.path ? c.path : "");
  }
  WCHAR buffer[1] = {u'x'};
  EXPECT_EQ(FileMakePathX(nullptr, buffer, u"/", u"a", nullptr, 0), 0);
  EXPECT_EQ(buffer[0], u'x');  // a size of 0 writes nothing
  EXPECT_EQ(FileMakePathX(nullptr, nullptr, u"/", u"a", nullptr, 4), 0);
}

TEST(FileExistsX, TellsFilesFromFoldersAsAsked) {
  const fs::path dir = fs::temp_directory_path() / ("vantrel1-exists-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  std::ofstream(dir / "Čvor.lin") << "x";
  const CStdStrW file = CStdStrW::FromUtf8((dir / "Čvor.lin").string());
  const CStdStrW folder = CStdStrW::FromUtf8(dir.string());
  const CStdStrW missing = file + u"x";
  const struct {
    LPCWSTR path;
    int mode, exists;
  } cases[] = {{file.c_str(), FILE_EXISTS_FILE, 1},        {file.c_str(), FILE_EXISTS_DIRECTORY, 0},
               {folder.c_str(), FILE_EXISTS_FILE, 0},      {folder.c_str(), FILE_EXISTS_DIRECTORY, 1},
               {folder.c_str(), 0, 1} /* 0 takes either */, {missing.c_str(), FILE_EXISTS_ANY, 0},
               {u"", FILE_EXISTS_ANY, 0},                  {nullptr, FILE_EXISTS_ANY, 0}};
  for (std::size_t i = 0; i < std::size(cases); ++i)
    EXPECT_EQ(FileExistsX(cases[i].path, cases[i].mode), cases[i].exists) << "case " << i;
  EXPECT_EQ(CFileName(file).Exists(), 1);
  EXPECT_EQ(CFileName(folder).Exists(), 0);
  fs::remove_all(dir);
}

// The three parts joined give the path back.
TEST(splitpath2, SplitsFolderNameAndExtension) {
  const struct {
    const char16_t* path;
    const char *dir, *name, *ext;
  } cases[] = {
      {u"/opt/corvia/Normal.lin", "/opt/corvia/", "Normal", ".lin"},
      {u"C:\\tabele\\a.b.sym", "C:\\tabele\\", "a.b", ".sym"},
      {u"mixed\\dir/name", "mixed\\dir/", "name", ""},
      {u"/opt/.profile", "/opt/", ".profile", ""},
      {u"notes.", "", "notes.", ""},
      {u"/dir.d/file", "/dir.d/", "file", ""},
      {u"/opt/", "/opt/", "", ""},
      {u"", "", "", ""},
  };
  for (const auto& c : cases) {
    CStdStrW dir, name, ext;
    splitpath2(c.path, &dir, &name, &ext);
    EXPECT_EQ(dir.ToUtf8() + "|" + name.ToUtf8() + "|" + ext.ToUtf8(), std::string(c.dir) + "|" + c.name + "|" + c.ext);
  }
  splitpath2(u"a.b", nullptr, nullptr, nullptr);  // outputs are optional
}

// Only ASCII letters fold; a pattern ending in ".*" also takes names without a dot.
TEST(FileNameFitsSpec, MatchesWildcardsWithoutRegardToCase) {
  const struct {
    const char16_t *name, *pattern;
    int fits;
  } cases[] = {
      {u"Normal.LIN", u"*.lin", 1}, {u"/home/a/Normal.lin", u"*.lin", 1}, {u"Normal.lin.bak", u"*.lin", 0},
      {u"a.lin", u"?.lin", 1},      {u"ab.lin", u"?.lin", 0},             {u".lin", u"*.lin", 1},
      {u"tabela", u"*b*l?", 1},     {u"ČVOR.lin", u"čvor.lin", 0},        {u"", u"*", 1},
      {u"a", u"", 0},               {u"README", u"*.*", 1},               {u"README", u"R*.*", 1},
      {u"README", u"X*.*", 0},      {u"README", u"*.prj", 0},
  };
  for (const auto& c : cases)
    EXPECT_EQ(FileNameFitsSpec(c.name, c.pattern), c.fits)
        << CStdStrW(c.name).ToUtf8() << " " << CStdStrW(c.pattern).ToUtf8();
  EXPECT_EQ(FileNameFitsSpec(nullptr, u"*"), 1);
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
}
