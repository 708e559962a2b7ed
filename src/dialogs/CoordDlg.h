#pragma once
// CCoordDlg ("Rotiraj/Prevedi/Skaliraj"): edits a plane coordinate transformation, a
// rotation about an origin, optional scale factors and shifts, or none at all. It serves
// as a page of a property sheet and, constructed stand-alone, as a modal dialog with its
// own OK and Cancel buttons.
//
//     CCoordDlg page(TRUE);
//     page.Init(transformation, TRUE);
//     page.m_pHelp = &help;
//     page.m_strHelpTopic = u"vtrl0412.htm";
//     if (page.DoModal() == IDOK) page.UpdateFromDlg(&transformation);
//
// The fields are public, as the suite's owners read and seed them directly.
#include "dialogs/PropertyPage.h"
#include "platform/StdStr.h"

class CRotateTranslateX;
class CRotTransCoord;
class CVantrelHelp;

class VANTREL1_QT_EXPORT CCoordDlg : public CPropertyPage {
  Q_OBJECT
  DECLARE_DYNAMIC(CCoordDlg)

 public:
  static constexpr UINT IDD = 20201;
  static constexpr int IDC_ORIGIN_X = 20210;
  static constexpr int IDC_ORIGIN_Y = 20211;
  static constexpr int IDC_ANGLE = 20212;
  static constexpr int IDC_SHIFT_X = 20213;
  static constexpr int IDC_SHIFT_Y = 20214;
  static constexpr int IDC_SHIFT_Z = 20215;
  static constexpr int IDC_SCALE_X = 20218;
  static constexpr int IDC_SCALE_Y = 20219;
  static constexpr int IDC_SCALE_Z = 20220;
  static constexpr int IDC_SCALE_GROUP = 20221;
  static constexpr int IDC_NOTE_SCALED = 20222;
  static constexpr int IDC_NOTE_UNSCALED = 20223;
  static constexpr int IDC_SCALE_X_LABEL = 20224;
  static constexpr int IDC_SCALE_Y_LABEL = 20225;
  static constexpr int IDC_SCALE_Z_LABEL = 20226;
  static constexpr int IDC_ORIGIN_Z = 20227;
  static constexpr int IDC_ORIGIN_Z_LABEL = 20230;
  static constexpr int IDC_CENTER_SCREEN = 20231;
  static constexpr int IDC_DISABLE = 20232;

  explicit CCoordDlg(int standalone);
  ~CCoordDlg() override;

  // Transformation to fields. Without scaling the scale factors are 1 and the Z origin 0.
  void Init(const CRotateTranslateX& rt, int bScale);
  // Fields to transformation, scale factors and Z origin included whatever m_bScale says.
  void UpdateFromDlg(CRotateTranslateX* rt);
  // Binds the transformation updated whenever the page is left, and updates it now: 1.
  int InitTranslation(CRotTransCoord* rt);
  // 1 when no rotation, shift or scaling is set (the origin alone changes nothing).
  int IsDisabled() const;

  double m_dOriginX = 0.0;
  double m_dOriginY = 0.0;
  double m_dAngle = 0.0;  // degrees, counter-clockwise
  double m_dShiftX = 0.0;
  double m_dShiftY = 0.0;
  double m_dShiftZ = 0.0;
  double m_dScaleX = 1.0;
  double m_dScaleY = 1.0;
  double m_dScaleZ = 1.0;
  double m_dOriginZ = 0.0;
  int m_bCenterScreen = 0;
  int m_bStandalone = 0;
  int m_bScale = 1;
  int m_bCenterAllowed = 0;
  int m_bModified = 0;  // latched once the user edits any field
  int m_bDisable = 0;
  CVantrelHelp* m_pHelp = nullptr;  // not owned
  CStdStrW m_strHelpTopic;
  CRotTransCoord* m_pRotTrans = nullptr;  // not owned

 protected:
  void Init();
  void Put();
  void CheckModified();
  void OnBnClickedOk();
  void OnBnClickedCancel();
  void OnBnClickedCenterScreen();
  void OnClickedDisable();

  void DoDataExchange(CDataExchange* exchange) override;
  BOOL OnInitDialog() override;
  BOOL OnSetActive() override;
  BOOL OnKillActive() override;
  BOOL PreTranslateMessage(MSG* msg) override;

 private:
  void BuildControls();
  void ShowItem(int id, bool show);
  void EnableItem(int id, bool enable);

  DECLARE_MESSAGE_MAP()
};
