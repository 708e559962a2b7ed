// The benchmark program's entry: runs the benchmarks as Google Benchmark's own main does,
// then prints, for each pair of this library and its peer doing the same work, the ratio
// of their CPU times (below 1: this library is faster) beside the target.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

struct Pair {
  const char* what;
  const char* ours;
  const char* peer;
  const char* target;
};

// Names without their "/min_time:..." or "/iterations:..." suffixes.
const Pair kPairs[] = {
    {"StringCrc32 vs zlib over the low bytes", "BM_StringCrc32", "BM_ZlibStringLowBytes", "-"},
    {"FileCrc32Win32 vs read() + zlib", "BM_FileCrc32Win32", "BM_ZlibFileReads4096", "<= 1.0"},
    {"FileCrc32Filemap vs mapping + zlib", "BM_FileCrc32Filemap", "BM_ZlibFileMapped", "<= 1.0"},
    {"FileCrc32Streams vs ifstream + zlib", "BM_FileCrc32Streams", "BM_ZlibFileStream", "<= 1.0"},
    {"bulk byte path vs zlib", "BM_BulkMemory", "BM_ZlibMemory", "<= 1.0"},
    {"portable slicing path vs zlib", "BM_BulkSlicedMemory", "BM_ZlibMemory", "-"},
    {"CMarkup::SetDoc vs pugixml (UTF-8)", "BM_XmlMarkupSetDoc", "BM_XmlPugiParseUtf8", "<= 1.0"},
    {"CMarkup::SetDoc vs pugixml (UTF-16)", "BM_XmlMarkupSetDoc", "BM_XmlPugiParseUtf16", "<= 1.0"},
    {"CMarkup build vs pugixml build", "BM_XmlMarkupBuild", "BM_XmlPugiBuild", "linear"},
    {"CMarkup read vs pugixml read", "BM_XmlMarkupRead", "BM_XmlPugiRead", "no rescans"},
    {"CMarkup read from the top vs pugixml", "BM_XmlMarkupReadFromTop", "BM_XmlPugiReadFromTop", "no rescans"},
    {"dashed item on an image vs Qt's dashed QPen", "BM_DrawImageDashedItem", "BM_DrawImageQtDashedPen", "<= 1.0"},
    {"its dash pieces alone vs Qt's dashed QPen", "BM_DrawImageDashPieces", "BM_DrawImageQtDashedPen", "-"},
    {".lin table of 250 vs QSettings (warm)", "BM_TableLin250Warm", "BM_TableLin250QSettingsWarm", "-"},
    {".lin table of 250 vs QSettings (cold)", "BM_TableLin250Cold", "BM_TableLin250QSettingsCold", "-"},
};

std::string BaseName(const std::string& name) {
  const std::size_t slash = name.find("/min_time:");
  const std::size_t iter = name.find("/iterations:");
  return name.substr(0, std::min(slash, iter));
}

// Keeps each benchmark's CPU time per iteration while the console shows the runs.
class CollectingReporter : public benchmark::ConsoleReporter {
 public:
  CollectingReporter() : ConsoleReporter(::isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Iteration && !run.error_occurred && run.iterations > 0)
        m_cpuTime[BaseName(run.benchmark_name())] = run.GetAdjustedCPUTime();
    ConsoleReporter::ReportRuns(runs);
  }
  const std::map<std::string, double>& CpuTimes() const { return m_cpuTime; }

 private:
  std::map<std::string, double> m_cpuTime;
};

void PrintRatios(const std::map<std::string, double>& cpu) {
  bool header = false;
  for (const Pair& p : kPairs) {
    const auto ours = cpu.find(p.ours);
    const auto peer = cpu.find(p.peer);
    if (ours == cpu.end() || peer == cpu.end() || peer->second <= 0) continue;
    if (!header) {
      std::printf("\nRatios (this library's CPU time / the peer's; below 1 is faster)\n");
      header = true;
    }
    std::printf("  %-48s %6.2f   target %s\n", p.what, ours->second / peer->second, p.target);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  CollectingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  PrintRatios(reporter.CpuTimes());
  benchmark::Shutdown();
  return 0;
}
