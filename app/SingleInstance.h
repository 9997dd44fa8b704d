#pragma once

#include "platform/NamedLock.h"

#include <QLocalServer>
#include <QString>

#include <functional>

/// Makes one instance of the program per name: the first holds a lock of that name and listens on a
/// local socket; a later one asks it to come to the front.
///
/// Thread: interface thread, with a running event loop for the first instance.
class CSingleInstance {
public:
    explicit CSingleInstance(const QString& name);

    [[nodiscard]] bool IsFirst() const { return m_lock.IsHeld(); }

    /// Of the first instance: sets what a later one's call runs. Without a socket nothing is run.
    void Listen(std::function<void()> onCalled);

    /// Of a later instance: calls the first. Waits for it a second at most.
    void CallFirst() const;

private:
    QString m_strSocket;
    CNamedLock m_lock;
    QLocalServer m_server;
};
