#pragma once
// CFileDialog: the framework's common file dialog for opening and saving, on Qt's own
// (non-native) file dialog so that it behaves the same on every desktop and can be driven
// by tests. The choice lands in m_ofn as the common dialog leaves it: the file buffer
// holds one full path, or the folder and the names of a multi-selection; the title buffer
// holds the file name.
//
// The filter list has the framework's form, "description|patterns|...||", patterns
// separated by ';'. Qt shows each pair as "description (patterns)".
//
// When the user confirms, the dialog's own checks run first (for a save dialog with
// OFN_OVERWRITEPROMPT: replace an existing file?), then OnFileNameOK, which a derived
// class overrides to refuse a choice. With OFN_SHOWHELP the dialog has a help button,
// whose click reaches OnNotify as the CDN_HELP notification.
#include <cstdint>
#include <vector>

#include <QFileDialog>

#include "platform/StdStr.h"
#include "platform/Types.h"
#include "platform/Wnd.h"

using INT_PTR = std::intptr_t;
using LRESULT = std::intptr_t;

// A notification's header.
struct NMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
};

// The file dialog's help notification.
constexpr UINT CDN_HELP = static_cast<UINT>(-605);

struct OPENFILENAMEW {
  DWORD Flags = 0;
  LPCWSTR lpstrDefExt = nullptr;  // appended by the framework to a bare name; null: none
  LPWSTR lpstrFile = nullptr;
  DWORD nMaxFile = 0;  // units of lpstrFile
  LPWSTR lpstrFileTitle = nullptr;
  DWORD nMaxFileTitle = 0;
  DWORD nFilterIndex = 0;  // 1 is the first pair; 0 when no pair is selected
  LPCWSTR lpstrInitialDir = nullptr;
  LPCWSTR lpstrTitle = nullptr;
};

class VANTREL1_QT_EXPORT CFileDialog : public QFileDialog, public CWnd {
  Q_OBJECT
  DECLARE_DYNAMIC(CFileDialog)

 public:
  // The help button's resource id.
  static constexpr int IDC_HELP_BUTTON = 1038;

  CFileDialog(BOOL bOpenFileDialog, LPCWSTR defaultExt = nullptr, LPCWSTR fileName = nullptr,
              DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCWSTR filter = nullptr, CWnd* parent = nullptr);
  ~CFileDialog() override;

  // IDOK or IDCANCEL.
  virtual INT_PTR DoModal();
  virtual BOOL OnInitDialog();

  // The first chosen path; the file name (with its extension) from the title buffer.
  CStdStrW GetPathName() const;
  CStdStrW GetFileName() const;
  // Every chosen path, in order.
  std::vector<CStdStrW> GetSelectedPaths() const;
  BOOL IsOpenDialog() const { return m_bOpenFileDialog; }
  const CStdStrW& GetFilter() const { return m_strFilter; }

  // Confirms (IDOK) or cancels the dialog as its buttons do; a refused choice leaves it open.
  void done(int result) override;

  OPENFILENAMEW m_ofn;

 protected:
  // 0 accepts the choice in m_ofn; non-zero keeps the dialog open.
  virtual BOOL OnFileNameOK();
  // TRUE when the notification was handled, its result in *result.
  virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);

 private:
  void ApplySettings();
  void AddHelpButton();
  void OnHelpClicked();
  BOOL StoreChoice();
  BOOL FrameworkRefuses();

  BOOL m_bOpenFileDialog;
  CStdStrW m_strDefExt;
  CStdStrW m_strFilter;
  static constexpr DWORD kFileNameLength = 260;
  static constexpr DWORD kFileTitleLength = 64;
  WCHAR m_szFileName[kFileNameLength] = {};
  WCHAR m_szFileTitle[kFileTitleLength] = {};
  bool m_bHelpButtonAdded = false;
};
