#pragma once
// The one printf interpreter behind every formatting call of the library. It reads
// arguments from a source (typed arguments or a C va_list) and writes UTF-16 units to a
// sink (a bounded buffer, a measuring counter or a string); neither knows about the other.
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrel1 {

// The width an integer argument is read at and cut to.
enum class IntSize { Char, Short, Int, Long, LongLong, Size, IntMax, PtrDiff, Int32, Int64 };

struct TextArg {
  const void* data = nullptr;  // null prints "(null)"
  bool wide = true;
  std::size_t length = static_cast<std::size_t>(-1);  // -1: up to the terminator
};

class FormatSource {
 public:
  virtual ~FormatSource() = default;
  // Each returns false when the next argument is missing or of an unsuitable kind.
  // Integers come back as the bits of the value read, sign-extended when signed.
  virtual bool NextInteger(IntSize size, bool isSigned, std::uint64_t& bits) = 0;
  virtual bool NextFloating(bool longDouble, double& value) = 0;
  virtual bool NextText(bool wide, TextArg& text) = 0;
  virtual bool NextPointer(std::uint64_t& address) = 0;
};

class FormatSink {
 public:
  virtual ~FormatSink() = default;
  virtual void Put(const char16_t* units, std::size_t count) = 0;
  virtual void Fill(char16_t unit, std::size_t count) = 0;
};

// False when the format is invalid (unknown conversion, %n, a lone % at the end) or the
// source refuses an argument; the sink then holds an unspecified prefix.
bool RunFormat(std::u16string_view format, FormatSource& source, FormatSink& sink);

// A sink that keeps the first `capacity` units in `buffer` (none when it is null) and
// counts them all.
class BoundedSink final : public FormatSink {
 public:
  BoundedSink(char16_t* buffer, std::size_t capacity) : buffer_(buffer), capacity_(capacity) {}
  void Put(const char16_t* units, std::size_t count) override;
  void Fill(char16_t unit, std::size_t count) override;
  std::size_t Length() const { return length_; }
  bool Overflowed() const { return length_ > capacity_; }

 private:
  std::size_t Room(std::size_t count) const;
  void Advance(std::size_t count);  // the count saturates; it never wraps

  char16_t* buffer_;
  std::size_t capacity_;
  std::size_t length_ = 0;
};

}  // namespace vantrel1
