#pragma once
// CCSysEpsgDlg ("Unesite EPSG"): asks for an EPSG code and builds the coordinate system
// it names from the registry. The code is decimal digits only (leading zeros are fine);
// an empty field and anything else are refused with a message. A well-formed code the
// registry does not know keeps the dialog open without a message.
//
//     CCSysEpsgDlg dlg(nullptr);
//     if (dlg.DoModal() == IDOK) csys = *dlg.GetCSys();
#include <memory>

#include "dialogs/Dialog.h"

class CCoordSysX;

class VANTREL1_QT_EXPORT CCSysEpsgDlg : public CDialog {
  Q_OBJECT

 public:
  static constexpr UINT IDD = 20218;
  static constexpr int IDC_CODE = 20210;

  explicit CCSysEpsgDlg(CWnd* parent = nullptr);
  ~CCSysEpsgDlg() override;

  CCoordSysX* GetCSys() const { return m_pCSys.get(); }

  int m_nEPSG = 0;  // the last code entered; 0 for none

 protected:
  // The code into the field (empty for 0).
  virtual void PutValues();
  // Checks the field and builds the system of its code: 1 on success.
  virtual int GetValues();

  // Puts the code into the field and the keyboard focus on it: FALSE, the focus is set.
  BOOL OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;

 private:
  void BuildControls();

  std::unique_ptr<CCoordSysX> m_pCSys;
};
