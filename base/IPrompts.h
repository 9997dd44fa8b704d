#pragma once

class QString;

/// How the parts that show no windows ask and tell the user.
///
/// Thread: interface thread. Both wait for the user.
class IPrompts {
public:
    /// True if the user says yes.
    [[nodiscard]] virtual bool Confirm(const QString& question) = 0;

    virtual void Warn(const QString& text) = 0;

protected:
    ~IPrompts() = default;
};
