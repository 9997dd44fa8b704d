#pragma once

#include "skin/BCMenu.h"
#include "skin/Frame.h"

#include <QAction>
#include <QList>

#include <functional>

/// The commands of the system menu. The numbers are a contract.
enum class SystemCommand : int {
    Size = 0xF000,
    Move = 0xF010,
    Minimize = 0xF020,
    Maximize = 0xF030,
    Close = 0xF060,
    Restore = 0xF120,
};

/// Whether a window of these properties and this state can do so.
[[nodiscard]] bool IsCommandEnabled(SystemCommand command, const FrameState& state);

using SystemCommandHandler = std::function<void(SystemCommand)>;

/// Makes the system menu of a window, which deletes itself when it has closed; popup() shows it.
/// `ownItems` are the window's and follow the usual ones. The handler gets the item chosen, after
/// the menu has closed; it is not called for items of the window's own.
///
/// Thread: interface thread.
[[nodiscard]] BCMenu& MakeSystemMenu(QWidget& window, const FrameState& state,
                                     const QList<QAction*>& ownItems,
                                     const SystemCommandHandler& handler);
