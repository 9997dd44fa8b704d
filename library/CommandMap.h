#pragma once

#include <functional>
#include <map>
#include <utility>

/// What is done for each command, by its number. A command that nothing is done for has no entry:
/// its items and buttons are gray.
///
/// Thread: interface thread. Errors: a handler that throws is reported to the debug output.
class CCommandMap {
public:
    using Handler = std::function<void(int command)>;

    void On(int command, Handler handler) { On(command, command, std::move(handler)); }

    /// The same for all numbers from `first` to `last`. Ranges don't overlap.
    void On(int first, int last, Handler handler);

    /// Called before each command.
    void SetBeforeHandler(Handler handler) { m_pfnBefore = std::move(handler); }

    [[nodiscard]] bool Has(int command) const { return Find(command) != nullptr; }

    /// Does nothing for a number without handler.
    void Run(int command) const;

private:
    struct Range {
        int last;
        Handler handler;
    };

    [[nodiscard]] const Handler* Find(int command) const;

    std::map<int, Range> m_ranges; ///< by their first number
    Handler m_pfnBefore;
};
