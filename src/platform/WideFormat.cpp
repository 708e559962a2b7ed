#include "platform/WideFormat.h"

#include "platform/PrintfEngine.h"

namespace vantrel1 {
namespace {

// Hands out typed arguments in order and refuses one of the wrong kind.
class TypedSource final : public FormatSource {
 public:
  TypedSource(const FormatArg* args, std::size_t count) : args_(args), count_(count) {}

  bool NextInteger(IntSize, bool, std::uint64_t& bits) override {
    const FormatArg* arg = Take();
    if (arg == nullptr || !IsInteger(*arg)) return false;
    bits = arg->bits;
    return true;
  }

  bool NextFloating(bool, double& value) override {
    const FormatArg* arg = Take();
    if (arg == nullptr) return false;
    if (arg->kind == FormatArg::Kind::Floating) value = arg->number;
    else if (arg->kind == FormatArg::Kind::Signed) value = static_cast<double>(static_cast<std::int64_t>(arg->bits));
    else if (arg->kind == FormatArg::Kind::Unsigned) value = static_cast<double>(arg->bits);
    else return false;
    return true;
  }

  // The argument's own type decides whether the text is wide or narrow.
  bool NextText(bool, TextArg& text) override {
    const FormatArg* arg = Take();
    if (arg == nullptr || !IsText(*arg)) return false;
    text.data = arg->text;
    text.wide = arg->kind == FormatArg::Kind::WideText;
    text.length = arg->length;
    return true;
  }

  bool NextPointer(std::uint64_t& address) override {
    const FormatArg* arg = Take();
    if (arg == nullptr) return false;
    if (arg->kind == FormatArg::Kind::Pointer) address = arg->bits;
    else if (IsText(*arg)) address = reinterpret_cast<std::uintptr_t>(arg->text);
    else return false;
    return true;
  }

 private:
  static bool IsInteger(const FormatArg& arg) {
    return arg.kind == FormatArg::Kind::Signed || arg.kind == FormatArg::Kind::Unsigned;
  }
  static bool IsText(const FormatArg& arg) {
    return arg.kind == FormatArg::Kind::WideText || arg.kind == FormatArg::Kind::NarrowText;
  }
  const FormatArg* Take() { return next_ < count_ ? &args_[next_++] : nullptr; }

  const FormatArg* args_;
  std::size_t count_;
  std::size_t next_ = 0;
};

}  // namespace

BoundedStatus FormatBounded(char16_t* buffer, std::size_t count, std::u16string_view format,
                            const FormatArg* args, std::size_t argCount, std::size_t& length) {
  TypedSource source(args, argCount);
  BoundedSink sink(buffer, count);
  const bool valid = RunFormat(format, source, sink);
  length = sink.Length();
  if (!valid) return BoundedStatus::Invalid;
  return sink.Overflowed() ? BoundedStatus::Overflow : BoundedStatus::Fits;
}

// Measures first, then writes into a string of exactly that length.
bool FormatTo(std::u16string& out, std::u16string_view format, const FormatArg* args, std::size_t argCount) {
  out.clear();
  std::size_t length = 0;
  if (FormatBounded(nullptr, 0, format, args, argCount, length) == BoundedStatus::Invalid ||
      length > kMaxFormatLength)
    return false;
  out.resize(length);
  FormatBounded(out.data(), out.size(), format, args, argCount, length);
  return true;
}

}  // namespace vantrel1
