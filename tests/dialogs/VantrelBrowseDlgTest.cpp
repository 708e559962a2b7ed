#include "dialogs/VantrelBrowseDlg.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/FolderBrowserDialog.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"

namespace {

using vantrel1::FolderBrowserDialog;
using vantrel1::FromQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

// <temp>/root with a/b and c inside, and <temp>/rootX and <temp>/other beside it.
class BrowseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Application();
    ASSERT_TRUE(m_temp.isValid());
    base = QDir::cleanPath(m_temp.path());
    root = base + "/root";
    for (const char* dir : {"root/a/b", "root/c", "rootX", "other"}) ASSERT_TRUE(QDir(base).mkpath(dir));
    m_lists = vantrel1::LiveItemIdLists();
  }
  void TearDown() override { EXPECT_EQ(vantrel1::LiveItemIdLists(), m_lists) << "item-id lists left behind"; }

  static CStdStrW W(const QString& s) { return FromQString(s); }

  // Browses from `start`; `act` gets the browser on screen.
  int Browse(const CStdStrW& start, const std::function<void(FolderBrowserDialog&)>& act, CStdStrW* result,
             HWND owner = nullptr) {
    CVantrelBrowseDlg dlg;
    return WhileModal(
        [&](QWidget* shown) {
          auto* browser = qobject_cast<FolderBrowserDialog*>(shown);
          if (browser == nullptr) {
            ADD_FAILURE() << "the folder browser is not shown";
            shown->close();
            return;
          }
          act(*browser);
        },
        [&] { return dlg.PopupBrowseDlg(owner, u"Izaberite fasciklu", start, result); });
  }

  QString base;
  QString root;

 private:
  QTemporaryDir m_temp;
  int m_lists = 0;
};

void Ok(FolderBrowserDialog& browser) {
  browser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
}

TEST_F(BrowseTest, ReturnsTheFolderChosenAtOrBelowTheRoot) {
  const struct {
    const char* pick;  // relative to the root; null: accept what is chosen at first
    const char* result;
  } cases[] = {{nullptr, ""}, {"a/b", "/a/b"}, {"c", "/c"}, {".", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.pick ? c.pick : "(first choice)");
    CStdStrW result = u"stale";
    const int found = Browse(W(root),
                             [&](FolderBrowserDialog& browser) {
                               if (c.pick) {
                                 EXPECT_TRUE(browser.SelectFolder(root + "/" + c.pick));
                               }
                               Ok(browser);
                             },
                             &result);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(result, W(root + c.result));
  }
}

TEST_F(BrowseTest, FoldersAboveOrBesideTheRootCannotBeChosen) {
  CStdStrW result;
  Browse(W(root),
         [&](FolderBrowserDialog& browser) {
           EXPECT_EQ(browser.Root(), root);
           for (const QString& outside : {base, base + "/rootX", base + "/other", QString("/"), root + "/missing",
                                          root + "/../other", QString()})
             EXPECT_FALSE(browser.SelectFolder(outside)) << outside.toStdString();
           // Only the root itself stands at the top of the tree.
           auto* tree = browser.findChild<QTreeView*>("folders");
           ASSERT_NE(tree, nullptr);
           const QAbstractItemModel* model = tree->model();
           ASSERT_EQ(model->rowCount(tree->rootIndex()), 1);
           EXPECT_EQ(model->index(0, 0, tree->rootIndex()).data().toString(), QString("root"));
           Ok(browser);
         },
         &result);
  EXPECT_EQ(result, W(root));
}

TEST_F(BrowseTest, CancellingGivesAnEmptyResultAndZero) {
  CStdStrW result = u"stale";
  const int found = Browse(
      W(root),
      [&](FolderBrowserDialog& browser) {
        browser.SelectFolder(root + "/a");
        browser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
      },
      &result);
  EXPECT_EQ(found, 0);
  EXPECT_TRUE(result.IsEmpty());
}

TEST_F(BrowseTest, WithoutAUsableStartFolderTheWholeFileSystemIsOffered) {
  const struct {
    const char* name;
    CStdStrW start;
  } cases[] = {
      {"empty", CStdStrW()},
      {"missing", W(base + "/missing")},
      {"a file", W(base + "/root.txt")},
  };
  QFile file(base + "/root.txt");
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CStdStrW result;
    QString top;
    const int found = Browse(c.start,
                             [&](FolderBrowserDialog& browser) {
                               top = browser.Root();
                               EXPECT_TRUE(browser.SelectFolder(base + "/other"));
                               Ok(browser);
                             },
                             &result);
    EXPECT_EQ(top, QString("/"));
    EXPECT_EQ(found, 1);
    EXPECT_EQ(result, W(base + "/other"));
  }
}

TEST_F(BrowseTest, AStartFolderWrittenWithBackslashesIsTheSameFolder) {
  QString windowsStyle = root + "/a";
  windowsStyle.replace('/', '\\');
  CStdStrW result;
  Browse(W(windowsStyle), [&](FolderBrowserDialog& browser) { Ok(browser); }, &result);
  EXPECT_EQ(result, W(root + "/a"));
}

TEST_F(BrowseTest, ShowsTheInstructionAndIsOwnedByTheOwnerWindow) {
  QWidget owner;
  CStdStrW result;
  Browse(
      W(root),
      [&](FolderBrowserDialog& browser) {
        EXPECT_EQ(browser.parentWidget(), &owner);
        auto* instruction = browser.findChild<QLabel*>("instruction");
        ASSERT_NE(instruction, nullptr);
        EXPECT_EQ(FromQString(instruction->text()), CStdStrW(u"Izaberite fasciklu"));
        browser.reject();
      },
      &result, HwndFromWidget(&owner));
}

TEST_F(BrowseTest, AnOwnerWindowThatIsGoneOwnsNothing) {
  HWND gone = nullptr;
  {
    QWidget owner;
    gone = HwndFromWidget(&owner);
  }
  CStdStrW result;
  Browse(
      W(root),
      [&](FolderBrowserDialog& browser) {
        EXPECT_EQ(browser.parentWidget(), nullptr);
        browser.reject();
      },
      &result, gone);
  EXPECT_TRUE(result.IsEmpty());
}

TEST_F(BrowseTest, AFolderWhosePathIsTooLongForTheShellIsNotReturned) {
  QString deep = root;
  while (deep.size() < MAX_PATH + 10) deep += "/dugacak-naziv-fascikle";
  ASSERT_TRUE(QDir().mkpath(deep));
  CStdStrW result = u"stale";
  const int found = Browse(
      W(root),
      [&](FolderBrowserDialog& browser) {
        EXPECT_TRUE(browser.SelectFolder(deep));
        Ok(browser);
      },
      &result);
  EXPECT_EQ(found, 0);
  EXPECT_TRUE(result.IsEmpty());
}

TEST(Shell, RefusesWhatItDidNotMakeAndWhatDoesNotExist) {
  IShellFolder* desktop = nullptr;
  ASSERT_EQ(SHGetDesktopFolder(&desktop), S_OK);
  const int lists = vantrel1::LiveItemIdLists();
  const struct {
    const char16_t* name;
    HRESULT hr;
  } cases[] = {{nullptr, E_INVALIDARG}, {u"", E_INVALIDARG}, {u"/nema/takve/fascikle", E_FAIL}};
  for (const auto& c : cases) {
    LPITEMIDLIST list = reinterpret_cast<LPITEMIDLIST>(&desktop);
    EXPECT_EQ(desktop->ParseDisplayName(nullptr, nullptr, c.name, nullptr, &list, nullptr), c.hr);
    EXPECT_EQ(list, nullptr);
  }
  EXPECT_EQ(desktop->ParseDisplayName(nullptr, nullptr, u"/", nullptr, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(vantrel1::LiveItemIdLists(), lists);

  WCHAR path[MAX_PATH] = u"x";
  EXPECT_EQ(SHGetPathFromIDListW(nullptr, path), FALSE);
  EXPECT_EQ(path[0], 0);
  // A pointer the shell never handed out is neither read nor freed.
  int notAList = 7;
  path[0] = u'x';
  EXPECT_EQ(SHGetPathFromIDListW(reinterpret_cast<LPCITEMIDLIST>(&notAList), path), FALSE);
  EXPECT_EQ(path[0], 0);
  IMalloc* allocator = nullptr;
  ASSERT_EQ(SHGetMalloc(&allocator), S_OK);
  allocator->Free(&notAList);
  allocator->Free(nullptr);
  EXPECT_EQ(notAList, 7);
  EXPECT_EQ(SHBrowseForFolderW(nullptr), nullptr);
}

}  // namespace
