#include "dialogs/FolderDlg.h"

#include "base/Language.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "platform/Volumes.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <unistd.h>

#include <memory>
#include <utility>

namespace {

class FolderDlgTest : public ::testing::Test {
protected:
    FolderDlgTest() {
        SetLanguageFile(QString());
        QLocale::setDefault(QLocale(QLocale::English));
    }

    void Open(const QString& start) {
        dialog = std::make_unique<CFolderDlg>(
            scratch.File(start), nullptr,
            std::vector<FolderRoot>{{QStringLiteral("Root"), QStringLiteral("/")},
                                    {QStringLiteral("Top"), scratch.Path()}});
        tree = dialog->findChild<CFolderTree*>();
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
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
            if (button->accessibleName() == QString::fromLatin1(label))
                QTest::mouseClick(button, Qt::LeftButton);
    }

    /// Types into the open editor of a label, if there is one.
    void Type(const QString& text) const {
        auto* editor = tree->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
        EXPECT_FALSE(tree->findChild<QLineEdit*>() && tree->findChild<QLineEdit*>()->isVisible());
    }

    [[nodiscard]] bool Exists(const QString& name) const {
        return GetFileStatus(scratch.File(name)).has_value();
    }

    const ScratchFolder scratch{ScratchFolder::Place::Memory}; // a thousand folders
    std::unique_ptr<CFolderDlg> dialog;
    CFolderTree* tree = nullptr;
};

} // namespace

TEST_F(FolderDlgTest, StartsAtTheWantedFolderOrAsNearAsItGets) {
    scratch.MakeFolder(QStringLiteral("a/b/c"));
    scratch.MakeFolder(QStringLiteral("a/.hidden/in"));
    scratch.Write(QStringLiteral("a/file"), "x");
    const QString bytes = Path::FromBytes("a/caf\xE9");
    scratch.MakeFolder(bytes + QStringLiteral("/x"));
    const std::pair<QString, QString> rows[] = {
        {QStringLiteral("a/b/c"), QStringLiteral("a/b/c")},
        {QStringLiteral("a//b/../b/"), QStringLiteral("a/b")},
        {QStringLiteral("a/b/gone/too"), QStringLiteral("a/b")},
        {QStringLiteral("a/file"), QStringLiteral("a")},
        {QStringLiteral("a/.hidden/in"), QStringLiteral("a/.hidden/in")},
        {bytes + QStringLiteral("/x"), bytes + QStringLiteral("/x")},
        {QString(), QString()},
    };
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
        scratch.MakeFolder(QString::fromLatin1(name));
    scratch.MakeFolder(Path::FromBytes("caf\xE9"));
    scratch.Write(QStringLiteral("file"), "x");
    ASSERT_EQ(::symlink(".", Path::ToBytes(scratch.File(QStringLiteral("loop")))), 0);
    Open(QString());
    EXPECT_EQ(Children(), QStringList());
    QTest::keyClick(tree, Qt::Key_Right);
    EXPECT_EQ(Children().join(u'|'), u"Ab|caf\uFFFD|empty|gone|loop|track 2|Track 10|two lines");
    QTest::keyClick(tree, Qt::Key_Asterisk); // opens no more than it is asked to
    EXPECT_EQ(tree->currentItem()->child(4)->childCount(), 0);

    // A folder that can't be read looks like an empty one.
    ::rmdir(Path::ToBytes(scratch.File(QStringLiteral("gone"))).constData());
    for (const char* name : {"gone", "empty"}) {
        tree->SelectPath(scratch.File(QString::fromLatin1(name)));
        QTest::keyClick(tree, Qt::Key_Right);
        EXPECT_EQ(Selected(), QString::fromLatin1(name));
        EXPECT_EQ(Children(), QStringList()) << name;
    }
    tree->SelectPath(scratch.File(QStringLiteral("loop/loop/loop")));
    EXPECT_EQ(Selected(), u"loop/loop/loop");
    QTest::keyClick(tree, Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(dialog->GetPath(), scratch.File(QString()));
}

TEST_F(FolderDlgTest, RenamesTheNewFolderAndNoOther) {
    scratch.MakeFolder(QStringLiteral("a/taken"));
    const QString taken = QStringLiteral("taken");
    const QString made = QStringLiteral("New Folder");
    const QString odd = QStringLiteral("Caf\u00E9 & co");
    const std::pair<QString, QString> rows[] = {{odd, odd},
                                                {taken, made},
                                                {QStringLiteral("taken/y"), made},
                                                {{}, made},
                                                {QString(1, u' '), made},
                                                {QString(300, u'x'), made}};
    for (const auto& [typed, name] : rows) {
        Open(QStringLiteral("a"));
        Click("IDS_BT_NEWFOLDER");
        Type(typed);
        EXPECT_TRUE(dialog->isVisible()); // Enter was the editor's
        EXPECT_EQ(tree->currentItem()->text(0), name);
        const QString path = QStringLiteral("a/") + name;
        EXPECT_EQ(Selected(), path);
        EXPECT_TRUE(Exists(path));
        EXPECT_EQ(Exists(QStringLiteral("a/New Folder")), name == made);
        EXPECT_TRUE(Exists(QStringLiteral("a/taken")));
        ::rmdir(Path::ToBytes(scratch.File(path)).constData());
    }
    // Clicking OK with the editor open takes the name that stands in it.
    Open(QStringLiteral("a"));
    Click("IDS_BT_NEWFOLDER");
    tree->findChild<QLineEdit*>()->setText(QStringLiteral("last"));
    Click("IDS_BT_OK");
    EXPECT_EQ(dialog->GetPath(), scratch.File(QStringLiteral("a/last")));

    Open(QStringLiteral("a/taken"));
    QTest::keyClick(tree, Qt::Key_F2);
    EXPECT_FALSE(tree->findChild<QLineEdit*>());
}

TEST_F(FolderDlgTest, ListsTheVolumesOfTheUserByName) {
    const QString table =
        scratch.Write(QStringLiteral("mounts"), "/dev/sda1 / ext4 rw 0 0\n"
                                                "proc /proc proc rw 0 0\n"
                                                "/dev/sdb1 /media/me/My\\040Stick vfat rw 0 0\n"
                                                "/dev/sdb1 /media/me/My\\040Stick vfat rw 0 0\n"
                                                "/dev/sdc1 /mnt ext4 rw 0 0\n"
                                                "/dev/sdd1 /mntx ext4 rw 0 0\n"
                                                "nonsense\n");
    EXPECT_EQ(ListUserVolumes(table),
              (std::vector{QStringLiteral("/media/me/My Stick"), QStringLiteral("/mnt")}));
    EXPECT_TRUE(ListUserVolumes(scratch.File(QStringLiteral("none"))).empty());
}
