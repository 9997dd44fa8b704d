#include "dialogs/ScanPCDlg.h"

#include "base/Language.h"
#include "base/Settings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
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
    buttons->addButton(LoadString(IDS_SCAN_START), QDialogButtonBox::AcceptRole);
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
    return m_pFolder->text();
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
