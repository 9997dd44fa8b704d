#pragma once

class QString;

/// What the buttons show. The numbers are a contract.
enum class TransportState : int { Stopped = 0, Playing = 1, Paused = 2 };

/// Where the player shows what it does.
///
/// Thread: interface thread.
class ITransportDisplay {
public:
    virtual void ShowState(TransportState state) = 0;

    /// The position in the track in percent.
    virtual void ShowPosition(int percent) = 0;

    /// What plays; empty for nothing.
    virtual void ShowCaption(const QString& caption) = 0;

    /// Whether there is a track in which a position can be chosen.
    virtual void EnableSeek(bool enable) = 0;

    /// The short sound for "that was nothing".
    virtual void Beep() = 0;

protected:
    ~ITransportDisplay() = default;
};
