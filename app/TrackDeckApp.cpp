#include "app/TrackDeckApp.h"

#include "app/SingleInstance.h"
#include "app/TrackDeckDlg.h"
#include "base/Language.h"
#include "platform/Path.h"
#include "skin/BaseDlg.h"
#include "skin/SkinPalette.h"

#include <QApplication>

#include <filesystem>
#include <system_error>

int CTrackDeckApp::Run(int argc, char** argv) {
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trackdeck"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRACKDECK_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("trackdeck"));
    m_strLanguageFile =
        QCoreApplication::applicationDirPath() + QStringLiteral("/languages/language.lgg");
    SetLanguageFile(m_strLanguageFile);
    SetThemeFile(QCoreApplication::applicationDirPath() +
                 QStringLiteral("/skin/blackstyle/theme.ini"));
    UseSkinPalette();
    ParseCommandLine(argc, argv);

    CSingleInstance instance(LoadString(IDS_MAIN_TITLE));
    if (!instance.IsFirst()) {
        instance.CallFirst();
        return 1;
    }
    CTrackDeckDlg dialog(m_strOpenFile);
    instance.Listen([&dialog] { dialog.BringToFront(); });
    dialog.show();
    QApplication::exec();
    return 0;
}

/// The first argument that is no switch is a document. Its bytes are taken as they are, for they
/// name a file.
void CTrackDeckApp::ParseCommandLine(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-' || argv[i][0] == '\0')
            continue;
        std::error_code noFolder;
        const auto path = std::filesystem::absolute(argv[i], noFolder).lexically_normal();
        m_strOpenFile = Path::FromBytes(path.native());
        return;
    }
}
