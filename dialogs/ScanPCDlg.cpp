#include "dialogs/ScanPCDlg.h"

#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/DialogLayout.h"
#include "dialogs/FolderDlg.h"
#include "dialogs/Help.h"
#include "platform/Files.h"
#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <QCheckBox>
#include <QDir>
#include <QLineEdit>

CScanPCDlg::CScanPCDlg(QWidget* parent)
    : CBaseDlg(parent)
    , m_pFolder(new QLineEdit(GetSettings().m_strSearchDir, this)) {
    setWindowTitle(LoadString(IDS_SCAN_TITLE));
    auto* label = new CSkinLabel(LoadString(IDS_SCAN_DIR), this);
    label->setBuddy(m_pFolder);
    m_pFolder->setMinimumWidth(360);
    auto* browse = new CImageButton(PictureId::Browse, QString(), this);
    browse->SetLabel(LoadString(IDS_BT_BROWSING));
    connect(browse, &CImageButton::clicked, this, &CScanPCDlg::Browse);
    m_pSubfolders = new QCheckBox(LoadString(IDS_SCAN_SUBFOLDER), this);
    m_pSubfolders->setChecked(GetSettings().m_bScanSubfolders != 0);

    auto* folder = new QHBoxLayout;
    folder->setSpacing(CDialogLayout::kGap);
    folder->addWidget(label);
    folder->addWidget(m_pFolder);
    folder->addWidget(browse);
    auto* layout = new CDialogLayout(this);
    layout->addLayout(folder);
    layout->addWidget(m_pSubfolders);
    auto* start = layout->AddButton(PictureId::StartScan, IDS_SCAN_START, [this] { accept(); });
    layout->AddButton(PictureId::No, IDS_BT_CANCEL, [this] { reject(); });
    AddHelpButton(*layout, IDS_HELPDOC_SCANNING);
    start->setDefault(true);
    start->setEnabled(IsFolderThere());
    connect(m_pFolder, &QLineEdit::textChanged, start,
            [this, start] { start->setEnabled(IsFolderThere()); });
    m_pFolder->setFocus();
}

void CScanPCDlg::Browse() {
    CFolderDlg dialog(GetFolder(), this);
    if (dialog.exec() == QDialog::Accepted)
        m_pFolder->setText(dialog.GetPath());
}

QString CScanPCDlg::GetFolder() const {
    QString folder = m_pFolder->text();
    if (folder.trimmed().isEmpty())
        return {};
    if (folder == u'~' || folder.startsWith(QStringLiteral("~/")))
        folder.replace(0, 1, QDir::homePath());
    return QDir::cleanPath(QDir::current().absoluteFilePath(folder));
}

bool CScanPCDlg::IsFolderThere() const {
    const auto status = GetFileStatus(GetFolder());
    return status && status->kind == FileKind::Folder;
}

bool CScanPCDlg::IsRecursive() const {
    return m_pSubfolders->isChecked();
}

void CScanPCDlg::accept() {
    GetSettings().m_strSearchDir = GetFolder();
    GetSettings().m_bScanSubfolders = IsRecursive();
    SaveSettings();
    QDialog::accept();
}
