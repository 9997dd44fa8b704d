#pragma once

#include "grid/GridTypes.h"

#include <QAccessible>

class CGridCellBase;
class CGridCtrl;

/// One cell of the grid for a screen reader, or a title with its whole row.
///
/// Its name is the cell's text. Row and column are those of the table, where a header cell stands
/// above row 0; header cells are neither selectable nor focusable.
///
/// Thread: interface thread. Owner: Qt's table of interfaces; its table has it deleted before
///          the place of the cell means another one.
class CGridAccessibleCell final : public QAccessibleInterface,
                                  public QAccessibleTableCellInterface {
public:
    /// `place` counts the header, too; of a title it is the last cell of its row.
    CGridAccessibleCell(QAccessibleInterface& table, const CGridCtrl& grid, CCellID place);

    /// Whether the row is one title from edge to edge; `row` counts the header, too.
    [[nodiscard]] static bool IsTitleRow(const CGridCtrl& grid, int row);

    [[nodiscard]] CCellID Place() const { return m_place; }
    /// Its row has moved.
    void SetPlace(CCellID place) { m_place = place; }

    /// Raises events for what has changed since the last time, or since this was made.
    void TellChanges();

    // --- QAccessibleInterface

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // --- QAccessibleTableCellInterface

    [[nodiscard]] bool isSelected() const override;
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override;
    [[nodiscard]] int columnIndex() const override;
    [[nodiscard]] int rowIndex() const override;
    [[nodiscard]] int columnExtent() const override;
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

private:
    struct Told {
        QString name;
        bool checked;
        bool selected;
    };

    ~CGridAccessibleCell() override = default; // by Qt's table of interfaces

    [[nodiscard]] const CGridCellBase& Cell() const;
    [[nodiscard]] bool IsTitle() const;
    [[nodiscard]] bool IsHidden() const;
    [[nodiscard]] bool IsInSight() const;
    [[nodiscard]] bool IsCurrent() const;
    [[nodiscard]] QRect ViewportRect() const;
    [[nodiscard]] QAccessibleInterface* Sibling(CCellID place) const;
    [[nodiscard]] Told ToTell() const;

    QAccessibleInterface& m_table;
    const CGridCtrl& m_grid;
    CCellID m_place;
    Told m_told;
};
