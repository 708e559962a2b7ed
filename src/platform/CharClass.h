#pragma once
// Character classification of the classic ("C") locale, applied to single code units.
// In that locale only the 26 ASCII letters have a case: 'A'..'Z' and 'a'..'z' fold into
// each other and every other unit, 'Ž' (U+017D) and 'ž' (U+017E) included, maps to
// itself. White space is the six ASCII blanks (space, \t, \n, \v, \f, \r) and digits are
// '0'..'9'. Names, keys and record fields therefore compare and parse the same way
// whatever locale the process runs in.
#include <type_traits>

namespace vantrel1 {

template <typename CT>
constexpr CT ClassicToLower(CT c) {
  return (c >= CT('A') && c <= CT('Z')) ? static_cast<CT>(c - CT('A') + CT('a')) : c;
}

template <typename CT>
constexpr CT ClassicToUpper(CT c) {
  return (c >= CT('a') && c <= CT('z')) ? static_cast<CT>(c - CT('a') + CT('A')) : c;
}

template <typename CT>
constexpr bool IsClassicSpace(CT c) {
  return c == CT(' ') || (c >= CT('\t') && c <= CT('\r'));
}

template <typename CT>
constexpr bool IsClassicDigit(CT c) {
  return c >= CT('0') && c <= CT('9');
}

// Difference of two units after folding, as the case-insensitive comparisons report it.
template <typename CT>
constexpr int ClassicFoldedDifference(CT a, CT b) {
  using Unit = std::make_unsigned_t<CT>;  // bytes above 0x7F sort after ASCII, as units do
  return static_cast<int>(static_cast<Unit>(ClassicToLower(a))) -
         static_cast<int>(static_cast<Unit>(ClassicToLower(b)));
}

}  // namespace vantrel1
