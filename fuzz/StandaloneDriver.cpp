// Runs a fuzz target without libFuzzer: every file of a corpus folder, then a fixed
// number of deterministic mutations of those inputs (byte flips, insertions, deletions,
// splices), so that the normal and sanitizer test runs exercise each parser briefly and
// reproducibly. A crash or sanitizer report fails the test.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<Bytes> LoadCorpus(const char* dir) {
  std::vector<Bytes> corpus;
  std::error_code ec;
  if (!std::filesystem::is_directory(dir, ec)) return corpus;
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(dir, ec))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const auto& path : files) {
    std::ifstream in(path, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  return corpus;
}

Bytes Mutate(const std::vector<Bytes>& corpus, std::mt19937& rng) {
  Bytes b = corpus[rng() % corpus.size()];
  const int edits = 1 + static_cast<int>(rng() % 8);
  for (int e = 0; e < edits; ++e) {
    const std::size_t pos = b.empty() ? 0 : rng() % (b.size() + 1);
    switch (rng() % 5) {
      case 0:
        if (!b.empty()) b[pos % b.size()] ^= static_cast<std::uint8_t>(1u << (rng() % 8));
        break;
      case 1: b.insert(b.begin() + static_cast<std::ptrdiff_t>(pos), static_cast<std::uint8_t>(rng())); break;
      case 2:
        if (!b.empty()) b.erase(b.begin() + static_cast<std::ptrdiff_t>(pos % b.size()));
        break;
      case 3: {
        const Bytes& other = corpus[rng() % corpus.size()];
        if (other.empty()) break;
        const std::size_t from = rng() % other.size();
        const std::size_t len = std::min<std::size_t>(other.size() - from, 1 + rng() % 64);
        b.insert(b.begin() + static_cast<std::ptrdiff_t>(pos), other.begin() + static_cast<std::ptrdiff_t>(from),
                 other.begin() + static_cast<std::ptrdiff_t>(from + len));
        break;
      }
      default:
        if (!b.empty()) b.resize(pos % b.size());
        break;
    }
  }
  return b;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Bytes> corpus = argc > 1 ? LoadCorpus(argv[1]) : std::vector<Bytes>{};
  const long runs = argc > 2 ? std::strtol(argv[2], nullptr, 10) : 1000;
  corpus.push_back(Bytes{});
  for (const Bytes& input : corpus) LLVMFuzzerTestOneInput(input.data(), input.size());
  std::mt19937 rng(20261121u);
  for (long i = 0; i < runs; ++i) {
    const Bytes input = Mutate(corpus, rng);
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  std::printf("%zu corpus inputs and %ld mutations ran clean\n", corpus.size(), runs);
  return 0;
}
