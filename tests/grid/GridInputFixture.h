#pragma once

#include "grid/InPlaceEdit.h"
#include "tests/grid/GridFixture.h"

#include <QTest>

/// A shown grid of 200 rows by 4 columns, in a viewport of 400 by 300, that gets real events.
struct GridInput : ::testing::Test {
    GridInput() { Renew(); }

    void Renew() {
        m_grid = MakeGrid(200, 4);
        Show(*m_grid, 400, 300);
        m_grid->setFocus();
        m_grid->SetNotifyHandler([this](GridNotification& note) {
            m_notes += QStringLiteral("%1 %2/%3").arg(Name(note.code)).arg(note.row).arg(note.col);
            if (note.code == GVN_ENDLABELEDIT)
                m_changed = note.changed;
            if (m_onNote)
                m_onNote(note);
        });
    }

    [[nodiscard]] QPoint Center(CCellID cell) const { return m_grid->GetCellRect(cell).center(); }

    void Mouse(QEvent::Type type, QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        const bool move = type == QEvent::MouseMove;
        QMouseEvent event(type, point, m_grid->viewport()->mapToGlobal(point),
                          move ? Qt::NoButton : button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : button, {});
        QApplication::sendEvent(m_grid->viewport(), &event);
    }
    void Down(QPoint point, Qt::KeyboardModifiers keys = {}) {
        // The selection asks for the keys held, which only the platform's own events tell.
        QTest::mousePress(m_grid->viewport(), Qt::LeftButton, keys, point);
    }
    void Move(QPoint point) { Mouse(QEvent::MouseMove, point); }
    void MoveWithoutButton(QPoint point) { Mouse(QEvent::MouseMove, point, Qt::NoButton); }
    void Up(QPoint point) { Mouse(QEvent::MouseButtonRelease, point); }
    void Drag(QPoint from, QPoint to) {
        Down(from);
        Move(to);
        Up(to);
    }
    void Click(CCellID cell, Qt::KeyboardModifiers keys = {},
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(m_grid->viewport(), button, keys, Center(cell));
    }
    /// Press, release, double click, release: what the platform sends.
    void DoubleClick(QPoint point) {
        Down(point);
        Up(point);
        Mouse(QEvent::MouseButtonDblClick, point);
        Up(point);
    }

    void Press(int key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(m_grid->IsEditing() ? static_cast<QWidget*>(Editor()) : m_grid.get(),
                        static_cast<Qt::Key>(key), keys);
    }
    [[nodiscard]] CInPlaceEdit* Editor() const {
        return qobject_cast<CInPlaceEdit*>(m_grid->focusWidget());
    }

    static QString Name(int code) {
        static const std::map<int, const char*> names{
            {GVN_SELCHANGING, "selecting"}, {GVN_SELCHANGED, "selected"}, {NM_CLICK, "click"},
            {NM_DBLCLK, "double"},          {NM_RCLICK, "right"},         {WM_COMMAND, "command"},
            {GVN_BEGINLABELEDIT, "edit"},   {GVN_ENDLABELEDIT, "edited"}};
        return QLatin1StringView(names.at(code));
    }
    /// What the grid told since the last call, the messages that it posted included: "click 2/1".
    std::string Take() {
        QApplication::processEvents();
        return std::exchange(m_notes, {}).join(u", ").toStdString();
    }
    /// What it tells of a new selection from a cell.
    static std::string Selecting(CCellID cell) {
        const std::string at = std::to_string(cell.row) + '/' + std::to_string(cell.col);
        return "selecting " + at + ", selected " + at;
    }

    [[nodiscard]] std::vector<int> SelectedRows() const {
        std::vector<int> rows;
        for (int row = 0; row < m_grid->GetRowCount(); ++row) {
            for (int col = 0; col < m_grid->GetColumnCount(); ++col)
                EXPECT_EQ(m_grid->GetCell(row, col)->IsSelected(),
                          m_grid->GetCell(row, 0)->IsSelected());
            if (m_grid->GetCell(row, 0)->IsSelected())
                rows.push_back(row);
        }
        return rows;
    }

    std::unique_ptr<CGridCtrl> m_grid;
    QStringList m_notes;
    bool m_changed = false; ///< as the end of the last edit told
    GridNotifyHandler m_onNote;
};
