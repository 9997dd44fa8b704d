#include "base/Settings.h"

#include "platform/KeyValueStore.h"

#include <QStandardPaths>

#include <memory>
#include <variant>

namespace {

using IntField = int CTrackDeckSettings::*;
using TextField = QString CTrackDeckSettings::*;

struct StoredField {
    const char* key;
    std::variant<IntField, TextField> field;
};

using S = CTrackDeckSettings;

/// Every stored value, in the order of reading and writing.
const StoredField kStoredFields[] = {
    {"MiniMode", &S::m_bMiniMode},
    {"ScanSubfolders", &S::m_bScanSubfolders},
    {"SearchDir", &S::m_strSearchDir},
    {"Associations/AAC", &S::m_bAssociateAac},
    {"Associations/M3U", &S::m_bAssociateM3u},
    {"Associations/M4A", &S::m_bAssociateM4a},
    {"Associations/MP3", &S::m_bAssociateMp3},
    {"MainWindow/Maximized", &S::m_bMaximized},
    {"MainWindow/Playmode", &S::m_iPlaymode},
    {"MainWindow/MainPosX", &S::m_nMainPosX},
    {"MainWindow/MainPosY", &S::m_nMainPosY},
    {"MainWindow/MainSizeX", &S::m_nMainSizeX},
    {"MainWindow/MainSizeY", &S::m_nMainSizeY},
    {"MainWindow/Volume", &S::m_nVolume},
    {"MiniPlayer/MiniPosX", &S::m_nMiniPosX},
    {"MiniPlayer/MiniPosY", &S::m_nMiniPosY},
    {"Settings/UpdateLibraryWarning", &S::m_bUpdateLibraryWarning},
    {"Settings/AutoOpenCD", &S::m_bAutoOpenCD},
    {"Settings/AutoOpenPhone", &S::m_bAutoOpenPhone},
    {"Settings/AutoCopy", &S::m_bAutoCopy},
    {"Settings/AutoTempo", &S::m_bAutoTempo},
    {"Settings/TempoType", &S::m_iTempoType},
    {"Settings/ChangeFrequency", &S::m_nChangeFrequency},
    {"Settings/ConversionAacBitRate", &S::m_iConversionAacBitRate},
    {"Settings/ConversionM4aBitRate", &S::m_iConversionM4aBitRate},
    {"Settings/ConversionFileFormat", &S::m_iConversionFileFormat},
    {"Settings/ConversionMode", &S::m_iConversionMode},
    {"Settings/TrackNumbers", &S::m_bTrackNumbers},
    {"Settings/UseCDDBInfo", &S::m_bUseCDDBInfo},
    {"Settings/MyCollectionLocation", &S::m_strMyCollectionLocation},
    {"Settings/DefaultWritePath", &S::m_strDefaultWritePath},
    {"TrackSheet/ColumnDef", &S::m_dwColumnDef},
};

std::unique_ptr<CTrackDeckSettings>& Block() {
    static std::unique_ptr<CTrackDeckSettings> block;
    return block;
}

} // namespace

QString UserStoreFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Veltria/Track Deck.ini");
}

CTrackDeckSettings LoadSettings(const CKeyValueStore& store) {
    CTrackDeckSettings settings;
    if (!store.Exists())
        return settings;
    settings.m_bLoaded = 1;
    for (const StoredField& entry : kStoredFields) {
        const QString key = QString::fromLatin1(entry.key);
        if (const auto* number = std::get_if<IntField>(&entry.field))
            settings.** number = store.ReadInt(key).value_or(settings.**number);
        else if (const auto text = store.ReadText(key, kLongestStoredText))
            settings.*std::get<TextField>(entry.field) = *text;
    }
    return settings;
}

void StoreSettings(const CTrackDeckSettings& settings, CKeyValueStore& store) {
    for (const StoredField& entry : kStoredFields) {
        const QString key = QString::fromLatin1(entry.key);
        if (const auto* number = std::get_if<IntField>(&entry.field))
            store.WriteInt(key, settings.**number);
        else
            store.WriteText(key,
                            (settings.*std::get<TextField>(entry.field)).left(kLongestStoredText));
    }
}

CTrackDeckSettings& GetSettings() {
    if (!Block())
        Block() =
            std::make_unique<CTrackDeckSettings>(LoadSettings(CKeyValueStore(UserStoreFile())));
    return *Block();
}

void SaveSettings() {
    if (!Block())
        return;
    CKeyValueStore store(UserStoreFile());
    StoreSettings(*Block(), store);
    store.Commit();
}
