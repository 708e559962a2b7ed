add_library(vantrel1_warnings INTERFACE)
target_compile_options(vantrel1_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wno-missing-field-initializers
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
  $<$<CXX_COMPILER_ID:Clang>:-Wshadow-uncaptured-local>
  $<$<BOOL:${VANTREL1_WERROR}>:-Werror>)
