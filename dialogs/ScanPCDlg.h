#pragma once

#include "skin/BaseDlg.h"

class QCheckBox;
class QLineEdit;

/// Asks which folder to scan for music, and whether with its subfolders. Starts with the choice of
/// last time; OK keeps the new one in the settings, and saves them.
class CScanPCDlg : public CBaseDlg {
public:
    explicit CScanPCDlg(QWidget* parent);

    /// The full path of the folder that was typed, "~" standing for the home folder; empty if none
    /// was typed.
    [[nodiscard]] QString GetFolder() const;

    /// True if the folder's subfolders are to be scanned too.
    [[nodiscard]] bool IsRecursive() const;

    void accept() override;

private:
    [[nodiscard]] bool IsFolderThere() const;
    void Browse();

    QLineEdit* m_pFolder;
    QCheckBox* m_pSubfolders;
};
