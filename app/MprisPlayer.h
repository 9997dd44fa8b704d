#pragma once

#include "app/CoverFile.h"
#include "app/MprisWindow.h"
#include "base/Listeners.h"
#include "platform/DBusService.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <cstdint>
#include <functional>

class CMediaPlayer;
class CTransport;
class CMprisPlayerAdaptor;

/// The player on the desktop's bus, for media keys, panels and lock screens: MPRIS 2.2.
///
/// Thread:   interface thread. Nothing here waits for the bus or for a file.
/// Lifetime: what the constructor takes outlives this, but for the folder's name.
/// Errors:   without a bus the program does without it.
class CMprisPlayer : public QObject {
public:
    /// `coverFolder`: for the picture of the track that plays, readable by the user alone.
    CMprisPlayer(CTransport& transport, CMediaPlayer& player, MprisWindow window,
                 const QString& coverFolder);

    /// Goes to the bus of the user's session, or to that at an address. To be called once, when
    /// there is nothing more urgent to do.
    void Start(const QString& busAddress = {});

    /// To be called when the volume has changed. What the player does is heard of.
    void Update();

protected:
    bool event(QEvent* event) override;

private:
    void OnSeek(std::int64_t position);
    void UpdateCover();
    void TellChanges();
    [[nodiscard]] QVariantMap ReadProperties() const;

    CTransport& m_transport;
    CMediaPlayer& m_player;
    MprisWindow m_window;
    CCoverFile m_cover;
    int m_nCoverOf = 0;              ///< number of the file whose cover it is; 0: none
    CMprisPlayerAdaptor* m_pAdaptor; ///< a child of this
    QVariantMap m_told;              ///< its properties as others know them
    QTimer m_changeTimer;            ///< several changes in a row make one message
    CListening m_changes;            ///< of the transport
    CListening m_seeks;
    CDBusService m_service; // last: it goes first
};
