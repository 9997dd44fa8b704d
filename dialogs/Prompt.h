#pragma once

#include "base/Language.h"
#include "dialogs/DialogLayout.h"
#include "skin/BaseDlg.h"
#include "skin/Pictures.h"

#include <map>

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
class CPrompt : public CBaseDlg {
public:
    void reject() override { done(m_iEscapeResult); }

protected:
    /// The button of an answer.
    struct Choice {
        PictureId glyph;
        QString label; ///< '&' stands before its key, else its first letter is the key
        int result;    ///< of exec()
    };

    CPrompt(PictureId sign, const QString& text, QWidget* parent);

    /// Appends an answer. Its key works alone and with Alt; an answer with the key of one before it
    /// has none. With a caption, the label is shown under the button.
    void AddAnswer(const Choice& choice, Caption caption = Caption::None);

    /// The results of the answers that Enter gives, and Escape and closing the window.
    void SetKeys(int enterResult, int escapeResult);

private:
    [[nodiscard]] QWidget* MakeText(const QString& text);

    CDialogLayout* m_pLayout;
    std::map<int, CImageButton*> m_buttons; ///< by result
    std::map<Qt::Key, CImageButton*> m_keys;
    int m_iEscapeResult = 0;
};
