#pragma once

#include "platform/MessageTarget.h"
#include "skin/BaseDlg.h"

class CImageButton;
class CLibraryScanner;
class CSkinLabel;

/// Scans a folder for All Music and shows how far the scan is. Stays open until the user closes it;
/// closing or cancelling while the scan runs ends the scan, not the dialog.
///
/// The dialog stands between the scan's thread and the main dialog: it counts what comes and posts
/// it on, so the thread never waits for the reading of tags.
///
/// Lifetime: `scanner` outlives the dialog. The scan starts with the construction.
class CScanningDlg : public CBaseDlg {
public:
    struct Job {
        MessageAddress mainDialog; ///< gets the messages of the scan
        int listId = 0;            ///< the list of All Music
        QString folder;
        bool recurse = false;
    };

    CScanningDlg(CLibraryScanner& scanner, Job job, QWidget* parent);

    void accept() override { EndScanOrClose(); }
    void reject() override { EndScanOrClose(); }

private:
    void StartScan();
    std::intptr_t OnAddTrack(Message& message);
    std::intptr_t OnListDone(const Message& message);
    void EndScanOrClose();
    void ShowFolderText(const QString& text);

    CLibraryScanner& m_scanner;
    const Job m_job;
    const QString m_strFoundFormat; ///< read once, for it is shown for each file
    CSkinLabel* m_pFolderText;
    CSkinLabel* m_pFoundText;
    CImageButton* m_pButton;
    bool m_bScanning = true;
    std::intptr_t m_nMet = 0;    ///< files met
    std::intptr_t m_nNotNew = 0; ///< of these, files of My Collection
    MessageTarget m_messages;
};
