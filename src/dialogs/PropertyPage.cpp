#include "dialogs/PropertyPage.h"

#include <QAbstractButton>
#include <QScreen>

#include "dialogs/WindowOps.h"

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)

BEGIN_MESSAGE_MAP(CPropertyPage, CDialog)
END_MESSAGE_MAP()

namespace {

const AFX_MSGMAP_ENTRY* FindClicked(const AFX_MSGMAP* map, UINT id) {
  for (; map != nullptr; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
    for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nMessage != 0; ++entry) {
      if (entry->nMessage == WM_COMMAND && entry->nCode == BN_CLICKED && entry->nID <= id && id <= entry->nLastID)
        return entry;
    }
  }
  return nullptr;
}

}  // namespace

CPropertyPage::CPropertyPage(UINT templateId) : CDialog(templateId, nullptr) {}

CPropertyPage::~CPropertyPage() = default;

void CPropertyPage::Embed(QWidget* container) { setParent(container, Qt::Widget); }

INT_PTR CPropertyPage::DoModal() {
  setResult(IDCANCEL);
  OnInitDialog();
  OnSetActive();
  return exec();
}

BOOL CPropertyPage::OnSetActive() { return TRUE; }

BOOL CPropertyPage::OnKillActive() { return UpdateData(TRUE); }

BOOL CPropertyPage::PreTranslateMessage(MSG* /*msg*/) { return FALSE; }

BOOL CPropertyPage::DialogPreTranslateMessage(MSG* /*msg*/) { return FALSE; }

const AFX_MSGMAP_ENTRY* CPropertyPage::FindClickedEntry(int id) const {
  return id < 0 ? nullptr : FindClicked(GetMessageMap(), static_cast<UINT>(id));
}

void CPropertyPage::OnOK() {
  if (IsEmbedded()) return;
  if (OnKillActive()) EndDialog(IDOK);
}

void CPropertyPage::OnCancel() {
  if (!IsEmbedded()) EndDialog(IDCANCEL);
}

BOOL CPropertyPage::ConnectClicked(int id, std::function<void()> handler) {
  auto* button = qobject_cast<QAbstractButton*>(WidgetFromHwnd(GetDlgItem(GetSafeHwnd(), id)));
  if (button == nullptr || !handler) return FALSE;
  connect(button, &QAbstractButton::clicked, this, [handler = std::move(handler)] { handler(); });
  return TRUE;
}

void CPropertyPage::CenterWindow() {
  if (IsEmbedded()) return;
  adjustSize();
  QRect area;
  if (QWidget* owner = parentWidget()) {
    area = owner->frameGeometry();
  } else if (QScreen* screen = this->screen()) {
    area = screen->availableGeometry();
  } else {
    return;
  }
  QRect frame = frameGeometry();
  frame.moveCenter(area.center());
  move(frame.topLeft());
}

void CPropertyPage::keyPressEvent(QKeyEvent* event) {
  MSG msg{GetSafeHwnd(), WM_KEYDOWN, static_cast<WPARAM>(event->key()), 0};
  if (PreTranslateMessage(&msg)) {
    event->accept();
    return;
  }
  // A page inside a sheet never closes itself: Enter and Escape belong to the sheet.
  const int key = event->key();
  if (IsEmbedded() && (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)) {
    event->ignore();
    return;
  }
  CDialog::keyPressEvent(event);
}
