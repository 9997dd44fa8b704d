#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;

/// Asks which folder to scan for music, and whether with its subfolders. Starts with the choice of
/// last time; OK keeps the new one in the settings, and saves them.
class CScanPCDlg : public QDialog {
public:
    explicit CScanPCDlg(QWidget* parent);

    [[nodiscard]] QString GetFolder() const;
    [[nodiscard]] bool IsRecursive() const;

    void accept() override;

private:
    QLineEdit* m_pFolder;
    QCheckBox* m_pSubfolders;
};
