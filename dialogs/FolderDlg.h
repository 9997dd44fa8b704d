#pragma once

#include "dialogs/FolderTree.h"
#include "skin/BaseDlg.h"

/// Lets the user choose a folder, or make a new one. Accepted by OK only; see CFolderTree for how
/// folders are read, shown and renamed.
///
/// Thread: interface thread.
class CFolderDlg : public CBaseDlg {
public:
    /// Starts at `path`, or as near to it as there are folders.
    CFolderDlg(const QString& path, QWidget* parent,
               const std::vector<FolderRoot>& roots = ListFolderRoots());

    /// The chosen folder, once the dialog is accepted; before, the path that it started with.
    [[nodiscard]] const QString& GetPath() const { return m_strPath; }

    void accept() override;

private:
    QString m_strPath;
    CFolderTree* m_pTree;
};
