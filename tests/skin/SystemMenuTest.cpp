#include "skin/SystemMenu.h"

TEST(SystemMenuTest, OffersWhatTheWindowCanDo) {
    using enum SystemCommand;
    using enum WindowState;
    constexpr std::pair<char, SystemCommand> kCommands[] = {
        {'R', Restore}, {'M', Move}, {'Z', Size}, {'N', Minimize}, {'X', Maximize}, {'C', Close}};
    const struct {
        const char* can; ///< be sized ('Z'), minimized ('N'), maximized ('X')
        WindowState state;
        const char* enabled; ///< of the commands
    } rows[] = {{"", Normal, "MC"},         {"", Maximized, "MC"},    {"", Minimized, "MC"},
                {"Z", Normal, "MZC"},       {"N", Normal, "MNC"},     {"N", Maximized, "MNC"},
                {"N", Minimized, "RMC"},    {"X", Normal, "MXC"},     {"X", Maximized, "RMC"},
                {"X", Minimized, "RMXC"},   {"ZNX", Normal, "MZNXC"}, {"ZNX", Maximized, "RMZNC"},
                {"ZNX", Minimized, "RMZXC"}};
    for (const auto& row : rows) {
        const std::string_view can = row.can;
        FrameState state;
        state.m_bSizable = can.find('Z') != can.npos;
        state.m_bHasMinimize = can.find('N') != can.npos;
        state.m_bHasMaximize = can.find('X') != can.npos;
        state.m_nWindowState = row.state;
        std::string enabled;
        for (const auto& [letter, command] : kCommands)
            if (IsCommandEnabled(command, state))
                enabled += letter;
        EXPECT_EQ(enabled, row.enabled) << &row - rows;
    }
}
