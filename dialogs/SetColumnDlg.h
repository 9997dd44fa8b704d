#pragma once

#include "skin/BaseDlg.h"

#include <map>

class QCheckBox;
class QGridLayout;

/// Lets the user choose the columns of the track view, by their bits in a mask
/// (library/TrackColumns.h). The title is always among them.
///
/// Thread: interface thread.
class CSetColumnDlg : public CBaseDlg {
public:
    /// Starts with the boxes of `columns` set; bits that are no column's don't matter.
    CSetColumnDlg(unsigned columns, QWidget* parent);

    /// The chosen columns, once the dialog is accepted; before, those that it started with.
    [[nodiscard]] unsigned GetColumns() const { return m_dwColumns; }

    void accept() override;

private:
    void AddBoxes(QGridLayout& places);

    unsigned m_dwColumns;
    std::map<unsigned, QCheckBox*> m_boxes; ///< by the columns' bits
};
