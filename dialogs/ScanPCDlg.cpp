#include "dialogs/ScanPCDlg.h"

#include "base/Language.h"
#include "base/Settings.h"
#include "platform/Files.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

CScanPCDlg::CScanPCDlg(QWidget* parent)
    : QDialog(parent)
    , m_pFolder(new QLineEdit(GetSettings().m_strSearchDir, this))
    , m_pSubfolders(new QCheckBox(LoadString(IDS_SCAN_SUBFOLDER), this)) {
    setWindowTitle(LoadString(IDS_SCAN_TITLE));
    auto* label = new QLabel(LoadString(IDS_SCAN_DIR), this);
    label->setBuddy(m_pFolder);
    m_pFolder->setMinimumWidth(360);
    m_pSubfolders->setChecked(GetSettings().m_bScanSubfolders != 0);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* start =
        buttons->addButton(LoadString(IDS_SCAN_START), QDialogButtonBox::AcceptRole);
    start->setEnabled(IsFolderThere());
    connect(m_pFolder, &QLineEdit::textChanged, start,
            [this, start] { start->setEnabled(IsFolderThere()); });
    buttons->addButton(LoadString(IDS_BT_CANCEL), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &CScanPCDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CScanPCDlg::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_pFolder);
    layout->addWidget(m_pSubfolders);
    layout->addWidget(buttons);
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
