#include "dialogs/ScanningDlg.h"

#include "base/Language.h"
#include "base/Messages.h"
#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "drawing/MeasuredFont.h"
#include "library/FolderScan.h"
#include "library/LibraryScanner.h"
#include "library/MediaList.h"
#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <memory>
#include <utility>

CScanningDlg::CScanningDlg(CLibraryScanner& scanner, const Job& job, QWidget* parent)
    : CBaseDlg(parent)
    , m_scanner(scanner)
    , m_iListId(job.listId)
    , m_pFolderText(new CSkinLabel({}, this))
    , m_pFoundText(new CSkinLabel(LoadString(IDS_SCAN_0FOUND), this)) {
    setWindowTitle(LoadString(IDS_SCAN_ING));
    AddHelpKey(*this, IDS_HELPDOC_SCANNING);
    auto* layout = new CDialogLayout(this);
    for (CSkinLabel* label : {m_pFolderText, m_pFoundText}) {
        label->setFixedWidth(440);
        layout->addWidget(label);
    }
    m_pButton = layout->AddButton(PictureId::No, IDS_BT_CANCEL, [this] { EndScanOrClose(); });

    m_messages.On(WM_SETTEXT, [this](Message& message) {
        if (const auto text = message.Take<TextPayload>())
            ShowFolderText(text->m_strText);
        return 0;
    });
    m_listenings = {
        scanner.OnFound([this](const CMediaList& list, int first) {
            if (list.m_iId == m_iListId)
                OnFound(list.GetCount() - first);
        }),
        scanner.OnDone([this](const CMediaList& list, bool isWhole) {
            if (list.m_iId == m_iListId)
                OnDone(isWhole);
        }),
    };
    StartScan(job);
}

void CScanningDlg::StartScan(const Job& job) {
    auto request = std::make_unique<CScanRequest>();
    request->m_iType = MEDIA_TYPE_ALL;
    request->m_iListId = job.listId;
    request->m_strPath = job.folder;
    request->m_bRecurse = job.recurse;
    request->m_pProgressDlg = m_messages.Address();
    request->m_bIncludePlaylists = 0;
    m_scanner.Start(std::move(request));
}

void CScanningDlg::OnFound(int count) {
    m_nFound += count;
    m_pFoundText->setText(FormatText(LoadString(IDS_SCAN_FOUND), {QString::number(m_nFound)}));
}

void CScanningDlg::OnDone(bool isWhole) {
    setWindowTitle(LoadString(isWhole ? IDS_SCAN_COMPLET : IDS_SCAN_CANCELED));
    m_messages.On(WM_SETTEXT, [](Message&) { return 0; }); // the last folders come too late
    ShowFolderText(LoadString(IDS_SCAN_FINISHED) + u' ' + QString::number(m_nFound));
    m_pButton->SetBitmaps(PictureId::Close);
    m_pButton->SetTooltipText(LoadString(IDS_BT_CLOSE));
}

void CScanningDlg::EndScanOrClose() {
    if (m_scanner.IsScanning(m_iListId))
        m_scanner.Cancel(m_iListId);
    else
        QDialog::accept();
}

void CScanningDlg::ShowFolderText(const QString& text) {
    m_pFolderText->setText(m_pFolderText->fontMetrics().elidedText(
        CMeasuredFont::OneLine(text), Qt::ElideMiddle, m_pFolderText->width()));
}
