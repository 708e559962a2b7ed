#include "dialogs/Dialog.h"

#include "dialogs/WindowOps.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

CDialog::CDialog(UINT templateId, CWnd* parent) : QDialog(WidgetFromWnd(parent)), m_nTemplateId(templateId) {
  Attach(HwndFromWidget(this));
  setObjectName(QString::number(templateId));
}

CDialog::~CDialog() = default;

INT_PTR CDialog::DoModal() {
  setResult(IDCANCEL);
  OnInitDialog();
  return exec();
}

BOOL CDialog::OnInitDialog() {
  UpdateData(FALSE);
  return TRUE;
}

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
  CDataExchange exchange(this, saveAndValidate);
  DoDataExchange(&exchange);
  return exchange.Failed() ? FALSE : TRUE;
}

void CDialog::EndDialog(int result) { done(result); }

BOOL CDialog::SetDlgItemText(int id, const CStdStrW& text) { return ::SetDlgItemText(GetSafeHwnd(), id, text); }

CStdStrW CDialog::GetDlgItemText(int id) const { return ::GetDlgItemText(GetSafeHwnd(), id); }

void CDialog::accept() { OnOK(); }

void CDialog::reject() { OnCancel(); }

void CDialog::OnOK() {
  if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange* /*exchange*/) {}
