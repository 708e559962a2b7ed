#include "dialogs/CoordDlg.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/DataExchange.h"
#include "dialogs/DialogStrings.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"
#include "dialogs/WindowState.h"
#include "help/VantrelHelp.h"
#include "suite/RotateTranslateX.h"

IMPLEMENT_DYNAMIC(CCoordDlg, CPropertyPage)

BEGIN_MESSAGE_MAP(CCoordDlg, CPropertyPage)
ON_BN_CLICKED(IDOK, &CCoordDlg::OnBnClickedOk)
ON_BN_CLICKED(IDCANCEL, &CCoordDlg::OnBnClickedCancel)
ON_BN_CLICKED(CCoordDlg::IDC_CENTER_SCREEN, &CCoordDlg::OnBnClickedCenterScreen)
ON_BN_CLICKED(CCoordDlg::IDC_DISABLE, &CCoordDlg::OnClickedDisable)
END_MESSAGE_MAP()

namespace {

using vantrel1::DialogString;
using vantrel1::ToQString;

// String ids of the page's texts (resources/strings/dialogs.str).
enum : UINT {
  kTitle = 21150,
  kDisable,
  kRotation,
  kAngle,
  kAngleNote,
  kOrigin,
  kOriginNote,
  kOriginX,
  kOriginY,
  kOriginZ,
  kShift,
  kShiftX,
  kShiftY,
  kShiftZ,
  kCenterScreen,
  kScale,
  kScaleX,
  kScaleY,
  kScaleZ,
  kNoteScaled,
  kNoteUnscaled,
  kOk,
  kCancel,
};

constexpr double kPi = 3.141592653589793;

// The edit fields in the order in which the user's changes are looked for.
constexpr int kEdits[] = {CCoordDlg::IDC_ORIGIN_X, CCoordDlg::IDC_ORIGIN_Y, CCoordDlg::IDC_ANGLE,
                          CCoordDlg::IDC_SHIFT_X,  CCoordDlg::IDC_SHIFT_Y,  CCoordDlg::IDC_SHIFT_Z,
                          CCoordDlg::IDC_SCALE_X,  CCoordDlg::IDC_SCALE_Y,  CCoordDlg::IDC_SCALE_Z,
                          CCoordDlg::IDC_ORIGIN_Z};

// What is offered only with scaling: the scale group, its note, the scale fields and the
// Z origin with its label.
constexpr int kScaleOnly[] = {CCoordDlg::IDC_SCALE_GROUP,   CCoordDlg::IDC_NOTE_SCALED,   CCoordDlg::IDC_SCALE_X_LABEL,
                              CCoordDlg::IDC_SCALE_Y_LABEL, CCoordDlg::IDC_SCALE_Z_LABEL, CCoordDlg::IDC_SCALE_X,
                              CCoordDlg::IDC_SCALE_Y,       CCoordDlg::IDC_SCALE_Z,       CCoordDlg::IDC_ORIGIN_Z_LABEL,
                              CCoordDlg::IDC_ORIGIN_Z};

// Disabled together by "Onemogući". The horizontal shifts also follow "Centar na ekranu";
// the Z shift deliberately does not, since the view gives no elevation.
constexpr int kDisabledWithDisable[] = {CCoordDlg::IDC_ANGLE,   CCoordDlg::IDC_ORIGIN_X, CCoordDlg::IDC_ORIGIN_Y,
                                        CCoordDlg::IDC_ORIGIN_Z, CCoordDlg::IDC_SHIFT_Z, CCoordDlg::IDC_SCALE_X,
                                        CCoordDlg::IDC_SCALE_Y,  CCoordDlg::IDC_SCALE_Z, CCoordDlg::IDC_CENTER_SCREEN};

QString Text(UINT id) { return ToQString(DialogString(id)); }

template <typename W>
W* Named(W* widget, int id) {
  widget->setObjectName(QString::number(id));
  return widget;
}

QLineEdit* Edit(QWidget* parent, int id) { return Named(new QLineEdit(parent), id); }

// A labelled edit field on the next row of `grid`; the label gets an id when it has one.
void AddRow(QGridLayout* grid, QWidget* parent, UINT label, int editId, int labelId = 0) {
  auto* caption = new QLabel(Text(label), parent);
  if (labelId != 0) Named(caption, labelId);
  QLineEdit* edit = Edit(parent, editId);
  caption->setBuddy(edit);
  const int row = grid->rowCount();
  grid->addWidget(caption, row, 0);
  grid->addWidget(edit, row, 1);
}

QLabel* Note(QWidget* parent, UINT text) {
  auto* note = new QLabel(Text(text), parent);
  note->setWordWrap(true);
  return note;
}

QGroupBox* Group(QWidget* parent, UINT title, QGridLayout*& grid) {
  auto* group = new QGroupBox(Text(title), parent);
  grid = new QGridLayout(group);
  return group;
}

}  // namespace

CCoordDlg::CCoordDlg(int standalone) : CPropertyPage(IDD), m_bStandalone(standalone) {
  BuildControls();
  ConnectClicked(IDOK, [this] { OnBnClickedOk(); });
  ConnectClicked(IDCANCEL, [this] { OnBnClickedCancel(); });
  ConnectClicked(IDC_CENTER_SCREEN, [this] { OnBnClickedCenterScreen(); });
  ConnectClicked(IDC_DISABLE, [this] { OnClickedDisable(); });
}

CCoordDlg::~CCoordDlg() = default;

void CCoordDlg::BuildControls() {
  setWindowTitle(Text(kTitle));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Named(new QCheckBox(Text(kDisable), this), IDC_DISABLE));

  QGridLayout* grid = nullptr;
  QGroupBox* rotation = Group(this, kRotation, grid);
  AddRow(grid, rotation, kAngle, IDC_ANGLE);
  grid->addWidget(Note(rotation, kAngleNote), grid->rowCount(), 0, 1, 2);
  layout->addWidget(rotation);

  QGroupBox* origin = Group(this, kOrigin, grid);
  grid->addWidget(Note(origin, kOriginNote), 0, 0, 1, 2);
  AddRow(grid, origin, kOriginX, IDC_ORIGIN_X);
  AddRow(grid, origin, kOriginY, IDC_ORIGIN_Y);
  AddRow(grid, origin, kOriginZ, IDC_ORIGIN_Z, IDC_ORIGIN_Z_LABEL);
  layout->addWidget(origin);

  QGroupBox* shift = Group(this, kShift, grid);
  AddRow(grid, shift, kShiftX, IDC_SHIFT_X);
  AddRow(grid, shift, kShiftY, IDC_SHIFT_Y);
  AddRow(grid, shift, kShiftZ, IDC_SHIFT_Z);
  grid->addWidget(Named(new QCheckBox(Text(kCenterScreen), shift), IDC_CENTER_SCREEN), grid->rowCount(), 0, 1, 2);
  layout->addWidget(shift);

  QGroupBox* scale = Named(Group(this, kScale, grid), IDC_SCALE_GROUP);
  AddRow(grid, scale, kScaleX, IDC_SCALE_X, IDC_SCALE_X_LABEL);
  AddRow(grid, scale, kScaleY, IDC_SCALE_Y, IDC_SCALE_Y_LABEL);
  AddRow(grid, scale, kScaleZ, IDC_SCALE_Z, IDC_SCALE_Z_LABEL);
  layout->addWidget(scale);

  layout->addWidget(Named(Note(this, kNoteScaled), IDC_NOTE_SCALED));
  layout->addWidget(Named(Note(this, kNoteUnscaled), IDC_NOTE_UNSCALED));

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* ok = Named(new QPushButton(Text(kOk), this), IDOK);
  ok->setDefault(true);
  buttons->addWidget(ok);
  buttons->addWidget(Named(new QPushButton(Text(kCancel), this), IDCANCEL));
  layout->addLayout(buttons);
}

void CCoordDlg::ShowItem(int id, bool show) { ShowWindow(::GetDlgItem(GetSafeHwnd(), id), show ? SW_SHOW : SW_HIDE); }

void CCoordDlg::EnableItem(int id, bool enable) { EnableWindow(::GetDlgItem(GetSafeHwnd(), id), enable ? TRUE : FALSE); }

void CCoordDlg::Init(const CRotateTranslateX& rt, int bScale) {
  m_dOriginX = rt.GetOriginX();
  m_dOriginY = rt.GetOriginY();
  m_dAngle = rt.GetAngle() * 180.0 / kPi;
  m_dShiftX = rt.GetShiftX();
  m_dShiftY = rt.GetShiftY();
  m_dShiftZ = rt.GetShiftZ();
  m_bScale = bScale;
  m_dScaleX = bScale ? rt.GetScaleX() : 1.0;
  m_dScaleY = bScale ? rt.GetScaleY() : 1.0;
  m_dScaleZ = bScale ? rt.GetScaleZ() : 1.0;
  m_dOriginZ = bScale ? rt.GetOriginZ() : 0.0;
  const DWORD flags = rt.GetFlags();
  m_bCenterAllowed = (flags & CRotateTranslateX::kCenterAllowed) ? 1 : 0;
  const DWORD centred = CRotateTranslateX::kCenterAllowed | CRotateTranslateX::kCenterOn;
  m_bCenterScreen = (flags & centred) == centred ? 1 : 0;
  if (m_bCenterScreen) {
    m_dShiftX = 0.0;
    m_dShiftY = 0.0;
    m_dShiftZ = 0.0;
  }
}

void CCoordDlg::Init() {
  m_dAngle = 0.0;
  m_dShiftX = 0.0;
  m_dShiftY = 0.0;
  m_dShiftZ = 0.0;
  m_dScaleX = 1.0;
  m_dScaleY = 1.0;
  m_dScaleZ = 1.0;
}

void CCoordDlg::UpdateFromDlg(CRotateTranslateX* rt) {
  if (rt == nullptr) return;
  rt->SetOriginX(m_dOriginX);
  rt->SetOriginY(m_dOriginY);
  rt->SetAngleDegrees(m_dAngle);
  rt->SetShiftX(m_dShiftX);
  rt->SetShiftY(m_dShiftY);
  rt->SetShiftZ(m_dShiftZ);
  rt->SetScaleX(m_dScaleX);
  rt->SetScaleY(m_dScaleY);
  rt->SetScaleZ(m_dScaleZ);
  rt->SetOriginZ(m_dOriginZ);
  const DWORD flags = rt->GetFlags();
  rt->SetFlags(m_bCenterScreen == 1 ? flags | CRotateTranslateX::kCenterOn : flags & ~CRotateTranslateX::kCenterOn);
}

int CCoordDlg::InitTranslation(CRotTransCoord* rt) {
  m_pRotTrans = rt;
  UpdateFromDlg(m_pRotTrans);
  return 1;
}

int CCoordDlg::IsDisabled() const {
  return m_dAngle == 0.0 && m_dShiftX == 0.0 && m_dShiftY == 0.0 && m_dShiftZ == 0.0 && m_dScaleX == 1.0 &&
                 m_dScaleY == 1.0 && m_dScaleZ == 1.0
             ? 1
             : 0;
}

BOOL CCoordDlg::OnInitDialog() {
  ShowItem(IDOK, m_bStandalone != 0);
  ShowItem(IDCANCEL, m_bStandalone != 0);
  for (const int id : kScaleOnly) ShowItem(id, m_bScale != 0);
  ShowItem(IDC_NOTE_UNSCALED, m_bScale == 0);
  ShowItem(IDC_CENTER_SCREEN, m_bCenterAllowed != 0);
  m_bDisable = IsDisabled();
  Put();
  CenterWindow();
  CPropertyPage::OnInitDialog();
  return TRUE;
}

void CCoordDlg::Put() {
  if (m_bDisable) Init();
  for (const int id : kDisabledWithDisable) EnableItem(id, m_bDisable == 0);
  const bool shiftsOwn = m_bDisable == 0 && m_bCenterScreen == 0;
  EnableItem(IDC_SHIFT_X, shiftsOwn);
  EnableItem(IDC_SHIFT_Y, shiftsOwn);
}

void CCoordDlg::CheckModified() {
  if (m_bModified) return;
  for (const int id : kEdits) {
    if (GetEditModify(GetSafeHwnd(), id)) {
      m_bModified = 1;
      return;
    }
  }
}

void CCoordDlg::DoDataExchange(CDataExchange* exchange) {
  CheckModified();
  CPropertyPage::DoDataExchange(exchange);
  DDX_Text(exchange, IDC_ORIGIN_X, m_dOriginX);
  DDX_Text(exchange, IDC_ORIGIN_Y, m_dOriginY);
  DDX_Text(exchange, IDC_ANGLE, m_dAngle);
  DDV_MinMaxDouble(exchange, IDC_ANGLE, m_dAngle, -360.0, 360.0);
  DDX_Text(exchange, IDC_SHIFT_X, m_dShiftX);
  DDX_Text(exchange, IDC_SHIFT_Y, m_dShiftY);
  DDX_Text(exchange, IDC_SHIFT_Z, m_dShiftZ);
  DDX_Text(exchange, IDC_SCALE_X, m_dScaleX);
  DDX_Text(exchange, IDC_SCALE_Y, m_dScaleY);
  DDX_Text(exchange, IDC_SCALE_Z, m_dScaleZ);
  DDX_Text(exchange, IDC_ORIGIN_Z, m_dOriginZ);
  DDX_Check(exchange, IDC_CENTER_SCREEN, m_bCenterScreen);
  DDX_Check(exchange, IDC_DISABLE, m_bDisable);
}

void CCoordDlg::OnBnClickedOk() { CPropertyPage::OnOK(); }

void CCoordDlg::OnBnClickedCancel() { CPropertyPage::OnCancel(); }

void CCoordDlg::OnBnClickedCenterScreen() {
  if (UpdateData(TRUE)) Put();
}

void CCoordDlg::OnClickedDisable() {
  UpdateData(TRUE);
  Put();
  UpdateData(FALSE);
}

BOOL CCoordDlg::OnSetActive() {
  // The previous topic is not kept: the sheet's owner restores its own when it closes.
  if (m_pHelp != nullptr) m_pHelp->SetTopicIndex(m_strHelpTopic);
  return CPropertyPage::OnSetActive();
}

BOOL CCoordDlg::OnKillActive() {
  if (!UpdateData(TRUE)) return 0;
  if (m_pRotTrans != nullptr) UpdateFromDlg(m_pRotTrans);
  return CPropertyPage::OnKillActive();
}

// Inside a sheet the page pre-translates as a plain dialog, alone as a property page: the
// pairing looks reversed and is deliberate, the suite's pages have always routed so.
BOOL CCoordDlg::PreTranslateMessage(MSG* msg) {
  if (m_bStandalone == 0) return DialogPreTranslateMessage(msg);
  return CPropertyPage::PreTranslateMessage(msg);
}
