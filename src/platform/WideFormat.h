#pragma once
// printf-style formatting of UTF-16 text with typed arguments. The calls that look like
// C's variadic printf (_snwprintf, CStdStrW::Format) capture each argument with its type,
// so that a string object can stand where %s expects text (as MFC strings may) and a
// format that asks for an argument of another kind, or for one more argument than was
// given, is refused instead of reading garbage. A format can therefore come from a
// resource or a translation without putting the process at risk.
//
// Conversions: %d %i %u %o %x %X (length modifiers hh h l ll j z t I I32 I64 only change
// the width the value is cut to, as printf converts it), %c (a UTF-16 unit; %hc and %C a
// byte), %s (wide text; %hs and %S narrow text read as UTF-8; a null pointer prints
// "(null)"), %f %F %e %E %g %G (classic locale: '.' always, exponent of at least two
// digits, "inf" and "nan"), %p (address as 16 upper-case hex digits), %%, with the flags
// - + space # 0, a width and a precision (either may be *). The 0 flag pads numbers only,
// never text, infinity or nan. %n and anything else is an invalid format.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/Export.h"

namespace vantrel1 {

struct FormatArg {
  enum class Kind : unsigned char { Signed, Unsigned, Floating, WideText, NarrowText, Pointer };
  static constexpr std::size_t kUpToTerminator = static_cast<std::size_t>(-1);

  Kind kind = Kind::Signed;
  std::uint64_t bits = 0;  // Signed (two's complement), Unsigned, Pointer
  double number = 0.0;     // Floating
  const void* text = nullptr;                // WideText, NarrowText; null prints "(null)"
  std::size_t length = kUpToTerminator;      // units of `text`, when known
};

template <typename>
inline constexpr bool kUnformattable = false;

// Length of a character array's text: up to its terminator, never beyond the array.
template <typename E, std::size_t N>
constexpr std::size_t ArrayTextLength(const E (&text)[N]) {
  std::size_t n = 0;
  while (n < N && text[n] != E(0)) ++n;
  return n;
}

template <typename T>
FormatArg MakeFormatArg(const T& value) {
  using U = std::remove_cv_t<T>;
  FormatArg arg;
  if constexpr (std::is_array_v<U>) {
    using E = std::remove_cv_t<std::remove_extent_t<U>>;
    static_assert(std::is_same_v<E, char16_t> || std::is_same_v<E, char>,
                  "only arrays of char16_t or char can be formatted as text");
    arg.kind = std::is_same_v<E, char16_t> ? FormatArg::Kind::WideText : FormatArg::Kind::NarrowText;
    arg.text = value;
    arg.length = ArrayTextLength(value);
  } else if constexpr (std::is_enum_v<U>) {
    return MakeFormatArg(static_cast<std::underlying_type_t<U>>(value));
  } else if constexpr (std::is_integral_v<U>) {
    arg.kind = std::is_signed_v<U> ? FormatArg::Kind::Signed : FormatArg::Kind::Unsigned;
    arg.bits = static_cast<std::uint64_t>(value);
  } else if constexpr (std::is_floating_point_v<U>) {
    arg.kind = FormatArg::Kind::Floating;
    arg.number = static_cast<double>(value);
  } else if constexpr (std::is_null_pointer_v<U>) {
    arg.kind = FormatArg::Kind::WideText;
  } else if constexpr (std::is_pointer_v<U>) {
    using P = std::remove_cv_t<std::remove_pointer_t<U>>;
    if constexpr (std::is_same_v<P, char16_t>) {
      arg.kind = FormatArg::Kind::WideText;
      arg.text = value;
    } else if constexpr (std::is_same_v<P, char>) {
      arg.kind = FormatArg::Kind::NarrowText;
      arg.text = value;
    } else {
      arg.kind = FormatArg::Kind::Pointer;
      arg.bits = reinterpret_cast<std::uintptr_t>(value);
    }
  } else if constexpr (std::is_convertible_v<const U&, std::u16string_view>) {
    const std::u16string_view view = value;
    arg.kind = FormatArg::Kind::WideText;
    arg.text = view.data();
    arg.length = view.size();
  } else if constexpr (std::is_convertible_v<const U&, std::string_view>) {
    const std::string_view view = value;
    arg.kind = FormatArg::Kind::NarrowText;
    arg.text = view.data();
    arg.length = view.size();
  } else {
    static_assert(kUnformattable<T>, "this argument type cannot be formatted");
  }
  return arg;
}

// Longest text Format produces; a longer result is refused rather than allocated, so a
// stray width such as %999999999d cannot exhaust memory.
inline constexpr std::size_t kMaxFormatLength = std::size_t{1} << 24;

// Replaces `out` with the formatted text. False, with `out` emptied, when the format is
// invalid, an argument is missing or of an unsuitable kind, or the result would be longer
// than kMaxFormatLength. Integers may stand for floating conversions; text and pointers
// may not stand for numbers.
VANTREL1_EXPORT bool FormatTo(std::u16string& out, std::u16string_view format,
                              const FormatArg* args, std::size_t argCount);

enum class BoundedStatus { Fits, Overflow, Invalid };

// Writes at most `count` units of the formatted text into `buffer` (nothing when
// `buffer` is null, which only measures) and stores its full length in `length`. No
// terminator is written.
VANTREL1_EXPORT BoundedStatus FormatBounded(char16_t* buffer, std::size_t count, std::u16string_view format,
                                            const FormatArg* args, std::size_t argCount, std::size_t& length);

// Builds the argument array of a typed call; a trailing empty entry keeps it non-empty.
template <typename F, typename... Args>
decltype(auto) WithFormatArgs(F&& use, const Args&... args) {
  const FormatArg list[] = {MakeFormatArg(args)..., FormatArg{}};
  return use(static_cast<const FormatArg*>(list), sizeof...(Args));
}

}  // namespace vantrel1
