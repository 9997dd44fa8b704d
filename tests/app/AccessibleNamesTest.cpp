#include "app/TrackDeckDlg.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/ConfirmationDlg.h"
#include "dialogs/FolderDlg.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "dialogs/SetColumnDlg.h"
#include "dialogs/WarningDlg.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QPushButton>
#include <QShortcut>

namespace {

/// The controls in a window that the keyboard can get to, and that a screen reader has no name or
/// no kind for; and the buttons that no key presses, but for Tab and Space. Enter is the default
/// button's, Escape that of those that leave.
std::string Unreachable(const QWidget& window) {
    const QStringList leaving{LoadString(IDS_BT_CANCEL), LoadString(IDS_BT_CLOSE)};
    std::string found;
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->focusProxy())
            continue;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(control);
        const bool isTold =
            told && !told->text(QAccessible::Name).isEmpty() &&
            (told->role() != QAccessible::Client || control->inherits("QScrollArea"));
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        const auto* push = qobject_cast<const QPushButton*>(control);
        const bool hasKey = !button || !button->shortcut().isEmpty() ||
                            button->findChild<QShortcut*>() || (push && push->isDefault()) ||
                            button->toolTip().endsWith(u')') ||
                            leaving.contains(button->accessibleName());
        if (!isTold || !hasKey)
            found += control->metaObject()->className() + control->toolTip().toStdString() + '\n';
    }
    return found;
}

} // namespace

TEST(AccessibleNamesTest, EveryControlOfEveryWindowHasOneAndEveryButtonAKey) {
    const ScratchFolder scratch;
    const ScopedVariable home("HOME", scratch.Path());
    const ScopedVariable config("XDG_CONFIG_HOME", scratch.Path());
    const ScopedVariable temporary("TMPDIR", scratch.Path());
    GetSettings() = {};
    SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
    CMediaLists lists;
    CLibraryScanner scanner(lists);

    EXPECT_EQ(Unreachable(CTrackDeckDlg({})), "");
    EXPECT_EQ(Unreachable(CAboutDlg(nullptr)), "");
    EXPECT_EQ(Unreachable(CConfirmationDlg("A text.", nullptr)), "");
    EXPECT_EQ(Unreachable(CWarningDlg(QString("A text. ").repeated(2'000), nullptr)), "");
    EXPECT_EQ(Unreachable(CFolderDlg(scratch.Path(), nullptr)), "");
    EXPECT_EQ(Unreachable(CScanPCDlg(nullptr)), "");
    EXPECT_EQ(Unreachable(CSetColumnDlg(0, nullptr)), "");
    EXPECT_EQ(Unreachable(CScanningDlg(scanner, {0, scratch.Path(), false}, nullptr)), "");
}
