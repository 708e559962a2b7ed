#pragma once
// The folder browser behind SHBrowseForFolderW: an instruction, a tree of folders and OK
// and Cancel. The tree's top is the root folder, so the user can choose it or a folder
// below it, never one above; without a root the whole file system is offered.
#include <QDialog>
#include <QPersistentModelIndex>
#include <QString>

#include "platform/Export.h"

class QDialogButtonBox;
class QFileSystemModel;
class QLabel;
class QSortFilterProxyModel;
class QTreeView;

namespace vantrel1 {

class VANTREL1_QT_EXPORT FolderBrowserDialog : public QDialog {
  Q_OBJECT

 public:
  // `root` is a folder's absolute path, or empty (or not a folder) for the whole file system.
  FolderBrowserDialog(QWidget* owner, const QString& instruction, const QString& root);
  ~FolderBrowserDialog() override;

  // The top of the tree ("/" for the whole file system).
  const QString& Root() const { return m_root; }
  // The chosen folder's path; empty when none is chosen.
  QString SelectedFolder() const;
  // Chooses `path` as the user would; false (and the choice unchanged) for a path that is
  // not an existing folder inside the tree.
  bool SelectFolder(const QString& path);

 private:
  bool IsInTree(const QString& path) const;
  void UpdateOk();

  QString m_root;
  QFileSystemModel* m_model = nullptr;
  QSortFilterProxyModel* m_filter = nullptr;
  QLabel* m_instruction = nullptr;
  QTreeView* m_tree = nullptr;
  QDialogButtonBox* m_buttons = nullptr;
};

}  // namespace vantrel1
