#include "dialogs/ConfirmationDlg.h"

CConfirmationDlg::CConfirmationDlg(const QString& question, QWidget* parent)
    : Prompt(PictureId::QuestionSign, question,
             {{PictureId::Ok, IDS_BT_YES, PromptResult::kYes},
              {PictureId::No, IDS_BT_NO, PromptResult::kNo}},
             parent) {
    setWindowTitle(LoadString(IDS_MAIN_TITLE));
}
