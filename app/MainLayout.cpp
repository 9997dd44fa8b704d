#include "app/MainLayout.h"

#include "base/Language.h"
#include "grid/GridCtrl.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 8;

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
    , m_pCaption(MakeLabel(&window)) {
    m_pMiniButton->setObjectName(QStringLiteral("999"));
    auto* upper = new QHBoxLayout(m_pUpperRow);
    upper->setContentsMargins(kMargin, kMargin, kMargin, 0);
    upper->addWidget(m_pScanButton);
    upper->addWidget(m_pStatus, 1);

    auto* lower = new QHBoxLayout;
    lower->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    lower->addWidget(m_pMiniButton);
    lower->addWidget(m_pCaption, 1);

    auto* rows = new QVBoxLayout(&window);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_pGrid, 1);
    rows->addWidget(m_pUpperRow);
    rows->addLayout(lower);
}

void MainLayout::SetMiniMode(bool mini) {
    m_pGrid->setVisible(!mini);
    m_pUpperRow->setVisible(!mini);
    const QString text = LoadString(mini ? IDS_MAIN_NORMAL : IDS_MAIN_MINI);
    m_pMiniButton->setText(text);
    m_pMiniButton->setToolTip(text);
}
