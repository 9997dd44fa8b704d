#pragma once

#include "base/IStatusDisplay.h"
#include "base/Language.h"
#include "base/Messages.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/LibraryScanner.h"
#include "library/ListMessages.h"
#include "library/MediaLists.h"
#include "library/Playlists.h"
#include "library/TrackCommands.h"
#include "library/TrackView.h"
#include "library/ViewCommands.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/ScriptedPrompts.h"

#include <gtest/gtest.h>

/// All commands over lists of real files in a folder, shown in a real grid.
class CommandsFixture : public ::testing::Test,
                        protected ICommandDisplay,
                        protected ITrackPlayer,
                        protected IStatusDisplay {
protected:
    CommandsFixture() {
        SetLanguageFile(QString()); // texts are their own keys
        m_lists.SetLocation(m_collection, m_folder);
        m_messages.On(WM_TD_ADD_TRACK, [this](Message& m) { return m_scanner.OnAddTrack(m); });
        m_messages.On(WM_TD_LIST_DONE, [this](Message& message) {
            m_done += static_cast<int>(message.wParam);
            m_scanner.OnListDone(static_cast<int>(message.wParam));
            m_view.FillGrid();
            m_state.UpdateCommands();
            return 0;
        });
        m_playlists.SetViewHandler([this] { ++m_viewChanges; });
        m_playlist.m_bVisible = m_selection.m_bVisible = 0;
        m_collection.m_bActive = 1;
    }
    ~CommandsFixture() override { g_bPlaylistOnly = g_bSelectionOnly = 0; }

    /// Writes a file into the collection's folder and has it added to the collection.
    QString AddFile(const char* name, const QByteArray& content = "music") {
        const QString path =
            m_scratch.Write(QStringLiteral("Mine/") + QString::fromUtf8(name), content);
        SendAddTrack(m_messages.Address(), m_collection, path);
        m_view.FillGrid();
        return path;
    }
    void Check(CMediaList& list, std::initializer_list<int> indices) {
        for (const int index : indices)
            list[index]->m_bChecked = 1;
        m_state.UpdateCommands();
    }
    /// As a click on its row does.
    void Click(const CMediaList& list, int index) {
        GridNotification click{.code = NM_CLICK, .row = list[index]->m_iRow, .col = 1};
        m_view.OnNotify(click);
    }
    /// File names of the records, those that are checked with a "*".
    [[nodiscard]] static std::string Names(const CMediaList& list) {
        QStringList names;
        for (int index = 0; index < list.GetCount(); ++index)
            names += list[index]->m_strPath.section(u'/', -1) +
                     (list[index]->m_bChecked ? QStringLiteral("*") : QString());
        return names.join(u' ').toStdString();
    }

    void EnableCommand(int command, bool enable) override { m_enabled[command] = enable; }
    void MarkCommand(int command) override { m_marked = command; }
    void ShowCopyDirection(bool) override {}
    void ReleaseFile(const QString& path) override { m_released += path; }
    void ReleaseList(const CMediaList& list) override { m_released += list.m_strName; }
    [[nodiscard]] PlayerCommands GetCommands() const override { return {}; }
    void ShowStatus(const QString&) override {}

    ScratchFolder m_scratch;
    const QString m_folder = m_scratch.MakeFolder(QStringLiteral("Mine"));
    CMediaLists m_lists;
    CMediaList& m_playlist = m_lists.Add(QStringLiteral("Playlist"), MEDIA_TYPE_PLAYLIST, 1);
    CMediaList& m_selection = m_lists.Add(QStringLiteral("Selection"), MEDIA_TYPE_SELECTION, 1);
    CMediaList& m_collection = m_lists.Add(QStringLiteral("Mine"), MEDIA_TYPE_COLLECTION, 1);
    CMediaList& m_all = m_lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CGridCtrl m_grid;
    CTrackView m_view{m_lists, m_grid, *this};
    CCommandMap m_commands;
    CCommandState m_state{m_lists, *this};
    ScriptedPrompts m_prompts;
    MessageTarget m_messages;
    CLibraryScanner m_scanner{m_lists};
    const CommandContext m_context{
        m_lists, m_view, m_state, *this, m_prompts, *this, m_messages.Address()};
    CPlaylists m_playlists{m_context, m_commands};
    CViewCommands m_viewCommands{m_context, m_commands, m_scanner};
    CTrackCommands m_trackCommands{m_context, m_commands};

    std::map<int, bool> m_enabled;
    int m_marked = 0;
    int m_viewChanges = 0;
    QList<int> m_done;
    QStringList m_released; ///< paths of files and names of lists
};
