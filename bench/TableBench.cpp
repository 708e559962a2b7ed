// Line type tables and the drawing cache: loading the built-in table and a table file of
// 250 line types, beside Qt's INI reader reading the same keys of that file, and a cache
// hit on a full cache.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "AllocationCounter.h"
#include "linestyle/LineType.h"
#include "linetable/LineTypeTable.h"
#include "platform/Profile.h"
#include "platform/Utf.h"

#ifdef VANTREL1_BENCH_QT
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>
#endif

namespace fs = std::filesystem;

namespace {

constexpr int kFileLineTypes = CLineTypeTable::kMaxUserLines;

// A table file of 250 line types in a temporary folder: the built-in user line types
// written one after another, round again until every section is filled. Removed when the
// program ends.
class TableFile {
 public:
  TableFile() {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-table-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    m_dir = pattern;
    m_path = m_dir / "tabela.lin";
    m_wide = vantrel1::FromUtf8(m_path.string());
    CLineTypeTable builtIn;
    builtIn.FromFile(nullptr, nullptr, nullptr);
    if (builtIn.m_nUserLines < 1) std::abort();
    for (int i = 0; i < kFileLineTypes; ++i) {
      const std::u16string section = u"LineType" + vantrel1::FromUtf8(std::to_string(i));
      if (builtIn.m_pUserLines[i % builtIn.m_nUserLines].ToFile(nullptr, m_wide.c_str(), section.c_str()) != 1)
        std::abort();
    }
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, m_wide.c_str());
  }
  ~TableFile() { fs::remove_all(m_dir); }
  TableFile(const TableFile&) = delete;
  TableFile& operator=(const TableFile&) = delete;

  std::string Path() const { return m_path.string(); }
  const WCHAR* Wide() const { return m_wide.c_str(); }

  // Gives the file a new modification time, so that both readers parse it again.
  void Touch() const {
    ++m_stamp;
    const struct timespec times[2] = {{m_stamp, 0}, {m_stamp, 0}};
    if (::utimensat(AT_FDCWD, m_path.c_str(), times, 0) != 0) std::abort();
  }

 private:
  fs::path m_dir;
  fs::path m_path;
  std::u16string m_wide;
  mutable time_t m_stamp = 1000000000;
};

const TableFile& File() {
  static const TableFile file;
  return file;
}

void BM_TableBuiltIn(benchmark::State& state) {
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) {
    CLineTypeTable table;
    benchmark::DoNotOptimize(table.FromFile(nullptr, nullptr, nullptr));
  }
  state.counters["allocs/load"] = static_cast<double>(vantrel1::bench::AllocationCount() - before) /
                                  static_cast<double>(state.iterations());
}
BENCHMARK(BM_TableBuiltIn)->Unit(benchmark::kMicrosecond)->MinTime(0.3);

// Warm: the settings file reader keeps a parsed file until it changes on disk. Cold: the
// file is touched before each load and parsed again.
void TableFromLin(benchmark::State& state, bool cold) {
  const TableFile& file = File();
  {
    CLineTypeTable table;
    if (table.FromFile(nullptr, file.Wide(), nullptr) != 1 || table.m_nUserLines != kFileLineTypes) {
      state.SkipWithError("the table file did not load");
      return;
    }
  }
  for (auto _ : state) {
    if (cold) {
      state.PauseTiming();
      file.Touch();
      state.ResumeTiming();
    }
    CLineTypeTable table;
    benchmark::DoNotOptimize(table.FromFile(nullptr, file.Wide(), nullptr));
  }
  state.SetItemsProcessed(state.iterations() * kFileLineTypes);
}

void BM_TableLin250Warm(benchmark::State& state) { TableFromLin(state, false); }
void BM_TableLin250Cold(benchmark::State& state) { TableFromLin(state, true); }
BENCHMARK(BM_TableLin250Warm)->Unit(benchmark::kMicrosecond)->MinTime(0.3);
BENCHMARK(BM_TableLin250Cold)->Unit(benchmark::kMicrosecond)->MinTime(0.3);

#ifdef VANTREL1_BENCH_QT

// The peer: QSettings reading every key of every LineType section of the same file as
// strings. Its INI reader also keeps a parsed file until the file changes.
void QtSettingsRead(benchmark::State& state, bool cold) {
  const TableFile& file = File();
  const QString path = QString::fromStdString(file.Path());
  for (auto _ : state) {
    if (cold) {
      state.PauseTiming();
      file.Touch();
      state.ResumeTiming();
    }
    QSettings settings(path, QSettings::IniFormat);
    std::size_t units = 0;
    for (int i = 0; i < kFileLineTypes; ++i) {
      settings.beginGroup(QStringLiteral("LineType%1").arg(i));
      for (const QString& key : settings.childKeys()) {
        // Records hold commas, which the INI format reads as a list.
        const QVariant value = settings.value(key);
        units += value.typeId() == QMetaType::QStringList ? value.toStringList().join(u',').size()
                                                          : value.toString().size();
      }
      settings.endGroup();
    }
    benchmark::DoNotOptimize(units);
  }
  state.SetItemsProcessed(state.iterations() * kFileLineTypes);
}

void BM_TableLin250QSettingsWarm(benchmark::State& state) { QtSettingsRead(state, false); }
void BM_TableLin250QSettingsCold(benchmark::State& state) { QtSettingsRead(state, true); }
BENCHMARK(BM_TableLin250QSettingsWarm)->Unit(benchmark::kMicrosecond)->MinTime(0.3);
BENCHMARK(BM_TableLin250QSettingsCold)->Unit(benchmark::kMicrosecond)->MinTime(0.3);

#endif  // VANTREL1_BENCH_QT

// A full cache: 100 lines of one line type in 100 colours, all given back, so that every
// slot holds an unreferenced line. The measured pair asks for the line inserted first,
// which sits in the last slot, and gives it back.
void BM_CacheHitLastSlot(benchmark::State& state) {
  CLineTypeTable table;
  table.FromFile(nullptr, nullptr, nullptr);
  constexpr int kNumber = 1037;
  for (int i = 0; i < CLineTypeTable::kCacheSize; ++i) {
    COLORREF colour = RGB(i, 0, 0);
    table.DeleteLine(table.CreateLine(kNumber, &colour, 0, 1, 0), 1);
  }
  COLORREF first = RGB(0, 0, 0);
  if (table.m_nCacheCount != CLineTypeTable::kCacheSize ||
      table.m_pCacheLine[CLineTypeTable::kCacheSize - 1] == nullptr ||
      table.m_crCacheColor[CLineTypeTable::kCacheSize - 1] != first) {
    state.SkipWithError("the cache is not as expected");
    return;
  }
  const CLineType* cached = table.m_pCacheLine[CLineTypeTable::kCacheSize - 1];
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) {
    CLineType* line = table.CreateLine(kNumber, &first, 0, 1, 0);
    benchmark::DoNotOptimize(line);
    table.DeleteLine(line, 1);
  }
  if (table.m_pCacheLine[CLineTypeTable::kCacheSize - 1] != cached)
    state.SkipWithError("the pair missed the cache");
  state.counters["allocs/pair"] = static_cast<double>(vantrel1::bench::AllocationCount() - before) /
                                  static_cast<double>(state.iterations());
}
BENCHMARK(BM_CacheHitLastSlot)->Unit(benchmark::kNanosecond)->MinTime(0.3);

}  // namespace
