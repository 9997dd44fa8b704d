#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// Held by whoever listens: the listening ends when it goes, or is given another value.
using CListening = std::shared_ptr<const void>;

/// Those who want to hear of one kind of event.
///
/// Thread:   one thread.
/// Lifetime: neither side has to outlive the other. A listener may come or go while it is told.
template <typename... Args>
class CListeners {
public:
    using Call = std::function<void(Args...)>;

    /// `call` hears of each event until the answer goes.
    [[nodiscard]] CListening Listen(Call call) {
        auto listening = std::make_shared<const Call>(std::move(call));
        m_calls.push_back(listening);
        return listening;
    }

    /// Calls all who listen, in the order in which they began.
    void Tell(Args... args) {
        std::erase_if(m_calls, [](const auto& call) { return call.expired(); });
        const auto calls = m_calls;
        for (const auto& call : calls)
            if (const auto listening = call.lock())
                (*listening)(args...);
    }

private:
    std::vector<std::weak_ptr<const Call>> m_calls;
};
