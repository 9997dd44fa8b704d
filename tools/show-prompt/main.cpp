#include "base/Language.h"
#include "dialogs/ConfirmationDlg.h"
#include "dialogs/QuestionDlg.h"
#include "dialogs/WarningDlg.h"
#include "skin/BaseDlg.h"
#include "skin/Pictures.h"
#include "skin/SkinPalette.h"

#include <QApplication>
#include <QTextStream>

namespace {

Question MakeQuestion() {
    return {LoadString(IDS_OVERWRITE_FILE) + QStringLiteral("\n\n/music/album/01 title.m4a"),
            {{LoadString(IDS_BUTTON_YESONE), true},
             {LoadString(IDS_BUTTON_NOONE), false},
             {LoadString(IDS_BUTTON_YESALL), true},
             {LoadString(IDS_BUTTON_NOALL), false}},
            0,
            1,
            LoadString(IDS_STRING_NOTSHOWAGAIN)};
}

} // namespace

/// Shows a prompt with a text of the program's, for pictures of it: show_prompt FOLDER
/// confirmation|warning|question. FOLDER is the one the program lies in.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString kind = arguments.value(2);
    SetLanguageFile(arguments.value(1) + QStringLiteral("/languages/language.lgg"));
    SetThemeFile(arguments.value(1) + QStringLiteral("/skin/blackstyle/theme.ini"));
    UseSkinPalette();
    QGuiApplication::setWindowIcon(MakeProgramIcon());
    if (kind == QStringLiteral("confirmation"))
        return CConfirmationDlg(LoadString(IDS_CONFIRM_REMOVE), nullptr).exec();
    if (kind == QStringLiteral("warning"))
        return CWarningDlg(LoadString(IDS_PROMPT_ACCESS_PHONE), nullptr).exec();
    if (kind == QStringLiteral("question"))
        return CQuestionDlg(MakeQuestion(), nullptr).exec();
    QTextStream(stderr) << "usage: show_prompt FOLDER confirmation|warning|question\n";
    return 2;
}
