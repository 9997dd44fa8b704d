#include "app/SingleInstance.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QThread>

#include <utility>

namespace {

constexpr int kPatience = 1000; // ms, in all
constexpr int kPause = 50;      // ms, for each try and between two

} // namespace

CSingleInstance::CSingleInstance(const QString& name)
    : m_strSocket(KernelName(name) + QStringLiteral("-call"))
    , m_lock(name) {}

void CSingleInstance::Listen(std::function<void()> onCalled) {
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server,
                     [this, onCalled = std::move(onCalled)] {
                         while (QLocalSocket* caller = m_server.nextPendingConnection())
                             caller->deleteLater();
                         onCalled();
                     });
    m_server.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    m_server.listen(m_strSocket);
}

void CSingleInstance::CallFirst() const {
    QElapsedTimer waited;
    waited.start();
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    // The first may just be starting, with its lock taken and its socket not yet there.
    do {
        socket.connectToServer(m_strSocket);
        if (socket.waitForConnected(kPause))
            return;
        QThread::msleep(kPause);
    } while (waited.elapsed() < kPatience);
}
