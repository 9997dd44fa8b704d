#include "dialogs/FolderTree.h"

#include "drawing/MeasuredFont.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "platform/Volumes.h"

#include <QCollator>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

#include <algorithm>
#include <optional>

namespace {

constexpr int kName = Qt::UserRole; ///< the name on disk; of a top level place, its path

constexpr int kNewFolderTries = 1024;

/// Renames a folder on disk before its label changes; gives the rows some air.
class LabelDelegate : public QStyledItemDelegate {
public:
    explicit LabelDelegate(CFolderTree* tree)
        : QStyledItemDelegate(tree)
        , m_tree(*tree) {}

    void setModelData(QWidget* editor, QAbstractItemModel*,
                      const QModelIndex& index) const override {
        m_tree.Rename(*m_tree.itemFromIndex(index), editor->property("text").toString());
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 4);
    }

private:
    CFolderTree& m_tree;
};

QTreeWidgetItem* MakeItem(const QString& name, const QString& title) {
    auto* item = new QTreeWidgetItem({title});
    item->setData(0, kName, name);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

/// A name may hold line ends, and a row has one line.
QString TitleOf(const QString& name) {
    return CMeasuredFont::OneLine(Path::ForDisplay(name));
}

QTreeWidgetItem* MakeItem(const QString& name) {
    return MakeItem(name, TitleOf(name));
}

QString PathOf(const QTreeWidgetItem& item) {
    const QString name = item.data(0, kName).toString();
    return item.parent() ? Path::Join(PathOf(*item.parent()), name) : name;
}

bool IsFolder(const QString& path) {
    const auto status = GetFileStatus(path);
    return status && status->kind == FileKind::Folder;
}

/// The path under a place, without a slash in front; nothing if it is not under it.
std::optional<QString> PathUnder(const QString& place, const QString& path) {
    if (path == place)
        return QString();
    const QString start = Path::Join(place, {});
    return path.startsWith(start) ? std::optional(path.sliced(start.size())) : std::nullopt;
}

/// In the order in which people look for names.
void SortNames(std::vector<QString>& names) {
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, QString>> keyed;
    keyed.reserve(names.size());
    for (const QString& name : names)
        keyed.emplace_back(collator.sortKey(Path::ForDisplay(name)), name);
    std::ranges::sort(keyed, [](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : a.second < b.second;
    });
    std::ranges::transform(keyed, names.begin(), [](const auto& entry) { return entry.second; });
}

} // namespace

std::vector<FolderRoot> ListFolderRoots() {
    std::vector<FolderRoot> roots;
    if (QDir::homePath() != QDir::rootPath())
        roots.push_back({TitleOf(Path::FileName(QDir::homePath())), QDir::homePath()});
    roots.push_back({QDir::rootPath(), QDir::rootPath()});
    for (const QString& volume : ListUserVolumes()) { // of which two may have one name
        const QString title = Path::FileName(volume) + QStringLiteral(" [") + volume + u']';
        roots.push_back({TitleOf(title), volume});
    }
    return roots;
}

CFolderTree::CFolderTree(const std::vector<FolderRoot>& roots, QWidget* parent)
    : QTreeWidget(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    setItemDelegate(new LabelDelegate(this));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const FolderRoot& root : roots)
        addTopLevelItem(MakeItem(root.path, root.title));
    connect(this, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { ListChildren(*item); });
}

void CFolderTree::ListChildren(QTreeWidgetItem& item) {
    if (item.childIndicatorPolicy() != QTreeWidgetItem::ShowIndicator)
        return; // they are listed
    item.setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    const auto entries = ListFolder(PathOf(item));
    if (!entries)
        return;
    std::vector<QString> names;
    for (const FolderEntry& entry : *entries)
        if (entry.kind == FileKind::Folder && !entry.name.startsWith(u'.'))
            names.push_back(entry.name);
    SortNames(names);
    QList<QTreeWidgetItem*> children;
    children.reserve(static_cast<qsizetype>(names.size()));
    for (const QString& name : names)
        children += MakeItem(name);
    item.addChildren(children);
}

QTreeWidgetItem* CFolderTree::FindChild(QTreeWidgetItem& item, const QString& name) {
    ListChildren(item);
    for (int i = 0; i < item.childCount(); ++i)
        if (item.child(i)->data(0, kName) == name)
            return item.child(i);
    // It may be hidden, be new, or lie in a folder that can be entered but not read.
    if (!IsFolder(Path::Join(PathOf(item), name)))
        return nullptr;
    item.addChild(MakeItem(name));
    return item.child(item.childCount() - 1);
}

void CFolderTree::SelectPath(const QString& path) {
    const QString wanted = QDir::cleanPath(path);
    QTreeWidgetItem* item = topLevelItem(0);
    std::optional<QString> rest;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        const auto under = PathUnder(PathOf(*topLevelItem(i)), wanted);
        if (under && (!rest || under->size() < rest->size())) {
            item = topLevelItem(i);
            rest = under;
        }
    }
    for (const QString& name : rest.value_or(QString()).split(u'/', Qt::SkipEmptyParts)) {
        QTreeWidgetItem* child = FindChild(*item, name);
        if (!child)
            break;
        item->setExpanded(true);
        item = child;
    }
    setCurrentItem(item);
}

QString CFolderTree::GetSelectedPath() const {
    return currentItem() ? PathOf(*currentItem()) : QString();
}

void CFolderTree::AddNewFolder() {
    QTreeWidgetItem* parent = currentItem();
    if (!parent)
        return;
    const QString base = QStringLiteral("New Folder");
    QString name = base;
    NewFolder result = NewFolder::NameTaken;
    for (int n = 1; n < kNewFolderTries && result == NewFolder::NameTaken; ++n) {
        if (n > 1)
            name = base + QString::number(n - 1);
        result = MakeNewFolder(Path::Join(PathOf(*parent), name));
    }
    QTreeWidgetItem* child = result == NewFolder::Made ? FindChild(*parent, name) : nullptr;
    if (!child)
        return;
    child->setFlags(child->flags() | Qt::ItemIsEditable);
    parent->setExpanded(true);
    setCurrentItem(child);
    editItem(child);
}

bool CFolderTree::Rename(QTreeWidgetItem& item, const QString& name) {
    if (name.trimmed().isEmpty() || name == u'.' || name == QStringLiteral("..") ||
        name.contains(u'/') || name.contains(QChar(0)))
        return false;
    if (!MoveToFreePath(PathOf(item), Path::Join(PathOf(*item.parent()), name)))
        return false;
    item.setData(0, kName, name);
    item.setText(0, TitleOf(name));
    return true;
}

/// The line of a folder is as wide as the tree at least, however short the names are.
void CFolderTree::resizeEvent(QResizeEvent* event) {
    header()->setMinimumSectionSize(viewport()->width());
    QTreeWidget::resizeEvent(event);
}

void CFolderTree::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Asterisk)
        event->ignore(); // else all below is opened: of the root, every folder of the machine
    else
        QTreeWidget::keyPressEvent(event);
}

void CFolderTree::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    scrollToItem(currentItem(), QAbstractItemView::PositionAtCenter);
}
