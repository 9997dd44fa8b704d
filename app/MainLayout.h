#pragma once

class CArtworkField;
class CBitmapSlider;
class CGridCtrl;
class CImageButton;
class CPicButton;
class CProgressSlider;
class QWidget;

/// The controls of the main window and their places: the grid, and below it a band of two rows with
/// the artwork beside them. The lower row alone is the mini player.
///
/// Thread: interface thread. The controls belong to the window they are made in.
class CMainLayout {
public:
    explicit CMainLayout(QWidget& window);

    /// Shows what the mini player has, or everything. The focus goes to the main thing there.
    void SetMiniMode(bool mini);

    [[nodiscard]] CGridCtrl& Grid() const { return *m_pGrid; }
    [[nodiscard]] CPicButton& NewPlaylist() const { return *m_pNewPlaylist; }
    [[nodiscard]] CPicButton& ScanButton() const { return *m_pScanButton; }
    [[nodiscard]] CImageButton& Copy() const { return *m_pCopy; }
    [[nodiscard]] CPicButton& CancelAll() const { return *m_pCancelAll; }
    [[nodiscard]] CImageButton& ClosePlaylist() const { return *m_pClosePlaylist; }
    [[nodiscard]] CImageButton& SavePlaylist() const { return *m_pSavePlaylist; }
    [[nodiscard]] CImageButton& MoveUp() const { return *m_pMoveUp; }
    [[nodiscard]] CImageButton& MoveDown() const { return *m_pMoveDown; }
    [[nodiscard]] CProgressSlider& Status() const { return *m_pStatus; }
    [[nodiscard]] CImageButton& Previous() const { return *m_pPrevious; }
    [[nodiscard]] CImageButton& Play() const { return *m_pPlay; }
    [[nodiscard]] CImageButton& Next() const { return *m_pNext; }
    [[nodiscard]] CProgressSlider& Seek() const { return *m_pSeek; }
    [[nodiscard]] CBitmapSlider& Volume() const { return *m_pVolume; }
    [[nodiscard]] CArtworkField& Artwork() const { return *m_pArtwork; }

private:
    [[nodiscard]] QWidget* MakeUpperRow();
    [[nodiscard]] QWidget* MakeLowerRow();

    CGridCtrl* m_pGrid;
    QWidget* m_pBand;
    CPicButton* m_pNewPlaylist = nullptr;
    CPicButton* m_pScanButton = nullptr;
    CImageButton* m_pCopy = nullptr;
    CPicButton* m_pCancelAll = nullptr;
    CImageButton* m_pClosePlaylist = nullptr;
    CImageButton* m_pSavePlaylist = nullptr;
    CImageButton* m_pMoveUp = nullptr;
    CImageButton* m_pMoveDown = nullptr;
    CProgressSlider* m_pStatus = nullptr;
    CImageButton* m_pPrevious = nullptr;
    CImageButton* m_pPlay = nullptr;
    CImageButton* m_pNext = nullptr;
    CProgressSlider* m_pSeek = nullptr;
    CBitmapSlider* m_pVolume = nullptr;
    CArtworkField* m_pArtwork;
    QWidget* m_pUpperRow;
    QWidget* m_pLowerRow;
};
