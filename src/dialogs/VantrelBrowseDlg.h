#pragma once
// CVantrelBrowseDlg: the shell's folder picker, rooted at a given folder: the user picks
// that folder or one below it.
#include "dialogs/Shell.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_QT_EXPORT CVantrelBrowseDlg {
 public:
  CVantrelBrowseDlg() = default;
  CVantrelBrowseDlg(const CVantrelBrowseDlg&) = default;
  CVantrelBrowseDlg& operator=(const CVantrelBrowseDlg&) = default;
  virtual ~CVantrelBrowseDlg();

  // Shows the picker owned by `owner` with `title` as its instruction, rooted at
  // `startFolder` (the whole file system when it is empty or names nothing). Sets *result
  // to the chosen folder, empty when the user cancelled; returns 1 when it is not empty.
  int PopupBrowseDlg(HWND owner, CStdStrW title, CStdStrW startFolder, CStdStrW* result);

 private:
  // 1 with *list set for a path that names something; 0 with *list null otherwise.
  int GetItemIdListFromPath(CStdStrW path, LPITEMIDLIST* list);
};
