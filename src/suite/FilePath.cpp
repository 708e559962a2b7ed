#include "suite/FilePath.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/CharClass.h"
#include "platform/Utf.h"

#ifndef VANTREL1_DATA_DIR
#define VANTREL1_DATA_DIR "/usr/local/share/vantrel1"
#endif

namespace {

using View = std::u16string_view;

bool IsSeparator(char16_t c) { return c == u'/' || c == u'\\'; }

CStdStrW WithTrailingSeparator(CStdStrW dir) {
  if (dir.empty() || !IsSeparator(dir.back())) dir.push_back(u'/');
  return dir;
}

// Greedy matching that backs up only to the last '*': each later '*' makes the earlier
// ones irrelevant, so a failed attempt never has to be retried from further back.
bool Fits(View name, View pattern) {
  std::size_t n = 0, s = 0;
  std::size_t starPattern = View::npos, starName = 0;
  while (n < name.size()) {
    if (s < pattern.size() && pattern[s] == u'*') {
      starPattern = s++;
      starName = n;
    } else if (s < pattern.size() &&
               (pattern[s] == u'?' || vantrel1::ClassicFoldedDifference(pattern[s], name[n]) == 0)) {
      ++s;
      ++n;
    } else if (starPattern != View::npos) {
      s = starPattern + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  while (s < pattern.size() && pattern[s] == u'*') ++s;
  return s == pattern.size();
}

}  // namespace

CStdStrW GetCorviaDIR() {
  const char* fromEnvironment = std::getenv("VANTREL1_DIR");
  if (fromEnvironment && *fromEnvironment) return WithTrailingSeparator(CStdStrW::FromUtf8(fromEnvironment));
  return WithTrailingSeparator(CStdStrW::FromUtf8(VANTREL1_DATA_DIR));
}

CStdStrW GetCorviaDIRsamples() { return GetCorviaDIR() + u"samples/"; }

int FileMakePathX(const CVantrelAppBaseX* /*app*/, WCHAR* buffer, CStdStrArg<WCHAR> dir, CStdStrArg<WCHAR> name,
                  CStdStrArg<WCHAR> ext, int size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  const View d = dir.View(), f = name.View(), e = ext.View();
  if (f.empty()) return 0;
  std::u16string path(d);
  if (!d.empty() && !IsSeparator(d.back()) && !IsSeparator(f.front())) path.push_back(u'/');
  path.append(f);
  if (!e.empty()) {
    if (e.front() != u'.') path.push_back(u'.');
    path.append(e);
  }
  if (path.size() >= static_cast<std::size_t>(size)) return 0;
  std::copy(path.begin(), path.end(), buffer);
  buffer[path.size()] = 0;
  return 1;
}

int FileExistsX(LPCWSTR path, int mode) {
  if (!path || !*path) return 0;
  if (mode == 0) mode = FILE_EXISTS_ANY;
  struct stat info {};
  if (::stat(vantrel1::ToUtf8(path).c_str(), &info) != 0) return 0;
  const int kind = S_ISDIR(info.st_mode) ? FILE_EXISTS_DIRECTORY : FILE_EXISTS_FILE;
  return (mode & kind) ? 1 : 0;
}

void splitpath2(CStdStrArg<WCHAR> path, CStdStrW* dir, CStdStrW* name, CStdStrW* ext) {
  const View p = path.View();
  const auto slash = std::find_if(p.rbegin(), p.rend(), IsSeparator);
  const std::size_t nameStart = static_cast<std::size_t>(p.rend() - slash);
  const View file = p.substr(nameStart);
  std::size_t dot = file.rfind(u'.');
  if (dot == View::npos || dot == 0 || dot + 1 == file.size()) dot = file.size();
  if (dir) *dir = CStdStrW(p.substr(0, nameStart));
  if (name) *name = CStdStrW(file.substr(0, dot));
  if (ext) *ext = CStdStrW(file.substr(dot));
}

int FileNameFitsSpec(CStdStrArg<WCHAR> name, CStdStrArg<WCHAR> pattern) {
  const View n = name.View(), s = pattern.View();
  if (s.empty()) return n.empty() ? 1 : 0;
  if (Fits(n, s)) return 1;
  const bool anyExtension = s.size() >= 2 && s.substr(s.size() - 2) == u".*";
  if (anyExtension && n.find(u'.') == View::npos && Fits(std::u16string(n) + u'.', s)) return 1;
  return 0;
}
