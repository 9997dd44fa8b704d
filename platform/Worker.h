#pragma once

#include "platform/MessageTarget.h"

#include <functional>
#include <memory>

/// Works through what it is given on a thread of its own, one piece after the other, and hands the
/// results back.
///
/// Thread:   made, used and destroyed on one thread with an event loop; the work runs on the other.
/// Lifetime: what the work uses must be its own. Once the worker has gone no result comes any more.
/// Errors:   work that throws is reported to the debug output, and has no result.
class CWorker {
public:
    /// Takes the result, on the thread of the worker's owner. May be empty.
    using Done = std::function<void()>;
    using Work = std::function<Done()>;

    /// What becomes of the work that has not been done when the worker goes.
    enum class AtEnd {
        Drop,   ///< it is never done; nobody waits for the piece that is
        Finish, ///< the destructor waits for it, for kLongestEnd at most
    };
    static constexpr int kLongestEnd = 30; ///< seconds

    /// `name`: of the thread, at most 15 characters.
    explicit CWorker(const char* name, AtEnd atEnd = AtEnd::Drop);
    ~CWorker();
    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;

    void Run(Work work);

private:
    struct State;
    static void WorkOff(const std::shared_ptr<State>& state, const CMessageAddress& results);

    const char* const m_pszName;
    const AtEnd m_atEnd;
    const std::shared_ptr<State> m_pState;
    CMessageTarget m_results;
};
