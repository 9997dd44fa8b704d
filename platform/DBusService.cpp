#include "platform/DBusService.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMetaClassInfo>
#include <QStringList>

#include <pthread.h>

#include <atomic>

namespace {

/// The message by which a thread hands over its connection.
constexpr int kConnected = 1;

constexpr const char* kThreadName = "bus";

// What the bus itself understands.
constexpr QLatin1String kBus("org.freedesktop.DBus");
constexpr QLatin1String kBusPath("/org/freedesktop/DBus");
constexpr uint kDontQueue = 4;
constexpr uint kOwner = 1;

QDBusConnection Connect(const QString& address) {
    static std::atomic<int> s_nCount = 0;
    const QString name = QStringLiteral("trackdeck-%1").arg(++s_nCount);
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

} // namespace

/// A connection of its own to the bus, closed at the end, wherever that comes.
struct CDBusService::Link : CMessagePayload {
    explicit Link(const QString& address)
        : connection(Connect(address)) {}
    ~Link() override { QDBusConnection::disconnectFromBus(connection.name()); }

    QDBusConnection connection;
};

CDBusService::CDBusService(QString name, QString path, QObject& object)
    : m_strName(std::move(name))
    , m_strPath(std::move(path))
    , m_object(object) {
    m_messages.On(kConnected, [this](Message& message) {
        OnConnected(message.Take<Link>());
        return 0;
    });
}

CDBusService::~CDBusService() = default;

void CDBusService::Start(const QString& address) {
    m_connector = std::jthread([address, target = m_messages.Address()] {
        target.Post({kConnected, 0, 0, std::make_unique<Link>(address)});
    });
    ::pthread_setname_np(m_connector.native_handle(), kThreadName);
}

void CDBusService::OnConnected(std::unique_ptr<Link> link) {
    if (!link->connection.isConnected())
        return;
    m_pLink = std::move(link);
    QDBusConnection& bus = m_pLink->connection;
    bus.registerObject(m_strPath, &m_object);
    QDBusMessage request =
        QDBusMessage::createMethodCall(kBus, kBusPath, kBus, QStringLiteral("RequestName"));
    request << m_strName << kDontQueue;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(request), &m_messages);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_messages, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError() || reply.value() != kOwner)
            m_pLink.reset();
    });
    if (m_pfnConnected)
        m_pfnConnected();
}

bool CDBusService::IsConnected() const {
    return m_pLink && m_pLink->connection.isConnected();
}

void CDBusService::TellChanged(const QDBusAbstractAdaptor& adaptor, const QVariantMap& changed) {
    if (!IsConnected())
        return;
    const QMetaObject* type = adaptor.metaObject();
    QDBusMessage message =
        QDBusMessage::createSignal(m_strPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    message << QLatin1String(type->classInfo(type->indexOfClassInfo("D-Bus Interface")).value())
            << changed << QStringList();
    m_pLink->connection.send(message);
}
