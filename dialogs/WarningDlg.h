#pragma once

#include "dialogs/Prompt.h"

/// Tells what went wrong; exec() is PromptResult::kOk, however it is closed.
class CWarningDlg : public CPrompt {
public:
    CWarningDlg(const QString& warning, QWidget* parent);
};
