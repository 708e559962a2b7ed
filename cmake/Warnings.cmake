add_library(vantrel1_warnings INTERFACE)
target_compile_options(vantrel1_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow=local -Wno-missing-field-initializers
  $<$<BOOL:${VANTREL1_WERROR}>:-Werror>)
