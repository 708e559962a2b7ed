#include "dialogs/FileDialog.h"

#include <QDialogButtonBox>
#include <QPushButton>

#include <algorithm>

#include "dialogs/DialogStrings.h"
#include "suite/FileSelection.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"
#include "suite/AppMessages.h"
#include "suite/FileName.h"
#include "suite/FilePath.h"

IMPLEMENT_DYNAMIC(CFileDialog, CWnd)

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;

QStringList QtNameFilters(std::u16string_view filter) {
  QStringList list;
  for (const vantrel1::FilterPair& pair : vantrel1::ParseFilterList(filter)) {
    QString patterns = ToQString(pair.patterns);
    patterns.replace(u';', u' ');
    list << ToQString(pair.description) + QStringLiteral(" (") + patterns.simplified() + u')';
  }
  return list;
}

// The help button's label, in resources/strings/dialogs.str.
constexpr UINT kHelpButtonText = 21110;

std::size_t Capacity(DWORD units) { return static_cast<std::size_t>(units); }

}  // namespace

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCWSTR defaultExt, LPCWSTR fileName, DWORD flags, LPCWSTR filter,
                         CWnd* parent)
    : QFileDialog(WidgetFromWnd(parent)),
      m_bOpenFileDialog(bOpenFileDialog),
      m_strDefExt(defaultExt ? defaultExt : u""),
      m_strFilter(filter ? filter : u"") {
  Attach(HwndFromWidget(this));
  setOption(QFileDialog::DontUseNativeDialog);
  // The overwrite question goes through the suite's message sink, not a Qt message box.
  setOption(QFileDialog::DontConfirmOverwrite);
  m_ofn.Flags = flags;
  m_ofn.lpstrDefExt = defaultExt ? m_strDefExt.c_str() : nullptr;
  m_ofn.lpstrFile = m_szFileName;
  m_ofn.nMaxFile = kFileNameLength;
  m_ofn.lpstrFileTitle = m_szFileTitle;
  m_ofn.nMaxFileTitle = kFileTitleLength;
  m_ofn.nFilterIndex = m_strFilter.empty() ? 0 : 1;
  if (fileName) {
    const std::u16string_view name(fileName);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), kFileNameLength - 1), m_szFileName);
  }
}

CFileDialog::~CFileDialog() = default;

INT_PTR CFileDialog::DoModal() {
  ApplySettings();
  setResult(QDialog::Rejected);
  OnInitDialog();
  return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

BOOL CFileDialog::OnInitDialog() { return TRUE; }

void CFileDialog::ApplySettings() {
  setAcceptMode(m_bOpenFileDialog ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  if (!m_bOpenFileDialog) {
    setFileMode(QFileDialog::AnyFile);
  } else if (m_ofn.Flags & OFN_ALLOWMULTISELECT) {
    setFileMode(QFileDialog::ExistingFiles);
  } else {
    setFileMode((m_ofn.Flags & OFN_FILEMUSTEXIST) ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  }
  setDefaultSuffix(m_ofn.lpstrDefExt ? ToQString(m_ofn.lpstrDefExt) : QString());
  if (m_ofn.lpstrTitle) setWindowTitle(ToQString(m_ofn.lpstrTitle));
  if (m_ofn.lpstrInitialDir && *m_ofn.lpstrInitialDir) setDirectory(ToQString(m_ofn.lpstrInitialDir));
  const QStringList filters = QtNameFilters(m_strFilter);
  setNameFilters(filters);
  const qsizetype index = static_cast<qsizetype>(m_ofn.nFilterIndex) - 1;
  if (index >= 0 && index < filters.size()) selectNameFilter(filters[index]);
  const std::vector<CStdStrW> initial = vantrel1::ReadSelectionBuffer(m_ofn.lpstrFile, Capacity(m_ofn.nMaxFile));
  if (!initial.empty()) selectFile(ToQString(initial.front()));
  if (m_ofn.Flags & OFN_SHOWHELP) AddHelpButton();
}

void CFileDialog::AddHelpButton() {
  auto* box = findChild<QDialogButtonBox*>();
  if (box == nullptr || m_bHelpButtonAdded) return;
  QPushButton* button = box->addButton(QDialogButtonBox::Help);
  button->setObjectName(QString::number(IDC_HELP_BUTTON));
  button->setText(ToQString(vantrel1::DialogString(kHelpButtonText)));
  connect(button, &QPushButton::clicked, this, [this] { OnHelpClicked(); });
  m_bHelpButtonAdded = true;
}

void CFileDialog::OnHelpClicked() {
  NMHDR header{GetSafeHwnd(), static_cast<UINT_PTR>(IDC_HELP_BUTTON), CDN_HELP};
  LRESULT result = 0;
  OnNotify(0, reinterpret_cast<LPARAM>(&header), &result);
}

BOOL CFileDialog::OnNotify(WPARAM /*wParam*/, LPARAM /*lParam*/, LRESULT* /*result*/) { return FALSE; }

BOOL CFileDialog::OnFileNameOK() { return FALSE; }

void CFileDialog::done(int result) {
  if (result == QDialog::Accepted && (!StoreChoice() || FrameworkRefuses() || OnFileNameOK())) return;
  QFileDialog::done(result);
}

BOOL CFileDialog::StoreChoice() {
  const QStringList files = selectedFiles();
  std::vector<CStdStrW> paths;
  for (const QString& file : files) paths.push_back(FromQString(file));
  const qsizetype filter = nameFilters().indexOf(selectedNameFilter());
  m_ofn.nFilterIndex = filter < 0 ? 0 : static_cast<DWORD>(filter + 1);
  if (!vantrel1::WriteSelectionBuffer(paths, m_ofn.lpstrFile, Capacity(m_ofn.nMaxFile))) {
    // The buffer cannot hold the selection: the user chose too many files.
    AppError(VMSG_TOO_MANY_FILES, GetSafeHwnd());
    return FALSE;
  }
  std::fill_n(m_ofn.lpstrFileTitle, m_ofn.nMaxFileTitle, WCHAR(0));
  CStdStrW name;
  if (!paths.empty()) name = CFileName(paths.front()).GetFileName();
  if (name.size() < m_ofn.nMaxFileTitle) std::copy(name.begin(), name.end(), m_ofn.lpstrFileTitle);
  return TRUE;
}

BOOL CFileDialog::FrameworkRefuses() {
  if (m_bOpenFileDialog || !(m_ofn.Flags & OFN_OVERWRITEPROMPT)) return FALSE;
  const CStdStrW path = GetPathName();
  if (path.empty() || !FileExistsX(path.c_str(), FILE_EXISTS_FILE)) return FALSE;
  return AppPrompt(VMSG_CONFIRM_OVERWRITE, GetSafeHwnd(), GetFileName()) == IDYES ? FALSE : TRUE;
}

CStdStrW CFileDialog::GetPathName() const {
  const std::vector<CStdStrW> paths = GetSelectedPaths();
  return paths.empty() ? CStdStrW() : paths.front();
}

CStdStrW CFileDialog::GetFileName() const {
  if (!m_ofn.lpstrFileTitle || m_ofn.nMaxFileTitle == 0) return {};
  const WCHAR* end = std::find(m_ofn.lpstrFileTitle, m_ofn.lpstrFileTitle + m_ofn.nMaxFileTitle, WCHAR(0));
  return CStdStrW(std::u16string_view(m_ofn.lpstrFileTitle, static_cast<std::size_t>(end - m_ofn.lpstrFileTitle)));
}

std::vector<CStdStrW> CFileDialog::GetSelectedPaths() const {
  return vantrel1::ReadSelectionBuffer(m_ofn.lpstrFile, Capacity(m_ofn.nMaxFile));
}
