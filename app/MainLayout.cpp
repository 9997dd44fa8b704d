#include "app/MainLayout.h"

#include "accessible/GridAccessible.h"
#include "app/ArtworkField.h"
#include "base/Language.h"
#include "grid/GridCtrl.h"
#include "skin/BitmapSlider.h"
#include "skin/ImageButton.h"
#include "skin/PicButton.h"
#include "skin/Pictures.h"
#include "skin/ProgressSlider.h"
#include "skin/SkinLabel.h"
#include "skin/SkinPalette.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 8;
constexpr int kUpperHeight = 46;
constexpr int kLowerHeight = 57;
constexpr int kArtworkSide = 84;
constexpr int kVolumeWidth = 72;
constexpr int kGap = 4; // within a group of buttons

/// The ground of the two rows. It is drawn as high as both of them, from the bottom up, so that the
/// lower row looks the same alone.
class Band : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const int height = kUpperHeight + kLowerHeight;
        painter.drawPixmap(QRect(0, this->height() - height, width(), height),
                           LoadPicture(PictureId::Band, devicePixelRatioF()));
    }
};

CGridCtrl* MakeGrid(QWidget* parent) {
    CGridAccessible::Install(); // which a grid that has a name already would not get any more
    return new CGridCtrl(parent);
}

QHBoxLayout* MakeRow(QWidget* row) {
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap);
    return layout;
}

} // namespace

CMainLayout::CMainLayout(QWidget& window)
    : m_pGrid(MakeGrid(&window))
    , m_pBand(new Band(&window))
    , m_pArtwork(new CArtworkField(m_pBand))
    , m_pUpperRow(MakeUpperRow())
    , m_pLowerRow(MakeLowerRow()) {
    m_pGrid->setPalette(PagePalette());
    m_pGrid->setAccessibleName(LoadString(IDS_MAIN_TRACKS));
    m_pArtwork->setFixedSize(kArtworkSide, kArtworkSide);

    auto* band = new QGridLayout(m_pBand);
    band->setContentsMargins(kMargin, 0, kMargin, 0);
    band->setHorizontalSpacing(kMargin);
    band->setVerticalSpacing(0);
    band->addWidget(m_pUpperRow, 0, 0);
    band->addWidget(m_pLowerRow, 1, 0);
    band->addWidget(m_pArtwork, 0, 1, 2, 1, Qt::AlignVCenter);

    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_pGrid, 1);
    whole->addWidget(m_pBand);
}

QWidget* CMainLayout::MakeUpperRow() {
    auto* row = new QWidget(m_pBand);
    row->setFixedHeight(kUpperHeight);
    const auto text = [](StringId id) { return LoadString(id); };
    m_pNewPlaylist = new CPicButton(PictureId::NewPlaylist, text(IDS_PLAYLIST_CREATE), row);
    m_pScanButton = new CPicButton(PictureId::ScanPC, text(IDS_FILE_SCANPCFORMUSICS), row);
    m_pCopy = new CImageButton(PictureId::CopyToCollection, text(IDS_BT_TOCOLLECT), row);
    m_pCancelAll = new CPicButton(PictureId::CancelAll, text(IDS_BT_CANCELALL), row);
    m_pClosePlaylist = new CImageButton(PictureId::ClosePlaylist, text(IDS_PLAYLIST_CLOSE), row);
    m_pSavePlaylist = new CImageButton(PictureId::SavePlaylist, text(IDS_PLAYLIST_SAVE), row);
    m_pMoveUp = new CImageButton(PictureId::MoveUp, text(IDS_PLAYLIST_UP), row);
    m_pMoveDown = new CImageButton(PictureId::MoveDown, text(IDS_PLAYLIST_DOWN), row);
    m_pStatus = new CProgressSlider(LoadString(IDS_FEILD_STATUS), row);
    m_pStatus->setFocusPolicy(Qt::NoFocus);
    auto* layout = MakeRow(row);
    const QList<QWidget*> buttons{m_pNewPlaylist,   m_pScanButton,   m_pCopy,   m_pCancelAll,
                                  m_pClosePlaylist, m_pSavePlaylist, m_pMoveUp, m_pMoveDown};
    for (QWidget* button : buttons)
        layout->addWidget(button);
    layout->addSpacing(kGap);
    layout->addWidget(m_pStatus, 1);
    return row;
}

QWidget* CMainLayout::MakeLowerRow() {
    auto* row = new QWidget(m_pBand);
    row->setMaximumHeight(kLowerHeight);
    m_pPrevious = new CImageButton(PictureId::Previous, LoadString(IDS_BT_PRE), row);
    m_pPlay = new CImageButton(PictureId::Play, LoadString(IDS_BT_PLAY), row);
    m_pNext = new CImageButton(PictureId::Next, LoadString(IDS_BT_NEXT), row);
    m_pSeek = new CProgressSlider(LoadString(IDS_SLIDER_SEEK), row);
    m_pVolume = new CBitmapSlider({PictureId::VolumeChannel, PictureId::VolumeThumb},
                                  LoadString(IDS_SLIDER_VOLUME), row);
    m_pVolume->setFixedWidth(kVolumeWidth);
    auto* speaker = new CSkinLabel(QString(), row);
    speaker->setPixmap(LoadPicture(PictureId::Volume, row->devicePixelRatioF()));
    auto* layout = MakeRow(row);
    layout->addWidget(m_pPrevious);
    layout->addWidget(m_pPlay);
    layout->addWidget(m_pNext);
    layout->addSpacing(kGap);
    layout->addWidget(m_pSeek, 1);
    layout->addSpacing(kGap);
    layout->addWidget(speaker);
    layout->addWidget(m_pVolume);
    return row;
}

void CMainLayout::SetMiniMode(bool mini) {
    m_pGrid->setVisible(!mini);
    m_pUpperRow->setVisible(!mini);
    m_pArtwork->setVisible(!mini);
    m_pLowerRow->setMinimumHeight(mini ? 0 : kLowerHeight); // the mini player is a little lower
    (mini ? static_cast<QWidget*>(m_pPlay) : m_pGrid)->setFocus();
}
