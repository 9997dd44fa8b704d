#include "app/MainLayout.h"

#include "app/ArtworkField.h"
#include "base/Language.h"
#include "grid/GridCtrl.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 8;
constexpr int kArtworkSide = 84;

QToolButton* MakeButton(QWidget* parent, StringId text) {
    auto* button = new QToolButton(parent);
    // A menu text may stand on a button, which needs neither the mnemonic nor the ellipsis.
    button->setText(LoadString(text).remove(u'&').remove(QStringLiteral("...")));
    button->setMinimumHeight(28);
    return button;
}

QLabel* MakeLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(1);
    return label;
}

} // namespace

MainLayout::MainLayout(QWidget& window)
    : m_pGrid(new CGridCtrl(&window))
    , m_pUpperRow(new QWidget(&window))
    , m_pScanButton(MakeButton(m_pUpperRow, IDS_FILE_SCANPCFORMUSICS))
    , m_pStatus(MakeLabel(m_pUpperRow))
    , m_pMiniButton(MakeButton(&window, IDS_MAIN_MINI))
    , m_pArtwork(new ArtworkField(&window)) {
    m_pMiniButton->setObjectName(QStringLiteral("999"));
    m_pArtwork->setFixedSize(kArtworkSide, kArtworkSide);
    auto* upper = new QHBoxLayout(m_pUpperRow);
    upper->setContentsMargins(0, 0, 0, 0);
    upper->addWidget(m_pScanButton);
    upper->addWidget(m_pStatus, 1);

    auto* lower = new QHBoxLayout;
    lower->addWidget(m_pMiniButton, 0, Qt::AlignVCenter); // so that it takes half of the band
    lower->addStretch(1);

    auto* rows = new QVBoxLayout;
    rows->setSpacing(kMargin);
    rows->addWidget(m_pUpperRow, 1);
    rows->addLayout(lower, 1);

    auto* band = new QHBoxLayout;
    band->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    band->setSpacing(kMargin);
    band->addLayout(rows, 1);
    band->addWidget(m_pArtwork);

    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_pGrid, 1);
    whole->addLayout(band);
}

void MainLayout::SetMiniMode(bool mini) {
    m_pGrid->setVisible(!mini);
    m_pUpperRow->setVisible(!mini);
    m_pArtwork->setVisible(!mini);
    const QString text = LoadString(mini ? IDS_MAIN_NORMAL : IDS_MAIN_MINI);
    m_pMiniButton->setText(text);
    m_pMiniButton->setToolTip(text);
}
