#include "dialogs/ScanningDlg.h"

#include "base/Language.h"
#include "base/Messages.h"
#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "grid/GridFont.h"
#include "library/FolderScan.h"
#include "library/LibraryScanner.h"
#include "library/MediaList.h"
#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <memory>
#include <utility>

CScanningDlg::CScanningDlg(CLibraryScanner& scanner, Job job, QWidget* parent)
    : CBaseDlg(parent)
    , m_scanner(scanner)
    , m_job(std::move(job))
    , m_strFoundFormat(LoadString(IDS_SCAN_FOUND))
    , m_pFolderText(new CSkinLabel({}, this))
    , m_pFoundText(new CSkinLabel(LoadString(IDS_SCAN_0FOUND), this)) {
    setWindowTitle(LoadString(IDS_SCAN_ING));
    AddHelpKey(*this, IDS_HELPDOC_SCANNING);
    auto* layout = new DialogLayout(this);
    for (CSkinLabel* label : {m_pFolderText, m_pFoundText}) {
        label->setFixedWidth(440);
        layout->addWidget(label);
    }
    m_pButton = layout->AddButton(PictureId::No, IDS_BT_CANCEL, [this] { EndScanOrClose(); });

    m_messages.On(WM_TD_ADD_TRACK, [this](Message& message) { return OnAddTrack(message); });
    m_messages.On(WM_TD_LIST_DONE, [this](Message& message) { return OnListDone(message); });
    m_messages.On(WM_SETTEXT, [this](Message& message) {
        if (const auto text = message.Take<TextPayload>())
            ShowFolderText(text->m_strText);
        return 0;
    });
    StartScan();
}

void CScanningDlg::StartScan() {
    auto request = std::make_unique<CScanRequest>();
    request->m_hWndTarget = m_messages.Address();
    request->m_iType = MEDIA_TYPE_ALL;
    request->m_iListId = m_job.listId;
    request->m_strPath = m_job.folder;
    request->m_bRecurse = m_job.recurse;
    request->m_pProgressDlg = m_messages.Address();
    request->m_bIncludePlaylists = 0;
    m_scanner.Start(std::move(request));
}

std::intptr_t CScanningDlg::OnAddTrack(Message& message) {
    auto request = message.Take<CMediaFileRequest>();
    if (!request)
        return 1;
    m_nMet = message.lParam;
    if (m_scanner.IsInCollection(request->m_strPath))
        ++m_nNotNew;
    else
        m_pFoundText->setText(FormatText(m_strFoundFormat, {QString::number(m_nMet - m_nNotNew)}));
    m_job.mainDialog.Post({WM_TD_ADD_TRACK, 0, message.lParam, std::move(request)});
    return 0;
}

std::intptr_t CScanningDlg::OnListDone(const Message& message) {
    setWindowTitle(LoadString(g_bCancelScan ? IDS_SCAN_CANCELED : IDS_SCAN_COMPLET));
    ShowFolderText(LoadString(IDS_SCAN_FINISHED) + u' ' + QString::number(m_nMet - m_nNotNew));
    m_pButton->SetBitmaps(PictureId::Close);
    m_pButton->SetTooltipText(LoadString(IDS_BT_CLOSE));
    m_bScanning = false;
    m_job.mainDialog.Post({message.id, message.wParam, message.lParam});
    return 0;
}

void CScanningDlg::EndScanOrClose() {
    if (!m_bScanning) {
        QDialog::accept();
        return;
    }
    g_bCancelScan = 1;
    ShowFolderText(LoadString(IDS_SCAN_CANCELED));
}

void CScanningDlg::ShowFolderText(const QString& text) {
    m_pFolderText->setText(m_pFolderText->fontMetrics().elidedText(
        GridFont::OneLine(text), Qt::ElideMiddle, m_pFolderText->width()));
}
