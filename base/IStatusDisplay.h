#pragma once

class QString;

/// The line in which the program says what it is doing.
///
/// Thread: interface thread.
class IStatusDisplay {
public:
    /// Empty when nothing is being done.
    virtual void ShowStatus(const QString& text) = 0;

protected:
    ~IStatusDisplay() = default;
};
