#pragma once

#include "dialogs/Prompt.h"

/// Asks a question to be answered with yes or no: exec() is PromptResult::kYes or kNo. Escape and
/// closing mean no.
class CConfirmationDlg : public CPrompt {
public:
    CConfirmationDlg(const QString& question, QWidget* parent);
};
