#pragma once

#include "app/CoverFile.h"
#include "app/MprisMetadata.h"
#include "app/MprisWindow.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"

#include <QDBusAbstractAdaptor>
#include <QString>
#include <QStringList>
#include <QVariantMap>

class QDBusObjectPath;

// The two interfaces of MPRIS 2.2: the names and types of slots, signals and properties are what
// the desktop sees. Adaptors belong to the object they are made for; what else their constructors
// take has to be there for as long as that object is on the bus. They live on the interface thread.
// Positions and lengths are in microseconds. What can't be done is ignored.

class CMprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ Yes)
    Q_PROPERTY(bool CanRaise READ Yes)
    Q_PROPERTY(bool HasTrackList READ No)
    Q_PROPERTY(QString Identity READ GetIdentity)
    Q_PROPERTY(QString DesktopEntry READ GetDesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ None)
    Q_PROPERTY(QStringList SupportedMimeTypes READ None)

public:
    CMprisRootAdaptor(QObject* object, const MprisWindow& window);

    [[nodiscard]] static bool Yes() { return true; }
    [[nodiscard]] static bool No() { return false; }
    [[nodiscard]] static QStringList None() { return {}; }
    [[nodiscard]] static QString GetIdentity();
    [[nodiscard]] static QString GetDesktopEntry() { return QStringLiteral("trackdeck"); }

public Q_SLOTS:
    void Raise() { m_window.raise(); }
    void Quit() { m_window.quit(); }

private:
    const MprisWindow& m_window;
};

class CMprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ GetPlaybackStatus)
    Q_PROPERTY(QString LoopStatus READ GetLoopStatus WRITE SetLoopStatus)
    Q_PROPERTY(double Rate READ GetRate WRITE SetRate)
    Q_PROPERTY(double MinimumRate READ GetRate)
    Q_PROPERTY(double MaximumRate READ GetRate)
    Q_PROPERTY(bool Shuffle READ IsShuffled WRITE SetShuffle)
    Q_PROPERTY(QVariantMap Metadata READ GetMetadata)
    Q_PROPERTY(double Volume READ GetVolume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ GetPosition)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious)
    Q_PROPERTY(bool CanPlay READ CanPlay)
    Q_PROPERTY(bool CanPause READ CanPlay)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl)

public:
    CMprisPlayerAdaptor(QObject* object, CTransport& transport, CMediaPlayer& player,
                        const MprisWindow& window, const CCoverFile& cover);

    [[nodiscard]] QString GetPlaybackStatus() const;
    [[nodiscard]] QString GetLoopStatus() const;
    void SetLoopStatus(const QString& status);
    [[nodiscard]] static double GetRate() { return 1; }
    static void SetRate(double /*rate*/) {}
    [[nodiscard]] bool IsShuffled() const { return (m_transport.GetPlayMode() & PLAY_RANDOM) != 0; }
    void SetShuffle(bool shuffle) { SetPlayModeFlag(PLAY_RANDOM, shuffle); }
    [[nodiscard]] QVariantMap GetMetadata() const;
    [[nodiscard]] double GetVolume() const { return m_window.getVolume() / 100.0; }
    void SetVolume(double volume);
    [[nodiscard]] qlonglong GetPosition() const { return m_player.GetPosition() / kMicrosecond; }
    [[nodiscard]] bool CanGoNext() const { return m_transport.GetCommands().canNext; }
    [[nodiscard]] bool CanGoPrevious() const { return m_transport.GetCommands().canPrevious; }
    [[nodiscard]] bool CanPlay() const { return m_transport.GetCommands().canPlay; }
    [[nodiscard]] bool CanSeek() const { return m_player.HasGraph() && GetLength() > 0; }
    [[nodiscard]] static bool CanControl() { return true; }

public Q_SLOTS:
    void Next();
    void Previous();
    void Pause() { m_transport.Pause(); }
    void PlayPause();
    void Stop() { m_transport.Stop(); }
    void Play() { m_transport.Play(); }
    void Seek(qlonglong Offset);
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    void OpenUri(const QString& /*Uri*/) {}

Q_SIGNALS:
    void Seeked(qlonglong Position);

private:
    [[nodiscard]] qlonglong GetLength() const { return m_player.GetDuration() / kMicrosecond; }
    [[nodiscard]] QString GetTrackId() const;
    void SetPlayModeFlag(int flag, bool on);

    CTransport& m_transport;
    CMediaPlayer& m_player;
    const MprisWindow& m_window;
    const CCoverFile& m_cover;
};
