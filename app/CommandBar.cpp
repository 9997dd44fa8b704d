#include "app/CommandBar.h"

#include "app/CommandAction.h"
#include "app/MainLayout.h"
#include "base/Language.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "skin/ImageButton.h"
#include "skin/MenuBar.h"
#include "skin/PicButton.h"

#include <QAction>
#include <QActionGroup>

namespace {

using namespace Command;

/// The views, of which one holds.
constexpr int kViews[] = {kViewPhone, kViewCollection, kViewAllMusic, kViewSelection};

/// What can be done while the menu bar is hidden.
constexpr int kMiniPlayerKeys[] = {kMiniPlayer, kExit, kHelp};

} // namespace

CCommandBar::CCommandBar(QWidget& window, CMenuBar& menuBar, const CMainLayout& layout,
                         const CCommandMap& commands)
    : m_window(window)
    , m_menuBar(menuBar)
    , m_layout(layout)
    , m_commands(commands) {}

void CCommandBar::Build() {
    BuildMenus();
    TakeButtons();
    ShowOpenPlaylist(false);
}

void CCommandBar::BuildMenus() {
    for (const Menu& menu : kMainMenus) {
        BCMenu& popup =
            m_menuBar.AddMenu(GetMenuText(QStringLiteral("IDS_"), QString::fromLatin1(menu.name)));
        for (const MenuItem& item : menu.items) {
            if (item.command == 0)
                popup.addSeparator();
            else
                popup.addAction(m_actions[item.command] =
                                    MakeCommandAction(item, menu.prefix, m_commands, &popup));
        }
    }
    for (const std::span<const int> marks : {std::span(kPlayModes), std::span(kViews)}) {
        auto* group = new QActionGroup(&m_window);
        for (const int command : marks) {
            QAction* action = group->addAction(m_actions.at(command));
            action->setCheckable(true);
            // Qt has marked it already, but the command may have come to nothing.
            QObject::connect(action, &QAction::triggered, group,
                             [this, group] { m_marked[group]->setChecked(true); });
            m_marked.try_emplace(group, action);
        }
    }
    for (const int command : kMiniPlayerKeys)
        m_window.addAction(m_actions.at(command));
}

void CCommandBar::TakeButtons() {
    for (const MenuItem& item : kButtonItems)
        m_actions[item.command] = MakeCommandAction(item, "", m_commands, &m_window);
    TakeButton(kCreatePlaylist, m_layout.NewPlaylist());
    TakeButton(kScan, m_layout.ScanButton());
    TakeButton(kCopy, m_layout.Copy());
    TakeButton(kCancelAll, m_layout.CancelAll());
    TakeButton(kClosePlaylist, m_layout.ClosePlaylist());
    TakeButton(kSavePlaylist, m_layout.SavePlaylist());
    TakeButton(kMoveUp, m_layout.MoveUp());
    TakeButton(kMoveDown, m_layout.MoveDown());
    TakeButton(kPrevious, m_layout.Previous());
    TakeButton(kPlayPause, m_layout.Play());
    TakeButton(kNext, m_layout.Next());
    for (const MenuItem& item : kButtonItems) // their keys work as long as they are seen
        m_buttons.at(item.command)->addAction(m_actions.at(item.command));
}

void CCommandBar::TakeButton(int command, CPictureButton& button) {
    m_buttons[command] = &button;
    button.setEnabled(m_commands.Has(command));
    QObject::connect(&button, &QAbstractButton::clicked, &button,
                     [this, command] { m_commands.Run(command); });
    LabelButton(command);
}

/// The tip of a button tells its key.
void CCommandBar::LabelButton(int command) const {
    const auto action = m_actions.find(command);
    if (action == m_actions.end() || action->second->shortcut().isEmpty())
        return;
    CPictureButton& button = *m_buttons.at(command);
    button.SetTooltipText(button.accessibleName(), action->second->shortcut());
}

void CCommandBar::EnableCommand(int command, bool enable) {
    enable = enable && m_commands.Has(command);
    if (const auto action = m_actions.find(command); action != m_actions.end())
        action->second->setEnabled(enable);
    if (const auto button = m_buttons.find(command); button != m_buttons.end())
        Enable(*button->second, enable);
}

/// Left to Qt, the keyboard's focus would go from a button that turns gray to any other control.
void CCommandBar::Enable(CPictureButton& button, bool enable) {
    if (!enable && m_window.focusWidget() == &button) {
        const bool isPlayers = button.parentWidget() == m_layout.Play().parentWidget();
        if (isPlayers)
            m_layout.Play().setFocus();
        else
            m_layout.Grid().setFocus();
    }
    const bool wakes = enable && !button.isEnabled();
    button.setEnabled(enable);
    if (wakes && &button == &m_layout.Play() && m_layout.Grid().isHidden())
        button.setFocus(); // the mini player's, which could not take it when gray
}

void CCommandBar::MarkCommand(int command) {
    const auto action = m_actions.find(command);
    if (action == m_actions.end())
        return;
    m_marked[action->second->actionGroup()] = action->second;
    action->second->setChecked(true);
}

void CCommandBar::ShowCopyDirection(bool toPhone) {
    m_layout.Copy().SetBitmaps(toPhone ? PictureId::CopyToPhone : PictureId::CopyToCollection);
    m_layout.Copy().SetTooltipText(LoadString(toPhone ? IDS_BT_TOPHONE : IDS_BT_TOCOLLECT));
    LabelButton(kCopy);
}

void CCommandBar::ShowOpenPlaylist(bool open) {
    for (const int command : kViews)
        EnableCommand(command, !open);
    for (const int command : {kClosePlaylist, kSavePlaylist, kMoveUp, kMoveDown}) {
        EnableCommand(command, open);
        m_buttons.at(command)->setVisible(open);
    }
}
