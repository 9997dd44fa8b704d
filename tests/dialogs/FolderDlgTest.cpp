#include "dialogs/FolderDlg.h"

#include "base/Language.h"
#include "platform/Path.h"
#include "platform/Volumes.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <unistd.h>

namespace {

class FolderDlgTest : public ::testing::Test {
protected:
    FolderDlgTest() {
        SetLanguageFile({});
        QLocale::setDefault(QLocale(QLocale::English));
    }

    void Open(const QString& start) {
        dialog.emplace(scratch.File(start), nullptr,
                       std::vector<FolderRoot>{{"Root", "/"}, {"Top", scratch.Path()}});
        tree = dialog->findChild<CFolderTree*>();
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*dialog));
    }

    /// The labels under the selected folder.
    [[nodiscard]] QStringList Children() const {
        QStringList names;
        for (int i = 0; i < tree->currentItem()->childCount(); ++i)
            names += tree->currentItem()->child(i)->text(0);
        return names;
    }

    /// The part of the selected path inside the scratch folder.
    [[nodiscard]] QString Selected() const {
        return tree->GetSelectedPath().mid(scratch.Path().size() + 1);
    }

    void Click(const char* label) const {
        for (auto* button : dialog->findChildren<QPushButton*>())
            if (button->accessibleName() == label)
                QTest::mouseClick(button, Qt::LeftButton);
    }

    const ScratchFolder scratch;
    std::optional<CFolderDlg> dialog;
    CFolderTree* tree = nullptr;
};

} // namespace

TEST_F(FolderDlgTest, StartsAtTheWantedFolderOrAsNearAsItGets) {
    scratch.MakeFolder("a/b/c");
    scratch.MakeFolder("a/.hidden/in");
    scratch.Write("a/file", "x");
    const QString bytes = Path::FromBytes("a/caf\xE9");
    scratch.MakeFolder(bytes + "/x");
    const std::pair<QString, QString> rows[] = {{"a/b/c", "a/b/c"},
                                                {"a//b/../b/", "a/b"},
                                                {"a/b/gone/too", "a/b"},
                                                {"a/file", "a"},
                                                {"a/.hidden/in", "a/.hidden/in"},
                                                {bytes + "/x", bytes + "/x"},
                                                {QString(), QString()}};
    for (const auto& [start, selected] : rows) {
        Open(start);
        EXPECT_EQ(Selected(), selected);
        EXPECT_FALSE(tree->topLevelItem(0)->isExpanded()); // "/", for another place is nearer
        EXPECT_TRUE(tree->viewport()->rect().intersects(tree->visualItemRect(tree->currentItem())));
        Click("IDS_BT_OK");
        EXPECT_EQ(dialog->result(), QDialog::Accepted);
        EXPECT_EQ(dialog->GetPath(), selected.isEmpty() ? scratch.Path() : scratch.File(selected));
    }
    const CFolderDlg none(QString(), nullptr);
    EXPECT_EQ(none.findChild<CFolderTree*>()->GetSelectedPath(), ListFolderRoots().front().path);
}

TEST_F(FolderDlgTest, ReadsAFolderWhenItIsExpanded) {
    for (const char* name : {"Track 10", "track 2", "Ab", ".hidden", "gone", "empty", "two\nlines"})
        scratch.MakeFolder(name);
    scratch.MakeFolder(Path::FromBytes("caf\xE9"));
    scratch.Write("file", "x");
    ASSERT_EQ(::symlink(".", Path::ToBytes(scratch.File("loop"))), 0);
    Open({});
    EXPECT_EQ(Children(), QStringList());
    QTest::keyClick(tree, Qt::Key_Right);
    EXPECT_EQ(Children().join(u'|'), u"Ab|caf\uFFFD|empty|gone|loop|track 2|Track 10|two lines");
    QTest::keyClick(tree, Qt::Key_Asterisk); // opens no more than it is asked to
    EXPECT_EQ(tree->currentItem()->child(4)->childCount(), 0);

    // A folder that can't be read looks like an empty one.
    ::rmdir(Path::ToBytes(scratch.File("gone")).constData());
    for (const char* name : {"gone", "empty"}) {
        tree->SelectPath(scratch.File(name));
        QTest::keyClick(tree, Qt::Key_Right);
        EXPECT_EQ(Selected(), name);
        EXPECT_EQ(Children(), QStringList()) << name;
    }
    tree->SelectPath(scratch.File("loop/loop/loop"));
    EXPECT_EQ(Selected(), u"loop/loop/loop");
    QTest::keyClick(tree, Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(dialog->GetPath(), scratch.File(QString()));
}

TEST_F(FolderDlgTest, RenamesTheNewFolderAndNoOther) {
    scratch.MakeFolder("a/taken");
    const QString made = "New Folder";
    const QString odd = "Caf\u00E9 & co";
    const std::pair<QString, QString> rows[] = {
        {odd, odd}, {"taken", made},          {"taken/y", made},
        {{}, made}, {QString(1, u' '), made}, {QString(300, u'x'), made}};
    for (const auto& [typed, name] : rows) {
        Open("a");
        Click("IDS_BT_NEWFOLDER");
        auto* editor = tree->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setText(typed);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
        EXPECT_FALSE(tree->findChild<QLineEdit*>() && tree->findChild<QLineEdit*>()->isVisible());
        EXPECT_TRUE(dialog->isVisible()); // Enter was the editor's
        EXPECT_EQ(tree->currentItem()->text(0), name);
        EXPECT_EQ(Selected(), "a/" + name);
        EXPECT_EQ(QDir(scratch.File("a")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
                  QStringList({name, "taken"}));
        ::rmdir(Path::ToBytes(scratch.File("a/" + name)).constData());
    }
    // Clicking OK with the editor open takes the name that stands in it.
    Open("a");
    Click("IDS_BT_NEWFOLDER");
    tree->findChild<QLineEdit*>()->setText("last");
    Click("IDS_BT_OK");
    EXPECT_EQ(dialog->GetPath(), scratch.File("a/last"));

    Open("a/taken");
    QTest::keyClick(tree, Qt::Key_F2);
    EXPECT_FALSE(tree->findChild<QLineEdit*>());
}

TEST_F(FolderDlgTest, ListsTheVolumesOfTheUserByName) {
    const QString table = scratch.Write("mounts", "/dev/sda1 / ext4 rw 0 0\n"
                                                  "proc /proc proc rw 0 0\n"
                                                  "/dev/sdb1 /media/me/My\\040Stick vfat rw 0 0\n"
                                                  "/dev/sdb1 /media/me/My\\040Stick vfat rw 0 0\n"
                                                  "/dev/sdc1 /mnt ext4 rw 0 0\n"
                                                  "/dev/sdd1 /mntx ext4 rw 0 0\n"
                                                  "nonsense\n");
    EXPECT_EQ(ListUserVolumes(table), (std::vector<QString>{"/media/me/My Stick", "/mnt"}));
    EXPECT_TRUE(ListUserVolumes(scratch.File("none")).empty());
}
