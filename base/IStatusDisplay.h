#pragma once

#include <QString>

#include <functional>
#include <memory>

/// An operation that runs, as the status line shows it. It ends when this goes.
class IRunningOperation {
public:
    virtual ~IRunningOperation() = default;

    /// How far it is: a text, and from 0 to 100, or -1 where nobody knows.
    virtual void ShowProgress(const QString& text, int percent) = 0;
};

/// The line in which the program says what it is doing. An operation that runs comes before news,
/// news before the lasting text.
///
/// Thread: interface thread.
class IStatusDisplay {
public:
    /// What the lasting text tells of.
    enum class Lasting { Open, Selected };

    /// What is shown while there is nothing else to tell. Empty: nothing.
    virtual void ShowLasting(Lasting what, const QString& text) = 0;

    /// Something that has happened, shown for some seconds.
    virtual void ShowNews(const QString& text) = 0;

    /// Shows an operation. `cancel` is called when the user cancels it, and has to end it soon.
    [[nodiscard]] virtual std::unique_ptr<IRunningOperation>
    BeginOperation(const QString& text, std::function<void()> cancel) = 0;

    /// Whether any operation runs.
    [[nodiscard]] virtual bool IsBusy() const = 0;

    /// Cancels all operations that run.
    virtual void CancelOperations() = 0;

protected:
    ~IStatusDisplay() = default;
};
