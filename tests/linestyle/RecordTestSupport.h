#pragma once
// Shared pieces of the item and line type record tests: an item's text record, archive
// bytes written by hand, and the failure an archive load ends with.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/Archive.h"
#include "platform/Types.h"

namespace vantrel1::test {

// The item's text record written into a buffer of `size` units, "<null>" when refused.
template <class Item>
std::u16string Record(Item& item, std::size_t size = 512) {
  std::vector<WCHAR> buffer(size, u'#');
  const WCHAR* result = item.ToAscii(buffer.data(), size);
  return result == nullptr ? u"<null>" : std::u16string(result);
}

// 32-bit values as an archive stores them, least significant byte first.
inline std::vector<BYTE> Le32(std::initializer_list<std::int32_t> values) {
  std::vector<BYTE> bytes;
  for (const std::int32_t value : values)
    for (int shift = 0; shift < 32; shift += 8)
      bytes.push_back(static_cast<BYTE>(static_cast<std::uint32_t>(value) >> shift));
  return bytes;
}

// The cause of the archive exception that loading `bytes` into `object` throws, or
// CArchiveException::none.
template <class Object>
int LoadFailure(const std::vector<BYTE>& bytes, Object& object) {
  CArchive in(bytes);
  try {
    object.Serialize(in);
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
  return CArchiveException::none;
}

}  // namespace vantrel1::test
