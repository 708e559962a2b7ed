// CRC-32 throughput: the checksum operations and the byte step, each beside zlib's crc32()
// over the same bytes read the same way. All report bytes per second.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/Utf.h"
#include "util/Crc32Bulk.h"
#include "util/Crc32Static.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kFileSize = 256u << 20;
constexpr std::size_t kTextUnits = 16u << 20;
constexpr std::size_t kReadBlock = 4096;

std::vector<unsigned char> MakeBytes(std::size_t count) {
  std::vector<unsigned char> bytes(count);
  std::uint64_t state = 0x9E3779B97F4A7C15u;
  for (auto& b : bytes) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    b = static_cast<unsigned char>(state >> 24);
  }
  return bytes;
}

const std::vector<unsigned char>& Bytes() {
  static const std::vector<unsigned char> bytes = MakeBytes(kFileSize);
  return bytes;
}

// The same bytes in a file of a temporary folder, written once and read once so that the
// page cache holds it for every file benchmark; removed when the program ends.
class BenchFile {
 public:
  BenchFile() {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-crc-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    m_dir = pattern;
    m_path = m_dir / "bytes.bin";
    std::ofstream(m_path, std::ios::binary)
        .write(reinterpret_cast<const char*>(Bytes().data()), static_cast<std::streamsize>(kFileSize));
    m_wide = vantrel1::FromUtf8(m_path.string());
    DWORD crc = 0;
    CCrc32Static::FileCrc32Win32(m_wide.c_str(), crc);
  }
  ~BenchFile() { fs::remove_all(m_dir); }
  BenchFile(const BenchFile&) = delete;
  BenchFile& operator=(const BenchFile&) = delete;

  const std::string Path() const { return m_path.string(); }
  LPCWSTR Wide() const { return m_wide.c_str(); }

 private:
  fs::path m_dir;
  fs::path m_path;
  std::u16string m_wide;
};

const BenchFile& File() {
  static const BenchFile file;
  return file;
}

struct Text {
  std::u16string units;
  std::vector<unsigned char> lowBytes;
};

const Text& LongText() {
  static const Text text = [] {
    const std::u16string line = u"Put M-22, km 14+250: železnica, kanal, ograda, nasip; šđčćž ŠĐČĆŽ.\n";
    Text t;
    while (t.units.size() + line.size() <= kTextUnits) t.units += line;
    for (char16_t unit : t.units) t.lowBytes.push_back(static_cast<unsigned char>(unit));
    return t;
  }();
  return text;
}

class ByteStep : public CCrc32Static {
 public:
  static DWORD Fold(const unsigned char* p, std::size_t length) {
    DWORD reg = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < length; ++i) CalcCrc32(p[i], reg);
    return ~reg;
  }
};

void Finish(benchmark::State& state, std::size_t bytesPerIteration) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(bytesPerIteration));
}

template <DWORD (*Operation)(LPCWSTR, DWORD&)>
void BM_FileOperation(benchmark::State& state) {
  const BenchFile& file = File();
  for (auto _ : state) {
    DWORD crc = 0;
    if (Operation(file.Wide(), crc) != 0) state.SkipWithError("the checksum operation failed");
    benchmark::DoNotOptimize(crc);
  }
  Finish(state, kFileSize);
}

void BM_ZlibFileReads4096(benchmark::State& state) {
  const std::string path = File().Path();
  for (auto _ : state) {
    const int fd = ::open(path.c_str(), O_RDONLY);
    unsigned char buffer[kReadBlock];
    uLong crc = crc32(0, nullptr, 0);
    ssize_t got = 0;
    while ((got = ::read(fd, buffer, sizeof buffer)) > 0) crc = crc32(crc, buffer, static_cast<uInt>(got));
    ::close(fd);
    benchmark::DoNotOptimize(crc);
  }
  Finish(state, kFileSize);
}

void BM_ZlibFileMapped(benchmark::State& state) {
  const std::string path = File().Path();
  for (auto _ : state) {
    const int fd = ::open(path.c_str(), O_RDONLY);
    void* view = ::mmap(nullptr, kFileSize, PROT_READ, MAP_SHARED | MAP_POPULATE, fd, 0);
    const uLong crc = crc32_z(crc32(0, nullptr, 0), static_cast<const Bytef*>(view), kFileSize);
    ::munmap(view, kFileSize);
    ::close(fd);
    benchmark::DoNotOptimize(crc);
  }
  Finish(state, kFileSize);
}

void BM_ZlibFileStream(benchmark::State& state) {
  const std::string path = File().Path();
  for (auto _ : state) {
    std::ifstream stream(path, std::ios::binary);
    char buffer[kReadBlock];
    uLong crc = crc32(0, nullptr, 0);
    while (stream.read(buffer, sizeof buffer), stream.gcount() > 0)
      crc = crc32(crc, reinterpret_cast<const Bytef*>(buffer), static_cast<uInt>(stream.gcount()));
    benchmark::DoNotOptimize(crc);
  }
  Finish(state, kFileSize);
}

void BM_ZlibMemory(benchmark::State& state) {
  const auto& bytes = Bytes();
  for (auto _ : state) benchmark::DoNotOptimize(crc32_z(crc32(0, nullptr, 0), bytes.data(), bytes.size()));
  Finish(state, bytes.size());
}

void BM_BulkMemory(benchmark::State& state) {
  const auto& bytes = Bytes();
  for (auto _ : state) benchmark::DoNotOptimize(~vantrel1::Crc32Update(~0u, bytes.data(), bytes.size()));
  Finish(state, bytes.size());
}

void BM_BulkSlicedMemory(benchmark::State& state) {
  const auto& bytes = Bytes();
  for (auto _ : state)
    benchmark::DoNotOptimize(~vantrel1::Crc32UpdateSliced(~0u, bytes.data(), bytes.size()));
  Finish(state, bytes.size());
}

void BM_ByteStepMemory(benchmark::State& state) {
  const auto& bytes = Bytes();
  for (auto _ : state) benchmark::DoNotOptimize(ByteStep::Fold(bytes.data(), bytes.size()));
  Finish(state, bytes.size());
}

void BM_StringCrc32(benchmark::State& state) {
  const Text& text = LongText();
  for (auto _ : state) {
    DWORD crc = 0;
    CCrc32Static::StringCrc32(text.units.c_str(), crc);
    benchmark::DoNotOptimize(crc);
  }
  Finish(state, text.units.size());
}

void BM_ZlibStringLowBytes(benchmark::State& state) {
  const Text& text = LongText();
  for (auto _ : state)
    benchmark::DoNotOptimize(crc32_z(crc32(0, nullptr, 0), text.lowBytes.data(), text.lowBytes.size()));
  Finish(state, text.lowBytes.size());
}

constexpr double kSeconds = 0.5;

}  // namespace

BENCHMARK(BM_StringCrc32)->MinTime(kSeconds);
BENCHMARK(BM_ZlibStringLowBytes)->MinTime(kSeconds);
BENCHMARK(BM_FileOperation<CCrc32Static::FileCrc32Win32>)->Name("BM_FileCrc32Win32")->MinTime(kSeconds);
BENCHMARK(BM_ZlibFileReads4096)->MinTime(kSeconds);
BENCHMARK(BM_FileOperation<CCrc32Static::FileCrc32Filemap>)->Name("BM_FileCrc32Filemap")->MinTime(kSeconds);
BENCHMARK(BM_ZlibFileMapped)->MinTime(kSeconds);
BENCHMARK(BM_FileOperation<CCrc32Static::FileCrc32Streams>)->Name("BM_FileCrc32Streams")->MinTime(kSeconds);
BENCHMARK(BM_ZlibFileStream)->MinTime(kSeconds);
BENCHMARK(BM_FileOperation<CCrc32Static::FileCrc32Assembly>)->Name("BM_FileCrc32Assembly")->MinTime(kSeconds);
BENCHMARK(BM_BulkMemory)->MinTime(kSeconds);
BENCHMARK(BM_BulkSlicedMemory)->MinTime(kSeconds);
BENCHMARK(BM_ByteStepMemory)->MinTime(kSeconds);
BENCHMARK(BM_ZlibMemory)->MinTime(kSeconds);
