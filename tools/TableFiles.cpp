#include "TableFiles.h"

#include <filesystem>
#include <fstream>

#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/Utf.h"
#include "suite/VantrelWinApp.h"

namespace vantrel1::cli {

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

namespace {

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

}  // namespace

std::string Load(TableForm form, CLineTypeTable& table, const CStdStrW& path) {
  std::string why = form == TableForm::Lin   ? LoadLin(table, path)
                    : form == TableForm::Xml ? LoadXml(table, path)
                                             : LoadArchive(table, path);
  if (why.empty() && (table.m_pSystemLines == nullptr || table.m_nSystemLines != CLineTypeTable::kSystemLines))
    why = "it holds " + std::to_string(table.m_nSystemLines) + " system line types, not 9";
  return why;
}

namespace {

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

}  // namespace

bool Save(TableForm form, CLineTypeTable& table, const CStdStrW& path) {
  if (form == TableForm::Lin) return table.ToFile(GetVantrelAppBase(), path.c_str(), 1) == 1;
  if (form == TableForm::Archive) return SaveArchive(table, path);
  CMarkup xml;
  table.SerializeXML(GetVantrelAppBase(), &xml, 1);
  return xml.Save(path.c_str());
}

}  // namespace vantrel1::cli
