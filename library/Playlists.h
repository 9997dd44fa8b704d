#pragma once

#include "library/CommandContext.h"

#include <QString>

#include <functional>
#include <vector>

class CCommandMap;
class CMediaList;

/// The commands on playlists: making one from the checked tracks, adding tracks to one, and the one
/// that is open, which is all that the view shows until it is closed.
///
/// What is done to the open playlist stays in its list until it is saved; closing asks, and saving
/// closes. A playlist that can't be saved stays open.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CPlaylists {
public:
    /// Takes the commands of playlists.
    CPlaylists(const CommandContext& context, CCommandMap& commands);

    /// Called after a playlist was opened or closed.
    void SetViewHandler(std::function<void()> handler) { m_pfnViewChanged = std::move(handler); }

    /// Shows the entries of a playlist file alone. Nothing while another one is open.
    void OpenPlaylist(const QString& path);

private:
    using Move = int (CMediaList::*)(std::vector<int>& changedFlags);

    void CreatePlaylist();
    void ClosePlaylist();
    void SaveOpenPlaylist();
    void MoveChecked(Move move);
    void AddToPlaylist(int number);
    void OpenCurrent();
    void AddEntry(CMediaList& playlist, const QString& entry);
    void Leave();
    [[nodiscard]] CMediaList& OpenList() const;

    const CommandContext m_context;
    CCommandMap& m_commands;
    std::function<void()> m_pfnViewChanged;
};
