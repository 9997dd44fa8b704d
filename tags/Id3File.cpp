#include "tags/Id3File.h"

#include "platform/Files.h"

#include <taglib/id3v2framefactory.h>
#include <taglib/mpegfile.h>
#include <taglib/tbytevectorstream.h>

#include <sys/stat.h>

#include <algorithm>

namespace {

constexpr std::uint64_t kId3v1 = 128;
constexpr std::uint64_t kSoundHead = 64ULL * 1024;

/// The length of the ADTS frame at the head of `bytes` (ISO/IEC 13818-7, 6.2); 0 if there is none.
qsizetype AdtsFrameLength(QByteArrayView bytes) {
    constexpr qsizetype kHeader = 7;
    const auto at = [bytes](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() < kHeader || at(0) != 0xFF || (at(1) & 0xF6) != 0xF0)
        return 0;
    const qsizetype length = (at(3) & 3) << 11 | at(4) << 3 | at(5) >> 5;
    return length >= kHeader ? length : 0;
}

/// Two frames in a row, or one up to the end of the sound, where `bytes` goes so far.
bool HoldsAdts(QByteArrayView bytes, bool toTheEnd) {
    for (qsizetype i = 0; (i = bytes.indexOf('\xFF', i)) >= 0; ++i) {
        const qsizetype next = i + AdtsFrameLength(bytes.sliced(i));
        if (next == i || next > bytes.size())
            continue;
        if (next == bytes.size() ? toTheEnd : AdtsFrameLength(bytes.sliced(next)) > 0)
            return true;
    }
    return false;
}

bool HoldsMpeg(const QByteArray& bytes) {
    TagLib::ByteVectorStream stream(
        TagLib::ByteVector(bytes.constData(), static_cast<unsigned int>(bytes.size())));
    constexpr bool kReadProperties = false;
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), kReadProperties);
    return file.firstFrameOffset() >= 0;
}

} // namespace

std::uint64_t Id3File::SoundSize() const {
    const std::uint64_t tags = tag.size + static_cast<std::uint64_t>(id3v1.size());
    return size > tags ? size - tags : 0;
}

bool Id3File::HoldsSound(int file) const {
    const QByteArray head = ReadAt(file, SoundBegin(), std::min(SoundSize(), kSoundHead));
    return HoldsAdts(head, SoundSize() <= kSoundHead) || HoldsMpeg(head);
}

std::optional<Id3File> ReadId3File(int file, Id3Purpose purpose) {
    struct stat status {};
    if (::fstat(file, &status) != 0)
        return std::nullopt;
    Id3File read;
    read.size = static_cast<std::uint64_t>(status.st_size);
    read.tag = ReadId3v2Tag(file, read.size, purpose);
    if (read.size >= read.tag.size + kId3v1) {
        const QByteArray last = ReadAt(file, read.size - kId3v1, kId3v1);
        const bool complete = last.size() == static_cast<qsizetype>(kId3v1);
        if (!complete && purpose == Id3Purpose::Rewriting)
            return std::nullopt;
        if (complete && last.startsWith("TAG"))
            read.id3v1 = last;
    }
    return read;
}

std::optional<Id3File> ReadId3File(const QString& path, Id3Purpose purpose) {
    const CFileDescriptor file = OpenForReading(path);
    return file.IsOpen() ? ReadId3File(file.Get(), purpose) : std::nullopt;
}
