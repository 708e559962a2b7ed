#include "platform/ProfileDocument.h"

#include <algorithm>

#include "platform/Utf.h"

namespace vantrel1 {
namespace {

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\r' || c == u'\v' || c == u'\f';
}

std::u16string_view Trim(std::u16string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

bool HasLineBreak(std::u16string_view s) {
  return s.find_first_of(u"\r\n") != std::u16string_view::npos;
}

// One pair of matching quotes around a value is not part of it, as Windows reads them.
std::u16string_view StripQuotes(std::u16string_view v) {
  if (v.size() >= 2 && (v.front() == u'"' || v.front() == u'\'') && v.back() == v.front())
    return v.substr(1, v.size() - 2);
  return v;
}

void AppendUtf16Le(std::string& out, std::u16string_view text) {
  for (const char16_t u : text) {
    out += static_cast<char>(u & 0xFF);
    out += static_cast<char>(u >> 8);
  }
}

}  // namespace

bool ProfileDocument::CanStore(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  section = Trim(section);
  key = Trim(key);
  if (key.empty() || HasLineBreak(section) || HasLineBreak(key) || HasLineBreak(value)) return false;
  if (section.find(u']') != std::u16string_view::npos) return false;
  return key.find(u'=') == std::u16string_view::npos && key.front() != u'[' && key.front() != u';';
}

std::u16string FoldName(std::u16string_view name) {
  std::u16string folded(name);
  for (char16_t& c : folded)
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  return folded;
}

ProfileDocument::ProfileDocument() : m_sections(1) {}

void ProfileDocument::Classify(Line& line) {
  const std::u16string_view t = line.text;
  line.nameBegin = line.nameEnd = line.valueBegin = line.valueEnd = 0;
  std::size_t i = 0;
  while (i < t.size() && IsBlank(t[i])) ++i;
  if (i == t.size()) { line.kind = LineKind::Blank; return; }
  if (t[i] == u';') { line.kind = LineKind::Comment; return; }
  if (t[i] == u'[') {
    // An unclosed "[name" is still a header: Windows reads it so.
    const std::size_t close = std::min(t.find(u']', i + 1), t.size());
    const std::u16string_view name = Trim(t.substr(i + 1, close - i - 1));
    line.nameBegin = static_cast<std::size_t>(name.data() - t.data());
    line.nameEnd = line.nameBegin + name.size();
    line.kind = LineKind::Header;
    return;
  }
  const std::size_t eq = t.find(u'=', i);
  const std::u16string_view name = eq == std::u16string_view::npos ? std::u16string_view() : Trim(t.substr(i, eq - i));
  if (name.empty()) { line.kind = LineKind::Other; return; }
  const std::u16string_view value = Trim(t.substr(eq + 1));
  line.nameBegin = i;
  line.nameEnd = i + name.size();
  line.valueBegin = value.empty() ? t.size() : static_cast<std::size_t>(value.data() - t.data());
  line.valueEnd = line.valueBegin + value.size();
  line.kind = LineKind::Key;
}

std::u16string_view ProfileDocument::NameOf(const Line& line) {
  return std::u16string_view(line.text).substr(line.nameBegin, line.nameEnd - line.nameBegin);
}

void ProfileDocument::AddLine(Line line) {
  Classify(line);
  if (line.kind == LineKind::Header) {
    m_index.emplace(FoldName(NameOf(line)), m_sections.size());
    m_sections.push_back(Section{std::move(line), {}, {}});
    return;
  }
  Section& section = m_sections.back();
  if (line.kind == LineKind::Key) section.keys.emplace(FoldName(NameOf(line)), section.body.size());
  section.body.push_back(std::move(line));
}

ProfileDocument ProfileDocument::Parse(std::string_view bytes) {
  ProfileDocument doc;
  bool endSeen = false;
  auto finish = [&](Line line) {
    if (!endSeen && line.end != LineEnd::None) {
      doc.m_newLineEnd = line.end;
      endSeen = true;
    }
    doc.AddLine(std::move(line));
  };
  if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE') {
    doc.m_encoding = ProfileEncoding::Utf16Le;
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
      units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8));
    std::u16string_view rest = units;
    while (!rest.empty()) {
      const std::size_t nl = rest.find(u'\n');
      Line line;
      std::u16string_view text = rest.substr(0, nl);
      if (nl != std::u16string_view::npos) {
        line.end = !text.empty() && text.back() == u'\r' ? LineEnd::CrLf : LineEnd::Lf;
        if (line.end == LineEnd::CrLf) text.remove_suffix(1);
      }
      line.text = text;
      rest.remove_prefix(nl == std::u16string_view::npos ? rest.size() : nl + 1);
      finish(std::move(line));
    }
    return doc;
  }
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
    doc.m_encoding = ProfileEncoding::Utf8Bom;
    bytes.remove_prefix(3);
  }
  while (!bytes.empty()) {
    const std::size_t nl = bytes.find('\n');
    Line line;
    std::string_view raw = bytes.substr(0, nl);
    if (nl != std::string_view::npos) {
      line.end = !raw.empty() && raw.back() == '\r' ? LineEnd::CrLf : LineEnd::Lf;
      if (line.end == LineEnd::CrLf) raw.remove_suffix(1);
    }
    line.text = FromUtf8(raw);
    // Only a line that did not decode cleanly needs its bytes to be written back unchanged.
    if (line.text.find(u'\uFFFD') != std::u16string::npos) {
      line.raw = raw;
      line.keepRaw = true;
    }
    bytes.remove_prefix(nl == std::string_view::npos ? bytes.size() : nl + 1);
    finish(std::move(line));
  }
  return doc;
}

void ProfileDocument::EncodeLine(std::string& out, const Line& line, bool last) const {
  if (m_encoding == ProfileEncoding::Utf16Le)
    AppendUtf16Le(out, line.text);
  else
    out += line.keepRaw ? line.raw : ToUtf8(line.text);
  LineEnd end = line.end;
  if (end == LineEnd::None && !last) end = m_newLineEnd;
  if (end == LineEnd::None) return;
  const std::u16string_view eol = end == LineEnd::CrLf ? u"\r\n" : u"\n";
  if (m_encoding == ProfileEncoding::Utf16Le)
    AppendUtf16Le(out, eol);
  else
    out += ToUtf8(eol);
}

std::string ProfileDocument::Serialize() const {
  std::string out;
  if (m_encoding == ProfileEncoding::Utf8Bom) out = "\xEF\xBB\xBF";
  if (m_encoding == ProfileEncoding::Utf16Le) out = "\xFF\xFE";
  std::size_t remaining = 0;
  for (const Section& s : m_sections) remaining += (s.header ? 1 : 0) + s.body.size();
  for (const Section& s : m_sections) {
    if (s.header) EncodeLine(out, *s.header, --remaining == 0);
    for (const Line& line : s.body) EncodeLine(out, line, --remaining == 0);
  }
  return out;
}

const ProfileDocument::Section* ProfileDocument::FindSection(std::u16string_view name) const {
  const auto it = m_index.find(FoldName(Trim(name)));
  return it == m_index.end() ? nullptr : &m_sections[it->second];
}

ProfileDocument::Section* ProfileDocument::FindSection(std::u16string_view name) {
  const auto it = m_index.find(FoldName(Trim(name)));
  return it == m_index.end() ? nullptr : &m_sections[it->second];
}

std::optional<std::u16string> ProfileDocument::Find(std::u16string_view section, std::u16string_view key) const {
  const Section* s = FindSection(section);
  if (!s) return std::nullopt;
  const auto it = s->keys.find(FoldName(Trim(key)));
  if (it == s->keys.end()) return std::nullopt;
  const Line& line = s->body[it->second];
  const std::u16string_view value(line.text.data() + line.valueBegin, line.valueEnd - line.valueBegin);
  return std::u16string(StripQuotes(value));
}

std::vector<std::u16string> ProfileDocument::SectionNames() const {
  std::vector<std::u16string> names;
  for (const Section& s : m_sections)
    if (s.header) names.emplace_back(NameOf(*s.header));
  return names;
}

std::vector<std::u16string> ProfileDocument::KeyNames(std::u16string_view section) const {
  std::vector<std::u16string> names;
  if (const Section* s = FindSection(section))
    for (const Line& line : s->body)
      if (line.kind == LineKind::Key) names.emplace_back(NameOf(line));
  return names;
}

ProfileDocument::Line ProfileDocument::NewLine(std::u16string text) const {
  Line line;
  line.text = std::move(text);
  line.end = m_newLineEnd;
  Classify(line);
  return line;
}

ProfileDocument::Section& ProfileDocument::AppendSection(std::u16string_view name) {
  const Section& last = m_sections.back();
  const Line* lastLine = !last.body.empty() ? &last.body.back() : last.header ? &*last.header : nullptr;
  if (lastLine && lastLine->kind != LineKind::Blank) AddLine(NewLine(u""));
  AddLine(NewLine(u"[" + std::u16string(name) + u"]"));
  return m_sections.back();
}

void ProfileDocument::ReindexKeys(Section& section) {
  section.keys.clear();
  for (std::size_t i = 0; i < section.body.size(); ++i)
    if (section.body[i].kind == LineKind::Key) section.keys.emplace(FoldName(NameOf(section.body[i])), i);
}

void ProfileDocument::ReindexSections() {
  m_index.clear();
  for (std::size_t i = 0; i < m_sections.size(); ++i)
    if (m_sections[i].header) m_index.emplace(FoldName(NameOf(*m_sections[i].header)), i);
}

bool ProfileDocument::Set(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  if (!CanStore(section, key, value)) return false;
  section = Trim(section);
  key = Trim(key);
  Section* s = FindSection(section);
  if (!s) s = &AppendSection(section);
  const auto it = s->keys.find(FoldName(key));
  if (it != s->keys.end()) {
    Line& line = s->body[it->second];
    if (std::u16string_view(line.text).substr(line.valueBegin, line.valueEnd - line.valueBegin) == value) return false;
    // The key keeps the spelling it has in the file.
    line.text = std::u16string(NameOf(line)) + u"=" + std::u16string(value);
    line.keepRaw = false;
    line.raw.clear();
    Classify(line);
    return true;
  }
  // A new key goes after the section's last key, so that comments introducing the next
  // section stay with it; in a section without keys, after its last non-blank line.
  std::size_t at = 0;
  bool keySeen = false;
  for (std::size_t i = 0; i < s->body.size(); ++i) {
    const LineKind kind = s->body[i].kind;
    if (kind == LineKind::Key || (!keySeen && kind != LineKind::Blank)) at = i + 1;
    keySeen = keySeen || kind == LineKind::Key;
  }
  s->body.insert(s->body.begin() + static_cast<std::ptrdiff_t>(at),
                 NewLine(std::u16string(key) + u"=" + std::u16string(value)));
  ReindexKeys(*s);
  return true;
}

bool ProfileDocument::DeleteKey(std::u16string_view section, std::u16string_view key) {
  Section* s = FindSection(section);
  if (!s) return false;
  const std::u16string folded = FoldName(Trim(key));
  const auto removed = std::erase_if(s->body, [&](const Line& line) {
    return line.kind == LineKind::Key && FoldName(NameOf(line)) == folded;
  });
  if (removed == 0) return false;
  ReindexKeys(*s);
  return true;
}

bool ProfileDocument::DeleteSection(std::u16string_view section) {
  const std::u16string folded = FoldName(Trim(section));
  const auto removed = std::erase_if(m_sections, [&](const Section& s) {
    return s.header && FoldName(NameOf(*s.header)) == folded;
  });
  if (removed == 0) return false;
  ReindexSections();
  return true;
}

}  // namespace vantrel1
