// Document files: UTF-8 (with or without a byte order mark) and UTF-16LE (with or without
// one), saved back in the form they were loaded in.
#include <cstdio>
#include <memory>
#include <string>

#include "markup/Markup.h"
#include "markup/MarkupText.h"
#include "platform/Utf.h"

namespace {

// A document longer than the longest the index can address is refused, not truncated.
constexpr std::size_t kMaxFileBytes = vantrel1::markup::kMaxDocLength;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

File OpenFile(const WCHAR* path, const char* mode) {
  if (!path || !*path) return File();
  const std::string name = vantrel1::ToUtf8(path);
  return File(std::fopen(name.c_str(), mode));
}

// Reads in blocks rather than trusting a size reported up front, so pipes and files that
// change while read are handled alike.
bool ReadAll(std::FILE* file, std::string& bytes) {
  char block[65536];
  for (;;) {
    const std::size_t got = std::fread(block, 1, sizeof block, file);
    if (got > kMaxFileBytes - bytes.size()) return false;
    bytes.append(block, got);
    if (got < sizeof block) return !std::ferror(file);
  }
}

bool StartsWith(const std::string& bytes, const char* prefix, std::size_t length) {
  return bytes.size() >= length && bytes.compare(0, length, prefix, length) == 0;
}

std::u16string FromUtf16Le(const std::string& bytes, std::size_t from) {
  std::u16string text;
  text.reserve((bytes.size() - from) / 2);
  for (std::size_t i = from; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    text.push_back(static_cast<char16_t>(low | (high << 8)));
  }
  return text;
}

std::string ToUtf16Le(const std::u16string& text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

CMarkup::Encoding Detect(const std::string& bytes) {
  if (StartsWith(bytes, "\xEF\xBB\xBF", 3)) return CMarkup::EncodingUtf8Bom;
  if (StartsWith(bytes, "\xFF\xFE", 2)) return CMarkup::EncodingUtf16LeBom;
  // Without a mark, UTF-16LE shows itself by an ASCII first character followed by a zero
  // byte, which well-formed UTF-8 never has.
  const bool asciiThenZero = bytes.size() >= 2 && bytes[0] != 0 &&
                             static_cast<unsigned char>(bytes[0]) < 0x80 && bytes[1] == 0;
  return asciiThenZero ? CMarkup::EncodingUtf16Le : CMarkup::EncodingUtf8;
}

std::u16string Decode(const std::string& bytes, CMarkup::Encoding encoding) {
  switch (encoding) {
    case CMarkup::EncodingUtf8Bom:
      return vantrel1::FromUtf8(std::string_view(bytes).substr(3));
    case CMarkup::EncodingUtf16LeBom:
      return FromUtf16Le(bytes, 2);
    case CMarkup::EncodingUtf16Le:
      return FromUtf16Le(bytes, 0);
    case CMarkup::EncodingUtf8:
      break;
  }
  return vantrel1::FromUtf8(bytes);
}

std::string Encode(const std::u16string& text, CMarkup::Encoding encoding) {
  switch (encoding) {
    case CMarkup::EncodingUtf8Bom:
      return "\xEF\xBB\xBF" + vantrel1::ToUtf8(text);
    case CMarkup::EncodingUtf16LeBom:
      return "\xFF\xFE" + ToUtf16Le(text);
    case CMarkup::EncodingUtf16Le:
      return ToUtf16Le(text);
    case CMarkup::EncodingUtf8:
      break;
  }
  return vantrel1::ToUtf8(text);
}

}  // namespace

bool CMarkup::Load(const WCHAR* path) {
  const File file = OpenFile(path, "rb");
  std::string bytes;
  if (!file || !ReadAll(file.get(), bytes)) return false;
  const Encoding encoding = Detect(bytes);
  std::u16string text = Decode(bytes, encoding);
  if (text.size() > vantrel1::markup::kMaxDocLength) return false;
  m_nEncoding = encoding;
  m_sDocument = std::move(text);
  return x_ParseDoc();
}

bool CMarkup::Save(const WCHAR* path) const {
  const std::string bytes = Encode(m_sDocument, m_nEncoding);
  File file = OpenFile(path, "wb");
  if (!file) return false;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  return std::fclose(file.release()) == 0 && written;
}
