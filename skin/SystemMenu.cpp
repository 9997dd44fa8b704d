#include "skin/SystemMenu.h"

#include "base/Language.h"

namespace {

struct Item {
    SystemCommand command;
    StringId text;
};

constexpr Item kItems[] = {
    {SystemCommand::Restore, IDS_SYS_RESTORE},   {SystemCommand::Move, IDS_SYS_MOVE},
    {SystemCommand::Size, IDS_SYS_SIZE},         {SystemCommand::Minimize, IDS_SYS_MINIMIZE},
    {SystemCommand::Maximize, IDS_SYS_MAXIMIZE}, {SystemCommand::Close, IDS_SYS_CLOSE},
};

} // namespace

bool IsCommandEnabled(SystemCommand command, const FrameState& state) {
    const WindowState shown = state.m_nWindowState;
    switch (command) {
    case SystemCommand::Restore:
        return (state.m_bHasMaximize && shown != WindowState::Normal) ||
               (state.m_bHasMinimize && shown == WindowState::Minimized);
    case SystemCommand::Maximize:
        return state.m_bHasMaximize && shown != WindowState::Maximized;
    case SystemCommand::Minimize:
        return state.m_bHasMinimize && shown != WindowState::Minimized;
    case SystemCommand::Size:
        return state.m_bSizable;
    case SystemCommand::Move:
    case SystemCommand::Close:
        return true;
    }
    return false;
}

BCMenu& MakeSystemMenu(QWidget& window, const FrameState& state, const QList<QAction*>& ownItems,
                       const SystemCommandHandler& handler) {
    auto* menu = new BCMenu(&window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& [command, text] : kItems) {
        if (command == SystemCommand::Close)
            menu->addSeparator();
        QAction* action = menu->addAction(LoadString(text));
        action->setEnabled(IsCommandEnabled(command, state));
        const SystemCommand chosen = command;
        QObject::connect(action, &QAction::triggered, menu, [handler, chosen] { handler(chosen); });
    }
    menu->addActions(ownItems);
    return *menu;
}
