#pragma once

#include <QString>

#include <vector>

/// The genres that a user picks from: plain texts, unrelated to the numbered table. Command ids run
/// through all groups in order, from 32865 to 33110.
namespace GenreMenu {

constexpr int kFirstId = 32865;
constexpr int kLastId = 33110;

struct Group {
    QString name; ///< plain text; a menu writes "&&" for "&"
    int firstId = 0;
    std::vector<QString> entries; ///< the entry at index i has the id firstId + i
};

/// All groups, in the menu's order.
[[nodiscard]] const std::vector<Group>& Groups();

/// The entry with this command id; empty if there is none.
[[nodiscard]] QString Entry(int id);

} // namespace GenreMenu
