// Reads the tags and the picture of whatever bytes the fuzzer makes up.

#include "platform/Files.h"
#include "tags/Id3Tags.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A file that lies in memory, under a path like any other.
    static const CFileDescriptor file(::memfd_create("fuzz", MFD_CLOEXEC));
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file.Get());
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    if (::ftruncate(file.Get(), 0) != 0 || ::lseek(file.Get(), 0, SEEK_SET) != 0 ||
        !WriteAll(file.Get(), bytes))
        std::abort();

    CTrackInfo info;
    const int result = Id3Tags::Read(path, info);
    if (result != 0 && !info.m_strTitle.isEmpty())
        std::abort();
    const QByteArray picture = Id3Tags::ReadArtwork(path);
    if (picture.size() > bytes.size())
        std::abort();
    return 0;
}
