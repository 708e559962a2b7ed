#include "dialogs/CSysAdvDlg.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/CSysEpsgDlg.h"
#include "dialogs/DialogStrings.h"
#include "dialogs/EditText.h"
#include "dialogs/PropertyPage.h"  // the message map's button entries
#include "dialogs/QtText.h"
#include "dialogs/VantrelFileDialog.h"
#include "dialogs/WindowOps.h"
#include "dialogs/WindowState.h"
#include "help/VantrelMainFrame.h"
#include "platform/MessageSink.h"
#include "suite/AppMessages.h"
#include "suite/CoordSysX.h"
#include "suite/VantrelStrings.h"
#include "suite/VantrelWinApp.h"

IMPLEMENT_DYNAMIC(CCSysAdvDlg, CDialog)

BEGIN_MESSAGE_MAP(CCSysAdvDlg, CDialog)
ON_BN_CLICKED(CCSysAdvDlg::IDC_FROM_EPSG, &CCSysAdvDlg::OnFromEPSG)
ON_BN_CLICKED(CCSysAdvDlg::IDC_FROM_FILE, &CCSysAdvDlg::OnFromFile)
ON_BN_CLICKED(CCSysAdvDlg::IDC_TO_FILE, &CCSysAdvDlg::OnToFile)
END_MESSAGE_MAP()

namespace {

using vantrel1::DialogString;
using vantrel1::ToQString;

// The message (platform.str) and the texts (coorddialogs.str).
constexpr UINT kMsgCannotCreate = 21003;
enum : UINT {
  kTitle = 21180,
  kWktLabel,
  kEpsgLabel,
  kEpsgField,
  kFromEpsg,
  kFromFile,
  kToFile,
  kOk,
  kCancel,
};

// WKT2 reads best; a system that cannot be written so is shown as ESRI writes it.
constexpr int kPreferredWktStyle = 3;
constexpr int kFallbackWktStyle = 2;
constexpr int kStrictWkt = 1;

QString Text(UINT id) { return ToQString(DialogString(id)); }

template <typename W>
W* Named(W* widget, int id) {
  widget->setObjectName(QString::number(id));
  return widget;
}

QPushButton* Button(QWidget* parent, UINT text, int id) { return Named(new QPushButton(Text(text), parent), id); }

}  // namespace

CCSysAdvDlg::CCSysAdvDlg(CWnd* parent) : CDialog(IDD, parent), m_pCSys(std::make_unique<CCoordSysX>()) {
  BuildControls();
}

CCSysAdvDlg::~CCSysAdvDlg() = default;

void CCSysAdvDlg::BuildControls() {
  setWindowTitle(Text(kTitle));
  auto* layout = new QVBoxLayout(this);
  auto* wkt = Named(new QPlainTextEdit(this), IDC_WKT);
  // Long WKT lines scroll rather than wrap, so that the text's own layout shows.
  wkt->setLineWrapMode(QPlainTextEdit::NoWrap);
  wkt->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  wkt->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  wkt->setTabChangesFocus(true);
  wkt->setMinimumSize(520, 300);
  auto* caption = new QLabel(Text(kWktLabel), this);
  caption->setBuddy(wkt);
  layout->addWidget(caption);
  layout->addWidget(wkt, 1);

  auto* epsg = new QHBoxLayout;
  epsg->addWidget(Named(new QLabel(Text(kEpsgLabel), this), IDC_EPSG_LABEL));
  auto* code = Named(new QLabel(Text(kEpsgField), this), IDC_EPSG);
  code->setTextInteractionFlags(Qt::TextSelectableByMouse);
  epsg->addWidget(code, 1);
  layout->addLayout(epsg);

  auto* buttons = new QHBoxLayout;
  QPushButton* fromEpsg = Button(this, kFromEpsg, IDC_FROM_EPSG);
  QPushButton* fromFile = Button(this, kFromFile, IDC_FROM_FILE);
  QPushButton* toFile = Button(this, kToFile, IDC_TO_FILE);
  QPushButton* ok = Button(this, kOk, IDOK);
  QPushButton* cancel = Button(this, kCancel, IDCANCEL);
  for (QPushButton* button : {fromEpsg, fromFile, toFile}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  ok->setDefault(true);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);

  connect(fromEpsg, &QPushButton::clicked, this, [this] { OnFromEPSG(); });
  connect(fromFile, &QPushButton::clicked, this, [this] { OnFromFile(); });
  connect(toFile, &QPushButton::clicked, this, [this] { OnToFile(); });
  connect(ok, &QPushButton::clicked, this, [this] { accept(); });
  connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
}

void CCSysAdvDlg::InitCSys(const CCoordSysX& csys) { *m_pCSys = csys; }

INT_PTR CCSysAdvDlg::DoModal() {
  CVantrelMainFrame* frame = CVantrelMainFrame::GetMainFrame();
  CVantrelHelp* help = frame ? frame->GetHelp() : nullptr;
  CStdStrW previousTopic;
  if (help) previousTopic = help->SetTopicIndex(kHelpTopic);
  const INT_PTR result = CDialog::DoModal();
  if (help) help->SetTopicIndex(previousTopic);
  return result;
}

BOOL CCSysAdvDlg::OnInitDialog() {
  CDialog::OnInitDialog();
  PutValues();
  return TRUE;
}

void CCSysAdvDlg::PutValues() {
  CStdStrW wkt;
  if (!m_pCSys->ToWktStr(&wkt, nullptr, kPreferredWktStyle)) m_pCSys->ToWktStr(&wkt, nullptr, kFallbackWktStyle);
  wkt.Replace(u"\n", u"\r\n");
  SetEditText(GetSafeHwnd(), IDC_WKT, wkt);

  m_strEPSG.Empty();
  if (m_pCSys->IsValid()) m_pCSys->GetEPSG(&m_strEPSG);
  ShowWindow(GetDlgItem(GetSafeHwnd(), IDC_EPSG_LABEL), m_strEPSG.IsEmpty() ? SW_HIDE : SW_SHOW);
  EnableWindow(GetDlgItem(GetSafeHwnd(), IDC_TO_FILE), m_pCSys->IsDefinedCSys() ? TRUE : FALSE);
  UpdateData(FALSE);
}

int CCSysAdvDlg::GetValues() { return UpdateData(TRUE) ? 1 : 0; }

void CCSysAdvDlg::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  DDX_Text(exchange, IDC_EPSG, m_strEPSG);
}

int CCSysAdvDlg::BuildCSys(CStdStrW* error) {
  const CStdStrW text = GetEditText(GetSafeHwnd(), IDC_WKT);
  CCoordSysX built;
  if (!built.FromWktStr(text.c_str(), kStrictWkt)) {
    if (error) *error = DialogString(kMsgCannotCreate);
    return 0;
  }
  *m_pCSys = built;
  return 1;
}

void CCSysAdvDlg::OnOK() {
  if (!GetValues()) return;
  // An untouched text is not read back: the system stays exactly as it was set, also
  // when its WKT would not parse again.
  if (!GetEditTextModify(GetSafeHwnd(), IDC_WKT)) {
    EndDialog(IDOK);
    return;
  }
  CStdStrW message;
  if (!BuildCSys(&message)) {
    AfxMessageBox(message.c_str(), MB_OK);
    return;
  }
  EndDialog(IDOK);
}

void CCSysAdvDlg::OnFromEPSG() {
  CCSysEpsgDlg dlg(nullptr);
  if (dlg.DoModal() != IDOK) return;
  *m_pCSys = *dlg.GetCSys();
  PutValues();
}

void CCSysAdvDlg::OnFromFile() {
  const CStdStrW filter =
      LoadVantrelString(VSTR_PROJECTION_FILE_FILTER) + u"|" + LoadVantrelString(VSTR_ALL_FILES_FILTER) + u"|";
  CVantrelFileDialog dlg(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST | OFN_LONGNAMES, filter.c_str(), nullptr, nullptr);
  if (dlg.DoModal() != IDOK) return;
  // A file that cannot be read leaves the system as it was; the text shows which it is.
  m_pCSys->FromWktFileESRI(dlg.GetPathName().c_str());
  PutValues();
}

void CCSysAdvDlg::OnToFile() {
  const CStdStrW filter = LoadVantrelString(VSTR_PROJECTION_FILE_FILTER) + u"|" + u"|";
  CVantrelFileDialog dlg(FALSE, nullptr, nullptr, OFN_OVERWRITEPROMPT, filter.c_str(), nullptr, nullptr);
  if (dlg.DoModal() != IDOK) return;
  const CStdStrW path = dlg.GetPathName();
  if (!m_pCSys->ToWktFileESRI(GetVantrelAppBase(), path.c_str())) AppError(VMSG_CANNOT_WRITE_PROJECTION, nullptr, path);
}
