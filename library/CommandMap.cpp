#include "library/CommandMap.h"

#include "base/Guard.h"

#include <utility>

void CCommandMap::On(int first, int last, Handler handler) {
    m_ranges[first] = {last, std::move(handler)};
}

const CCommandMap::Handler* CCommandMap::Find(int command) const {
    auto behind = m_ranges.upper_bound(command);
    if (behind == m_ranges.begin())
        return nullptr;
    const Range& range = std::prev(behind)->second;
    return command <= range.last ? &range.handler : nullptr;
}

void CCommandMap::Run(int command) const {
    const Handler* handler = Find(command);
    if (!handler)
        return;
    Guarded("OnCommand()", [&] {
        if (m_pfnBefore)
            m_pfnBefore(command);
        (*handler)(command);
    });
}
