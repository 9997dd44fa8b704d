#include "dialogs/Prompts.h"

#include "dialogs/ConfirmationDlg.h"
#include "dialogs/QuestionDlg.h"
#include "dialogs/WarningDlg.h"

bool CPrompts::Confirm(const QString& question) {
    return CConfirmationDlg(question, &m_window).exec() == PromptResult::kYes;
}

void CPrompts::Warn(const QString& text) {
    CWarningDlg(text, &m_window).exec();
}

Answer CPrompts::Ask(const Question& question) {
    CQuestionDlg dialog(question, &m_window);
    dialog.exec();
    return dialog.GetAnswer();
}
