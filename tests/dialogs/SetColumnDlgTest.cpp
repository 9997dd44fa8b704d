#include "dialogs/SetColumnDlg.h"

#include "base/Language.h"
#include "library/TrackColumns.h"
#include "tests/fixtures/RunUntil.h"

#include <QCheckBox>
#include <QTest>

#include <set>

namespace {

constexpr unsigned kAllColumns = 0x1FFFF;
constexpr unsigned kYear = 0x10000;

void Press(CSetColumnDlg& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(dialog.focusWidget(), key, modifiers);
}

} // namespace

TEST(SetColumnDlgTest, MakesOfItsBoxesTheMaskThatTheyWereMadeOf) {
    SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
    const unsigned rows[][2] = {{kDefaultColumns, kDefaultColumns},
                                {0, kTitleColumn},
                                {kYear, kYear | kTitleColumn},
                                {0x15555, 0x15555},
                                {0xFFFFFFFF, kAllColumns}};
    for (const auto& [given, taken] : rows) {
        CSetColumnDlg dialog(given, nullptr);
        Press(dialog, Qt::Key_Return);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(dialog.GetColumns(), taken);
    }
}

TEST(SetColumnDlgTest, HasABoxWithAKeyForEachColumn) {
    SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
    CSetColumnDlg dialog(kTitleColumn, nullptr);
    const auto boxes = dialog.findChildren<QCheckBox*>();
    std::set<QString> keys;
    for (const QCheckBox* box : boxes) {
        const QKeySequence key = QKeySequence::mnemonic(box->text());
        EXPECT_TRUE(keys.insert(key.toString()).second) << box->text().toStdString();
        Press(dialog, static_cast<Qt::Key>(key[0].key()), Qt::AltModifier);
    }
    // A key presses its box, and lets it go after a while.
    EXPECT_TRUE(RunUntil([&] { return std::ranges::all_of(boxes, &QCheckBox::isChecked); }));
    EXPECT_EQ(keys.size(), AllTrackColumns().size());
    Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(dialog.GetColumns(), kTitleColumn);
    dialog.accept();
    EXPECT_EQ(dialog.GetColumns(), kAllColumns);
}
