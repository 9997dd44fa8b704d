#pragma once

#include "base/IStatusDisplay.h"
#include "base/Listeners.h"
#include "library/CommandContext.h"
#include "library/TrackReader.h"
#include "platform/Worker.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class CCommandMap;
class CMediaList;

/// The commands on playlists: making one from the checked tracks, adding tracks to one, and the one
/// that is open, which is all that the view shows until it is closed.
///
/// A playlist is read on a thread of its own, and shows its entries before their files are read.
///
/// What is done to the open playlist stays in its list until it is saved; closing asks, and saving
/// closes. A playlist that can't be saved stays open.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CPlaylists {
public:
    /// Takes the commands of playlists.
    CPlaylists(const CommandContext& context, CCommandMap& commands);

    /// Hears of each playlist that was opened or closed.
    [[nodiscard]] CListening OnViewChanged(std::function<void()> call) {
        return m_viewChanged.Listen(std::move(call));
    }

    /// Shows the entries of a playlist file alone, as soon as it is read; of several the last one
    /// that was asked for. Nothing while another one is open.
    void OpenPlaylist(const QString& path);

private:
    using Move = int (CMediaList::*)(std::vector<int>& changedFlags);

    void CreatePlaylist();
    void ClosePlaylist();
    void SaveOpenPlaylist();
    void MoveChecked(Move move);
    void AddToPlaylist(int number);
    void OpenCurrent();
    void Show(const QString& path, int sourceType, CTrackReader::Tracks tracks);
    void Leave();
    [[nodiscard]] CMediaList& OpenList() const;

    const CommandContext m_context;
    CCommandMap& m_commands;
    CListeners<> m_viewChanged;
    std::unique_ptr<IRunningOperation> m_pOpening; ///< while a playlist is read
    std::optional<CWorker> m_reader;               ///< of that playlist
};
