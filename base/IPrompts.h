#pragma once

#include <QString>

#include <cstddef>
#include <vector>

/// A question with two to four answers, and perhaps a box to tick.
struct Question {
    struct Choice {
        QString text;        ///< '&' stands before its key, else its first letter is the key
        bool agrees = false; ///< shown with a tick instead of a cross
    };

    QString text;
    std::vector<Choice> choices; ///< in the order in which they are shown
    std::size_t onEnter = 0;     ///< index of the choice that Enter makes
    std::size_t onEscape = 1;    ///< that of Escape and of closing the window
    QString box = {};            ///< what ticking the box means; empty for a question without one
};

struct Answer {
    std::size_t choice = 0; ///< its index in the question
    bool isTicked = false;
};

/// How the parts that have no windows ask and warn the user.
///
/// Thread: interface thread. All of them wait for the user.
class IPrompts {
public:
    /// True if the user says yes.
    [[nodiscard]] virtual bool Confirm(const QString& question) = 0;

    virtual void Warn(const QString& text) = 0;

    [[nodiscard]] virtual Answer Ask(const Question& question) = 0;

protected:
    ~IPrompts() = default;
};
