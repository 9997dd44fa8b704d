#include "app/CommandBar.h"
#include "app/ContextMenus.h"
#include "app/MainLayout.h"
#include "app/PlayerPanel.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "library/MediaLists.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "skin/ImageButton.h"
#include "skin/MenuBar.h"
#include "skin/PicButton.h"
#include "skin/ProgressSlider.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/NoView.h"
#include "tests/fixtures/Printers.h"
#include "tests/player/ScriptedGraph.h"

#include <QTest>
#include <QWheelEvent>

#include <stdexcept>

namespace {

/// The menus, buttons and player's controls of a window; three tracks, each 100 s long, wait in the
/// active list. What is run of commands that are not the player's is kept.
class MainControlsTest : public ::testing::Test {
protected:
    MainControlsTest() {
        SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
        m_list.m_bActive = 1;
        for (const char* name : {"a", "b", "c"})
            AddTrack(m_list, u'/' + QString(name), name);
        m_transport.Listen(m_messages);
        m_layout.Volume().setValue(50);
        for (int command = 0; command < 40'000; ++command)
            m_commands.On(command, [this](int run) { m_run += run; });
        m_panel.Connect(m_player, m_transport, m_commands);
        m_bar.Build();
        m_changes = m_transport.OnChange([this] { m_state.UpdatePlayer(); });
        m_state.ApplyUiState(0);
        m_transport.UpdateTransport();
        m_window.show();
        QApplication::setActiveWindow(&m_window);
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focused = m_window.focusWidget();
        QTest::sendKeyEvent(QTest::Click, focused ? focused : &m_window, Qt::Key(key), QString(),
                            modifiers);
        QCoreApplication::processEvents();
    }
    void ClickPlay() {
        QTest::mouseClick(&m_layout.Play(), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    /// What was asked of the graphs since the last call.
    std::string Log() { return m_script.TakeLog().join(", ").toStdString(); }

    /// "-" for each of the player's buttons that is disabled, and the label of the one that plays.
    [[nodiscard]] std::string Buttons() const {
        std::string signs;
        for (const QWidget* button : {&m_layout.Previous(), &m_layout.Play(), &m_layout.Next()})
            signs += button->isEnabled() ? '+' : '-';
        return signs + ' ' + m_layout.Play().accessibleName().toStdString();
    }

    [[nodiscard]] static QAction& Find(const QWidget& menus, const char* text) {
        for (QAction* action : menus.findChildren<QAction*>())
            if (action->text().remove(u'&') == text)
                return *action;
        throw std::invalid_argument(text);
    }
    [[nodiscard]] QAction& Find(const char* text) const { return Find(m_menuBar, text); }

    /// The texts of a menu, gray ones in brackets.
    static std::string Texts(const QMenu& menu) {
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            if (action->isSeparator())
                continue;
            EXPECT_TRUE(action->text().contains(u'&')) << action->text().toStdString();
            const QString text = action->text().remove(u'&');
            texts += action->isEnabled() ? text : u'(' + text + u')';
        }
        return texts.join(", ").toStdString();
    }
    static QMenu* Popup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    QWidget m_window;
    CMainLayout m_layout{m_window};
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add("All", MEDIA_TYPE_ALL, 1);
    NoView m_view;
    ScriptedGraph::Script m_script;
    CMessageTarget m_messages;
    CCommandMap m_commands;
    CMenuBar m_menuBar{&m_window};
    CCommandBar m_bar{m_window, m_menuBar, m_layout, m_commands};
    CPlayerPanel m_panel{m_window, m_layout};
    CMediaPlayer m_player{m_script.Factory(), m_messages.Address(), m_panel};
    CTransport m_transport{m_lists, m_player, m_view, m_panel};
    FakeStatus m_status;
    CCommandState m_state{m_lists, m_transport, m_status, m_bar};
    CContextMenus m_menus{m_layout.Grid(), m_commands};
    CListening m_changes;
    QList<int> m_run;
};

} // namespace

TEST_F(MainControlsTest, ItemsKeysAndButtonsAreOne) {
    for (const char* placeholder : {"Random Transfer", "Calculate Tempo", "Refresh"})
        EXPECT_FALSE(Find(placeholder).isEnabled()) << placeholder;
    EXPECT_TRUE(Find("Settings...").isEnabled()) << "has no bit";
    EXPECT_FALSE(Find("Help Topics").autoRepeat()) << "one page for a key that is held";

    m_state.SetBit(UiState::kCreatePlaylist, true);
    EXPECT_EQ(m_layout.NewPlaylist().toolTip().section(u'(', 1), u"Ctrl+N)");
    m_layout.NewPlaylist().click();
    Find("Create New Playlist").trigger();
    Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_run, QList<int>(3, Command::kCreatePlaylist));
    m_layout.NewPlaylist().setFocus();
    m_state.SetBit(UiState::kCreatePlaylist, false);
    Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_run.size(), 3);
    EXPECT_TRUE(m_layout.Grid().hasFocus()) << "it went from the gray button";

    m_bar.ShowCopyDirection(true);
    EXPECT_EQ(m_layout.Copy().toolTip(), u"Copy to phone (Ctrl+T)");
    m_bar.ShowCopyDirection(false);
    EXPECT_EQ(m_layout.Copy().accessibleName(), u"Copy to My Collection");
}

TEST_F(MainControlsTest, MarkStaysUntilTheCommandMovesIt) {
    Find("My Selection").trigger(); // comes to nothing here
    EXPECT_TRUE(Find("My Collection").isChecked());
    m_state.SetField(UiState::kViewMask, UiState::kViewSelection);
    EXPECT_TRUE(Find("My Selection").isChecked());

    const QList<QAction*> options = m_menuBar.actions()[3]->menu()->actions();
    EXPECT_TRUE(options[PLAY_SINGLE]->isChecked()) << "the other mark stays";
    options[PLAY_RANDOM]->trigger();
    EXPECT_EQ(m_transport.GetPlayMode(), PLAY_RANDOM);
    m_transport.SetPlayMode(PLAY_RANDOM_CONTINUOUS);
    EXPECT_TRUE(options[PLAY_RANDOM_CONTINUOUS]->isChecked());
    EXPECT_FALSE(options[PLAY_SINGLE]->isChecked() || options[PLAY_RANDOM]->isChecked());
}

TEST_F(MainControlsTest, OpenPlaylistHasItsButtonsAndNoOtherView) {
    const auto views = [this] { return Texts(*m_menuBar.actions()[2]->menu()); };
    EXPECT_EQ(views(), "My Phone, My Collection, All Music, My Selection, Customize View..., "
                       "Mini Player");
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(m_run, QList<int>());
    m_bar.ShowOpenPlaylist(true);
    EXPECT_EQ(views(), "(My Phone), (My Collection), (All Music), (My Selection), "
                       "Customize View..., Mini Player");
    const std::tuple<CImageButton&, int, int, Qt::KeyboardModifier> buttons[] = {
        {m_layout.ClosePlaylist(), 1048, Qt::Key_W, Qt::ControlModifier},
        {m_layout.SavePlaylist(), 1047, Qt::Key_S, Qt::ControlModifier},
        {m_layout.MoveUp(), 1046, Qt::Key_Up, Qt::AltModifier},
        {m_layout.MoveDown(), 1045, Qt::Key_Down, Qt::AltModifier}};
    for (const auto& [button, command, key, modifier] : buttons) {
        EXPECT_TRUE(button.isVisible());
        m_run.clear();
        button.click();
        Press(key, modifier);
        EXPECT_EQ(m_run, QList<int>(2, command));
        m_layout.SetMiniMode(true);
        Press(key, modifier);
        EXPECT_EQ(m_run.size(), 2) << "nothing happens to what is not seen";
        m_layout.SetMiniMode(false);
    }
    m_bar.ShowOpenPlaylist(false);
    EXPECT_FALSE(m_layout.ClosePlaylist().isVisible());
}

TEST_F(MainControlsTest, RowsHaveMenus) {
    CMediaList list({}, MEDIA_TYPE_COLLECTION, 1);
    for (const char* name : {"track.mp3", "R&B list.m3u", "&.m3u"})
        AddTrack(list, name, name);
    list[0]->m_bChecked = 1;
    m_menus.ShowRowMenu({1, 1}, list, 0);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(Texts(*Popup()),
              "Play, (Edit...), Delete, Add to Playlist, Select Genre, Select All, "
              "Deselect All, (Cancel All Operations)");
    const QList<QAction*> playlists = Find(*Popup(), "Add to Playlist").menu()->actions();
    EXPECT_EQ(playlists[0]->text(), u"&R&&B list.m3u");
    EXPECT_EQ(playlists[1]->text(), u"&&.m3u");
    playlists[1]->trigger();
    QAction& genres = Find(*Popup(), "Select Genre");
    genres.trigger(); // chooses none
    EXPECT_EQ(genres.menu()->actions().size(), 25);
    QAction* last = genres.menu()->actions().last()->menu()->actions().last();
    EXPECT_EQ(last->text(), u"&General World");
    last->trigger();
    EXPECT_EQ(m_run, (QList<int>{35101, 33110}));

    m_menus.ShowRowMenu({1, 1}, list, 1);
    EXPECT_EQ(Texts(*Popup()), "Play, Open, Rename, Delete, Add to Playlist, (Select Genre), "
                               "Select All, Deselect All, (Cancel All Operations)");
    m_menus.ShowRowMenu({1, 1}, list, -1);
    EXPECT_EQ(Texts(*Popup()), "Refresh");
    list.m_iType = MEDIA_TYPE_ALL;
    m_menus.ShowRowMenu({1, 1}, list, -1);
    EXPECT_FALSE(Popup());

    m_menus.ShowHeaderMenu({0, 1}, 0x3);
    const QList<QAction*> columns = Popup()->actions();
    EXPECT_EQ(columns.size(), 19) << "17 columns, a line, and the choice of them all";
    EXPECT_TRUE(columns[0]->isChecked() && !columns[0]->isEnabled());
    EXPECT_TRUE(columns[1]->isChecked() && !columns[2]->isChecked());
    columns[2]->trigger();
    EXPECT_EQ(m_run.last(), 32804);
    Popup()->close();
}

TEST_F(MainControlsTest, ButtonsAndKeysDriveThePlayer) {
    EXPECT_EQ(Buttons(), "-+- Play");
    ClickPlay();
    EXPECT_EQ(Log(), "Render /a, Volume -1339, Run");
    EXPECT_EQ(Buttons(), "-++ Pause");
    EXPECT_EQ(m_layout.Play().toolTip(), u"Pause (Ctrl+P)");
    m_layout.Volume().setFocus();
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Log(), "") << "there is none before, and the control does not take the key";
    EXPECT_TRUE(m_layout.Volume().hasFocus());

    using enum TransportState;
    const std::tuple<int, Qt::KeyboardModifiers, TransportState, QString> rows[] = {
        {Qt::Key_P, Qt::ControlModifier, Paused, "a"},
        {Qt::Key_MediaPlay, {}, Playing, "a"},
        {Qt::Key_MediaPause, {}, Paused, "a"},
        {Qt::Key_MediaTogglePlayPause, {}, Playing, "a"},
        {Qt::Key_Right, Qt::AltModifier, Playing, "b"},
        {Qt::Key_MediaNext, {}, Playing, "c"},
        {Qt::Key_MediaPrevious, {}, Playing, "b"},
        {Qt::Key_Left, Qt::AltModifier, Playing, "a"},
        {Qt::Key_MediaStop, {}, Stopped, ""}};
    for (const auto& [key, modifiers, state, caption] : rows) {
        Press(key, modifiers);
        EXPECT_EQ(m_transport.GetState(), state) << key;
        EXPECT_EQ(m_layout.Seek().accessibleDescription(), caption);
    }
    ClickPlay();
    Log();
    m_layout.Volume().setValue(100);
    EXPECT_EQ(Log(), "Volume 0");
}

TEST_F(MainControlsTest, FocusStaysWithTheButtons) {
    ClickPlay();
    m_layout.Next().setFocus();
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_TRUE(m_layout.Next().hasFocus());
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Buttons(), "++- Pause");
    EXPECT_TRUE(m_layout.Play().hasFocus());
    m_layout.Previous().setFocus();
    m_transport.StopPlayback();
    m_list.ClearAll();
    m_transport.UpdateTransport();
    EXPECT_EQ(Buttons(), "--- Play");
    EXPECT_TRUE(m_window.focusWidget() && m_window.focusWidget()->isEnabled());

    m_layout.SetMiniMode(true); // where the focus waits for something to play
    EXPECT_FALSE(m_layout.Play().hasFocus());
    AddTrack(m_list, "/d");
    m_transport.UpdateTransport();
    EXPECT_TRUE(m_layout.Play().hasFocus());
}

TEST_F(MainControlsTest, SeekBarTellsTheUserFromThePlayer) {
    QAbstractSlider& seek = m_layout.Seek();
    EXPECT_FALSE(seek.isEnabled());
    ClickPlay();
    EXPECT_TRUE(seek.isEnabled());
    Log();
    const auto play = [this](int percent) {
        m_script.current->position = percent * kMediaSecond;
        m_player.UpdatePosition();
    };
    play(30);
    EXPECT_EQ(seek.value(), 30);
    EXPECT_EQ(Log(), "");

    QTest::keyClick(&seek, Qt::Key_Right);
    EXPECT_EQ(Log(), "Seek 310000000, Run");
    QWheelEvent wheel(QPointF(9, 9), QPointF(9, 9), {}, QPoint(0, 120), {}, {}, Qt::NoScrollPhase,
                      false);
    seek.setSingleStep(2); // a notch is three steps
    QApplication::sendEvent(&seek, &wheel);
    EXPECT_EQ(Log(), "Seek 370000000, Run");
    seek.setValue(40); // as a screen reader does
    EXPECT_EQ(Log(), "Seek 400000000, Run");

    const auto at = [&](int percent) { return QPoint(seek.width() * percent / 100, 4); };
    QTest::mousePress(&seek, Qt::LeftButton, {}, at(60));
    QTest::mouseMove(&seek, at(80));
    play(61);
    EXPECT_EQ(seek.value(), 80) << "it is in the user's hand";
    EXPECT_EQ(Log(), "Seek 600000000, Seek 800000000");
    QTest::mouseRelease(&seek, Qt::LeftButton, {}, at(80));
    EXPECT_EQ(Log(), "Seek 800000000, Run");

    QTest::mousePress(&seek, Qt::LeftButton, {}, at(20));
    Log();
    m_script.current->Tell({GraphEvent::Code::Failed});
    QCoreApplication::processEvents();
    QTest::mouseRelease(&seek, Qt::LeftButton, {}, at(20));
    EXPECT_FALSE(seek.isEnabled());
    EXPECT_EQ(seek.value(), 0);
    EXPECT_EQ(Log().find("Seek"), std::string::npos);
}
