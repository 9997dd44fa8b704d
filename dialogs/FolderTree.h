#pragma once

#include <QString>
#include <QTreeWidget>

#include <vector>

/// A place at the top level of the tree.
struct FolderRoot {
    QString title;
    QString path; ///< absolute
};

/// The home folder, the root of the file system, and the mounted volumes of the user.
[[nodiscard]] std::vector<FolderRoot> ListFolderRoots();

/// The folders of this machine as a tree.
///
/// A folder is read when it is expanded for the first time, and at no other time but to find a path
/// that is asked for. Hidden folders are left out, unless such a path leads through them; a folder
/// that can't be read has no children. Names on disk are bytes: see Path.h.
///
/// Only folders made here can be renamed, by editing their labels (they do so at once when new, and
/// later with F2): a tree to choose from is no place for changing what the user has.
///
/// Thread: interface thread, which waits for a volume that answers slowly.
class CFolderTree : public QTreeWidget {
public:
    CFolderTree(const std::vector<FolderRoot>& roots, QWidget* parent);

    /// Opens the tree down to this folder, or to the last folder on its way that is there, and
    /// selects it. The first top level place is selected for a path that is under none.
    void SelectPath(const QString& path);

    /// The path of the selected folder; empty if none is selected.
    [[nodiscard]] QString GetSelectedPath() const;

    /// Makes a folder in the selected one, selects it and lets the user type its name. Where none
    /// can be made nothing happens.
    void AddNewFolder();

    /// Renames a folder on disk and in the tree. False, and nothing is done, for a name that can't
    /// be or that is taken.
    bool Rename(QTreeWidgetItem& item, const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void ListChildren(QTreeWidgetItem& item);
    [[nodiscard]] QTreeWidgetItem* FindChild(QTreeWidgetItem& item, const QString& name);
};
