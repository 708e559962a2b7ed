#include "dialogs/FolderBrowserDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace vantrel1 {
namespace {

QString CleanAbsolute(const QString& path) { return QDir::cleanPath(QFileInfo(path).absoluteFilePath()); }

// Hides the root's siblings: the tree shows the root's parent as its invisible top, of
// which only the root itself may appear.
class RootFilter final : public QSortFilterProxyModel {
 public:
  RootFilter(QObject* parent, QString root) : QSortFilterProxyModel(parent), m_root(std::move(root)) {}

  void SetRootParent(const QModelIndex& parent) { m_rootParent = parent; }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
    if (parent != m_rootParent) return true;
    const auto* files = static_cast<const QFileSystemModel*>(sourceModel());
    return files->filePath(files->index(row, 0, parent)) == m_root;
  }

 private:
  QString m_root;
  QPersistentModelIndex m_rootParent;
};

}  // namespace

FolderBrowserDialog::FolderBrowserDialog(QWidget* owner, const QString& instruction, const QString& root)
    : QDialog(owner), m_root(QFileInfo(root).isDir() ? CleanAbsolute(root) : QDir::rootPath()) {
  setWindowTitle(instruction);
  setSizeGripEnabled(true);
  m_model = new QFileSystemModel(this);
  m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
  m_model->setRootPath(m_root);
  auto* filter = new RootFilter(this, m_root);
  const QModelIndex rootIndex = m_model->index(m_root);
  filter->SetRootParent(rootIndex.parent());
  filter->setSourceModel(m_model);
  m_filter = filter;

  m_instruction = new QLabel(instruction, this);
  m_instruction->setObjectName(QStringLiteral("instruction"));
  m_instruction->setWordWrap(true);
  m_tree = new QTreeView(this);
  m_tree->setObjectName(QStringLiteral("folders"));
  m_tree->setModel(m_filter);
  m_tree->setRootIndex(m_filter->mapFromSource(rootIndex.parent()));
  m_tree->setHeaderHidden(true);
  for (int column = 1; column < m_model->columnCount(); ++column) m_tree->hideColumn(column);
  m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { UpdateOk(); });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_instruction);
  layout->addWidget(m_tree, 1);
  layout->addWidget(m_buttons);
  resize(360, 420);

  SelectFolder(m_root);
  m_tree->expand(m_tree->currentIndex());
  UpdateOk();
}

FolderBrowserDialog::~FolderBrowserDialog() = default;

QString FolderBrowserDialog::SelectedFolder() const {
  const QModelIndex current = m_tree->currentIndex();
  return current.isValid() ? m_model->filePath(m_filter->mapToSource(current)) : QString();
}

bool FolderBrowserDialog::IsInTree(const QString& path) const {
  if (m_root == QDir::rootPath()) return true;
  return path == m_root || path.startsWith(m_root + u'/');
}

bool FolderBrowserDialog::SelectFolder(const QString& path) {
  if (path.isEmpty() || !QFileInfo(path).isDir()) return false;
  const QString clean = CleanAbsolute(path);
  if (!IsInTree(clean)) return false;
  const QModelIndex index = m_filter->mapFromSource(m_model->index(clean));
  if (!index.isValid()) return false;
  m_tree->setCurrentIndex(index);
  m_tree->scrollTo(index);
  return true;
}

void FolderBrowserDialog::UpdateOk() {
  m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_tree->currentIndex().isValid());
}

}  // namespace vantrel1
