#pragma once

#include "platform/Files.h"

#include <QString>

/// `name` as the name of a local socket of this user in the kernel's abstract namespace: the same
/// for the same name, and of bounded length whatever the name holds.
[[nodiscard]] QString KernelName(const QString& name);

/// A lock by name among the user's processes: a bound local socket in the kernel's abstract
/// namespace (Linux, unix(7)). The kernel lets go of it when the process ends, however it ends, and
/// no file is left behind.
///
/// Thread: any. Errors: where the kernel gives no socket, the lock counts as taken, so that the
/// program can still be used.
class CNamedLock {
public:
    explicit CNamedLock(const QString& name);

    /// False while another process (or another CNamedLock of this one) holds the name.
    [[nodiscard]] bool IsHeld() const { return m_bHeld; }

private:
    CFileDescriptor m_socket;
    bool m_bHeld;
};
