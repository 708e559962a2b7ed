// vantrel1 convert IN OUT: a line type table from one stored form into another, each
// file's form told by its extension, in any case:
//   .lin  table file (the user line types; the system ones always come built in)
//   .xml  XML document whose first element is LINETYPETABLE
//   .vlt  archive, as documents embed the table
// Exit codes: 0 converted, 1 the input could not be read or loaded or the output not
// written, 2 wrong arguments or an unknown extension.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "Commands.h"
#include "linetable/LineTypeTable.h"
#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/StdStr.h"
#include "platform/Utf.h"
#include "suite/VantrelWinApp.h"

namespace vantrel1::cli {
namespace {

enum class TableForm { Lin, Xml, Archive };

constexpr const char* kUsage = "usage: vantrel1 convert IN OUT  (line type tables: .lin, .xml, .vlt)\n";

std::optional<TableForm> FormOf(const std::string& path) {
  std::string ext = std::filesystem::path(path).extension().string();
  for (char& c : ext)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  if (ext == ".lin") return TableForm::Lin;
  if (ext == ".xml") return TableForm::Xml;
  if (ext == ".vlt") return TableForm::Archive;
  return std::nullopt;
}

bool IsReadable(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  return std::ifstream(path, std::ios::binary).good();
}

// Each loader returns an empty text on success, else why the table did not load.
std::string LoadLin(CLineTypeTable& table, const CStdStrW& path) {
  // 0 also when the file had no line types and the built-in ones were taken instead.
  if (table.FromFile(GetVantrelAppBase(), path.c_str(), nullptr) != 1)
    return "no LineType0 section, or a line type that does not read";
  return {};
}

std::string LoadXml(CLineTypeTable& table, const CStdStrW& path) {
  CMarkup xml;
  if (!xml.Load(path.c_str())) return vantrel1::ToUtf8(xml.GetError());
  xml.ResetPos();
  if (!xml.FindElem() || xml.GetTagName() != u"LINETYPETABLE")
    return "its first element is <" + vantrel1::ToUtf8(xml.GetTagName()) + ">, not <LINETYPETABLE>";
  table.SerializeXML(GetVantrelAppBase(), &xml, 0);
  return {};
}

std::string LoadArchive(CLineTypeTable& table, const CStdStrW& path) {
  try {
    CArchive ar(path, CArchive::load);
    table.Serialize(ar);
  } catch (const CArchiveException& e) {
    return e.what();
  }
  return {};
}

std::string Load(TableForm form, CLineTypeTable& table, const CStdStrW& path) {
  std::string why = form == TableForm::Lin   ? LoadLin(table, path)
                    : form == TableForm::Xml ? LoadXml(table, path)
                                             : LoadArchive(table, path);
  if (why.empty() && (table.m_pSystemLines == nullptr || table.m_nSystemLines != CLineTypeTable::kSystemLines))
    why = "it holds " + std::to_string(table.m_nSystemLines) + " system line types, not 9";
  return why;
}

bool SaveArchive(CLineTypeTable& table, const CStdStrW& path) {
  try {
    CArchive ar(path, CArchive::store);
    table.Serialize(ar);
    ar.Close();
  } catch (const CArchiveException&) {
    return false;
  }
  return true;
}

bool Save(TableForm form, CLineTypeTable& table, const CStdStrW& path) {
  if (form == TableForm::Lin) return table.ToFile(GetVantrelAppBase(), path.c_str(), 1) == 1;
  if (form == TableForm::Archive) return SaveArchive(table, path);
  CMarkup xml;
  table.SerializeXML(GetVantrelAppBase(), &xml, 1);
  return xml.Save(path.c_str());
}

}  // namespace

int RunConvert(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  const std::string in = argv[0];
  const std::string out = argv[1];
  const std::optional<TableForm> inForm = FormOf(in);
  const std::optional<TableForm> outForm = FormOf(out);
  if (!inForm || !outForm) {
    std::fprintf(stderr, "vantrel1 convert: %s: unknown extension (use .lin, .xml or .vlt)\n",
                 (inForm ? out : in).c_str());
    return 2;
  }
  if (!IsReadable(in)) {
    std::fprintf(stderr, "vantrel1 convert: %s: cannot be read\n", in.c_str());
    return 1;
  }
  CLineTypeTable table;
  const std::string why = Load(*inForm, table, CStdStrW::FromUtf8(in));
  if (!why.empty()) {
    std::fprintf(stderr, "vantrel1 convert: %s: not a line type table: %s\n", in.c_str(), why.c_str());
    return 1;
  }
  if (!Save(*outForm, table, CStdStrW::FromUtf8(out))) {
    std::fprintf(stderr, "vantrel1 convert: %s: cannot be written\n", out.c_str());
    return 1;
  }
  std::printf("%s: %d user line types\n", out.c_str(), table.m_nUserLines);
  return 0;
}

}  // namespace vantrel1::cli
