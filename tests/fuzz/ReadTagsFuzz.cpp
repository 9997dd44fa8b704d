// Reads the tags and the picture of whatever bytes the fuzzer makes up.

#include "platform/Files.h"
#include "tags/Id3Tags.h"
#include "tests/fuzz/Require.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A file that lies in memory, under a path like any other.
    static const CFileDescriptor file(::memfd_create("fuzz", MFD_CLOEXEC));
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file.Get());
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    Require(::ftruncate(file.Get(), 0) == 0 && ::lseek(file.Get(), 0, SEEK_SET) == 0 &&
            WriteAll(file.Get(), bytes));

    CTrackInfo info;
    Require(Id3Tags::Read(path, info) == 0 || info.m_strTitle.isEmpty());
    Require(Id3Tags::ReadArtwork(path).size() <= bytes.size());
    return 0;
}
