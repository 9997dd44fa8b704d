#pragma once

#include "base/IPlaybackGuard.h"

class CMediaList;

/// What the parts that change lists ask of the player.
///
/// Thread: interface thread.
class ITrackPlayer : public IPlaybackGuard {
public:
    /// Ends playing if it is this list that plays. To be called before its tracks go.
    virtual void ReleaseList(const CMediaList& list) = 0;

protected:
    ~ITrackPlayer() = default;
};
