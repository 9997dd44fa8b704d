#include "platform/NamedLock.h"

#include "platform/Path.h"

#include <QCryptographicHash>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>

QString UserRuntimeFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

QString FileNameForLock(const QString& name) {
    const QByteArray hash = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1);
    return QStringLiteral("trackdeck-") + QString::fromLatin1(hash.toHex());
}

NamedLock::NamedLock(const QString& name) {
    const QString path =
        Path::Join(UserRuntimeFolder(), FileNameForLock(name) + QStringLiteral(".lock"));
    m_file = FileDescriptor(
        ::open(Path::ToBytes(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    m_bHeld = !m_file.IsOpen() || ::flock(m_file.Get(), LOCK_EX | LOCK_NB) == 0;
}
