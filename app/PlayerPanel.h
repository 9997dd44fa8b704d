#pragma once

#include "base/Language.h"
#include "player/TransportDisplay.h"

class CBitmapSlider;
class CCommandMap;
class CImageButton;
class CMediaPlayer;
class CProgressSlider;
class CTransport;
class CMainLayout;
class QAction;
class QWidget;

/// The player's controls: its buttons with their keys, the seek bar, and the volume. They show what
/// the player does, and tell it what the user wants.
///
/// Thread:   interface thread.
/// Lifetime: the controls are the window's, which outlives this.
class CPlayerPanel : public ITransportDisplay {
public:
    /// The keys work wherever the focus is in `window`.
    CPlayerPanel(QWidget& window, const CMainLayout& layout);

    /// From now on the controls and `commands` are those of this player, which gets the volume that
    /// is shown. Both outlive the last input of the user.
    void Connect(CMediaPlayer& player, CTransport& transport, CCommandMap& commands);

    void ShowState(TransportState state) override;
    void ShowPosition(int percent) override;
    void ShowCaption(const QString& caption) override;
    void EnableSeek(bool enable) override;
    void Beep() override;

private:
    /// A button, and the action by which keys click it.
    struct Control {
        CImageButton& button;
        QAction& action;

        void Label(StringId text) const;
    };

    void ConnectSeek(CMediaPlayer& player);

    const Control m_previous;
    const Control m_play;
    const Control m_next;
    QAction& m_stop;
    CProgressSlider& m_seek;
    CBitmapSlider& m_volume;
};
