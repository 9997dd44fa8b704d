#include "skin/SystemMenu.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

TEST(SystemMenuTest, OffersWhatTheWindowCanDo) {
    using enum WindowState;
    const struct {
        const char* can; ///< be sized ('Z'), minimized ('N'), maximized ('X')
        WindowState state;
        const char* enabled; ///< Restore, Move, siZe, miNimize, maXimize, Close
    } rows[] = {
        {"", Normal, "MC"},          {"", Maximized, "MC"},    {"", Minimized, "MC"},
        {"Z", Normal, "MZC"},        {"N", Normal, "MNC"},     {"N", Maximized, "MNC"},
        {"N", Minimized, "RMC"},     {"X", Normal, "MXC"},     {"X", Maximized, "RMC"},
        {"X", Minimized, "RMXC"},    {"ZNX", Normal, "MZNXC"}, {"ZNX", Maximized, "RMZNC"},
        {"ZNX", Minimized, "RMZXC"},
    };
    for (const auto& row : rows) {
        const std::string_view can = row.can;
        FrameState state;
        state.m_bSizable = can.find('Z') != can.npos;
        state.m_bHasMinimize = can.find('N') != can.npos;
        state.m_bHasMaximize = can.find('X') != can.npos;
        state.m_nWindowState = row.state;
        std::string enabled;
        for (const auto& [letter, command] :
             {std::pair('R', SystemCommand::Restore), std::pair('M', SystemCommand::Move),
              std::pair('Z', SystemCommand::Size), std::pair('N', SystemCommand::Minimize),
              std::pair('X', SystemCommand::Maximize), std::pair('C', SystemCommand::Close)})
            if (IsCommandEnabled(command, state))
                enabled += letter;
        EXPECT_EQ(enabled, row.enabled) << &row - rows;
    }
}

TEST(SystemMenuTest, ReportsTheItemChosenAndGoes) {
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
