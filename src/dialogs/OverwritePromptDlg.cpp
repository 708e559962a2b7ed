#include "dialogs/OverwritePromptDlg.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/DialogStrings.h"
#include "dialogs/QtText.h"

namespace {

using vantrel1::DialogString;
using vantrel1::ToQString;

// Left to right as the user sees them; the mix of English and Serbian labels is the
// suite's, kept as it is.
struct ButtonSpec {
  int id;
  UINT label;
  void (COverwritePromptDlg::*handler)();
};
constexpr ButtonSpec kButtons[] = {
    {COverwritePromptDlg::IDC_OVERWRITE, vantrel1::DSTR_OVERWRITE, &COverwritePromptDlg::OnBnClickedButton1},
    {COverwritePromptDlg::IDC_REPLACE_ALL, vantrel1::DSTR_REPLACE_ALL, &COverwritePromptDlg::OnBnClickedButton2},
    {COverwritePromptDlg::IDC_SKIP, vantrel1::DSTR_SKIP, &COverwritePromptDlg::OnBnClickedButton4},
    {COverwritePromptDlg::IDC_SKIP_ALL, vantrel1::DSTR_SKIP_ALL, &COverwritePromptDlg::OnBnClickedButton3},
};

}  // namespace

COverwritePromptDlg::COverwritePromptDlg(CWnd* parent) : CDialog(IDD, parent) { BuildControls(); }

COverwritePromptDlg::~COverwritePromptDlg() = default;

void COverwritePromptDlg::BuildControls() {
  setWindowTitle(ToQString(DialogString(vantrel1::DSTR_OVERWRITE_TITLE)));
  auto* question = new QLabel(this);
  question->setObjectName(QString::number(IDC_QUESTION));
  question->setWordWrap(true);
  question->setMinimumWidth(360);
  auto* buttons = new QHBoxLayout;
  for (const ButtonSpec& spec : kButtons) {
    auto* button = new QPushButton(ToQString(DialogString(spec.label)), this);
    button->setObjectName(QString::number(spec.id));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, handler = spec.handler] { (this->*handler)(); });
    buttons->addWidget(button);
  }
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(question);
  layout->addLayout(buttons);
}

void COverwritePromptDlg::SetNotifyFormat(CStdStrW format) { m_strNotifyFormat = std::move(format); }

void COverwritePromptDlg::SetNotifyDetails(CStdStrW detail1, CStdStrW detail2) {
  m_strDetail1 = std::move(detail1);
  m_strDetail2 = std::move(detail2);
}

BOOL COverwritePromptDlg::OnInitDialog() {
  CDialog::OnInitDialog();
  // Only this item's answers start afresh; the "all" answers carry the batch.
  m_bOverwrite = 0;
  m_bSkip = 0;
  CStdStrW question;
  // A format that does not suit two strings shows no question rather than garbage.
  question.Format(m_strNotifyFormat, m_strDetail1, m_strDetail2);
  SetDlgItemText(IDC_QUESTION, question);
  return TRUE;
}

void COverwritePromptDlg::OnOK() {
  m_strDetail1.Empty();
  m_strDetail2.Empty();
  CDialog::OnOK();
}

void COverwritePromptDlg::OnBnClickedButton1() {
  m_bOverwrite = 1;
  OnOK();
}

void COverwritePromptDlg::OnBnClickedButton2() {
  m_bReplaceAll = 1;
  OnOK();
}

void COverwritePromptDlg::OnBnClickedButton3() {
  m_bSkipAll = 1;
  OnOK();
}

void COverwritePromptDlg::OnBnClickedButton4() {
  m_bSkip = 1;
  OnOK();
}

void COverwritePromptDlg::DoDataExchange(CDataExchange* exchange) { CDialog::DoDataExchange(exchange); }
