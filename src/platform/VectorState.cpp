#include "platform/VectorState.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace vantrel1 {

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
namespace {

__attribute__((target("avx"))) void ZeroUpper() { _mm256_zeroupper(); }

const bool kHasAvx = __builtin_cpu_supports("avx");

}  // namespace

void ClearUpperVectorState() {
  if (kHasAvx) ZeroUpper();
}
#else
void ClearUpperVectorState() {}
#endif

}  // namespace vantrel1
