#include "platform/IniFile.h"

#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

/// The bytes of a literal, zeros included.
template <std::size_t N>
static QByteArray Bytes(const char (&literal)[N]) {
    return QByteArray(literal, N - 1);
}

TEST(IniFileTest, AnswersAsThePrivateProfileRoutines) {
    const QString longest(1023, u'x');
    const std::pair<QByteArray, QStringView> rows[] = {
        {"[TrackDeck]\nkey=value", u"value"},
        {"[trackDECK]\r\nKEY=Value\r\n", u"Value"},
        {" [ TrackDeck ] \n  key \t=  two  words  \n", u"two  words"},
        {"[TrackDeck]\nkey=\"  value \"\n", u"  value "},
        {"[TrackDeck]\nkey='value'\n", u"value"},
        {"[TrackDeck]\nkey=\"value'\n", u"\"value'"},
        {"[TrackDeck]\nkey=\"\n", u"\""},
        {"[TrackDeck]\nkey=first\nkey=second\n", u"first"},
        {"[TrackDeck]\na=b\n[x]\n[TrackDeck]\nkey=value\n", u"fallback"},
        {"[Other]\nkey=value\n[TrackDeck]\n", u"fallback"},
        {"key=value\n", u"fallback"},
        {"[TrackDeck]\nkey=\n", u""},
        {"[TrackDeck]\nkey\n", u"fallback"},
        {"[TrackDeck]\nkey=a=b\n", u"a=b"},
        {"[TrackDeck]\n;key=no\nkey=yes\n", u"yes"},
        {Bytes("\0\xFF rubbish\n[TrackDeck]\nkey=value\n"), u"value"},
        {"[TrackDeck]\nkey=Gr\xC3\xBC n\n", u"Gr\u00FC n"},
        {"\xEF\xBB\xBF[TrackDeck]\nkey=value\n", u"value"},
        {Bytes("\xFF\xFE[\0T\0r\0a\0c\0k\0D\0e\0c\0k\0]\0\n\0k\0e\0y\0=\0\xFC\0"), u"\u00FC"},
        {Bytes("\xFE\xFF\0[\0T\0r\0a\0c\0k\0D\0e\0c\0k\0]\0\n\0k\0e\0y\0=\0\xFC"), u"\u00FC"},
        {"", u"fallback"},
        {"[TrackDeck]\nkey=" + QByteArray(2000, 'x'), longest}};
    const ScratchFolder scratch;
    const auto ask = [](const QString& path) {
        return CIniFile(path).ReadText(u"TrackDeck", u"key", "fallback", 1023);
    };
    for (const auto& [file, value] : rows)
        EXPECT_EQ(ask(scratch.Write("a.ini", file)), value) << file.data();
    for (const QString& path : {scratch.Path(), scratch.File("missing")})
        EXPECT_EQ(ask(path), u"fallback");
}

TEST(IniFileTest, ReadsNumbersUpToWhatIsNone) {
    const std::pair<QStringView, int> rows[] = {
        {u"key=12", 12},
        {u"key= '-12' ", -12},
        {u"key=+12", 12},
        {u"key=007px 9", 7},
        {u"key=0x10", 0},
        {u"key=ten", 0},
        {u"key=-", 0},
        {u"key=--1", 0},
        {u"key=\u0661", 0}, // a digit, but none of ours
        {u"key=2147483648", 2147483647},
        {u"key=-2147483648", -2147483647 - 1},
        {u"key=-99999999999999999999999999", -2147483647 - 1},
        {u"key=", 5},
        {u"key=\"\"", 5},
        {u"other=1", 5}};
    for (const auto& [line, number] : rows)
        EXPECT_EQ(CIniContent("[S]\n" + line.toString()).ReadInteger(u"s", u"KEY", 5), number)
            << line.toUtf8().data();
}

TEST(IniFileTest, ReadsTheWholeFileUpToALimit) {
    const QByteArray file = "[a]\nkey=1\n[b]\nkey=2\n";
    const ScratchFolder scratch;
    const CIniFile ini(scratch.Write("a.ini", file));
    const CIniContent content = ini.ReadAll(file.size());
    EXPECT_EQ(content.ReadInteger(u"A", u"key", -1), 1);
    EXPECT_EQ(content.ReadText(u"b", u"Key", {}, 9), u"2");
    EXPECT_EQ(ini.ReadAll(file.size() - 1).ReadInteger(u"a", u"key", -1), -1);
}
