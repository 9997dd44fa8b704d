#pragma once

#include "library/CommandContext.h"
#include "library/ListFilling.h"

class CCommandMap;
class CTransport;
class QString;
class QWidget;

/// The lists of the main window, and where their music comes from: the folder of My Collection,
/// scans of the computer, and the document that the program was started with.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CMusicSources {
public:
    CMusicSources(QWidget& window, const CommandContext& context, CCommandMap& commands,
                  CTransport& transport);

    /// Makes the lists, and begins to read My Collection.
    void CreateLists();

    /// Plays a document opened from outside. One of My Collection is found by its scan.
    void OpenDocument(const QString& path);

    /// Plays a track of a list, or a playlist.
    void Play(CMediaList& list, int index);

private:
    void OnScanPC();
    [[nodiscard]] bool MayTakeOver(const CMediaList& list) const;

    QWidget& m_window;
    const CommandContext m_context;
    CTransport& m_transport;
    CListFilling m_filling;
    CListening m_warmUp;
};
