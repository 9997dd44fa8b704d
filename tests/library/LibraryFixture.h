#pragma once

#include "base/Language.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/LibraryScanner.h"
#include "library/ListFilling.h"
#include "library/MediaLists.h"
#include "library/Playlists.h"
#include "library/TrackCommands.h"
#include "library/TrackFile.h"
#include "library/ViewCommands.h"
#include "platform/Worker.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/ScriptedPrompts.h"
#include "view/TrackView.h"

#include <QTest>

/// All commands over lists of files, shown in a real grid. Its rows: 0 the header, 1 the title of
/// the collection and, after its tracks, that of All Music.
struct LibraryFixture : ::testing::Test, ICommandDisplay {
    LibraryFixture() {
        SetLanguageFile(QString()); // texts are their own keys
        m_lists.SetLocation(m_collection, m_folder);
        m_scanner.Listen(m_messages);
        m_grid.SetNotifyHandler(
            [this](GridNotification& notification) { m_view.OnNotify(notification); });
        m_grid.resize(900, 400);
        m_playlist.m_bVisible = m_selection.m_bVisible = 0;
        m_collection.m_bActive = 1;
        m_view.FillGrid();
    }
    ~LibraryFixture() override { g_bPlaylistOnly = g_bSelectionOnly = 0; }

    /// Appends a file, which need not be there; no row is made.
    static void Append(CMediaList& list, const QString& path, int checked = 0) {
        CMediaFileRequest request;
        request.m_strPath = path;
        request.m_bChecked = checked;
        list.Append(MakeTrack(request));
    }
    /// Writes a file into the collection's folder and has it added to the collection.
    QString AddFile(const char* name, const QByteArray& content = "music") {
        const QString path = m_scratch.Write("Mine/" + QString::fromUtf8(name), content);
        Append(m_collection, path);
        m_view.FillGrid();
        return path;
    }
    /// Waits until all that was to be written has been.
    void AwaitWriter() {
        bool isDone = false;
        m_writer.Run([&isDone] { return [&isDone] { isDone = true; }; });
        EXPECT_TRUE(RunUntil([&] { return isDone; }));
    }
    /// Waits until no list is being filled, and nothing opened.
    void AwaitLists() {
        EXPECT_TRUE(RunUntil([this] {
            return m_status.running == 0 && !m_scanner.IsScanning(m_collection.m_iId) &&
                   !m_scanner.IsScanning(m_playlist.m_iId);
        }));
    }
    void Check(CMediaList& list, std::initializer_list<int> indices) {
        for (const int index : indices)
            list[index]->m_bChecked = 1;
        m_state.UpdateCommands();
    }
    void Click(int row, int col, Qt::KeyboardModifiers keys = {},
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(m_grid.viewport(), button, keys, m_grid.GetCellRect({row, col}).center());
    }
    void Click(const CMediaList& list, int index) { Click(list[index]->m_iRow, 1); }
    void Press(Qt::Key key) { QTest::keyClick(&m_grid, key); }
    /// Opens the editor of a cell, and types another text into it.
    void Type(CCellID cell, const QString& text) {
        m_grid.SetFocusCell(cell);
        Press(Qt::Key_F2);
        ASSERT_TRUE(m_grid.IsEditing());
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_Delete);
        QTest::keyClicks(m_grid.focusWidget(), text);
    }
    [[nodiscard]] QString Text(int row, int col) const {
        return m_grid.GetCell(row, col)->GetText();
    }
    /// Titles and tracks as the grid shows them: those checked with a "*", selected ones in [].
    [[nodiscard]] std::string Rows() const {
        QStringList rows;
        for (int row = 1; row < m_grid.GetRowCount(); ++row) {
            const auto* check = dynamic_cast<const CGridCellCheck*>(m_grid.GetCell(row, 0));
            const QString text = Text(row, check ? 1 : m_grid.GetColumnCount() - 1) +
                                 QString(check && check->GetCheck(), u'*');
            rows += m_grid.GetCell(row, 1)->IsSelected() ? u'[' + text + u']' : text;
        }
        return rows.join(u' ').toStdString();
    }

    void EnableCommand(int command, bool enable) override { m_enabled[command] = enable; }
    void MarkCommand(int command) override { m_marked = command; }
    void ShowCopyDirection(bool phone) override { m_isToPhone = phone; }

    ScratchFolder m_scratch;
    const QString m_folder = m_scratch.MakeFolder("Mine");
    CMediaLists m_lists;
    CMediaList& m_playlist = m_lists.Add("Playlist", MEDIA_TYPE_PLAYLIST, 1);
    CMediaList& m_selection = m_lists.Add("Selection", MEDIA_TYPE_SELECTION, 1);
    CMediaList& m_collection = m_lists.Add("Mine", MEDIA_TYPE_COLLECTION, 1);
    CMediaList& m_all = m_lists.Add("All", MEDIA_TYPE_ALL, 1);
    CGridCtrl m_grid;
    CTrackView m_view{m_lists, m_grid};
    CCommandMap m_commands;
    FakePlayer m_player;
    FakeStatus m_status;
    CCommandState m_state{m_lists, m_player, m_status, *this};
    ScriptedPrompts m_prompts;
    CMessageTarget m_messages;
    CLibraryScanner m_scanner{m_lists};
    CWorker m_writer{"writer", CWorker::AtEnd::Finish};
    const CommandContext m_context{m_lists,   m_view,   m_state,   m_player,
                                   m_prompts, m_status, m_scanner, m_writer};
    CPlaylists m_playlists{m_context, m_commands};
    CViewCommands m_viewCommands{m_context, m_commands};
    CTrackCommands m_trackCommands{m_context, m_commands};
    CListFilling m_filling{m_context, m_commands, [](const CMediaList&) { return false; }};

    const CListening m_typing = m_view.OnTyped(
        [this](const CMediaList& list, int index, TrackText text, const QString& typed) {
            m_trackCommands.StoreText(list, index, text, typed);
        });

    std::map<int, bool> m_enabled;
    int m_marked = 0;
    bool m_isToPhone = false;
};
