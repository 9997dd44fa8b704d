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

#include <QAccessible>
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

} // namespace

TEST(AccessibleNamesTest, EveryControlOfEveryWindowHasOne) {
    const ScratchFolder scratch;
    const ScopedVariable home("HOME", scratch.Path());
    const ScopedVariable config("XDG_CONFIG_HOME", scratch.Path());
    const ScopedVariable temporary("TMPDIR", scratch.Path());
    GetSettings() = {};
    SetLanguageFile(QStringLiteral(LANGUAGES_FOLDER "/language.lgg"));
    const QString text = QStringLiteral("A text. ");
    CMediaLists lists;
    CLibraryScanner scanner(lists);

    EXPECT_EQ(Nameless(CTrackDeckDlg({})), "");
    EXPECT_EQ(Nameless(CAboutDlg(nullptr)), "");
    EXPECT_EQ(Nameless(CConfirmationDlg(text, nullptr)), "");
    EXPECT_EQ(Nameless(CWarningDlg(text.repeated(2'000), nullptr)), "");
    EXPECT_EQ(Nameless(CFolderDlg(scratch.Path(), nullptr)), "");
    EXPECT_EQ(Nameless(CScanPCDlg(nullptr)), "");
    EXPECT_EQ(Nameless(CSetColumnDlg(0, nullptr)), "");
    EXPECT_EQ(Nameless(CScanningDlg(scanner, {{}, 0, scratch.Path(), false}, nullptr)), "");
}
