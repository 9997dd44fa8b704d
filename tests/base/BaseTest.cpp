#include "base/DecimalValue.h"
#include "base/FileKinds.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "base/SizeText.h"
#include "platform/KeyValueStore.h"
#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <set>

TEST(LanguageTest, FileHoldsTheKeysOfTheTable) {
    const QString file = QStringLiteral(LANGUAGES_FOLDER "/language.lgg");
    std::multiset<QString> expected;
#define TRACKDECK_EXPECT_KEY(id, key) expected.insert(QStringLiteral(#key));
    TRACKDECK_STRING_TABLE(TRACKDECK_EXPECT_KEY)
#undef TRACKDECK_EXPECT_KEY
    std::multiset<QString> found;
    for (const QString& line : QString::fromUtf8(ReadFile(file)).split(u'\n'))
        if (!line.startsWith(u';') && line.contains(u'='))
            found.insert(line.section(u'=', 0, 0));
    for (const QString& key : found)
        EXPECT_EQ(found.count(key), 1u) << key.toStdString();
    EXPECT_TRUE(std::includes(found.begin(), found.end(), expected.begin(), expected.end()));

    SetLanguageFile(file);
    for (const QString& key : expected)
        EXPECT_FALSE(GetLanguageText(key).isEmpty()) << key.toStdString();
    EXPECT_EQ(LoadString(IDS_MAIN_TITLE), "Veltria Track Deck");
}

TEST(LanguageTest, TextsByIdentifierKeyAndMenuNameAndFormats) {
    const ScratchFolder scratch;
    SetLanguageFile(scratch.Write("l.lgg", "[TrackDeck]\n"
                                           "IDS_BT_OK=two\\nlines\\tand\\r\n"
                                           "IDS_FILE_SCANPC=Scan\n"
                                           "Plain=Only the name\n"));
    EXPECT_EQ(LoadString(IDS_BT_OK), u"two\nlines\tand\r");
    EXPECT_EQ(LoadString(IDS_BT_YES), u"IDS_BT_YES") << "missing: its own name";
    for (const int unknown : {101, 311, 9999})
        EXPECT_TRUE(LoadString(unknown).isEmpty());
    const auto menu = [](const char* name) {
        return GetMenuText("IDS_FILE_", QString::fromUtf8(name));
    };
    EXPECT_EQ(menu("&Scan PC"), u"Scan");
    EXPECT_EQ(menu("Plain"), u"Only the name");
    EXPECT_EQ(menu("None"), u"None");

    const auto format = [](const char* text) {
        return FormatText(QString::fromUtf8(text), {"%s", "7"});
    };
    EXPECT_EQ(format("%s of %d"), u"%s of 7");
    EXPECT_EQ(format("100 %"), u"100 %");
    EXPECT_EQ(format("%u%d%d"), u"%s7%d");
}

TEST(SettingsTest, DefaultsThenWhatWasStored) {
    const ScratchFolder scratch;
    const QString file = scratch.File("s.ini");
    CTrackDeckSettings settings = LoadSettings(CKeyValueStore(file));
    EXPECT_EQ(settings.m_bLoaded, 0);
    EXPECT_EQ(settings.m_bAssociateMp3, 1);
    EXPECT_EQ(settings.m_iConversionAacBitRate, 1);
    EXPECT_EQ(settings.m_bUpdateLibraryWarning, 1);
    EXPECT_EQ(settings.m_nVolume, 0);

    settings.m_nMainPosX = -20;
    settings.m_bAssociateMp3 = 0;
    settings.m_strSearchDir = QString(131, u'a');
    settings.m_strMyCollectionLocation = Path::FromBytes("/music/\xE9");
    CKeyValueStore store(file);
    StoreSettings(settings, store);
    ASSERT_TRUE(store.Commit());

    const CTrackDeckSettings loaded = LoadSettings(CKeyValueStore(file));
    EXPECT_EQ(loaded.m_bLoaded, 1);
    EXPECT_EQ(loaded.m_nMainPosX, -20);
    EXPECT_EQ(loaded.m_bAssociateMp3, 0);
    EXPECT_EQ(loaded.m_strSearchDir, QString(130, u'a'));
    EXPECT_EQ(loaded.m_strMyCollectionLocation, settings.m_strMyCollectionLocation);

    // An empty store is no first run, and bad values keep their defaults.
    const auto load = [&](const QByteArray& content) {
        return LoadSettings(CKeyValueStore(scratch.Write("s.ini", content)));
    };
    EXPECT_EQ(load("").m_bLoaded, 1);
    const CTrackDeckSettings bad =
        load("SearchDir=" + QByteArray(131, 'a') + "\n[Associations]\nMP3=yes\nM4A=0\n");
    EXPECT_TRUE(bad.m_strSearchDir.isEmpty());
    EXPECT_EQ(bad.m_bAssociateMp3, 1);
    EXPECT_EQ(bad.m_bAssociateM4a, 0);
}

TEST(FileKindsTest, GoByTheTextBehindTheLastPoint) {
    const std::tuple<bool (*)(const QString&), const char*, bool> rows[] = {
        {IsPlaylistFile, "/a/list.M3U", true}, {IsPlaylistFile, "/a.m3u/list", false},
        {IsWmaFile, "song.wMa", true},         {IsMp3OrAacFile, "song.mp4.mp3", true},
        {IsMp3OrAacFile, "song.AAC", true},    {IsMp3OrAacFile, "song.mp3 ", false},
        {IsMp4File, "song.m4a", true},         {IsMp4File, "song.mp4", true},
        {IsCdTrackFile, "Track01.cda", true},  {IsCdTrackFile, "Track01.CDX", true},
        {IsMusicFile, "list.m3u", true},       {IsMusicFile, "video.mp4", false}};
    for (const auto& [test, name, expected] : rows)
        EXPECT_EQ(test(QString::fromUtf8(name)), expected) << name;
}

TEST(DecimalValueTest, ReadsTheHeadOfTheText) {
    const std::pair<QStringView, int> rows[] = {{u"  -7/10", -7},
                                                {u"+3", 3},
                                                {u"128 kbps", 128},
                                                {u"abc", 0},
                                                {u"", 0},
                                                {u"99999999999999999999", 2147483647},
                                                {u"-99999999999", -2147483647 - 1}};
    for (const auto& [text, value] : rows)
        EXPECT_EQ(DecimalValue(text), value);
}

TEST(SizeTextTest, ChangesUnitsAtPowersOf1024) {
    const std::pair<std::uint64_t, QStringView> rows[] = {
        {1023, u"1023 B"}, {1024, u"1.00 KB"}, {1048575, u"1024.00 KB"}, {1048576, u"1.00 MB"}};
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(SizeText(bytes), text);
}
