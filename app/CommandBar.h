#pragma once

#include "library/CommandState.h"

#include <map>

class CCommandMap;
class CMenuBar;
class CMainLayout;
class CPictureButton;
class QAction;
class QActionGroup;
class QWidget;

/// The commands as the window shows them: the menu bar's items, the buttons, and the keys of both.
///
/// Thread:   interface thread.
/// Lifetime: what the constructor takes outlives this.
class CCommandBar : public ICommandDisplay {
public:
    CCommandBar(QWidget& window, CMenuBar& menuBar, const CMainLayout& layout,
                const CCommandMap& commands);

    /// Makes the items and takes the buttons, once each command has what is done for it. What has
    /// nothing stays gray.
    void Build();

    void EnableCommand(int command, bool enable) override;
    void MarkCommand(int command) override;
    void ShowCopyDirection(bool toPhone) override;

    /// Shows the buttons of an open playlist; no other list can be viewed as long as it is open.
    void ShowOpenPlaylist(bool open);

private:
    void BuildMenus();
    void TakeButtons();
    void TakeButton(int command, CPictureButton& button);
    void Enable(CPictureButton& button, bool enable);
    void LabelButton(int command) const;

    QWidget& m_window;
    CMenuBar& m_menuBar;
    const CMainLayout& m_layout;
    const CCommandMap& m_commands;
    std::map<int, QAction*> m_actions;        ///< by command
    std::map<int, CPictureButton*> m_buttons; ///< by command
    std::map<const QActionGroup*, QAction*> m_marked;
};
