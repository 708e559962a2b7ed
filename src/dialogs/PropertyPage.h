#pragma once
// CPropertyPage: a dialog that works as a page of a property sheet and alone as a modal
// dialog. A sheet embeds the page as a child widget (Embed), runs OnInitDialog once, and
// calls OnSetActive when the page comes to the front and OnKillActive before it leaves; a
// page that refuses to leave (OnKillActive returns FALSE) stays in front. Run alone,
// DoModal activates the page after OnInitDialog, and OK leaves it (OnKillActive) before
// the dialog closes, so a page behaves the same way in both settings.
//
// The message map records the page's button handlers, as the framework's maps do; the
// clicks themselves reach the handlers through ConnectClicked (Qt's signals), since
// calling a derived class's handler through the map's base-class member pointer is not
// something portable C++ promises.
#include <functional>

#include <QKeyEvent>

#include "dialogs/Dialog.h"

constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT BN_CLICKED = 0;

// A message on its way to a window, as PreTranslateMessage sees it.
struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
};

// An entry of a message map: ON_BN_CLICKED(IDOK, &CMyPage::OnBnClickedOk)
#define ON_BN_CLICKED(id, memberFxn) \
  {WM_COMMAND, BN_CLICKED, (id), (id), 0, static_cast<void (CCmdTarget::*)()>(memberFxn)},

class VANTREL1_QT_EXPORT CPropertyPage : public CDialog {
  Q_OBJECT
  DECLARE_DYNAMIC(CPropertyPage)

 public:
  explicit CPropertyPage(UINT templateId);
  ~CPropertyPage() override;

  // Makes the page a child of `container` (a sheet's page area).
  void Embed(QWidget* container);
  bool IsEmbedded() const { return !isWindow(); }

  INT_PTR DoModal() override;
  // The page comes to the front: TRUE.
  virtual BOOL OnSetActive();
  // The page is about to be left: the controls are saved into the fields; FALSE (the page
  // stays) when they do not validate.
  virtual BOOL OnKillActive();
  // TRUE when the message was handled and must not be dispatched. The page's own
  // pre-translation hands nothing on: FALSE.
  virtual BOOL PreTranslateMessage(MSG* msg);

  // The message map's BN_CLICKED entry for button `id`, else null.
  const AFX_MSGMAP_ENTRY* FindClickedEntry(int id) const;

 protected:
  // Alone: leaves the page, then closes with IDOK. In a sheet the sheet does both.
  void OnOK() override;
  void OnCancel() override;
  // The plain dialog's pre-translation, for pages that route messages as a dialog does:
  // FALSE, leaving the keys to the dialog's own keyboard handling.
  BOOL DialogPreTranslateMessage(MSG* msg);
  // Calls `handler` whenever the button or check box `id` is clicked; FALSE when the page
  // has no such control.
  BOOL ConnectClicked(int id, std::function<void()> handler);
  // Centres a page run alone on its owner (on the screen without one).
  void CenterWindow();

  void keyPressEvent(QKeyEvent* event) override;

  DECLARE_MESSAGE_MAP()
};
