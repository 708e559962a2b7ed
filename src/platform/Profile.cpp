#include "platform/Profile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/ProfileDocument.h"
#include "platform/Utf.h"

namespace vantrel1 {
namespace {

// A table file is a few hundred kilobytes; anything near this is not a profile file.
constexpr off_t kMaxProfileBytes = 64 << 20;
// Unchanged files beyond this many are forgotten, so that a program touching many files
// does not keep them all.
constexpr std::size_t kMaxKeptFiles = 64;

std::atomic<std::size_t> g_parseCount{0};

struct FileStamp {
  bool exists = false;
  dev_t dev = 0;
  ino_t ino = 0;
  off_t size = 0;
  long long mtimeSec = 0;
  long long mtimeNsec = 0;
  bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(const struct stat& st) {
  return {true, st.st_dev, st.st_ino, st.st_size, static_cast<long long>(st.st_mtim.tv_sec),
          static_cast<long long>(st.st_mtim.tv_nsec)};
}

FileStamp StampOf(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 ? StampOf(st) : FileStamp{};
}

enum class ReadResult { Ok, Missing, Failed };

ReadResult ReadWholeFile(const std::string& path, std::string& bytes, FileStamp& stamp) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT || errno == ENOTDIR ? ReadResult::Missing : ReadResult::Failed;
  struct stat st {};
  bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size <= kMaxProfileBytes;
  if (ok) {
    stamp = StampOf(st);
    bytes.resize(static_cast<std::size_t>(st.st_size));
    std::size_t done = 0;
    while (ok && done < bytes.size()) {
      const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) break;  // shorter than its size said: it shrank while being read
      done += static_cast<std::size_t>(n);
    }
    bytes.resize(done);
  }
  ::close(fd);
  return ok ? ReadResult::Ok : ReadResult::Failed;
}

bool WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return true;
}

void SyncDirectory(const std::filesystem::path& dir) {
  const int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  (void)::fsync(fd);
  ::close(fd);
}

int CreateTempBeside(const std::filesystem::path& target, mode_t mode, std::string& temp) {
  static std::atomic<unsigned> counter{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    temp = (target.parent_path() / ("." + target.filename().string() + "." + std::to_string(::getpid()) + "." +
                                    std::to_string(counter++) + ".tmp"))
               .string();
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

// Writes `bytes` to a new file beside `target` and renames it over `target`: a reader sees
// the old file or the new one, never a part of either. The old file's permissions and
// owner carry over.
bool ReplaceFile(const std::filesystem::path& target, std::string_view bytes) {
  struct stat old {};
  const bool hadOld = ::stat(target.c_str(), &old) == 0;
  std::string temp;
  const int fd = CreateTempBeside(target, hadOld ? (old.st_mode & 07777) : 0666, temp);
  if (fd < 0) return false;
  bool ok = WriteAll(fd, bytes);
  if (ok && hadOld) {
    (void)::fchmod(fd, old.st_mode & 07777);  // the creation mode was cut by the umask
    if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
      // Only a privileged process may give the file away; the content matters more.
    }
  }
  ok = ok && ::fsync(fd) == 0;
  ok = ::close(fd) == 0 && ok;
  ok = ok && ::rename(temp.c_str(), target.c_str()) == 0;
  if (!ok) {
    ::unlink(temp.c_str());
    return false;
  }
  SyncDirectory(target.parent_path());
  return true;
}

// A symbolic link stays a link: its target is the file that is replaced.
std::filesystem::path WriteTarget(const std::string& path) {
  std::error_code ec;
  if (std::filesystem::is_symlink(path, ec)) {
    auto resolved = std::filesystem::weakly_canonical(path, ec);
    if (!ec) return resolved;
  }
  return path;
}

std::string CacheKey(LPCWSTR file) {
  const std::filesystem::path path(ToUtf8(file));
  std::error_code ec;
  const auto absolute = std::filesystem::absolute(path, ec);
  return (ec ? path : absolute).lexically_normal().string();
}

struct KeptFile {
  FileStamp stamp;
  ProfileDocument doc;
  bool dirty = false;
};

class ProfileCache {
 public:
  ProfileCache() = default;
  ProfileCache(const ProfileCache&) = delete;
  ProfileCache& operator=(const ProfileCache&) = delete;
  ~ProfileCache() {
    std::lock_guard lock(m_mutex);
    FlushAll();
  }

  std::mutex& Mutex() { return m_mutex; }

  // The kept copy of `path`, read again when the file changed on disk (dropping unflushed
  // writes); null when the file exists but cannot be read.
  KeptFile* Get(const std::string& path) {
    auto it = m_files.find(path);
    if (it != m_files.end() && it->second.stamp == StampOf(path)) return &it->second;
    KeptFile fresh;
    std::string bytes;
    switch (ReadWholeFile(path, bytes, fresh.stamp)) {
      case ReadResult::Failed:
        if (it != m_files.end()) m_files.erase(it);
        return nullptr;
      case ReadResult::Ok:
        fresh.doc = ProfileDocument::Parse(bytes);
        ++g_parseCount;
        break;
      case ReadResult::Missing:
        break;
    }
    if (it == m_files.end()) {
      ForgetCleanFilesIfMany();
      it = m_files.emplace(path, KeptFile{}).first;
    }
    it->second = std::move(fresh);
    return &it->second;
  }

  bool Flush(const std::string& path) {
    const auto it = m_files.find(path);
    if (it == m_files.end() || !it->second.dirty) return true;
    KeptFile* kept = Get(path);
    return kept && Flush(path, *kept);
  }

  bool FlushAll() {
    std::vector<std::string> dirty;
    for (const auto& [path, kept] : m_files)
      if (kept.dirty) dirty.push_back(path);
    bool ok = true;
    for (const std::string& path : dirty) ok = Flush(path) && ok;
    return ok;
  }

 private:
  static bool Flush(const std::string& path, KeptFile& kept) {
    if (!kept.dirty) return true;
    if (!ReplaceFile(WriteTarget(path), kept.doc.Serialize())) return false;
    kept.dirty = false;
    kept.stamp = StampOf(path);
    return true;
  }

  void ForgetCleanFilesIfMany() {
    if (m_files.size() < kMaxKeptFiles) return;
    std::erase_if(m_files, [](const auto& entry) { return !entry.second.dirty; });
  }

  std::mutex m_mutex;
  std::unordered_map<std::string, KeptFile> m_files;
};

// Destroyed at exit, after the program's own statics that might still write, and flushes.
ProfileCache& Cache() {
  static ProfileCache cache;
  return cache;
}

std::u16string_view DefaultText(LPCWSTR defaultValue) {
  std::u16string_view text = defaultValue ? defaultValue : u"";
  while (!text.empty() && (text.back() == u' ' || text.back() == u'\t')) text.remove_suffix(1);
  return text;
}

DWORD CopyString(std::u16string_view text, LPWSTR buffer, DWORD size) {
  const std::size_t n = std::min<std::size_t>(text.size(), size - 1);
  std::copy_n(text.data(), n, buffer);
  buffer[n] = 0;
  return static_cast<DWORD>(n);
}

DWORD CopyList(const std::vector<std::u16string>& names, LPWSTR buffer, DWORD size) {
  std::u16string list;
  for (const std::u16string& name : names) {
    list += name;
    list += u'\0';
  }
  if (list.size() < size) {
    std::copy(list.begin(), list.end(), buffer);
    buffer[list.size()] = 0;
    if (list.empty() && size > 1) buffer[1] = 0;
    return static_cast<DWORD>(list.size());
  }
  if (size < 2) {
    buffer[0] = 0;
    return 0;
  }
  std::copy_n(list.begin(), size - 2, buffer);
  buffer[size - 2] = 0;
  buffer[size - 1] = 0;
  return size - 2;
}

bool IsFileName(LPCWSTR file) { return file && *file; }

std::optional<std::u16string> FindValue(LPCWSTR section, LPCWSTR key, LPCWSTR file) {
  if (!section || !key || !IsFileName(file)) return std::nullopt;
  std::lock_guard lock(Cache().Mutex());
  const KeptFile* kept = Cache().Get(CacheKey(file));
  return kept ? kept->doc.Find(section, key) : std::nullopt;
}

UINT ParseLeadingInt(std::u16string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == u' ' || text[i] == u'\t')) ++i;
  const bool negative = i < text.size() && text[i] == u'-';
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) ++i;
  UINT value = 0;
  for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) value = value * 10u + (text[i] - u'0');
  return negative ? 0u - value : value;
}

}  // namespace

std::size_t ProfileParseCount() { return g_parseCount.load(); }

}  // namespace vantrel1

using vantrel1::Cache;
using vantrel1::CacheKey;

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                               LPCWSTR file) {
  if (!buffer || size == 0) return 0;
  if (section && key) {
    const auto value = vantrel1::FindValue(section, key, file);
    return vantrel1::CopyString(value ? std::u16string_view(*value) : vantrel1::DefaultText(defaultValue), buffer,
                                size);
  }
  std::vector<std::u16string> names;
  if (vantrel1::IsFileName(file)) {
    std::lock_guard lock(Cache().Mutex());
    if (const auto* kept = Cache().Get(CacheKey(file)))
      names = section ? kept->doc.KeyNames(section) : kept->doc.SectionNames();
  }
  return vantrel1::CopyList(names, buffer, size);
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int defaultValue, LPCWSTR file) {
  const auto value = vantrel1::FindValue(section, key, file);
  if (!value || value->empty()) return static_cast<UINT>(defaultValue);
  return vantrel1::ParseLeadingInt(*value);
}

DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR file) {
  return GetPrivateProfileStringW(nullptr, nullptr, nullptr, buffer, size, file);
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) {
  std::lock_guard lock(Cache().Mutex());
  if (!section && !key) return vantrel1::IsFileName(file) ? Cache().Flush(CacheKey(file)) : Cache().FlushAll();
  if (!section || !vantrel1::IsFileName(file)) return FALSE;
  if (key && value && !vantrel1::ProfileDocument::CanStore(section, key, value)) return FALSE;
  vantrel1::KeptFile* kept = Cache().Get(CacheKey(file));
  if (!kept) return FALSE;
  bool changed = false;
  if (!key)
    changed = kept->doc.DeleteSection(section);
  else if (!value)
    changed = kept->doc.DeleteKey(section, key);
  else
    changed = kept->doc.Set(section, key, value);
  kept->dirty = kept->dirty || changed;
  return TRUE;
}
