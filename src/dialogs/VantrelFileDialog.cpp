#include "dialogs/VantrelFileDialog.h"

#include <algorithm>

#include "suite/FileSelection.h"
#include "help/VantrelHelp.h"
#include "platform/Registry.h"
#include "platform/WinThread.h"
#include "suite/FilePath.h"
#include "suite/VantrelWinApp.h"

namespace {

constexpr const WCHAR* kStartInSamples = u"StartInSamples";
constexpr int kSamplesValueLength = 80;

vantrel1::SamplesFlags ReadSamplesFlags() {
  WCHAR text[kSamplesValueLength + 1] = {};
  CorviaRegistryRead(nullptr, kStartInSamples, text, kSamplesValueLength + 1);
  return vantrel1::ParseSamplesFlags(text);
}

}  // namespace

CVantrelFileDialog::CVantrelFileDialog(BOOL bOpenFileDialog, LPCWSTR defaultExt, LPCWSTR fileName, DWORD flags,
                                       LPCWSTR filter, CWnd* parent, CVantrelHelp* help)
    : CFileDialog(bOpenFileDialog, defaultExt, fileName, flags | kRequiredFlags, filter, parent),
      m_pFileBuffer(new WCHAR[kFileBufferLength]()),
      m_pHelp(help) {
  // The filter's extension is supplied by OnFileNameOK instead.
  m_ofn.lpstrDefExt = nullptr;
  if (fileName) {
    const std::u16string_view name(fileName);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), kFileBufferLength - 1), m_pFileBuffer.get());
  }
  m_ofn.lpstrFile = m_pFileBuffer.get();
  m_ofn.nMaxFile = kFileBufferLength;
}

CVantrelFileDialog::~CVantrelFileDialog() = default;

// The slot of the running program's first-use flag when it is set (and now cleared in
// `values`), else -1.
int CVantrelFileDialog::TakeSamplesFlag(int values[3]) {
  const vantrel1::SamplesFlags flags = ReadSamplesFlags();
  std::copy(std::begin(flags.values), std::end(flags.values), values);
  const CVantrelWinApp* app = GetVantrelWinApp();
  const int slot = app ? vantrel1::SamplesFlagSlot(app->GetModuleType()) : -1;
  if (slot < 0 || values[slot] == 0) return -1;
  values[slot] = 0;
  m_strInitialDir = GetCorviaDIRsamples();
  return slot;
}

INT_PTR CVantrelFileDialog::DoModal() {
  vantrel1::SamplesFlags flags;
  const int slot = m_bStartInSamples ? TakeSamplesFlag(flags.values) : -1;
  if (!m_strInitialDir.empty()) m_ofn.lpstrInitialDir = m_strInitialDir.c_str();
  const INT_PTR result = CFileDialog::DoModal();
  // A cancelled dialog leaves the flag set: the next one starts in the samples again.
  if (slot >= 0 && result == IDOK) {
    CorviaRegistryWrite(nullptr, kStartInSamples, vantrel1::FormatSamplesFlags(flags).c_str());
  }
  return result;
}

BOOL CVantrelFileDialog::OnInitDialog() { return CFileDialog::OnInitDialog(); }

int CVantrelFileDialog::IsSingleSelection() const {
  return vantrel1::BufferHoldsSingleName(m_ofn.lpstrFile, m_ofn.nMaxFile) ? 1 : 0;
}

BOOL CVantrelFileDialog::OnFileNameOK() {
  if (CFileDialog::OnFileNameOK()) return TRUE;
  if (!m_pFileBuffer || m_ofn.lpstrFile != m_pFileBuffer.get()) return TRUE;
  vantrel1::FileSelection selection;
  selection.paths = GetSelectedPaths();
  selection.fileTitle = GetFileName();
  selection.pathCapacity = m_ofn.nMaxFile;
  selection.titleCapacity = m_ofn.nMaxFileTitle;
  vantrel1::FileSelectionRules rules;
  rules.saveDialog = !IsOpenDialog();
  rules.extMatchRequired = m_bExtMatchRequired != 0;
  rules.filter = GetFilter();
  rules.filterIndex = static_cast<int>(m_ofn.nFilterIndex);
  rules.owner = GetSafeHwnd();
  bool appended = false;
  const int refuse = vantrel1::CheckFileSelection(selection, rules, &appended);
  if (appended) {
    vantrel1::WriteSelectionBuffer(selection.paths, m_ofn.lpstrFile, m_ofn.nMaxFile);
    std::fill_n(m_ofn.lpstrFileTitle, m_ofn.nMaxFileTitle, WCHAR(0));
    std::copy(selection.fileTitle.begin(), selection.fileTitle.end(), m_ofn.lpstrFileTitle);
  }
  return refuse;
}

BOOL CVantrelFileDialog::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header == nullptr || header->code != CDN_HELP) return CFileDialog::OnNotify(wParam, lParam, result);
  if (m_pHelp) {
    CWnd* main = AfxGetMainWnd();
    m_pHelp->Help(main ? main->GetSafeHwnd() : nullptr);
  }
  if (result) *result = -1;
  return TRUE;
}
