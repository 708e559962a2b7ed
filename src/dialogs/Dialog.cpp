#include "dialogs/Dialog.h"

CDialog::CDialog(UINT templateId, CWnd* parent)
    : QDialog(parent ? parent->GetWidget() : nullptr), m_nTemplateId(templateId) {
  Attach(this);
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

void CDialog::accept() { OnOK(); }

void CDialog::reject() { OnCancel(); }

void CDialog::OnOK() {
  if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange* /*exchange*/) {}
