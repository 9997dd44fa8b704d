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
#include <gtest/gtest.h>

namespace {

/// The controls in a window that the keyboard can get to, and that a screen reader has no name or
/// no kind for.
std::string Nameless(const QWidget& window) {
    std::string found;
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->focusProxy())
            continue;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(control);
        const bool isPlain = told && told->role() == QAccessible::Client;
        if (!told || told->text(QAccessible::Name).isEmpty() ||
            (isPlain && !control->inherits("QScrollArea")))
            found += std::string(control->metaObject()->className()) + ' ' +
                     control->toolTip().toStdString() + '\n';
    }
    return found;
}

/// The buttons in a window that no key presses, but for Tab and Space. Enter is the default
/// button's, Escape that of those that leave.
std::string Keyless(const QWidget& window) {
    const QStringList leaving{LoadString(IDS_BT_CANCEL), LoadString(IDS_BT_CLOSE)};
    std::string found;
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        const auto* push = qobject_cast<const QPushButton*>(button);
        const bool hasKey = !button->shortcut().isEmpty() || button->findChild<QShortcut*>() ||
                            (push && push->isDefault()) || button->toolTip().endsWith(u')') ||
                            leaving.contains(button->accessibleName());
        if (!hasKey && button->focusPolicy() != Qt::NoFocus)
            found += (button->accessibleName() + button->text()).toStdString() + '\n';
    }
    return found;
}

std::string Unreachable(const QWidget& window) {
    return Nameless(window) + Keyless(window);
}

} // namespace

TEST(AccessibleNamesTest, EveryControlOfEveryWindowHasOneAndEveryButtonAKey) {
    const ScratchFolder scratch;
    const ScopedVariable home("HOME", scratch.Path());
    const ScopedVariable config("XDG_CONFIG_HOME", scratch.Path());
    const ScopedVariable temporary("TMPDIR", scratch.Path());
    GetSettings() = {};
    SetLanguageFile(QStringLiteral(LANGUAGES_FOLDER "/language.lgg"));
    const QString text = QStringLiteral("A text. ");
    CMediaLists lists;
    CLibraryScanner scanner(lists);

    EXPECT_EQ(Unreachable(CTrackDeckDlg({})), "");
    EXPECT_EQ(Unreachable(CAboutDlg(nullptr)), "");
    EXPECT_EQ(Unreachable(CConfirmationDlg(text, nullptr)), "");
    EXPECT_EQ(Unreachable(CWarningDlg(text.repeated(2'000), nullptr)), "");
    EXPECT_EQ(Unreachable(CFolderDlg(scratch.Path(), nullptr)), "");
    EXPECT_EQ(Unreachable(CScanPCDlg(nullptr)), "");
    EXPECT_EQ(Unreachable(CSetColumnDlg(0, nullptr)), "");
    EXPECT_EQ(Unreachable(CScanningDlg(scanner, {0, scratch.Path(), false}, nullptr)), "");
}
