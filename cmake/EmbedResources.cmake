# Turns the string-table sources into one C++ file holding their bytes, so that the
# library's own module is parsed by the same reader as a module loaded at run time.
# Called in script mode: -DOUT=<file.cpp> -DSOURCES=<a;b;...>
set(bytes "")
foreach(src IN LISTS SOURCES)
  file(READ "${src}" hex HEX)
  string(APPEND bytes "${hex}0a")
endforeach()
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," body "${bytes}")
string(REGEX REPLACE "((0x..,){32})" "\\1\n" body "${body}")
file(WRITE "${OUT}.tmp"
"// Generated from resources/strings/*.str; do not edit.\n#include <cstddef>\nnamespace vantrel1::detail {\nextern const unsigned char kBuiltinStrings[] = {\n${body}0x00};\nextern const std::size_t kBuiltinStringsSize = sizeof(kBuiltinStrings) - 1;\n}\n")
file(COPY_FILE "${OUT}.tmp" "${OUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUT}.tmp")
