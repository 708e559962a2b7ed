#include "dialogs/CSysEpsgDlg.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/DialogStrings.h"
#include "dialogs/EditText.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"
#include "platform/MessageSink.h"
#include "platform/WideCrt.h"
#include "suite/CoordSysX.h"
#include "suite/VantrelWinApp.h"

namespace {

// Messages (platform.str) and texts (coorddialogs.str).
constexpr UINT kMsgEnterNumber = 21004;
constexpr UINT kMsgNotANumber = 21005;
constexpr UINT kTitle = 21189;
constexpr UINT kOk = 21187;
constexpr UINT kCancel = 21188;

constexpr std::u16string_view kDigits = u"0123456789";

QString Text(UINT id) { return vantrel1::ToQString(vantrel1::DialogString(id)); }

}  // namespace

CCSysEpsgDlg::CCSysEpsgDlg(CWnd* parent) : CDialog(IDD, parent), m_pCSys(std::make_unique<CCoordSysX>()) {
  BuildControls();
}

CCSysEpsgDlg::~CCSysEpsgDlg() = default;

void CCSysEpsgDlg::BuildControls() {
  setWindowTitle(Text(kTitle));
  auto* layout = new QVBoxLayout(this);
  auto* code = new QLineEdit(this);
  code->setObjectName(QString::number(IDC_CODE));
  layout->addWidget(code);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* ok = new QPushButton(Text(kOk), this);
  ok->setObjectName(QString::number(IDOK));
  ok->setDefault(true);
  auto* cancel = new QPushButton(Text(kCancel), this);
  cancel->setObjectName(QString::number(IDCANCEL));
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this] { accept(); });
  connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
}

BOOL CCSysEpsgDlg::OnInitDialog() {
  CDialog::OnInitDialog();
  PutValues();
  if (QWidget* code = WidgetFromHwnd(GetDlgItem(GetSafeHwnd(), IDC_CODE))) code->setFocus(Qt::OtherFocusReason);
  return FALSE;
}

void CCSysEpsgDlg::PutValues() {
  CStdStrW text;
  if (m_nEPSG != 0) text.Format(u"%d", m_nEPSG);
  SetEditText(GetSafeHwnd(), IDC_CODE, text);
  UpdateData(FALSE);
}

int CCSysEpsgDlg::GetValues() {
  const CVantrelAppBaseX* context = GetVantrelAppBase();
  if (!UpdateData(TRUE)) return 0;
  const CStdStrW text = GetEditText(GetSafeHwnd(), IDC_CODE);
  if (text.empty()) {
    AfxMessageBox(kMsgEnterNumber, MB_OK);
    return 0;
  }
  // Digits only: a sign, a blank or a separator anywhere makes it no code.
  if (text.find_first_not_of(kDigits) != CStdStrW::npos) {
    AfxMessageBox(kMsgNotANumber, MB_OK);
    return 0;
  }
  m_nEPSG = _wtoi(text.c_str());
  // A code the registry does not know, or one of a local system, keeps the dialog open
  // without a message.
  return m_pCSys->FromEPSG(context, m_nEPSG, 1) ? 1 : 0;
}

void CCSysEpsgDlg::OnOK() {
  if (GetValues()) EndDialog(IDOK);
}

void CCSysEpsgDlg::DoDataExchange(CDataExchange* exchange) { CDialog::DoDataExchange(exchange); }
