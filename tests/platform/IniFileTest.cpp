#include "platform/IniFile.h"

#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

/// The bytes of a literal, zeros included.
template <std::size_t N>
QByteArray Bytes(const char (&literal)[N]) {
    return QByteArray(literal, N - 1);
}

QString Ask(const QByteArray& file, QStringView key, qsizetype maxLength = 1023) {
    const ScratchFolder scratch;
    const IniFile ini(scratch.Write(QStringLiteral("a.ini"), file));
    return ini.ReadText(u"TrackDeck", key, QStringLiteral("fallback"), maxLength);
}

} // namespace

TEST(IniFileTest, AnswersAsThePrivateProfileRoutines) {
    const struct {
        const char* what;
        QByteArray file;
        QString value;
    } rows[] = {
        {"plain", "[TrackDeck]\nkey=value\n", QStringLiteral("value")},
        {"no end of line", "[TrackDeck]\nkey=value", QStringLiteral("value")},
        {"CR LF", "[TrackDeck]\r\nkey=value\r\n", QStringLiteral("value")},
        {"case", "[trackDECK]\nKEY=Value\n", QStringLiteral("Value")},
        {"blanks", " [ TrackDeck ] \n  key \t=  two  words  \n", QStringLiteral("two  words")},
        {"double quotes", "[TrackDeck]\nkey=\"  value \"\n", QStringLiteral("  value ")},
        {"single quotes", "[TrackDeck]\nkey='value'\n", QStringLiteral("value")},
        {"unequal quotes", "[TrackDeck]\nkey=\"value'\n", QStringLiteral("\"value'")},
        {"one quote", "[TrackDeck]\nkey=\"\n", QStringLiteral("\"")},
        {"duplicate key", "[TrackDeck]\nkey=first\nkey=second\n", QStringLiteral("first")},
        {"duplicate section", "[TrackDeck]\na=b\n[x]\n[TrackDeck]\nkey=value\n",
         QStringLiteral("fallback")},
        {"other section", "[Other]\nkey=value\n[TrackDeck]\n", QStringLiteral("fallback")},
        {"missing section", "key=value\n", QStringLiteral("fallback")},
        {"empty value", "[TrackDeck]\nkey=\n", QString()},
        {"no equals sign", "[TrackDeck]\nkey\n", QStringLiteral("fallback")},
        {"equals sign in the value", "[TrackDeck]\nkey=a=b\n", QStringLiteral("a=b")},
        {"comment", "[TrackDeck]\n;key=no\nkey=yes\n", QStringLiteral("yes")},
        {"section after rubbish", Bytes("\0\xFF rubbish\n[TrackDeck]\nkey=value\n"),
         QStringLiteral("value")},
        {"UTF-8",
         "[TrackDeck]\nkey=Gr\xC3\xBC\xC3\x9F"
         "e\n",
         QStringLiteral(u"Gr\u00FC\u00DFe")},
        {"UTF-8 mark", "\xEF\xBB\xBF[TrackDeck]\nkey=value\n", QStringLiteral("value")},
        {"UTF-16 LE mark", Bytes("\xFF\xFE[\0T\0r\0a\0c\0k\0D\0e\0c\0k\0]\0\n\0k\0e\0y\0=\0\xFC\0"),
         QStringLiteral(u"\u00FC")},
        {"UTF-16 BE mark", Bytes("\xFE\xFF\0[\0T\0r\0a\0c\0k\0D\0e\0c\0k\0]\0\n\0k\0e\0y\0=\0\xFC"),
         QStringLiteral(u"\u00FC")},
        {"empty file", "", QStringLiteral("fallback")},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Ask(row.file, u"key"), row.value) << row.what;
}

TEST(IniFileTest, CutsLongValuesAndPassesOverWhatIsNoFile) {
    const QByteArray file = "[TrackDeck]\nkey=" + QByteArray(2000, 'x');
    EXPECT_EQ(Ask(file, u"key"), QString(1023, u'x'));

    const ScratchFolder scratch;
    for (const QString& path : {scratch.Path(), scratch.File(QStringLiteral("missing"))})
        EXPECT_EQ(IniFile(path).ReadText(u"TrackDeck", u"key", QStringLiteral("fallback"), 9),
                  QStringLiteral("fallback"));
}
