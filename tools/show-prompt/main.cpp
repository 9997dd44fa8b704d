#include "base/Language.h"
#include "dialogs/ConfirmationDlg.h"
#include "dialogs/WarningDlg.h"
#include "skin/BaseDlg.h"
#include "skin/Pictures.h"
#include "skin/SkinPalette.h"

#include <QApplication>
#include <QTextStream>

/// Shows a prompt with a text of the program's, for pictures of it: show_prompt FOLDER
/// confirmation|warning. FOLDER is the one the program lies in.
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
    QTextStream(stderr) << "usage: show_prompt FOLDER confirmation|warning\n";
    return 2;
}
