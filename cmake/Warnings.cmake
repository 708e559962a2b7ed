add_library(vantrel1_warnings INTERFACE)
# GCC 12 at -O3 reports overlaps in ordinary std::string concatenation (-Wrestrict false
# positives inside libstdc++), so that one warning stays off for GCC.
target_compile_options(vantrel1_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wno-missing-field-initializers
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local -Wno-restrict>
  $<$<CXX_COMPILER_ID:Clang>:-Wshadow-uncaptured-local>
  $<$<BOOL:${VANTREL1_WERROR}>:-Werror>)
