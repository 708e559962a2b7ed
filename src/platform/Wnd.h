#pragma once
// The framework's command targets and windows, as far as the library's classes build on
// them: run-time class support, a message map per class, and the window handle by which
// the window system knows a window (the clipboard's owner, for instance).
//
// There is no native window behind a CWnd here. A window object has a null handle until
// a handle is attached; a GUI program attaches one that names its main window, a test
// or a headless program may use any value that is unique among its windows.
//
// A class gets a message map of its own with DECLARE_MESSAGE_MAP() at the end of its
// declaration (it leaves the class in `public:`) and, in its source file,
//
//   BEGIN_MESSAGE_MAP(CMyFrame, CMDIFrameWndEx)
//   END_MESSAGE_MAP()
//
// Messages are not dispatched through the maps (the Qt event loop runs the program); the
// maps record each class's entries and its base class's map, as the framework does.
#include "platform/Object.h"
#include "platform/Types.h"

class CCmdTarget;

struct AFX_MSGMAP_ENTRY {
  UINT nMessage;  // 0 ends the map
  UINT nCode;
  UINT nID;
  UINT nLastID;
  UINT_PTR nSig;
  void (CCmdTarget::*pfn)();
};

struct AFX_MSGMAP {
  const AFX_MSGMAP* (*pfnGetBaseMap)();  // null for the root
  const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                       \
 public:                                            \
  const AFX_MSGMAP* GetMessageMap() const override; \
                                                    \
 protected:                                         \
  static const AFX_MSGMAP* GetThisMessageMap();     \
                                                    \
 public:

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                 \
  const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
  const AFX_MSGMAP* theClass::GetThisMessageMap() {                            \
    using TheBaseClass = baseClass;                                            \
    static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                 \
  {0, 0, 0, 0, 0, nullptr}};                                                               \
  static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &entries[0]}; \
  return &messageMap;                                                                      \
  }

class VANTREL1_EXPORT CCmdTarget : public CObject {
  DECLARE_DYNAMIC(CCmdTarget)

 public:
  CCmdTarget() = default;
  // Public so that a map's base link may be followed from outside the class.
  virtual const AFX_MSGMAP* GetMessageMap() const;

 protected:
  static const AFX_MSGMAP* GetThisMessageMap();
};

class VANTREL1_EXPORT CWnd : public CCmdTarget {
  DECLARE_DYNCREATE(CWnd)

 public:
  CWnd() = default;
  // A window that goes away stops being the thread's main window.
  ~CWnd() override;
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;

  // Null while no window is attached.
  HWND GetSafeHwnd() const { return m_hWnd; }
  // Attaches a handle to a window object without one: FALSE for a null handle or when
  // a handle is already attached.
  BOOL Attach(HWND hWnd);
  // The handle that was attached, now released; null when there was none.
  HWND Detach();

  HWND m_hWnd = nullptr;
};

class VANTREL1_EXPORT CFrameWnd : public CWnd {
  DECLARE_DYNCREATE(CFrameWnd)
};

class VANTREL1_EXPORT CMDIFrameWnd : public CFrameWnd {
  DECLARE_DYNCREATE(CMDIFrameWnd)
};

class VANTREL1_EXPORT CMDIFrameWndEx : public CMDIFrameWnd {
  DECLARE_DYNCREATE(CMDIFrameWndEx)
};
