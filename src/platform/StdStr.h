#pragma once
// CStdStr: the library's string type, a std::basic_string with the MFC-style operations
// the classes use. CStdStrW holds UTF-16 code units; every text limit counts those units.
#include <string>
#include <string_view>

#include "platform/Types.h"

template <typename CT>
class CStdStr : public std::basic_string<CT> {
 public:
  using Base = std::basic_string<CT>;
  using Base::Base;
  CStdStr() = default;
  CStdStr(const Base& s) : Base(s) {}
  CStdStr(Base&& s) noexcept : Base(std::move(s)) {}
  // A null pointer is an empty string, as with MFC strings.
  CStdStr(const CT* s) : Base(s ? Base(s) : Base()) {}

  int GetLength() const { return static_cast<int>(this->size()); }
  bool IsEmpty() const { return this->empty(); }
  void Empty() { this->clear(); }
  CT GetAt(int i) const { return (*this)[static_cast<std::size_t>(i)]; }
};

using CStdStrW = CStdStr<WCHAR>;
using CStdStrA = CStdStr<char>;
