#pragma once

#include "base/Listeners.h"
#include "platform/MessageTarget.h"
#include "skin/BaseDlg.h"

#include <vector>

class CImageButton;
class CLibraryScanner;
class CSkinLabel;

/// Scans a folder for All Music and shows how far the scan is. Cancelling ends the scan, and what
/// it has found stays; the dialog stays open until the user closes it.
///
/// Lifetime: `scanner` outlives the dialog. The scan starts with the construction.
class CScanningDlg : public CBaseDlg {
public:
    struct Job {
        int listId = 0; ///< the list of All Music
        QString folder;
        bool recurse = false;
    };

    CScanningDlg(CLibraryScanner& scanner, const Job& job, QWidget* parent);

    void accept() override { EndScanOrClose(); }
    void reject() override { EndScanOrClose(); }

private:
    void StartScan(const Job& job);
    void OnFound(int count);
    void OnDone(bool isWhole);
    void EndScanOrClose();
    void ShowFolderText(const QString& text);

    CLibraryScanner& m_scanner;
    const int m_iListId;
    CSkinLabel* m_pFolderText;
    CSkinLabel* m_pFoundText;
    CImageButton* m_pButton;
    int m_nFound = 0;
    CMessageTarget m_messages; ///< tells the folder that is looked through
    std::vector<CListening> m_listenings;
};
