#include "dialogs/SetColumnDlg.h"

#include "base/Language.h"
#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "library/TrackColumns.h"
#include "skin/ImageButton.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>

namespace {

constexpr int kBoxesInColumn = 6;

} // namespace

CSetColumnDlg::CSetColumnDlg(unsigned columns, QWidget* parent)
    : CBaseDlg(parent)
    , m_dwColumns(columns) {
    setWindowTitle(LoadString(IDS_DLGTITLE_COLUMN));
    auto* group = new QGroupBox(LoadString(IDS_SHOWCOLUMNS), this);
    auto* places = new QGridLayout(group);
    places->setHorizontalSpacing(3 * CDialogLayout::kGap);
    places->setVerticalSpacing(CDialogLayout::kGap);
    AddBoxes(*places);

    auto* layout = new CDialogLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(group);
    layout->AddButton(PictureId::Ok, IDS_BT_OK, [this] { accept(); })->setDefault(true);
    layout->AddButton(PictureId::No, IDS_BT_CANCEL, [this] { reject(); });
    AddHelpButton(*layout, IDS_HELPDOC_MODVIEW);
}

void CSetColumnDlg::AddBoxes(QGridLayout& places) {
    for (const TrackColumn& column : AllTrackColumns()) {
        const bool isTitle = column.bit == kTitleColumn;
        auto* box = new QCheckBox(
            GetMenuText(QStringLiteral("IDS_HEADER_"), QString::fromLatin1(column.name)), this);
        box->setChecked(isTitle || (m_dwColumns & column.bit));
        box->setEnabled(!isTitle);
        const int place = static_cast<int>(m_boxes.size());
        places.addWidget(box, place % kBoxesInColumn, place / kBoxesInColumn);
        m_boxes[column.bit] = box;
    }
    m_boxes.upper_bound(kTitleColumn)->second->setFocus(); // the first that can be changed
}

void CSetColumnDlg::accept() {
    m_dwColumns = kTitleColumn;
    for (const auto& [bit, box] : m_boxes)
        if (box->isChecked())
            m_dwColumns |= bit;
    QDialog::accept();
}
