#include "skin/SystemMenu.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct Case {
    bool sizable;
    bool hasMinimize;
    bool hasMaximize;
    WindowState state;
    const char* enabled; ///< the letters of Restore, Move, siZe, miNimize, maXimize, Close
};

constexpr WindowState kNormal = WindowState::Normal;
constexpr WindowState kMaximized = WindowState::Maximized;
constexpr WindowState kMinimized = WindowState::Minimized;

constexpr Case kCases[] = {
    {false, false, false, kNormal, "MC"},    {false, false, false, kMaximized, "MC"},
    {false, false, false, kMinimized, "MC"}, {true, false, false, kNormal, "MZC"},
    {false, true, false, kNormal, "MNC"},    {false, true, false, kMaximized, "MNC"},
    {false, true, false, kMinimized, "RMC"}, {false, false, true, kNormal, "MXC"},
    {false, false, true, kMaximized, "RMC"}, {false, false, true, kMinimized, "RMXC"},
    {true, true, true, kNormal, "MZNXC"},    {true, true, true, kMaximized, "RMZNC"},
    {true, true, true, kMinimized, "RMZXC"},
};

constexpr std::pair<char, SystemCommand> kLetters[] = {
    {'R', SystemCommand::Restore},  {'M', SystemCommand::Move},     {'Z', SystemCommand::Size},
    {'N', SystemCommand::Minimize}, {'X', SystemCommand::Maximize}, {'C', SystemCommand::Close},
};

} // namespace

TEST(SystemMenuTest, OffersWhatTheWindowCanDo) {
    for (const Case& wanted : kCases) {
        FrameState state;
        state.m_bSizable = wanted.sizable;
        state.m_bHasMinimize = wanted.hasMinimize;
        state.m_bHasMaximize = wanted.hasMaximize;
        state.m_nWindowState = wanted.state;
        std::string enabled;
        for (const auto& [letter, command] : kLetters)
            if (IsCommandEnabled(command, state))
                enabled += letter;
        EXPECT_EQ(enabled, wanted.enabled) << (&wanted - kCases);
    }
}

TEST(SystemMenuTest, TellsTheItemChosenAndGoes) {
    QWidget window;
    QAction about(QStringLiteral("About"));
    std::vector<SystemCommand> chosen;
    QPointer<BCMenu> menu = &MakeSystemMenu(
        window, {}, {&about}, [&](SystemCommand command) { chosen.push_back(command); });
    EXPECT_EQ(menu->actions().size(), 8);
    EXPECT_EQ(menu->actions().constLast(), &about);
    menu->popup({});
    QTest::keyClick(menu, Qt::Key_Down); // Restore, Size and the like can't be chosen here
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(chosen, std::vector{SystemCommand::Close});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(menu);
}
