#pragma once
// COverwritePromptDlg: asks, for one item of a batch that already exists (a line type or a
// symbol being imported), whether to overwrite it, skip it, or overwrite or skip all the
// remaining ones. Every button closes the dialog with IDOK; the caller reads the answer
// from the four flags.
//
// The "all" answers survive repeated showings of the same object, so a batch loop asks
// once:
//     COverwritePromptDlg prompt(parent);
//     prompt.SetNotifyFormat(u"Tip linije %s već postoji u tabeli %s.");
//     for (each clashing item) {
//       if (!prompt.m_bReplaceAll && !prompt.m_bSkipAll) {
//         prompt.SetNotifyDetails(itemName, tableName);
//         prompt.DoModal();
//       }
//       overwrite when prompt.m_bOverwrite || prompt.m_bReplaceAll
//     }
#include "dialogs/Dialog.h"
#include "platform/StdStr.h"

class VANTREL1_QT_EXPORT COverwritePromptDlg : public CDialog {
  Q_OBJECT

 public:
  static constexpr UINT IDD = 20006;
  static constexpr int IDC_QUESTION = 20241;
  static constexpr int IDC_OVERWRITE = 20251;
  static constexpr int IDC_REPLACE_ALL = 20252;
  static constexpr int IDC_SKIP_ALL = 20253;
  static constexpr int IDC_SKIP = 20254;

  explicit COverwritePromptDlg(CWnd* parent = nullptr);
  ~COverwritePromptDlg() override;

  // A printf-style format with two places for wide strings (%s), filled from the details.
  void SetNotifyFormat(CStdStrW format);
  void SetNotifyDetails(CStdStrW detail1, CStdStrW detail2);

  BOOL OnInitDialog() override;
  void OnOK() override;

  void OnBnClickedButton1();  // overwrite this item
  void OnBnClickedButton2();  // overwrite this and all the remaining items
  void OnBnClickedButton3();  // skip this and all the remaining items
  void OnBnClickedButton4();  // skip this item

  int m_bOverwrite = 0;
  int m_bReplaceAll = 0;
  int m_bSkip = 0;
  int m_bSkipAll = 0;
  CStdStrW m_strNotifyFormat;
  CStdStrW m_strDetail1;
  CStdStrW m_strDetail2;

 protected:
  void DoDataExchange(CDataExchange* exchange) override;

 private:
  void BuildControls();
};
