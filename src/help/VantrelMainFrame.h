#pragma once
// CVantrelMainFrame: the main frame of a suite program that shows help. Besides the
// clipboard of every main frame it owns the program's help object, whose topic the
// dialogs swap while they are open:
//
//     CVantrelMainFrame* frame = CVantrelMainFrame::GetMainFrame();
//     CStdStrW previous;
//     if (frame && frame->GetHelp()) previous = frame->GetHelp()->SetTopicIndex(u"Edit Projection.htm");
//     ... run the dialog ...
//     if (frame && frame->GetHelp()) frame->GetHelp()->SetTopicIndex(previous);
#include <memory>

#include "clipboard/Vantrel1Frame.h"
#include "help/VantrelHelp.h"

class VANTREL1_QT_EXPORT CVantrelMainFrame : public CVantrel1Frame {
  DECLARE_DYNCREATE(CVantrelMainFrame)

 public:
  // With a plain CVantrelHelp.
  CVantrelMainFrame();
  ~CVantrelMainFrame() override;

  // The frame's help object; null only after SetHelp(nullptr).
  CVantrelHelp* GetHelp() const { return m_pHelp.get(); }
  // Replaces the help object (a program's own kind, with online help) and frees the old one.
  void SetHelp(std::unique_ptr<CVantrelHelp> help);

  // The thread's main window when it is a CVantrelMainFrame, else null.
  static CVantrelMainFrame* GetMainFrame();

 private:
  std::unique_ptr<CVantrelHelp> m_pHelp;

  DECLARE_MESSAGE_MAP()
};
