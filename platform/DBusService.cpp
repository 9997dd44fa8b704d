#include "platform/DBusService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
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
struct DBusService::Link : MessagePayload {
    explicit Link(const QString& address)
        : connection(Connect(address)) {}
    ~Link() override { QDBusConnection::disconnectFromBus(connection.name()); }

    QDBusConnection connection;
};

DBusService::DBusService(QString name, QString path, std::vector<DBusInterface> interfaces)
    : m_strName(std::move(name))
    , m_strPath(std::move(path))
    , m_object(std::move(interfaces)) {
    m_changeTimer.setSingleShot(true);
    QObject::connect(&m_changeTimer, &QTimer::timeout, &m_changeTimer, [this] { SendChanges(); });
    m_messages.On(kConnected, [this](Message& message) {
        OnConnected(message.Take<Link>());
        return 0;
    });
}

DBusService::~DBusService() {
    Leave();
}

void DBusService::Start(const QString& address) {
    m_connector = std::jthread([address, target = m_messages.Address()] {
        target.Post({kConnected, 0, 0, std::make_unique<Link>(address)});
    });
    ::pthread_setname_np(m_connector.native_handle(), kThreadName);
}

void DBusService::OnConnected(std::unique_ptr<Link> link) {
    if (!link->connection.isConnected())
        return;
    m_pLink = std::move(link);
    QDBusConnection& bus = m_pLink->connection;
    bus.registerVirtualObject(m_strPath, &m_object);
    m_told = TakeProperties(); // before others can ask for them
    QDBusMessage request =
        QDBusMessage::createMethodCall(kBus, kBusPath, kBus, QStringLiteral("RequestName"));
    request << m_strName << kDontQueue;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(request), &m_object);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_object, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError() || reply.value() != kOwner)
            Leave();
    });
    if (m_pfnConnected)
        m_pfnConnected();
}

void DBusService::Leave() {
    if (m_pLink)
        m_pLink->connection.unregisterObject(m_strPath);
    m_pLink.reset();
}

bool DBusService::IsConnected() const {
    return m_pLink && m_pLink->connection.isConnected();
}

void DBusService::TellChanges() {
    if (IsConnected() && !m_changeTimer.isActive())
        m_changeTimer.start();
}

std::vector<QVariantMap> DBusService::TakeProperties() const {
    std::vector<QVariantMap> all;
    for (const DBusInterface& interface : m_object.Interfaces())
        all.push_back(DBusObject::Properties(interface, DBusObject::Which::Told));
    return all;
}

void DBusService::SendChanges() {
    m_changeTimer.stop();
    if (!IsConnected())
        return;
    const std::vector<QVariantMap> old = std::exchange(m_told, TakeProperties());
    for (std::size_t i = 0; i < m_told.size(); ++i) {
        QVariantMap changed = m_told[i];
        changed.removeIf([&](const QVariantMap::iterator& now) {
            return old[i].value(now.key()) == now.value();
        });
        if (changed.isEmpty())
            continue;
        QDBusMessage told =
            QDBusMessage::createSignal(m_strPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                       QStringLiteral("PropertiesChanged"));
        told << QLatin1String(m_object.Interfaces()[i].name) << changed << QStringList();
        m_pLink->connection.send(told);
    }
}

void DBusService::SendSignal(const char* interface, const char* signal,
                             const QVariantList& arguments) {
    if (!IsConnected())
        return;
    if (m_changeTimer.isActive())
        SendChanges();
    QDBusMessage told =
        QDBusMessage::createSignal(m_strPath, QLatin1String(interface), QLatin1String(signal));
    told.setArguments(arguments);
    m_pLink->connection.send(told);
}
