#pragma once
// CCSysAdvDlg ("Uredi projekciju"): edits a project's coordinate system as Well-Known
// Text, showing its EPSG code when it has one. The system can be typed or pasted as WKT,
// taken from an EPSG code (CCSysEpsgDlg), read from an ESRI projection file (.prj) or
// written to one.
//
//     CCSysAdvDlg dlg(frame);
//     dlg.InitCSys(project.CoordSys());
//     if (dlg.DoModal() == IDOK) project.SetCoordSys(*dlg.GetCSys());
//
// OK takes the text only when the user changed it: a system set by InitCSys, an EPSG
// code or a file is kept exactly, even one whose WKT would not read back. After Cancel
// the dialog's system may already have been changed by the EPSG or file buttons and is to
// be ignored.
#include <memory>

#include "dialogs/Dialog.h"
#include "platform/StdStr.h"

class CCoordSysX;

class VANTREL1_QT_EXPORT CCSysAdvDlg : public CDialog {
  Q_OBJECT
  DECLARE_DYNAMIC(CCSysAdvDlg)

 public:
  static constexpr UINT IDD = 20236;
  static constexpr int IDC_WKT = 20210;
  static constexpr int IDC_EPSG = 20221;
  static constexpr int IDC_EPSG_LABEL = 20222;
  static constexpr int IDC_FROM_EPSG = 20251;
  static constexpr int IDC_FROM_FILE = 20252;
  static constexpr int IDC_TO_FILE = 20253;
  // The help page shown while the dialog is open.
  static constexpr const WCHAR* kHelpTopic = u"Edit Projection.htm";

  explicit CCSysAdvDlg(CWnd* parent = nullptr);
  ~CCSysAdvDlg() override;

  // Copies `csys` into the dialog; call before DoModal.
  void InitCSys(const CCoordSysX& csys);
  // The dialog's system, valid as long as the dialog.
  CCoordSysX* GetCSys() const { return m_pCSys.get(); }

  // Shows the dialog with the main frame's help on this dialog's page, and puts the
  // frame's previous page back afterwards.
  INT_PTR DoModal() override;

  void OnFromEPSG();
  void OnFromFile();
  void OnToFile();

  CStdStrW m_strEPSG;  // the code shown in the "EPSG#" field; empty when there is none

 protected:
  // The system into the controls.
  virtual void PutValues();
  // The controls into the fields; 1 on success.
  virtual int GetValues();

  BOOL OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;

 private:
  void BuildControls();
  // The edit's text as the dialog's system: 1; 0 with `error`, when given, set to the
  // message to show, and the system unchanged.
  int BuildCSys(CStdStrW* error);

  std::unique_ptr<CCoordSysX> m_pCSys;

  DECLARE_MESSAGE_MAP()
};
