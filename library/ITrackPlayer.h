#pragma once

#include "base/IPlaybackGuard.h"

class CMediaList;

/// Which of the player's commands would do anything now, and its play mode.
struct PlayerCommands {
    bool canPrevious = false;
    bool canPlay = false; ///< play, or make a pause
    bool canNext = false;
    int playMode = 0; ///< from 0 to 3
};

/// What the parts that change lists ask of the player.
///
/// Thread: interface thread.
class ITrackPlayer : public IPlaybackGuard {
public:
    /// Ends playing if it is this list that plays. To be called before its tracks go.
    virtual void ReleaseList(const CMediaList& list) = 0;

    /// Takes in what has come to the list that plays, behind the track that plays.
    virtual void RenewQueue() = 0;

    [[nodiscard]] virtual PlayerCommands GetCommands() const = 0;

protected:
    ~ITrackPlayer() = default;
};
