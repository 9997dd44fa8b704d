#pragma once

class QString;

/// Whoever is about to write into a music file asks here first that it is let go of.
///
/// Thread: interface thread.
class IPlaybackGuard {
public:
    /// Ends playing if this file is the one that plays; it is closed soon after.
    virtual void ReleaseFile(const QString& path) = 0;

protected:
    ~IPlaybackGuard() = default;
};
