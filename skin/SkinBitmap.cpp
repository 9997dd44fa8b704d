#include "skin/SkinBitmap.h"

#include "platform/Files.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace {

constexpr qsizetype kLargestFile = 8 << 20;
constexpr qint64 kMostPixels = 1'000'000;      // at 100 %
constexpr qint64 kMostPixelsDrawn = 4'000'000; // of a rendering, and at the scale asked for
constexpr qint64 kMostBytesDecoded = 4 * kMostPixelsDrawn;

constexpr QByteArrayView kPngSignature("\x89PNG\r\n\x1A\n", 8);

template <class Number>
qint64 NumberAt(QByteArrayView file, qsizetype place) {
    return qFromLittleEndian<Number>(file.data() + place);
}

/// Whether all pixels are in a BMP file and stored plainly: the decoder would make up what is
/// missing.
bool IsWholeBmp(QByteArrayView file) {
    constexpr qsizetype kFileHeader = 14;
    constexpr qint64 kOldHeader = 12;
    constexpr qsizetype kNewHeader = 40;
    if (!file.startsWith("BM") || file.size() < kFileHeader + kNewHeader)
        return false;
    const qint64 pixels = NumberAt<quint32>(file, 10);
    const qint64 header = NumberAt<quint32>(file, kFileHeader);
    const bool isOld = header == kOldHeader;
    if ((!isOld && header < kNewHeader) || pixels < kFileHeader + header)
        return false;
    const qint64 width = isOld ? NumberAt<quint16>(file, 18) : NumberAt<qint32>(file, 18);
    const qint64 height = isOld ? NumberAt<quint16>(file, 20) : NumberAt<qint32>(file, 22);
    const qint64 bits = isOld ? NumberAt<quint16>(file, 24) : NumberAt<quint16>(file, 28);
    const qint64 compression = isOld ? 0 : NumberAt<quint32>(file, 30);
    const bool isPlain = compression == 0 || compression == 3; // RGB, or RGB with masks
    if (!isPlain || width <= 0 || width > kMostPixelsDrawn || bits == 0 || bits > 32)
        return false;
    const qint64 bytesPerLine = (width * bits + 31) / 32 * 4;
    return std::abs(height) <= (file.size() - pixels) / bytesPerLine;
}

/// Leaves in a PNG file what makes its pixels. The rest (texts, colour profiles) would be unpacked
/// too, and a small file can hold gigabytes of it.
void DropAncillaryChunks(QByteArray& file) {
    constexpr qsizetype kAroundData = 12; // length, type and check sum
    char* const bytes = file.data();
    qsizetype kept = kPngSignature.size();
    for (qsizetype place = kept; place + kAroundData <= file.size();) {
        const qint64 length = qFromBigEndian<quint32>(bytes + place);
        const qsizetype size = std::min<qint64>(length + kAroundData, file.size() - place);
        const QByteArrayView type(bytes + place + 4, 4);
        const bool isCritical = (type[0] & 0x20) == 0;
        if (isCritical || type == QByteArrayView("tRNS")) {
            std::memmove(bytes + kept, bytes + place, static_cast<std::size_t>(size));
            kept += size;
        }
        place += size;
    }
    file.truncate(kept);
}

/// The content of a picture file, or nothing if we don't take it.
QByteArray ReadPictureFile(const QString& path) {
    QByteArray file = ReadWholeFile(path, kLargestFile, Links::Refuse).value_or(QByteArray());
    if (file.startsWith(kPngSignature))
        DropAncillaryChunks(file);
    else if (!IsWholeBmp(file))
        file.clear();
    return file;
}

/// A picture in a file, of which the size is known before it is decoded.
class PictureFile {
public:
    explicit PictureFile(const QString& path) {
        m_buffer.setData(ReadPictureFile(path));
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setAutoDetectImageFormat(false);
        m_reader.setFormat(m_buffer.data().startsWith(kPngSignature) ? "png" : "bmp");
        m_reader.setDevice(&m_buffer);
    }

    /// Empty for what is no picture.
    [[nodiscard]] QSize Size() const { return m_reader.size(); }

    /// Null for a picture that is damaged or too large.
    [[nodiscard]] QImage Decode() {
        const qint64 pixels = qint64{Size().width()} * Size().height();
        const int depth = QImage::toPixelFormat(m_reader.imageFormat()).bitsPerPixel();
        if (Size().isEmpty() || pixels > kMostPixelsDrawn || pixels * depth / 8 > kMostBytesDecoded)
            return {};
        QImage image = m_reader.read();
        image.setDevicePixelRatio(1);
        return image;
    }

private:
    QBuffer m_buffer;
    QImageReader m_reader;
};

/// The size at the scale; nothing if it is larger than we take.
std::optional<QSize> SizeAt(QSize size, qreal scale) {
    if (size.isEmpty() || qint64{size.width()} * size.height() > kMostPixels || !(scale > 0) ||
        !(scale * size.width() * scale * size.height() <= kMostPixelsDrawn))
        return std::nullopt;
    return QSize(qRound(scale * size.width()), qRound(scale * size.height())).expandedTo({1, 1});
}

/// The file to take the picture from at the scale.
QString RenderingFor(const QString& path, qreal scale) {
    if (scale <= 1)
        return path;
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    const qsizetype end = dot > nameStart ? dot : path.size();
    constexpr std::pair<qreal, QLatin1String> kRenderings[] = {{1.5, QLatin1String("@1.5x")},
                                                               {2, QLatin1String("@2x")}};
    QString largest = path;
    for (const auto& [drawnFor, mark] : kRenderings) {
        const QString rendering = path.left(end) + mark + path.mid(end);
        if (!GetFileStatus(rendering))
            continue;
        largest = rendering;
        if (drawnFor >= scale)
            break;
    }
    return largest;
}

/// Calls `change` with each pixel of an image of 32 bits.
template <class Change>
void ForEachPixel(QImage& image, Change change) {
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::for_each(line, line + image.width(), change);
    }
}

QImage OverBlack(QImage image) {
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    ForEachPixel(image, [](QRgb& pixel) { pixel |= 0xFF000000; });
    image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
}

/// Holes are left out of the mixing of colours, and are a pixel's or not, never half.
QImage Scaled(QImage image, QSize size) {
    image.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    ForEachPixel(image, [](QRgb& pixel) { pixel = pixel == kKeyColour ? 0 : pixel; });
    image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    ForEachPixel(image, [](QRgb& pixel) {
        pixel = qAlpha(pixel) < 128 ? kKeyColour : qUnpremultiply(pixel) | 0xFF000000;
    });
    image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
}

} // namespace

bool CSkinBitmap::LoadFromFile(const QString& path, qreal scale) {
    if (IsLoaded())
        return false;
    PictureFile picture(path);
    const std::optional<QSize> size = SizeAt(picture.Size(), scale);
    if (!size)
        return false;
    const QString rendering = RenderingFor(path, scale);
    QImage image = rendering == path ? picture.Decode() : PictureFile(rendering).Decode();
    if (image.isNull())
        return false;
    image = OverBlack(std::move(image));
    m_image = image.size() == *size ? image : Scaled(std::move(image), *size);
    return IsLoaded();
}
