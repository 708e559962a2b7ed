#pragma once
// CStdStr: the library's string type, a std::basic_string with the MFC-style operations
// the classes use. CStdStrW holds UTF-16 code units; every text limit and every index
// counts those units.
//
// As with MFC strings, positions and counts out of range are clamped and never throw:
// Mid(-2, 3) is Left(3), Left(99) is the whole string, Find from beyond the end is -1.
// Case mapping (MakeLower, MakeUpper, CompareNoCase) and white space (Trim) are those of
// the classic locale, unit by unit: only 'A'..'Z' and 'a'..'z' fold, so "Železnica" and
// "železnica" differ while "ŽELEZNICA" and "Železnica" are equal (platform/CharClass.h).
// There is deliberately no conversion to const CT*: it would make s[i] ambiguous; use
// c_str().
#include <algorithm>
#include <climits>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/CharClass.h"
#include "platform/Types.h"
#include "platform/Utf.h"
#include "platform/WideFormat.h"

// Text argument of the string operations: a pointer (null reads as empty), a string or a
// view.
template <typename CT>
class CStdStrArg {
 public:
  CStdStrArg(const CT* text) : view_(text ? std::basic_string_view<CT>(text) : std::basic_string_view<CT>()) {}
  CStdStrArg(const std::basic_string<CT>& text) : view_(text) {}
  CStdStrArg(std::basic_string_view<CT> text) : view_(text) {}
  std::basic_string_view<CT> View() const { return view_; }

 private:
  std::basic_string_view<CT> view_;
};

template <typename CT>
class CStdStr : public std::basic_string<CT> {
 public:
  using Base = std::basic_string<CT>;
  using View = std::basic_string_view<CT>;
  using Arg = CStdStrArg<CT>;
  using Base::Base;
  CStdStr() = default;
  CStdStr(const Base& s) : Base(s) {}
  CStdStr(Base&& s) noexcept : Base(std::move(s)) {}
  // A null pointer is an empty string, as with MFC strings.
  CStdStr(const CT* s) : Base(s ? Base(s) : Base()) {}

  int GetLength() const { return static_cast<int>(std::min<std::size_t>(this->size(), INT_MAX)); }
  bool IsEmpty() const { return this->empty(); }
  void Empty() { this->clear(); }
  // Out of range reads 0 and writes nothing.
  CT GetAt(int i) const { return InRange(i) ? (*this)[static_cast<std::size_t>(i)] : CT(0); }
  void SetAt(int i, CT c) {
    if (InRange(i)) (*this)[static_cast<std::size_t>(i)] = c;
  }

  // Negative, zero or positive: the difference of the first differing units, a string's
  // end counting as the unit 0 (so "ab" < "abc").
  int Compare(Arg other) const { return CompareUnits(*this, other.View(), false); }
  int CompareNoCase(Arg other) const { return CompareUnits(*this, other.View(), true); }
  bool EqualsNoCase(Arg other) const { return CompareNoCase(other) == 0; }

  // Index of the first occurrence at or after `start`, or -1 (also for a negative start).
  int Find(CT ch, int start = 0) const { return FindFrom(start, [&](std::size_t s) { return View(*this).find(ch, s); }); }
  int Find(Arg sub, int start = 0) const {
    return FindFrom(start, [&](std::size_t s) { return View(*this).find(sub.View(), s); });
  }
  int FindOneOf(Arg set) const { return ToIndex(View(*this).find_first_of(set.View())); }
  int ReverseFind(CT ch) const { return ToIndex(View(*this).rfind(ch)); }

  CStdStr Mid(int first) const { return Mid(first, INT_MAX); }
  CStdStr Mid(int first, int count) const {
    const std::size_t from = Clamp(first, this->size());
    return CStdStr(Base(*this, from, Clamp(count, this->size() - from)));
  }
  CStdStr Left(int count) const { return Mid(0, count); }
  CStdStr Right(int count) const {
    const std::size_t n = Clamp(count, this->size());
    return CStdStr(Base(*this, this->size() - n, n));
  }

  // Each returns the number of replacements or removals. Occurrences are found left to
  // right without overlapping; an empty `from` replaces nothing.
  int Replace(CT from, CT to) {
    if (from == to) return 0;
    int count = 0;
    for (CT& c : *this) {
      if (c != from) continue;
      c = to;
      ++count;
    }
    return count;
  }
  int Replace(Arg from, Arg to) {
    const View old = from.View();
    if (old.empty()) return 0;
    Base result;
    int count = 0;
    std::size_t pos = 0;
    for (std::size_t hit; (hit = View(*this).find(old, pos)) != View::npos; pos = hit + old.size(), ++count)
      result.append(*this, pos, hit - pos).append(to.View());
    if (count == 0) return 0;
    result.append(*this, pos);
    Base::operator=(std::move(result));
    return count;
  }
  int Remove(CT ch) {
    const auto end = std::remove(this->begin(), this->end(), ch);
    const auto count = static_cast<int>(this->end() - end);
    this->erase(end, this->end());
    return count;
  }

  // Each returns the new length; the index is clamped into the string.
  int Insert(int index, CT ch) {
    this->insert(Clamp(index, this->size()), 1, ch);
    return GetLength();
  }
  int Insert(int index, Arg text) {
    const Base copy(text.View());  // the text may be part of this string
    this->insert(Clamp(index, this->size()), copy);
    return GetLength();
  }
  int Delete(int index, int count = 1) {
    if (index < 0) index = 0;
    if (static_cast<std::size_t>(index) < this->size()) this->erase(static_cast<std::size_t>(index), Clamp(count, this->size()));
    return GetLength();
  }

  CStdStr& MakeLower() {
    std::transform(this->begin(), this->end(), this->begin(), vantrel1::ClassicToLower<CT>);
    return *this;
  }
  CStdStr& MakeUpper() {
    std::transform(this->begin(), this->end(), this->begin(), vantrel1::ClassicToUpper<CT>);
    return *this;
  }
  CStdStr& MakeReverse() {
    std::reverse(this->begin(), this->end());
    return *this;
  }

  // White space, one unit, or any unit of a set.
  CStdStr& TrimLeft() { return TrimLeftIf(vantrel1::IsClassicSpace<CT>); }
  CStdStr& TrimLeft(CT ch) { return TrimLeftIf([ch](CT c) { return c == ch; }); }
  CStdStr& TrimLeft(Arg set) { return TrimLeftIf(InSet(set)); }
  CStdStr& TrimRight() { return TrimRightIf(vantrel1::IsClassicSpace<CT>); }
  CStdStr& TrimRight(CT ch) { return TrimRightIf([ch](CT c) { return c == ch; }); }
  CStdStr& TrimRight(Arg set) { return TrimRightIf(InSet(set)); }
  CStdStr& Trim() { return TrimRight().TrimLeft(); }
  CStdStr& Trim(CT ch) { return TrimRight(ch).TrimLeft(ch); }
  CStdStr& Trim(Arg set) { return TrimRight(set).TrimLeft(set); }

  // Room for at least `minLength` units (and the terminator after them) for a C-style
  // writer; ReleaseBuffer then sets the length, by default up to the first 0 unit.
  CT* GetBuffer(int minLength = 0) {
    if (minLength > GetLength()) this->resize(static_cast<std::size_t>(minLength));
    return this->data();
  }
  void ReleaseBuffer(int newLength = -1) {
    const auto terminator = std::find(this->begin(), this->end(), CT(0));
    this->resize(newLength < 0 ? static_cast<std::size_t>(terminator - this->begin())
                               : std::min(static_cast<std::size_t>(newLength), this->size()));
  }

  // printf-style formatting with the conversions of platform/WideFormat.h; the result has
  // no length limit short of kMaxFormatLength. False, with the string emptied (Format) or
  // unchanged (AppendFormat), when the format is invalid or an argument does not suit it.
  template <typename... Args>
  bool Format(Arg format, const Args&... args)
    requires std::is_same_v<CT, char16_t>
  {
    std::u16string out;
    const bool ok = FormatInto(out, format, args...);
    Base::operator=(std::move(out));
    return ok;
  }
  template <typename... Args>
  bool AppendFormat(Arg format, const Args&... args)
    requires std::is_same_v<CT, char16_t>
  {
    std::u16string out;
    if (!FormatInto(out, format, args...)) return false;
    this->append(out);
    return true;
  }

  static CStdStr FromUtf8(std::string_view text)
    requires std::is_same_v<CT, char16_t>
  {
    return CStdStr(vantrel1::FromUtf8(text));
  }
  std::string ToUtf8() const
    requires std::is_same_v<CT, char16_t>
  {
    return vantrel1::ToUtf8(*this);
  }

 private:
  bool InRange(int i) const { return i >= 0 && static_cast<std::size_t>(i) < this->size(); }

  // A count or position clamped into 0..limit.
  static std::size_t Clamp(int value, std::size_t limit) {
    return value < 0 ? 0 : std::min(static_cast<std::size_t>(value), limit);
  }
  static int ToIndex(std::size_t pos) { return pos == View::npos ? -1 : static_cast<int>(pos); }

  template <typename Search>
  int FindFrom(int start, Search search) const {
    if (start < 0 || static_cast<std::size_t>(start) > this->size()) return -1;
    return ToIndex(search(static_cast<std::size_t>(start)));
  }

  static int CompareUnits(View a, View b, bool fold) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
      const int d = fold ? vantrel1::ClassicFoldedDifference(a[i], b[i]) : Difference(a[i], b[i]);
      if (d != 0) return d;
    }
    // Past the shorter string its terminator meets the longer one's next unit, folded as
    // _wcsicmp folds it, so that both give the same difference.
    const CT restA = a.size() > n ? a[n] : CT(0);
    const CT restB = b.size() > n ? b[n] : CT(0);
    return fold ? vantrel1::ClassicFoldedDifference(restA, restB) : Difference(restA, restB);
  }
  static int Difference(CT a, CT b) {
    using Unit = std::make_unsigned_t<CT>;
    return static_cast<int>(static_cast<Unit>(a)) - static_cast<int>(static_cast<Unit>(b));
  }

  static auto InSet(Arg set) {
    return [view = set.View()](CT c) { return view.find(c) != View::npos; };
  }
  template <typename Pred>
  CStdStr& TrimLeftIf(Pred pred) {
    this->erase(this->begin(), std::find_if_not(this->begin(), this->end(), pred));
    return *this;
  }
  template <typename Pred>
  CStdStr& TrimRightIf(Pred pred) {
    this->erase(std::find_if_not(this->rbegin(), this->rend(), pred).base(), this->end());
    return *this;
  }

  template <typename... Args>
  static bool FormatInto(std::u16string& out, Arg format, const Args&... args) {
    return vantrel1::WithFormatArgs(
        [&](const vantrel1::FormatArg* list, std::size_t n) { return vantrel1::FormatTo(out, format.View(), list, n); },
        args...);
  }
};

using CStdStrW = CStdStr<WCHAR>;
using CStdStrA = CStdStr<char>;

namespace std {
template <typename CT>
struct hash<CStdStr<CT>> : hash<basic_string<CT>> {};
}  // namespace std
