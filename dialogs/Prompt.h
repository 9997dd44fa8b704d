#pragma once

#include "base/Language.h"
#include "skin/BaseDlg.h"
#include "skin/Pictures.h"

#include <vector>

/// What exec() of a prompt answers. The numbers are a contract.
namespace PromptResult {
inline constexpr int kOk = 1;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;
} // namespace PromptResult

/// What prompts have in common: a sign, a text of any length beside it, and buttons that end the
/// prompt. The window never grows larger than the screen: a long text is scrolled, a long word is
/// broken.
///
/// Thread: interface thread.
class Prompt : public CBaseDlg {
public:
    struct Answer {
        PictureId glyph;
        StringId label; ///< its first letter is the answer's key, alone or with Alt
        int result;     ///< of exec()
    };

    /// The first answer is that of Enter, the last one that of Escape and of closing the window.
    Prompt(PictureId sign, const QString& text, const std::vector<Answer>& answers,
           QWidget* parent);

    void reject() override { done(m_escapeResult); }

private:
    [[nodiscard]] QWidget* MakeText(const QString& text);

    const int m_escapeResult;
};
