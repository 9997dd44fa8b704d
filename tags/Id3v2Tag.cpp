#include "tags/Id3v2Tag.h"

#include "platform/Files.h"
#include "tags/Id3Fields.h"
#include "tags/Id3Picture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kTagHeader = 10;
constexpr std::uint64_t kMegabyte = 1024 * 1024;
constexpr std::uint64_t kMaxTag = 64 * kMegabyte; // that is written; the format allows 256 MB

/// What a reading may spend; real tags have tens of frames.
struct Budget {
    std::uint64_t bytes;
    std::size_t frames;
};

Budget BudgetOf(Id3Purpose purpose) {
    switch (purpose) {
    case Id3Purpose::Texts:
        return {8 * kMegabyte, 1'000};
    case Id3Purpose::FirstPicture:
        return {Id3Picture::kMaxSize + 8 * kMegabyte, 1'000};
    case Id3Purpose::Rewriting:
        break;
    }
    return {2 * kMaxTag, 10'000}; // a look ahead may cost a second reading
}

// Flags of the tag header.
constexpr unsigned kUnsynchronisation = 0x80;
constexpr unsigned kExtendedHeader = 0x40; // in ID3v2.2: the tag is compressed, in no known way
constexpr unsigned kFooter = 0x10;         // ID3v2.4

/// Flags of a frame that change how its data is stored.
struct FormatFlags {
    unsigned compressed;
    unsigned encrypted;
    unsigned grouped;
    unsigned unsynchronised;
    unsigned hasLength;
};
constexpr std::uint16_t kAllFormatFlags = 0x00FF;
constexpr FormatFlags kFlags23{0x80, 0x40, 0x20, 0, 0};
constexpr FormatFlags kFlags24{0x08, 0x04, 0x40, 0x02, 0x01};

std::uint32_t BigEndian(const char* bytes, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

/// Seven bits a byte; nothing if a byte has the eighth.
std::optional<std::uint32_t> SyncSafe(const char* bytes) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte >= 0x80)
            return std::nullopt;
        value = value << 7 | byte;
    }
    return value;
}

void AppendNumber(QByteArray& out, std::uint32_t value, int bytes, int bitsPerByte) {
    for (int i = bytes - 1; i >= 0; --i)
        out += static_cast<char>(value >> (i * bitsPerByte) & ((1U << bitsPerByte) - 1));
}

int IdLength(int version) {
    return version == 2 ? 3 : 4;
}

std::size_t FrameHeaderLength(int version) {
    return version == 2 ? 6 : 10;
}

/// How many bytes of the data of a frame to keep; 0 passes it over.
std::uint64_t BytesToKeep(Id3Purpose purpose, QByteArrayView id, std::uint64_t size) {
    switch (purpose) {
    case Id3Purpose::Texts:
        return std::min<std::uint64_t>(KeepId3Texts(id), size);
    case Id3Purpose::FirstPicture:
        return IsId3Picture(id) && size <= Id3Picture::kMaxSize ? size : 0;
    case Id3Purpose::Rewriting:
        break;
    }
    return size;
}

/// The bytes of a tag in the file, in order, through a buffer.
class BodyReader {
public:
    /// Reads at most `budget` bytes from the file: behind them it seems to be cut.
    BodyReader(int file, std::uint64_t fileSize, std::uint64_t budget)
        : m_file(file)
        , m_end(fileSize)
        , m_budget(budget) {}

    void SetEnd(std::uint64_t end) { m_end = std::min(end, m_end); }
    void UndoUnsynchronisation() { m_bUnsync = true; }

    [[nodiscard]] std::uint64_t Position() const { return m_position; }
    [[nodiscard]] std::uint64_t Left() const { return m_end - m_position; }

    /// Copies the next `count` bytes; false if there are not as many.
    bool Read(char* out, std::size_t count) { return Advance(out, count); }

    bool Skip(std::uint64_t count) {
        if (count > Left())
            return false;
        if (m_bUnsync)
            return Advance(nullptr, count);
        m_position += count;
        return true;
    }

    /// Up to `count` stored bytes from `position` on, without going there.
    QByteArray Peek(std::uint64_t position, std::size_t count) {
        if (position > m_end)
            return {};
        const std::uint64_t current = std::exchange(m_position, position);
        QByteArray bytes(static_cast<qsizetype>(std::min<std::uint64_t>(count, Left())), '\0');
        if (!Read(bytes.data(), static_cast<std::size_t>(bytes.size())))
            bytes.clear();
        m_position = current;
        return bytes;
    }

private:
    /// The buffered bytes from m_position on; none at the end.
    std::pair<const char*, std::size_t> Chunk() {
        if (m_position < m_bufferBegin || m_position >= m_bufferBegin + BufferSize()) {
            m_buffer = ReadAt(m_file, m_position, std::min({kBlock, Left(), m_budget}));
            m_bufferBegin = m_position;
            m_budget -= static_cast<std::uint64_t>(m_buffer.size());
        }
        const auto offset = static_cast<std::size_t>(m_position - m_bufferBegin);
        const std::uint64_t size = std::min<std::uint64_t>(BufferSize() - offset, Left());
        return {m_buffer.constData() + offset, static_cast<std::size_t>(size)};
    }

    [[nodiscard]] std::uint64_t BufferSize() const {
        return static_cast<std::uint64_t>(m_buffer.size());
    }

    bool Advance(char* out, std::uint64_t count) {
        while (count > 0) {
            const auto [bytes, size] = Chunk();
            if (size == 0)
                return false;
            if (m_bAfterFF && std::exchange(m_bAfterFF, false) && *bytes == '\0') {
                ++m_position;
                continue;
            }
            auto run = static_cast<std::size_t>(std::min<std::uint64_t>(size, count));
            if (m_bUnsync) {
                if (const void* pair = ::memmem(bytes, run, "\xFF\0", 2))
                    run = static_cast<std::size_t>(static_cast<const char*>(pair) - bytes) + 1;
                m_bAfterFF = bytes[run - 1] == '\xFF';
            }
            if (out)
                out = std::copy_n(bytes, run, out);
            m_position += run;
            count -= run;
        }
        return true;
    }

    static constexpr std::uint64_t kBlock = 16384;

    int m_file;
    std::uint64_t m_position = 0;
    std::uint64_t m_end;
    std::uint64_t m_budget; ///< bytes that may still be read
    bool m_bUnsync = false;
    bool m_bAfterFF = false;
    std::uint64_t m_bufferBegin = 0;
    QByteArray m_buffer;
};

/// Whether a frame, padding or the end of the tag stands at `position`.
bool FrameMayStartAt(BodyReader& reader, std::uint64_t position) {
    const QByteArray id = reader.Peek(position, 4);
    if (id.isEmpty())
        return position == reader.Position() + reader.Left();
    return id.front() == '\0' || (id.size() == 4 && std::all_of(id.begin(), id.end(), [](char c) {
                                      return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
                                  }));
}

/// The data size in a frame header; the reader stands behind the header. Some programs
/// write ID3v2.4 sizes as plain numbers: believed where that alone leads to a next frame.
std::optional<std::uint32_t> DataSize(int version, const char* size, BodyReader& reader) {
    if (version == 2)
        return BigEndian(size, 3);
    const std::uint32_t plain = BigEndian(size, 4);
    if (version == 3 || plain < 0x80)
        return plain;
    const std::optional<std::uint32_t> safe = SyncSafe(size);
    if (safe && FrameMayStartAt(reader, reader.Position() + *safe))
        return safe;
    if (FrameMayStartAt(reader, reader.Position() + plain))
        return plain;
    return safe;
}

bool OnlyPaddingLeft(BodyReader& reader) {
    char byte = 0;
    while (reader.Left() > 0) {
        if (!reader.Read(&byte, 1) || byte != '\0')
            return false;
    }
    return true;
}

/// Reads the next frame into the tag; false when there is no further one.
bool ReadFrame(BodyReader& reader, Id3Purpose purpose, Id3v2Tag& tag) {
    const std::size_t headerLength = FrameHeaderLength(tag.version);
    const int idLength = IdLength(tag.version);
    std::array<char, 10> header{};
    if (reader.Left() == 0)
        return false;
    if (!reader.Read(header.data(), 1)) {
        tag.whole = reader.Left() == 0;
        return false;
    }
    if (header[0] == '\0') {
        tag.whole = purpose != Id3Purpose::Rewriting || OnlyPaddingLeft(reader);
        return false;
    }
    tag.whole = false;
    if (!reader.Read(header.data() + 1, headerLength - 1))
        return false;
    const std::optional<std::uint32_t> size =
        DataSize(tag.version, header.data() + idLength, reader);
    if (!size || *size > reader.Left())
        return false;

    const QByteArrayView id(header.data(), idLength);
    const auto kept = static_cast<std::size_t>(BytesToKeep(purpose, id, *size));
    if (kept > 0 || purpose == Id3Purpose::Rewriting) {
        Id3Frame frame{id.toByteArray(), 0, QByteArray(static_cast<qsizetype>(kept), '\0')};
        if (tag.version != 2)
            frame.flags = static_cast<std::uint16_t>(BigEndian(header.data() + 8, 2));
        if (!reader.Read(frame.data.data(), kept))
            return false;
        tag.frames.push_back(std::move(frame));
    }
    if (!reader.Skip(*size - kept))
        return false;
    tag.whole = true;
    return purpose != Id3Purpose::FirstPicture || !IsId3Picture(id);
}

/// Steps over the extended header: nothing in it is about frames that are kept.
bool SkipExtendedHeader(int version, BodyReader& reader) {
    std::array<char, 4> size{};
    if (!reader.Read(size.data(), size.size()))
        return false;
    if (version == 3)
        return reader.Skip(BigEndian(size.data(), 4));
    const std::optional<std::uint32_t> whole = SyncSafe(size.data());
    return whole && *whole >= size.size() && reader.Skip(*whole - size.size());
}

} // namespace

const Id3Frame* Id3v2Tag::Find(QByteArrayView id) const {
    const auto found = std::find_if(frames.begin(), frames.end(),
                                    [id](const Id3Frame& frame) { return frame.id == id; });
    return found == frames.end() ? nullptr : &*found;
}

Id3v2Tag ReadId3v2Tag(int file, std::uint64_t fileSize, Id3Purpose purpose) {
    Id3v2Tag tag;
    const Budget budget = BudgetOf(purpose);
    BodyReader reader(file, fileSize, budget.bytes);
    std::array<char, kTagHeader> header{};
    if (!reader.Read(header.data(), header.size())) {
        tag.whole = fileSize < header.size();
        return tag;
    }
    if (std::memcmp(header.data(), "ID3", 3) != 0)
        return tag;
    const std::optional<std::uint32_t> size = SyncSafe(header.data() + 6);
    const int version = static_cast<unsigned char>(header[3]);
    const auto flags = static_cast<unsigned char>(header[5]);
    tag.whole = false;
    if (!size || version < 2 || version > 4 || (version == 2 && flags & kExtendedHeader))
        return tag;

    tag.version = version;
    tag.unsynchronised = flags & kUnsynchronisation;
    tag.size = kTagHeader + *size + (version == 4 && flags & kFooter ? kTagHeader : 0);
    if (purpose == Id3Purpose::Rewriting && *size > kMaxTag)
        return tag;
    reader.SetEnd(kTagHeader + *size);
    if (version != 4 && tag.unsynchronised)
        reader.UndoUnsynchronisation();
    if (flags & kExtendedHeader && !SkipExtendedHeader(version, reader))
        return tag;
    tag.whole = true;
    for (std::size_t count = 0; ReadFrame(reader, purpose, tag); ++count) {
        if (count == budget.frames) {
            tag.whole = false;
            break;
        }
    }
    tag.whole = tag.whole && tag.size <= fileSize;
    return tag;
}

std::optional<QByteArray> PlainFrameData(const Id3v2Tag& tag, const Id3Frame& frame) {
    const FormatFlags& format = tag.version == 4 ? kFlags24 : kFlags23;
    if (frame.flags & (format.compressed | format.encrypted))
        return std::nullopt;
    const qsizetype before =
        (frame.flags & format.grouped ? 1 : 0) + (frame.flags & format.hasLength ? 4 : 0);
    if (before > frame.data.size())
        return std::nullopt;
    QByteArray data = frame.data.sliced(before);
    if (tag.version == 4 && (tag.unsynchronised || frame.flags & format.unsynchronised))
        data.replace(QByteArrayView("\xFF\0", 2), QByteArrayView("\xFF", 1));
    return data;
}

void SetId3Frame(Id3v2Tag& tag, QByteArrayView id, const QByteArray& data) {
    const auto found = std::find_if(tag.frames.begin(), tag.frames.end(),
                                    [id](const Id3Frame& frame) { return frame.id == id; });
    Id3Frame& frame = found == tag.frames.end()
                          ? tag.frames.emplace_back(Id3Frame{id.toByteArray(), 0, {}})
                          : *found;
    frame.flags &= static_cast<std::uint16_t>(~kAllFormatFlags);
    frame.data = data;
    if (tag.version == 4 && tag.unsynchronised) {
        frame.flags |= static_cast<std::uint16_t>(kFlags24.unsynchronised);
        frame.data = Unsynchronise(data);
    }
}

QByteArray Unsynchronise(const QByteArray& bytes) {
    QByteArray out;
    out.reserve(bytes.size() + bytes.size() / 64);
    bool afterFF = false;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (afterFF && (value == 0 || value >= 0xE0))
            out += '\0';
        out += byte;
        afterFF = value == 0xFF;
    }
    if (afterFF)
        out += '\0';
    return out;
}

QByteArray AssembleId3Frame(int version, const Id3Frame& frame) {
    const auto size = static_cast<std::uint64_t>(frame.data.size());
    if (size > (version == 2 ? 0xFFFFFF : kMaxTag))
        return {};
    QByteArray bytes = frame.id;
    if (version == 4)
        AppendNumber(bytes, static_cast<std::uint32_t>(size), 4, 7);
    else
        AppendNumber(bytes, static_cast<std::uint32_t>(size), IdLength(version), 8);
    if (version != 2)
        AppendNumber(bytes, frame.flags, 2, 8);
    return bytes + frame.data;
}

QByteArray AssembleId3v2Tag(const Id3v2Tag& tag) {
    QByteArray body;
    for (const Id3Frame& frame : tag.frames) {
        const QByteArray bytes = AssembleId3Frame(tag.version, frame);
        if (bytes.isEmpty())
            return {};
        body += bytes;
    }
    bool unsynchronised = tag.unsynchronised;
    if (tag.version != 4 && unsynchronised) {
        const qsizetype before = body.size();
        body = Unsynchronise(body);
        unsynchronised = body.size() != before;
    }
    if (static_cast<std::uint64_t>(body.size()) > kMaxTag)
        return {};
    QByteArray bytes("ID3");
    bytes += static_cast<char>(tag.version);
    bytes += '\0';
    bytes += static_cast<char>(unsynchronised ? kUnsynchronisation : 0);
    AppendNumber(bytes, static_cast<std::uint32_t>(body.size()), 4, 7);
    return bytes + body;
}
