#include "app/CommandBar.h"

#include "app/ContextMenus.h"
#include "app/MainLayout.h"
#include "base/Language.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "library/MediaLists.h"
#include "skin/ImageButton.h"
#include "skin/MenuBar.h"
#include "skin/PicButton.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/Printers.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

/// The menus and buttons of a window; what is run is kept.
class CommandBarTest : public ::testing::Test {
protected:
    CommandBarTest() {
        SetLanguageFile(QStringLiteral(LANGUAGES_FOLDER "/language.lgg"));
        m_commands.On(0, 40'000, [this](int command) { m_run += command; });
        m_bar.Build();
        m_state.ApplyUiState(0);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
    }

    [[nodiscard]] static QAction* Find(const QWidget& menu, const char* text) {
        for (QAction* action : menu.actions())
            if (action->text().remove(u'&') == QLatin1String(text))
                return action;
        return nullptr;
    }
    [[nodiscard]] QAction* Find(const char* text) const {
        for (const QAction* menu : m_menuBar.actions())
            if (QAction* action = Find(*menu->menu(), text))
                return action;
        ADD_FAILURE() << "no item " << text;
        return nullptr;
    }
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
        return texts.join(QStringLiteral(", ")).toStdString();
    }
    static QMenu* Popup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    QWidget m_window;
    CMainLayout m_layout{m_window};
    CMenuBar m_menuBar{&m_window};
    CMediaLists m_lists;
    CCommandMap m_commands;
    CCommandBar m_bar{m_window, m_menuBar, m_layout, m_commands};
    FakePlayer m_fakePlayer;
    FakeStatus m_status;
    CCommandState m_state{m_lists, m_fakePlayer, m_status, m_bar};
    CContextMenus m_menus{m_layout.Grid(), m_commands};
    QList<int> m_run;
};

} // namespace

TEST_F(CommandBarTest, ItemsKeysAndButtonsAreOne) {
    for (const char* placeholder : {"Random Transfer", "Calculate Tempo", "Refresh"})
        EXPECT_FALSE(Find(placeholder)->isEnabled()) << placeholder;
    EXPECT_TRUE(Find("Settings...")->isEnabled()) << "has no bit";
    EXPECT_FALSE(Find("Help Topics")->autoRepeat()) << "one page for a key that is held";

    m_state.SetBit(UiState::kCreatePlaylist, true);
    EXPECT_TRUE(m_layout.NewPlaylist().isEnabled());
    EXPECT_EQ(m_layout.NewPlaylist().toolTip().section(u'(', 1), u"Ctrl+N)");
    m_layout.NewPlaylist().click();
    Find("Create New Playlist")->trigger();
    QTest::keyClick(&m_window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_run, QList<int>(3, Command::kCreatePlaylist));
    m_layout.NewPlaylist().setFocus();
    m_state.SetBit(UiState::kCreatePlaylist, false);
    QTest::keyClick(&m_window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_run.size(), 3);
    EXPECT_TRUE(m_layout.Grid().hasFocus()) << "it went from the gray button";

    m_bar.ShowCopyDirection(true);
    EXPECT_EQ(m_layout.Copy().toolTip(), u"Copy to phone (Ctrl+T)");
    m_bar.ShowCopyDirection(false);
    EXPECT_EQ(m_layout.Copy().accessibleName(), u"Copy to My Collection");
}

TEST_F(CommandBarTest, MarkStaysUntilTheCommandMovesIt) {
    Find("My Selection")->trigger(); // comes to nothing here
    EXPECT_TRUE(Find("My Collection")->isChecked());
    EXPECT_FALSE(Find("My Selection")->isChecked());
    m_state.SetField(UiState::kViewMask, UiState::kViewSelection);
    EXPECT_TRUE(Find("My Selection")->isChecked());
    EXPECT_TRUE(Find("Continuous Play")->isChecked()) << "the other mark stays";
}

TEST_F(CommandBarTest, OpenPlaylistHasItsButtonsAndNoOtherView) {
    const auto views = [this] { return Texts(*m_menuBar.actions()[2]->menu()); };
    EXPECT_EQ(views(), "My Phone, My Collection, All Music, My Selection, Customize View..., "
                       "Mini Player");
    QTest::keyClick(&m_window, Qt::Key_W, Qt::ControlModifier);
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
        QTest::keyClick(&m_window, Qt::Key(key), modifier);
        EXPECT_EQ(m_run, QList<int>(2, command));
        m_layout.SetMiniMode(true);
        QTest::keyClick(&m_window, Qt::Key(key), modifier);
        EXPECT_EQ(m_run.size(), 2) << "nothing happens to what is not seen";
        m_layout.SetMiniMode(false);
    }
    m_bar.ShowOpenPlaylist(false);
    EXPECT_FALSE(m_layout.ClosePlaylist().isVisible());
}

TEST_F(CommandBarTest, RowsHaveMenus) {
    CMediaList list(QString(), MEDIA_TYPE_COLLECTION, 1);
    for (const char* name : {"track.mp3", "R&B list.m3u", "&.m3u"})
        AddTrack(list, QString::fromLatin1(name), QString::fromLatin1(name));
    list[0]->m_bChecked = 1;
    m_menus.ShowRowMenu({1, 1}, list, 0);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(Texts(*Popup()),
              "Play, (Edit...), Delete, Add to Playlist, Select Genre, Select All, "
              "Deselect All, (Cancel All Operations)");
    const QMenu& playlists = *Find(*Popup(), "Add to Playlist")->menu();
    EXPECT_EQ(playlists.actions()[0]->text(), u"&R&&B list.m3u");
    EXPECT_EQ(playlists.actions()[1]->text(), u"&&.m3u");
    playlists.actions()[1]->trigger();
    const QMenu& genres = *Find(*Popup(), "Select Genre")->menu();
    genres.menuAction()->trigger(); // chooses none
    EXPECT_EQ(genres.actions().size(), 25);
    QAction* last = genres.actions().last()->menu()->actions().last();
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
