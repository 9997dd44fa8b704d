#pragma once

#include "base/IPrompts.h"
#include "dialogs/Prompt.h"

class QCheckBox;

/// Asks a question with two to four answers, the text of each under its button, and perhaps a box
/// to tick. exec() is the index of the choice.
class CQuestionDlg : public CPrompt {
public:
    CQuestionDlg(const Question& question, QWidget* parent);

    /// Once exec() has ended.
    [[nodiscard]] Answer GetAnswer() const;

private:
    QCheckBox* m_pBox = nullptr; ///< none without a box to tick
};
