#include "dialogs/Prompts.h"

#include "dialogs/ConfirmationDlg.h"
#include "dialogs/Help.h"
#include "dialogs/QuestionDlg.h"
#include "dialogs/WarningDlg.h"

namespace {

/// The key for help is given to prompts here, because help shows prompts itself.
int Show(CPrompt& prompt) {
    AddHelpKey(prompt, IDS_HELPDOC_TRACKDK);
    return prompt.exec();
}

} // namespace

bool CPrompts::Confirm(const QString& question) {
    CConfirmationDlg dialog(question, &m_window);
    return Show(dialog) == PromptResult::kYes;
}

void CPrompts::Warn(const QString& text) {
    CWarningDlg dialog(text, &m_window);
    Show(dialog);
}

Answer CPrompts::Ask(const Question& question) {
    CQuestionDlg dialog(question, &m_window);
    Show(dialog);
    return dialog.GetAnswer();
}
