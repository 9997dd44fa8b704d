#include "player/FrameCounter.h"

#include "player/MediaGraph.h"
#include "tags/Id3File.h"

#include <QByteArray>

#include <algorithm>

namespace {

constexpr std::uint64_t kStep = 256 * 1024;
constexpr int kHeaderSize = 7; // of ADTS; that of MPEG is shorter

struct Frame {
    int size; ///< bytes
    int rate; ///< Hz
    int samples;
};

/// Bits of a header from its first one on.
unsigned Bits(const char* header, int first, int count) {
    unsigned bits = 0;
    for (int i = first; i < first + count; ++i)
        bits = bits << 1 | (static_cast<unsigned char>(header[i / 8]) >> (7 - i % 8) & 1);
    return bits;
}

std::optional<Frame> ReadAdtsHeader(const char* header) {
    constexpr int kRates[] = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                              22050, 16000, 12000, 11025, 8000,  7350};
    constexpr int kSamplesOfBlock = 1024;
    const unsigned rate = Bits(header, 18, 4);
    const int size = static_cast<int>(Bits(header, 30, 13));
    const int blocks = static_cast<int>(Bits(header, 54, 2)) + 1;
    if (rate >= std::size(kRates) || size < kHeaderSize)
        return std::nullopt;
    return Frame{size, kRates[rate], blocks * kSamplesOfBlock};
}

/// Frames of a free bit rate don't tell their size.
std::optional<Frame> ReadMpegHeader(const char* header) {
    // In thousands of bits a second: version 1 by layer, then the later versions.
    constexpr int kBitrates[][15] = {
        {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
        {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
    };
    constexpr int kRates[] = {44100, 48000, 32000};
    constexpr int kRateDivisors[] = {4, 0, 2, 1}; // versions 2.5, none, 2 and 1
    const int divisor = kRateDivisors[Bits(header, 11, 2)];
    const int layer = 4 - static_cast<int>(Bits(header, 13, 2));
    const unsigned bitrate = Bits(header, 16, 4);
    const unsigned rate = Bits(header, 20, 2);
    if (divisor == 0 || bitrate == 0 || bitrate == 15 || rate == 3)
        return std::nullopt;
    const int table = divisor == 1 ? layer - 1 : layer == 1 ? 3 : 4;
    const int bits = kBitrates[table][bitrate] * 1000;
    const int hertz = kRates[rate] / divisor;
    const int padding = static_cast<int>(Bits(header, 22, 1));
    if (layer == 1)
        return Frame{(12 * bits / hertz + padding) * 4, hertz, 384};
    const int samples = layer == 3 && divisor > 1 ? 576 : 1152;
    return Frame{samples / 8 * bits / hertz + padding, hertz, samples};
}

std::optional<Frame> ReadHeader(const char* header) {
    if (header[0] != '\xFF' || Bits(header, 8, 3) != 7)
        return std::nullopt;
    if (Bits(header, 13, 2) != 0)
        return ReadMpegHeader(header);
    return Bits(header, 11, 1) == 1 ? ReadAdtsHeader(header) : std::nullopt;
}

} // namespace

CFrameCounter::CFrameCounter(const QString& path)
    : m_file(OpenForReading(path)) {
    const auto parts = ReadId3File(m_file.Get(), Id3Purpose::Texts);
    if (!parts)
        return;
    m_nPosition = parts->SoundBegin();
    m_nEnd = m_nPosition + parts->SoundSize();
}

/// A frame is followed by another one or by the end: other bytes may look like the head of one.
bool CFrameCounter::Step() {
    if (m_nPosition >= m_nEnd)
        return false;
    const QByteArray bytes =
        ReadAt(m_file.Get(), m_nPosition, std::min(kStep, m_nEnd - m_nPosition));
    const bool isLast = m_nPosition + bytes.size() >= m_nEnd;
    qsizetype at = 0;
    while (at + kHeaderSize <= bytes.size()) {
        const auto frame = ReadHeader(bytes.constData() + at);
        const qsizetype next = frame ? at + frame->size : 0;
        const bool isNextSeen = next + kHeaderSize <= bytes.size();
        if (frame && !isNextSeen && !isLast)
            break;
        const bool counts = frame && (!isNextSeen || ReadHeader(bytes.constData() + next));
        if (counts)
            m_samples[frame->rate] += frame->samples;
        at = counts ? next : at + 1;
    }
    m_nPosition = isLast ? m_nEnd : m_nPosition + at;
    return at > 0 && m_nPosition < m_nEnd;
}

std::optional<std::int64_t> CFrameCounter::GetLength() const {
    std::int64_t length = 0;
    for (const auto& [rate, samples] : m_samples) // split, as a hostile file's product is too large
        length += samples / rate * kMediaSecond + samples % rate * kMediaSecond / rate;
    return length > 0 ? std::optional(length) : std::nullopt;
}
