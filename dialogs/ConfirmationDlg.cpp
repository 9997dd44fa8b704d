#include "dialogs/ConfirmationDlg.h"

CConfirmationDlg::CConfirmationDlg(const QString& question, QWidget* parent)
    : CPrompt(PictureId::QuestionSign, question, parent) {
    setWindowTitle(LoadString(IDS_MAIN_TITLE));
    AddAnswer({PictureId::Ok, LoadString(IDS_BT_YES), PromptResult::kYes});
    AddAnswer({PictureId::No, LoadString(IDS_BT_NO), PromptResult::kNo});
    SetKeys(PromptResult::kYes, PromptResult::kNo);
}
