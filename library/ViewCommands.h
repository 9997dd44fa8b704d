#pragma once

#include "library/CommandContext.h"

class CCommandMap;
class CLibraryScanner;
class CMediaList;

/// The commands that change what the view shows of the lists, and their checks: select and deselect
/// all, the views, reading My Collection anew.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CViewCommands {
public:
    CViewCommands(const CommandContext& context, CCommandMap& commands, CLibraryScanner& scanner);

private:
    void CheckAll(int checked);
    void ShowList(int type);
    void ShowSelection();
    void Refresh();
    [[nodiscard]] CMediaList* ListUnderCursor() const;

    const CommandContext m_context;
    CLibraryScanner& m_scanner;
};
