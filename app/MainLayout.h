#pragma once

class ArtworkField;
class CGridCtrl;
class QLabel;
class QToolButton;
class QWidget;

/// The controls of the main window and their places: the grid, and below it a band of two rows with
/// the artwork beside them. The lower row alone is the mini player.
///
/// Thread: interface thread. The controls belong to the window they are made in.
class MainLayout {
public:
    explicit MainLayout(QWidget& window);

    /// Shows what the mini player has, or everything.
    void SetMiniMode(bool mini);

    [[nodiscard]] CGridCtrl& Grid() const { return *m_pGrid; }
    [[nodiscard]] QToolButton& ScanButton() const { return *m_pScanButton; }
    [[nodiscard]] QToolButton& MiniButton() const { return *m_pMiniButton; }
    [[nodiscard]] QLabel& Status() const { return *m_pStatus; }
    [[nodiscard]] ArtworkField& Artwork() const { return *m_pArtwork; }

private:
    CGridCtrl* m_pGrid;
    QWidget* m_pUpperRow;
    QToolButton* m_pScanButton;
    QLabel* m_pStatus;
    QToolButton* m_pMiniButton;
    ArtworkField* m_pArtwork;
};
