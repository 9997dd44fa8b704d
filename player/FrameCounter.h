#pragma once

#include "platform/Files.h"

#include <QString>

#include <cstdint>
#include <map>
#include <optional>

/// Measures how long a file plays that is nothing but frames of sound, one behind the other, and
/// tells its length nowhere: by counting them. It knows MPEG sound (ISO/IEC 11172-3 and 13818-3,
/// all layers) and ADTS (ISO/IEC 13818-7, 6.2).
///
/// Thread: any, one at a time. Errors: what can't be read ends the file; bytes that are no frame
/// are passed over.
class CFrameCounter {
public:
    explicit CFrameCounter(const QString& path);

    /// Counts on for a quarter of a megabyte. False at the end of the file.
    bool Step();

    /// In units of 100 ns. Nothing if no frame was found.
    [[nodiscard]] std::optional<std::int64_t> GetLength() const;

private:
    CFileDescriptor m_file;
    std::uint64_t m_nPosition = 0; ///< of what was not looked at yet
    std::uint64_t m_nEnd = 0;
    std::map<int, std::int64_t> m_samples; ///< by sampling frequency
};
