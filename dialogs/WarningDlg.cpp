#include "dialogs/WarningDlg.h"

CWarningDlg::CWarningDlg(const QString& warning, QWidget* parent)
    : Prompt(PictureId::WarningSign, warning, {{PictureId::Ok, IDS_BT_OK, PromptResult::kOk}},
             parent) {
    setWindowTitle(LoadString(IDS_DLGTITLE_WARNING));
}
