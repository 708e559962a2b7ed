#pragma once
// CDialog: a modal dialog of the framework on a QDialog. A derived class builds its
// controls in its constructor, naming each after its resource id, and keeps the
// framework's life cycle: DoModal runs OnInitDialog and then the dialog until EndDialog;
// the Enter and Escape keys go through OnOK and OnCancel; DoDataExchange moves values
// between the fields and the controls when UpdateData asks.
//
// A dialog object may be shown again and again; its fields live on between showings.
//
// The dialog is a framework window whose handle (m_hWnd) is its own QDialog from
// construction on; its owner is the parent window's widget, none when the parent has no
// live window.
#include <cstdint>

#include <QDialog>

#include "platform/StdStr.h"
#include "platform/Types.h"
#include "platform/Wnd.h"

using INT_PTR = std::intptr_t;

class CDialog;

class VANTREL1_QT_EXPORT CDataExchange {
 public:
  CDataExchange(CDialog* dialog, BOOL saveAndValidate) : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

  // Marks the exchange as failed (a value did not validate); UpdateData then returns FALSE.
  void Fail() { m_bFailed = TRUE; }
  BOOL Failed() const { return m_bFailed; }

  BOOL m_bSaveAndValidate;  // TRUE: controls to fields; FALSE: fields to controls
  CDialog* m_pDlgWnd;

 private:
  BOOL m_bFailed = FALSE;
};

class VANTREL1_QT_EXPORT CDialog : public QDialog, public CWnd {
  Q_OBJECT
  DECLARE_DYNAMIC(CDialog)

 public:
  CDialog(UINT templateId, CWnd* parent);
  ~CDialog() override;

  // Shows the dialog modally and returns the result given to EndDialog (IDOK, IDCANCEL).
  virtual INT_PTR DoModal();
  // Initialises the controls from the fields. Returns TRUE (the framework then focuses the
  // first control).
  virtual BOOL OnInitDialog();
  BOOL UpdateData(BOOL saveAndValidate = TRUE);
  void EndDialog(int result);

  UINT GetTemplateId() const { return m_nTemplateId; }

  // The text of the control whose resource id is `id`; see SetDlgItemText(HWND, ...).
  BOOL SetDlgItemText(int id, const CStdStrW& text);
  CStdStrW GetDlgItemText(int id) const;

  // The keyboard's and the window's accept and cancel, routed to OnOK and OnCancel.
  void accept() override;
  void reject() override;

 protected:
  // Saves the controls into the fields and closes with IDOK, unless they do not validate.
  virtual void OnOK();
  virtual void OnCancel();
  virtual void DoDataExchange(CDataExchange* exchange);

 private:
  UINT m_nTemplateId;
};
