#include "dialogs/FolderDlg.h"

#include "base/Language.h"
#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "skin/ImageButton.h"

#include <QScreen>

CFolderDlg::CFolderDlg(const QString& path, QWidget* parent, const std::vector<FolderRoot>& roots)
    : CBaseDlg(parent, FrameStyle::Sizable)
    , m_strPath(path)
    , m_pTree(new CFolderTree(roots, this)) {
    setWindowTitle(LoadString(IDS_DLGTITLE_FOLDER));
    AddHelpKey(*this, IDS_HELPDOC_TRACKDK);
    m_pTree->setAccessibleName(windowTitle());
    m_pTree->setMinimumSize(240, 160);
    m_pTree->SelectPath(path);

    auto* layout = new CDialogLayout(this);
    layout->addWidget(m_pTree);
    layout->AddButton(PictureId::NewFolder, IDS_BT_NEWFOLDER, [this] { m_pTree->AddNewFolder(); });
    layout->AddButton(PictureId::Ok, IDS_BT_OK, [this] { accept(); })->setDefault(true);
    layout->AddButton(PictureId::No, IDS_BT_CANCEL, [this] { reject(); });
    m_pTree->setFocus();
    resize(QSize(400, 440).boundedTo(screen()->availableSize()));
}

void CFolderDlg::accept() {
    m_strPath = m_pTree->GetSelectedPath();
    QDialog::accept();
}
