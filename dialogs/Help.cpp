#include "dialogs/Help.h"

#include "dialogs/DialogLayout.h"
#include "dialogs/WarningDlg.h"
#include "platform/Files.h"
#include "skin/ImageButton.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QShortcut>
#include <QUrl>

namespace {

bool OpenPage(const QString& page) {
    if (page != QDir::cleanPath(page)) // goes up on its way, or has parts without a name
        return false;
    const auto status = GetFileStatus(page);
    return status && status->kind == FileKind::Regular &&
           QDesktopServices::openUrl(QUrl::fromLocalFile(page));
}

} // namespace

void OpenHelp(StringId topic, QWidget* parent) {
    const QString page = QCoreApplication::applicationDirPath() + u'/' +
                         LoadString(IDS_HELPDOCUMENT) + u'/' + LoadString(topic);
    if (!OpenPage(page))
        CWarningDlg(FormatText(LoadString(IDS_HELP_UNOPENED), {page}), parent).exec();
}

void AddHelpKey(QWidget& dialog, StringId topic) {
    auto* key = new QShortcut(QKeySequence::HelpContents, &dialog);
    key->setAutoRepeat(false); // one page for a key that is held
    QObject::connect(key, &QShortcut::activated, &dialog,
                     [&dialog, topic] { OpenHelp(topic, &dialog); });
}

void AddHelpButton(CDialogLayout& layout, StringId topic) {
    QWidget* dialog = layout.parentWidget();
    layout.AddButton(PictureId::Help, IDS_BT_HELP, [dialog, topic] { OpenHelp(topic, dialog); })
        ->SetTooltipText(LoadString(IDS_BT_HELP), QKeySequence::HelpContents);
    AddHelpKey(*dialog, topic);
}
