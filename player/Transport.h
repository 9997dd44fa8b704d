#pragma once

#include "base/Listeners.h"
#include "library/ITrackPlayer.h"
#include "library/TrackRecord.h"
#include "player/PlayQueue.h"
#include "player/TransportDisplay.h"

#include <QString>

#include <functional>
#include <memory>
#include <utility>

class CMediaList;
class CMediaLists;
class CMediaPlayer;
class CWorker;
class ITrackView;
class CMessageTarget;
struct GraphEvent;

/// Decides what plays: makes the play queue of a list, walks it by play mode, and drives the player
/// as the transport's buttons say. The row of the track that plays is marked in its list, and shows
/// what the player finds out about it.
///
/// A file that is missing is passed over; one that can't be played ends the playing there.
///
/// Thread:   interface thread. Playlists, and files that are in no list, are read on others.
/// Lifetime: what the constructor takes outlives this. A list whose tracks go is left with
///           ReleaseList() first; one that is removed is left by itself.
class CTransport : public ITrackPlayer {
public:
    CTransport(CMediaLists& lists, CMediaPlayer& player, ITrackView& view,
               ITransportDisplay& display);
    ~CTransport();

    /// Hears of every change of what others may show: the state, the track, what is known of it,
    /// the play mode, and which commands do anything.
    [[nodiscard]] CListening OnChange(std::function<void()> call) {
        return m_changeListeners.Listen(std::move(call));
    }

    /// Takes the messages of the player and its graph.
    void Listen(CMessageTarget& messages);

    /// The buttons.
    void OnPlayPause();
    void OnPrevious();
    void OnNext();

    /// What a desktop's controls ask for, whatever list is active.
    void Play();
    void Pause();
    void Stop();

    /// Plays a track of a list, and then what follows it by play mode. For -1 it begins with the
    /// first checked track, if there is one.
    void PlayTrack(const CMediaList& list, int index);

    /// Plays the files of the playlist at an index of a list from the first on, once it has been
    /// read. What plays goes on until then, and a pause, stop, step or another play calls it off. A
    /// playlist that can't be read, or is empty, plays nothing.
    void PlayPlaylist(const CMediaList& list, int index);

    /// Another of the play modes, 0 to 3; the queue is built anew behind the track that plays.
    void SetPlayMode(int mode);
    [[nodiscard]] int GetPlayMode() const { return m_iPlayMode; }

    /// Takes in what has come to the list that plays, behind the track that plays. What plays goes
    /// on in its order if nothing has, and so does a playlist.
    void RenewQueue() override;

    /// Stops, closes the file, and forgets the list.
    void StopPlayback();
    void ReleaseFile(const QString& path) override;
    void ReleaseList(const CMediaList& list) override;
    [[nodiscard]] PlayerCommands GetCommands() const override;

    /// Tells of the commands anew, after the active list or its tracks have changed.
    void UpdateTransport();

    [[nodiscard]] TransportState GetState() const { return m_iTransport; }

    /// The list that plays, or has been played; null if there is none.
    [[nodiscard]] CMediaList* GetPlayList() const;

    /// The track that plays or is loaded; null if there is none.
    [[nodiscard]] const CTrackRecord* GetNowPlaying();

private:
    enum class Direction { Forward, Back };

    struct Reading;

    void BuildPlayQueue(const CMediaList& list, int startRow);
    void RebuildQueue();
    void PlayFiles(int listId, const QStringList& files);
    void ReadStray();
    void OnStrayRead(std::shared_ptr<CTrackRecord> track);
    void StartQueue();
    void OnTrackFinished();
    void Step(Direction direction);
    void StartEntry(bool play);
    void LoadAndPlayFile(const QString& path, bool play);
    void PlayTransport();
    void PauseTransport();
    void StopTransport();
    void ShowTransport();

    void OnGraphEvent(const GraphEvent& event);
    void OnRendered();
    void OnMissing();
    void OnFailed(const QString& status);
    void ShowCaption();
    void ShowLength();

    [[nodiscard]] CTrackRecord* FindNowPlaying();
    void MarkRow(bool playing);
    void RefreshRow();

    CMediaLists& m_lists;
    CMediaPlayer& m_player;
    ITrackView& m_view;
    ITransportDisplay& m_display;
    CListeners<> m_changeListeners;

    CPlayQueue m_queue;
    int m_iPlayMode = PLAY_SINGLE;
    int m_iPlayListId = -1; ///< of the list that is played
    QStringList m_playlist; ///< the files, if it is a playlist of that list that plays
    int m_iNowPlayingRow = -1;
    QString m_strNowPlayingPath;
    std::shared_ptr<CTrackRecord> m_pStray; ///< what plays, if it is in no list but in a playlist
    TransportState m_iTransport = TransportState::Stopped;
    bool m_bCanPlay = true; ///< false after a file that could not be played
    Direction m_lastStep = Direction::Forward;
    int m_nMissing = 0; ///< files passed over since a step was asked for

    std::unique_ptr<Reading> m_pPlaylistReading; ///< while a playlist is to be played
    std::unique_ptr<CWorker> m_pStrayReading;
    CListening m_removals; ///< of lists
    CListening m_events;   ///< of the player
};
