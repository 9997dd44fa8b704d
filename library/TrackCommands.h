#pragma once

#include "library/CommandContext.h"
#include "library/TrackRecord.h"

#include <QStringList>

#include <vector>

class CCommandMap;
class CMediaList;
struct StoreResult;

/// The commands that change the tracks themselves: delete, edits of their texts, and the choice of
/// a genre.
///
/// Thread: interface thread; files are written by the context's worker, in order. Lifetime: what
/// the constructor takes outlives this.
class CTrackCommands {
public:
    CTrackCommands(const CommandContext& context, CCommandMap& commands);

    /// Stores a text that was typed for the track, or the playlist, at an index of a list. All rows
    /// of the file show it at once, and what was there before if it can't be stored.
    void StoreText(const CMediaList& list, int index, TrackText text, const QString& value);

private:
    /// A text of a file that is being written.
    struct Writing {
        QString path;
        TrackText text;
        QString stored; ///< what the file tells, as far as it is known
        int pending;    ///< how many writes are to come
    };

    void Delete();
    void TakeOut(CMediaList& playlist);
    [[nodiscard]] QStringList DeleteFiles(CMediaList& list);
    void LetGo(const CMediaList& list, int index);
    void SelectGenre(int command);
    [[nodiscard]] std::vector<Writing>::iterator FindWriting(const QString& path, TrackText text);
    void RenameList(const QString& path, const QString& title, QString before);
    void OnRenamed(const QString& path, const QString& before, const StoreResult& result);
    void OnStored(const QString& path, TrackText text, const StoreResult& result);
    void TellUnstored(const QString& path, const QString& reason);

    const CommandContext m_context;
    std::vector<Writing> m_writings;
};
