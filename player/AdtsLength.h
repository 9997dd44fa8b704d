#pragma once

#include "platform/Files.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

/// Measures how long a file of ADTS sound plays by counting its frames, as nothing in such a file
/// tells (ISO/IEC 13818-7, 6.2: adts_sequence).
///
/// Thread: any, one at a time. Errors: what can't be read ends the file; bytes that are no frame
/// are passed over.
class AdtsLength {
public:
    explicit AdtsLength(const QString& path);

    /// Counts on for a quarter of a megabyte. False at the end of the file.
    bool Step();

    /// In units of 100 ns. Nothing if no frame was found.
    [[nodiscard]] std::optional<std::int64_t> GetLength() const;

private:
    FileDescriptor m_file;
    std::uint64_t m_nPosition = 0; ///< of the next frame
    std::uint64_t m_nEnd = 0;
    std::array<std::int64_t, 13> m_samples = {}; ///< by index of the sampling frequency
};
