#pragma once
// CVantrelFileDialog: the suite's open and save dialog. On top of the framework's file
// dialog it
//  - keeps a file buffer large enough for long multi-selections;
//  - refuses paths longer than 250 characters and selections of more than 200 files;
//  - requires every chosen name to fit the selected filter's patterns, giving a single
//    name without any extension the extension of the filter's first pattern (the
//    framework's default extension is not used);
//  - in a save dialog refuses the suite's reserved file name, and asks again before
//    replacing a file whose name got its extension only after the framework's own
//    overwrite question;
//  - shows help through a CVantrelHelp object from its help button;
//  - with m_bStartInSamples, starts in the samples folder the first time each of the
//    suite's programs shows it (the setting "StartInSamples"); the flag is cleared only
//    when the user confirms a choice.
//
//     CVantrelFileDialog dlg(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST,
//                            u"Tabele tipova linija|*.lin|Sve datoteke|*.*||", frame, &help);
//     if (dlg.DoModal() == IDOK) Load(dlg.GetPathName());
#include <memory>

#include "dialogs/FileDialog.h"

class CVantrelHelp;

class VANTREL1_QT_EXPORT CVantrelFileDialog : public CFileDialog {
  Q_OBJECT

 public:
  // Units of the file buffer, terminator included.
  static constexpr DWORD kFileBufferLength = 52201;
  // The flags every such dialog carries besides the caller's.
  static constexpr DWORD kRequiredFlags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_SHOWHELP;

  CVantrelFileDialog(BOOL bOpenFileDialog, LPCWSTR defaultExt, LPCWSTR fileName, DWORD flags, LPCWSTR filter,
                     CWnd* parent, CVantrelHelp* help);
  ~CVantrelFileDialog() override;

  INT_PTR DoModal() override;
  BOOL OnInitDialog() override;

  void SetExtMatchRequired(int required) { m_bExtMatchRequired = required; }
  int IsExtMatchRequired() const { return m_bExtMatchRequired; }
  // 1 when the selection holds exactly one name; 0 for several or without a buffer.
  int IsSingleSelection() const;

  int m_bStartInSamples = 0;
  CStdStrW m_strInitialDir;

 protected:
  BOOL OnFileNameOK() override;
  BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  int m_bExtMatchRequired = 1;
  std::unique_ptr<WCHAR[]> m_pFileBuffer;
  CVantrelHelp* m_pHelp;

 private:
  int TakeSamplesFlag(int values[3]);
};
