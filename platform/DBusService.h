#pragma once

#include "platform/MessageTarget.h"

#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <thread>
#include <utility>

class QDBusAbstractAdaptor;

/// A service of the program's own on the user's bus: a name that others find it by, and one object.
///
/// Thread:   interface thread. The bus is looked up by a thread of its own, and nothing here waits
///           for it.
/// Lifetime: leaves the bus when it is destroyed. That waits for a look-up that is under way, which
///           takes milliseconds unless the bus stands still: Qt can't be ended beneath it.
/// Errors:   without a bus, where the name is taken or refused, and after the bus is gone there is
///           no service, and no error is reported.
class CDBusService {
public:
    /// `object`: others see its adaptors. It outlives this.
    CDBusService(QString name, QString path, QObject& object);
    ~CDBusService();

    CDBusService(const CDBusService&) = delete;
    CDBusService& operator=(const CDBusService&) = delete;

    /// Called once there is a bus, before anybody there can ask for something.
    void SetConnectedHandler(std::function<void()> handler) { m_pfnConnected = std::move(handler); }

    /// Goes to the bus at an address, or to that of the user's session for an empty one. To be
    /// called once.
    void Start(const QString& address);

    /// Whether there is a bus, and it has not refused the name.
    [[nodiscard]] bool IsConnected() const;

    /// Tells others the new values of an adaptor's properties.
    void TellChanged(const QDBusAbstractAdaptor& adaptor, const QVariantMap& changed);

private:
    struct Link;

    void OnConnected(std::unique_ptr<Link> link);

    QString m_strName;
    QString m_strPath;
    QObject& m_object;
    std::function<void()> m_pfnConnected;
    std::unique_ptr<Link> m_pLink; ///< none without a connection
    CMessageTarget m_messages;
    std::jthread m_connector; // last: it goes first
};
