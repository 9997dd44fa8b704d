#pragma once

#include "library/CommandContext.h"

class CCommandMap;
class CMediaList;

/// The commands that change what the view shows of the lists, and their checks: select and deselect
/// all, and the views.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CViewCommands {
public:
    CViewCommands(const CommandContext& context, CCommandMap& commands);

private:
    void CheckAll(int checked);
    void ShowList(int type);
    void ShowSelection();
    [[nodiscard]] CMediaList* ListUnderCursor() const;

    const CommandContext m_context;
};
