#include "library/Commands.h"

#include "base/Language.h"
#include "library/TrackColumns.h"
#include "tests/fixtures/Printers.h"

#include <set>

namespace {

/// The items of a menu that have a text, lines left out.
QStringList TextsOf(std::span<const MenuItem> items, const char* prefix) {
    QStringList texts;
    for (const MenuItem& item : items)
        if (item.command != 0)
            texts += GetMenuText(QString::fromLatin1(prefix), QString::fromLatin1(item.name));
    return texts;
}

/// Each text has a letter that picks it, and no other of these has the same.
void ExpectLetters(const QStringList& texts) {
    std::set<QChar> letters;
    for (const QString& text : texts) {
        const qsizetype sign = text.indexOf(u'&');
        ASSERT_TRUE(sign >= 0 && sign + 1 < text.size()) << text.toStdString();
        EXPECT_TRUE(letters.insert(text[sign + 1].toLower()).second) << text.toStdString();
    }
}

} // namespace

TEST(CommandsTest, EveryMenuItemHasALetterOfItsOwn) {
    SetLanguageFile(QStringLiteral(LANGUAGES_FOLDER "/language.lgg"));
    QStringList titles;
    std::multiset<int> keys;
    for (const Menu& menu : kMainMenus) {
        ExpectLetters(TextsOf(menu.items, menu.prefix));
        titles += GetMenuText("IDS_", QString::fromLatin1(menu.name));
        for (const MenuItem& item : menu.items)
            keys.insert(item.key.toCombined());
    }
    ExpectLetters(titles);
    ExpectLetters(TextsOf(kBodyItems, "IDS_BODY_"));
    for (const MenuItem& item : kButtonItems) {
        EXPECT_NE(item.key.key(), 0) << item.name;
        keys.insert(item.key.toCombined());
    }
    for (const int key : keys)
        EXPECT_TRUE(key == 0 || keys.count(key) == 1) << key;

    QStringList columns{GetMenuText("IDS_HEADER_", "Customize")};
    for (const TrackColumn& column : AllTrackColumns()) {
        columns += GetMenuText("IDS_HEADER_", QString::fromLatin1(column.name));
        const QString key = QString::fromLatin1(column.header);
        EXPECT_NE(GetLanguageText(key), key);
    }
    ExpectLetters(columns);
}
