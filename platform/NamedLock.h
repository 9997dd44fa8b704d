#pragma once

#include "platform/Files.h"

#include <QString>

/// The folder of the user's run-time files ($XDG_RUNTIME_DIR, else a private folder in the
/// temporary folder). Empty if there is none.
[[nodiscard]] QString UserRuntimeFolder();

/// `name` as part of a file name: the same for the same name, without characters that a file name
/// can't hold, and of bounded length.
[[nodiscard]] QString FileNameForLock(const QString& name);

/// A lock by name among the user's processes: a locked file in the user's run-time folder. The
/// kernel lets go of it when the process ends, however it ends.
///
/// Thread: any. Errors: where no lock file can be made, the lock counts as taken, so that a user
/// without a run-time folder can still work.
class NamedLock {
public:
    explicit NamedLock(const QString& name);

    /// False while another process (or another NamedLock of this one) holds the name.
    [[nodiscard]] bool IsHeld() const { return m_bHeld; }

private:
    FileDescriptor m_file;
    bool m_bHeld;
};
