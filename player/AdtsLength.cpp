#include "player/AdtsLength.h"

#include "player/MediaGraph.h"
#include "tags/Id3File.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::uint64_t kStep = 256 * 1024;
constexpr int kHeaderSize = 7;
constexpr int kSamplesOfBlock = 1024;

constexpr std::array<int, 13> kSampleRates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                              22050, 16000, 12000, 11025, 8000,  7350};

struct AdtsFrame {
    int size;
    int rate; ///< index of kSampleRates
    int samples;
};

std::optional<AdtsFrame> ReadHeader(const char* header) {
    const auto byte = [header](int i) { return static_cast<unsigned char>(header[i]); };
    const bool isSync = byte(0) == 0xFF && (byte(1) & 0xF6) == 0xF0;
    const unsigned rate = byte(2) >> 2 & 0xF;
    const int size = (byte(3) & 3) << 11 | byte(4) << 3 | byte(5) >> 5;
    if (!isSync || rate >= kSampleRates.size() || size < kHeaderSize)
        return std::nullopt;
    const int blocks = (byte(6) & 3) + 1;
    return AdtsFrame{size, static_cast<int>(rate), blocks * kSamplesOfBlock};
}

} // namespace

AdtsLength::AdtsLength(const QString& path)
    : m_file(OpenForReading(path)) {
    const auto parts = ReadId3File(m_file.Get(), Id3Purpose::Texts);
    if (!parts)
        return;
    m_nPosition = parts->SoundBegin();
    m_nEnd = m_nPosition + parts->SoundSize();
}

bool AdtsLength::Step() {
    if (m_nPosition >= m_nEnd)
        return false;
    const QByteArray bytes =
        ReadAt(m_file.Get(), m_nPosition, std::min(kStep, m_nEnd - m_nPosition));
    qsizetype at = 0;
    while (at + kHeaderSize <= bytes.size()) {
        const auto frame = ReadHeader(bytes.constData() + at);
        if (frame)
            m_samples[frame->rate] += frame->samples;
        at += frame ? frame->size : 1;
    }
    m_nPosition += at;
    return at > 0 && m_nPosition < m_nEnd;
}

std::optional<std::int64_t> AdtsLength::GetLength() const {
    std::int64_t length = 0;
    for (std::size_t i = 0; i < kSampleRates.size(); ++i) {
        const int rate = kSampleRates[i]; // split, as the product of a hostile file is too large
        length += m_samples[i] / rate * kMediaSecond + m_samples[i] % rate * kMediaSecond / rate;
    }
    return length > 0 ? std::optional(length) : std::nullopt;
}
