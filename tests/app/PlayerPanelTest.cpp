#include "app/PlayerPanel.h"

#include "app/CommandBar.h"
#include "app/MainLayout.h"
#include "library/CommandMap.h"
#include "library/MediaLists.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "skin/ImageButton.h"
#include "skin/MenuBar.h"
#include "skin/ProgressSlider.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/NoView.h"
#include "tests/fixtures/Printers.h"
#include "tests/player/ScriptedGraph.h"

#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

/// The controls of a player in a window; three tracks, each 100 s long, wait in the active list.
class PlayerPanelTest : public ::testing::Test {
protected:
    PlayerPanelTest() {
        SetLanguageFile(QString()); // texts are their own keys
        m_list.m_bActive = 1;
        for (const char* name : {"a", "b", "c"})
            AddTrack(m_list, u'/' + QString::fromLatin1(name), QString::fromLatin1(name));
        m_transport.Listen(m_messages);
        m_layout.Volume().setValue(50);
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
    std::string Log() { return m_script.TakeLog().join(u", ").toStdString(); }

    /// "-" for each of the buttons that is disabled, and the label of the one that plays.
    [[nodiscard]] std::string Buttons() const {
        std::string signs;
        for (const QWidget* button : {&m_layout.Previous(), &m_layout.Play(), &m_layout.Next()})
            signs += button->isEnabled() ? '+' : '-';
        return signs + ' ' + m_layout.Play().accessibleName().toStdString();
    }

    QWidget m_window;
    CMainLayout m_layout{m_window};
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
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
    CListening m_changes;
};

} // namespace

TEST_F(PlayerPanelTest, ButtonsAndKeysDriveThePlayer) {
    EXPECT_EQ(Buttons(), "-+- IDS_BT_PLAY");
    ClickPlay();
    EXPECT_EQ(Log(), "Render /a, Volume -1339, Run");
    EXPECT_EQ(Buttons(), "-++ IDS_BT_PAUSE");
    EXPECT_EQ(m_layout.Play().toolTip(), u"IDS_BT_PAUSE (Ctrl+P)");
    EXPECT_EQ(m_layout.Seek().accessibleDescription(), u"a");
    m_layout.Volume().setFocus();
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Log(), "") << "there is none before, and the control does not take the key";
    EXPECT_TRUE(m_layout.Volume().hasFocus());

    using enum TransportState;
    const std::tuple<int, Qt::KeyboardModifiers, TransportState, QString> rows[] = {
        {Qt::Key_P, Qt::ControlModifier, Paused, QStringLiteral("a")},
        {Qt::Key_MediaPlay, {}, Playing, QStringLiteral("a")},
        {Qt::Key_MediaPause, {}, Paused, QStringLiteral("a")},
        {Qt::Key_MediaTogglePlayPause, {}, Playing, QStringLiteral("a")},
        {Qt::Key_Right, Qt::AltModifier, Playing, QStringLiteral("b")},
        {Qt::Key_MediaNext, {}, Playing, QStringLiteral("c")},
        {Qt::Key_MediaPrevious, {}, Playing, QStringLiteral("b")},
        {Qt::Key_Left, Qt::AltModifier, Playing, QStringLiteral("a")},
        {Qt::Key_MediaStop, {}, Stopped, QString()}};
    for (const auto& [key, modifiers, state, caption] : rows) {
        Press(key, modifiers);
        EXPECT_EQ(m_transport.GetState(), state) << key;
        EXPECT_EQ(m_layout.Seek().accessibleDescription(), caption);
    }
}

TEST_F(PlayerPanelTest, FocusStaysWithTheButtons) {
    ClickPlay();
    m_layout.Next().setFocus();
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_TRUE(m_layout.Next().hasFocus());
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Buttons(), "++- IDS_BT_PAUSE");
    EXPECT_TRUE(m_layout.Play().hasFocus());
    m_layout.Previous().setFocus();
    m_transport.StopPlayback();
    m_list.ClearAll();
    m_transport.UpdateTransport();
    EXPECT_EQ(Buttons(), "--- IDS_BT_PLAY");
    EXPECT_TRUE(m_window.focusWidget() && m_window.focusWidget()->isEnabled());

    m_layout.SetMiniMode(true); // where the focus waits for something to play
    EXPECT_FALSE(m_layout.Play().hasFocus());
    AddTrack(m_list, QStringLiteral("/d"));
    m_transport.UpdateTransport();
    EXPECT_TRUE(m_layout.Play().hasFocus());
}

TEST_F(PlayerPanelTest, SeekBarTellsTheUserFromThePlayer) {
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

TEST_F(PlayerPanelTest, VolumeAndPlayModesAreThePlayers) {
    ClickPlay();
    Log();
    m_layout.Volume().setValue(100);
    EXPECT_EQ(Log(), "Volume 0");

    const QList<QAction*> options = m_menuBar.actions()[3]->menu()->actions();
    EXPECT_TRUE(options[PLAY_SINGLE]->isChecked());
    options[PLAY_RANDOM]->trigger();
    EXPECT_EQ(m_transport.GetPlayMode(), PLAY_RANDOM);
    m_transport.SetPlayMode(PLAY_RANDOM_CONTINUOUS);
    EXPECT_TRUE(options[PLAY_RANDOM_CONTINUOUS]->isChecked());
    EXPECT_FALSE(options[PLAY_SINGLE]->isChecked() || options[PLAY_RANDOM]->isChecked());
}
