#pragma once
// One profile (INI) file in memory, edited in place so that writing it back keeps what
// its author wrote: comments, blank lines, the order of lines, the spelling of names,
// the text encoding and the line ends. Lines that were not edited are written back byte
// for byte, even when they are not valid UTF-8.
//
// Names of sections and keys are matched without regard to case (the classic locale's
// lower-case mapping, code unit by code unit, as every name comparison of the library);
// the first of several equal sections or keys is the one found, as on Windows.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Export.h"

namespace vantrel1 {

enum class ProfileEncoding { Utf8, Utf8Bom, Utf16Le };

class VANTREL1_EXPORT ProfileDocument {
 public:
  // An empty file as this library creates one: UTF-8 without BOM, CR LF line ends.
  ProfileDocument();

  // Accepts any bytes: UTF-16LE when they start with its BOM, UTF-8 otherwise (with or
  // without BOM; ill-formed sequences read as U+FFFD but are kept for writing back).
  static ProfileDocument Parse(std::string_view bytes);
  std::string Serialize() const;

  ProfileEncoding Encoding() const { return m_encoding; }

  // The value after '=' with the blanks around it removed and one pair of enclosing
  // quotes (" or ') stripped; nothing when the section or the key is absent.
  std::optional<std::u16string> Find(std::u16string_view section, std::u16string_view key) const;
  // Names as they are spelt in the file, in file order.
  std::vector<std::u16string> SectionNames() const;
  std::vector<std::u16string> KeyNames(std::u16string_view section) const;

  // Whether Set can store these so that they read back as written: not with an empty key,
  // a line break anywhere, '=' in a key, ']' in a section name, or a key starting with
  // '[' or ';'. Names are taken without their edge blanks, as they are read.
  static bool CanStore(std::u16string_view section, std::u16string_view key, std::u16string_view value);

  // Each returns whether the document changed (Set does nothing when !CanStore).
  bool Set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  bool DeleteKey(std::u16string_view section, std::u16string_view key);
  bool DeleteSection(std::u16string_view section);

 private:
  enum class LineKind { Blank, Comment, Header, Key, Other };
  enum class LineEnd { None, Lf, CrLf };

  struct Line {
    std::u16string text;  // without the line end
    std::string raw;      // the original bytes of a UTF-8 line while it is unedited
    bool keepRaw = false;
    LineEnd end = LineEnd::None;
    LineKind kind = LineKind::Blank;
    std::size_t nameBegin = 0, nameEnd = 0;    // section or key name
    std::size_t valueBegin = 0, valueEnd = 0;  // key value, blanks excluded
  };

  struct Section {
    std::optional<Line> header;  // absent for the lines before the first section
    std::vector<Line> body;
    std::unordered_map<std::u16string, std::size_t> keys;  // folded key -> first body line
  };

  static void Classify(Line& line);
  static std::u16string_view NameOf(const Line& line);
  void AddLine(Line line);
  void ReindexSections();
  static void ReindexKeys(Section& section);
  const Section* FindSection(std::u16string_view name) const;
  Section* FindSection(std::u16string_view name);
  Section& AppendSection(std::u16string_view name);
  Line NewLine(std::u16string text) const;
  void EncodeLine(std::string& out, const Line& line, bool last) const;

  ProfileEncoding m_encoding = ProfileEncoding::Utf8;
  LineEnd m_newLineEnd = LineEnd::CrLf;
  std::vector<Section> m_sections;                          // [0]: before the first header
  std::unordered_map<std::u16string, std::size_t> m_index;  // folded name -> first section
};

// Folds a section or key name for comparison (ASCII letters to lower case).
VANTREL1_EXPORT std::u16string FoldName(std::u16string_view name);

}  // namespace vantrel1
