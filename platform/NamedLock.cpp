#include "platform/NamedLock.h"

#include <QCryptographicHash>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

QString KernelName(const QString& name) {
    const QByteArray hash = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1);
    return QStringLiteral("trackdeck-%1-%2")
        .arg(QString::number(::getuid()), QString::fromLatin1(hash.toHex()));
}

CNamedLock::CNamedLock(const QString& name)
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const QByteArray kernelName = KernelName(name).toLatin1();
    // A name in the abstract namespace starts with a zero byte and ends with the given length.
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(kernelName.begin(), kernelName.end(), address.sun_path + 1);
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + kernelName.size());
    const bool bound =
        ::bind(m_socket.Get(), reinterpret_cast<const sockaddr*>(&address), length) == 0;
    m_bHeld = bound || errno != EADDRINUSE;
}
