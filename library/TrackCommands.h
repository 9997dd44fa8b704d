#pragma once

#include "library/CommandContext.h"

#include <QStringList>

class CCommandMap;
class CMediaList;

/// The commands that change the tracks themselves: delete, and the choice of a genre.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CTrackCommands {
public:
    CTrackCommands(const CommandContext& context, CCommandMap& commands);

private:
    void Delete();
    void TakeOut(CMediaList& playlist);
    [[nodiscard]] QStringList DeleteFiles(CMediaList& list);
    void LetGo(const CMediaList& list, int index);
    void SelectGenre(int command);

    const CommandContext m_context;
};
