#include "app/PlayerPanel.h"

#include "app/MainLayout.h"
#include "base/Guard.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "skin/ImageButton.h"
#include "skin/ProgressSlider.h"

#include <QAction>
#include <QApplication>
#include <QSignalBlocker>

namespace {

/// The first of the keys is the one that the button's tip names.
QAction& AddAction(QWidget& window, const QList<QKeySequence>& keys) {
    auto* action = new QAction(&window);
    action->setShortcuts(keys);
    action->setAutoRepeat(false);
    window.addAction(action);
    return *action;
}

} // namespace

CPlayerPanel::CPlayerPanel(QWidget& window, const CMainLayout& layout)
    : m_previous{layout.Previous(),
                 AddAction(window, {Qt::ALT | Qt::Key_Left, Qt::Key_MediaPrevious})}
    , m_play{layout.Play(), AddAction(window, {Qt::CTRL | Qt::Key_P, Qt::Key_MediaPlay,
                                               Qt::Key_MediaTogglePlayPause, Qt::Key_MediaPause})}
    , m_next{layout.Next(), AddAction(window, {Qt::ALT | Qt::Key_Right, Qt::Key_MediaNext})}
    , m_stop(AddAction(window, {Qt::Key_MediaStop}))
    , m_seek(layout.Seek())
    , m_volume(layout.Volume()) {
    // The actions stay enabled: a key whose action is not goes to the control with the focus.
    for (const Control& control : {m_previous, m_play, m_next})
        QObject::connect(&control.action, &QAction::triggered, &control.button,
                         &QAbstractButton::click);
    m_previous.Label(IDS_BT_PRE);
    m_next.Label(IDS_BT_NEXT);
    ShowState(TransportState::Stopped);
    EnableSeek(false);
}

void CPlayerPanel::Connect(CMediaPlayer& player, CTransport& transport, CCommandMap& commands) {
    commands.On(Command::kPrevious, [&transport](int) { transport.OnPrevious(); });
    commands.On(Command::kPlayPause, [&transport](int) { transport.OnPlayPause(); });
    commands.On(Command::kNext, [&transport](int) { transport.OnNext(); });
    QObject::connect(&m_stop, &QAction::triggered, &m_stop,
                     [&transport] { Guarded("OnStop()", [&] { transport.Stop(); }); });
    int mode = 0;
    for (const int command : Command::kPlayModes)
        commands.On(command, [&transport, number = mode++](int) { transport.SetPlayMode(number); });
    QObject::connect(&m_volume, &QAbstractSlider::valueChanged, &m_volume,
                     [&player](int value) { player.SetVolumeFromSlider(value); });
    player.SetVolumeFromSlider(m_volume.value());
    ConnectSeek(player);
}

/// What a key, the wheel or a screen reader does is at its end at once.
void CPlayerPanel::ConnectSeek(CMediaPlayer& player) {
    using Scroll = CMediaPlayer::Scroll;
    QObject::connect(&m_seek, &QAbstractSlider::valueChanged, &m_seek, [this, &player](int value) {
        player.OnSeekScroll(m_seek.isSliderDown() ? Scroll::Track : Scroll::End, value);
    });
    QObject::connect(&m_seek, &QAbstractSlider::sliderReleased, &m_seek,
                     [this, &player] { player.OnSeekScroll(Scroll::End, m_seek.value()); });
}

void CPlayerPanel::ShowState(TransportState state) {
    const bool plays = state == TransportState::Playing;
    m_play.button.SetBitmaps(plays ? PictureId::Pause : PictureId::Play);
    m_play.Label(plays ? IDS_BT_PAUSE : IDS_BT_PLAY);
}

void CPlayerPanel::ShowPosition(int percent) {
    if (m_seek.isSliderDown())
        return;
    const QSignalBlocker notTheUser(m_seek);
    m_seek.setValue(percent);
}

void CPlayerPanel::ShowCaption(const QString& caption) {
    m_seek.SetCaption(caption);
}

void CPlayerPanel::EnableSeek(bool enable) {
    m_seek.setEnabled(enable);
    if (!enable) // from wherever it was held
        ShowPosition(0);
}

void CPlayerPanel::Beep() {
    QApplication::beep();
}

void CPlayerPanel::Control::Label(StringId text) const {
    button.SetTooltipText(LoadString(text), action.shortcut());
}
