#pragma once

#include <QString>

class CKeyValueStore;

/// All options that outlive a run. The names are those of the values in the store.
///
/// Flags are ints, as they are stored. Texts are paths.
struct CTrackDeckSettings {
    int m_bLoaded = 0; ///< 1 if the store was there when the settings were read; 0 in a first run

    int m_bMiniMode = 0;       ///< the window had its mini-player form at exit
    int m_bScanSubfolders = 0; ///< last choice in the scan dialog
    QString m_strSearchDir;    ///< last folder scanned

    int m_bAssociateAac = 1; ///< the program opens files of the kind
    int m_bAssociateM3u = 1;
    int m_bAssociateM4a = 1;
    int m_bAssociateMp3 = 1;

    int m_bMaximized = 0;
    int m_iPlaymode = 0; ///< 0 single, 1 continuous, 2 random, 3 random continuous
    int m_nMainPosX = 0; ///< place of the window in normal form, in pixels
    int m_nMainPosY = 0;
    int m_nMainSizeX = 0;
    int m_nMainSizeY = 0;
    int m_nVolume = 0; ///< 0 to 100

    int m_nMiniPosX = 0; ///< place of the mini player
    int m_nMiniPosY = 0;

    int m_bUpdateLibraryWarning = 1; ///< show the library update notice
    int m_bAutoOpenCD = 0;           ///< CD sections start expanded
    int m_bAutoOpenPhone = 0;        ///< phone sections start expanded
    int m_bAutoCopy = 0;
    int m_bAutoTempo = 0;
    int m_iTempoType = 0; ///< 0 walk, 1 run
    int m_nChangeFrequency = 0;
    int m_iConversionAacBitRate = 1; ///< index into the list of bit rates
    int m_iConversionM4aBitRate = 0;
    int m_iConversionFileFormat = 0; ///< 0 AAC, 1 M4A
    int m_iConversionMode = 0;       ///< 0 ask, 1 copy as it is, 2 convert
    int m_bTrackNumbers = 0;
    int m_bUseCDDBInfo = 0;
    QString m_strMyCollectionLocation; ///< folder of My Collection; empty means the default
    QString m_strDefaultWritePath;     ///< folder for tracks written to disk

    int m_dwColumnDef = 0; ///< mask of the visible columns
};

/// The store of the user's options. It need not be there.
[[nodiscard]] QString UserStoreFile();

/// Texts are stored in 260 bytes of UTF-16: longer paths are cut to their first 130 units.
inline constexpr int kLongestStoredText = 130;

/// The settings in a store. What is missing or of the wrong kind has its default.
[[nodiscard]] CTrackDeckSettings LoadSettings(const CKeyValueStore& store);

/// Writes every value to the store; committing is the caller's.
void StoreSettings(const CTrackDeckSettings& settings, CKeyValueStore& store);

/// The one settings block of the process, read from the user's store at the first call.
///
/// Thread: changed by the interface thread only; workers read single numbers.
[[nodiscard]] CTrackDeckSettings& GetSettings();

/// Saves the block to the user's store; nothing if it was never read. Failures are silent.
void SaveSettings();
