#include "dialogs/WarningDlg.h"

CWarningDlg::CWarningDlg(const QString& warning, QWidget* parent)
    : CPrompt(PictureId::WarningSign, warning, parent) {
    setWindowTitle(LoadString(IDS_DLGTITLE_WARNING));
    AddAnswer({PictureId::Ok, LoadString(IDS_BT_OK), PromptResult::kOk});
    SetKeys(PromptResult::kOk, PromptResult::kOk);
}
