#include "app/ArtworkPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <iterator>

namespace {

constexpr qint64 kMaxPixels = 25'000'000;

/// Parts of which a small file can have so many that it takes minutes to decode or gigabytes to
/// hold, and how many are let through. Honest files have a dozen scans, one text or comment, and of
/// the others (Exif and XMP, colour profiles) at most 255; the decoder walks over all that it has
/// for each that it adds.
constexpr struct {
    const char* format;
    QByteArrayView mark;
    int most;
} kCostlyParts[] = {
    {"jpeg", "\xFF\xDA", 32},   {"jpeg", "\xFF\xFE", 1000}, {"jpeg", "\xFF\xE1", 1000},
    {"jpeg", "\xFF\xE2", 1000}, {"png", "zTXt", 4},         {"png", "iTXt", 4},
};

QByteArray FormatOf(const QByteArray& file) {
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader::imageFormat(&buffer);
}

bool IsCostly(const QByteArray& file, const QByteArray& format) {
    return std::any_of(std::begin(kCostlyParts), std::end(kCostlyParts), [&](const auto& part) {
        return format == part.format && file.count(part.mark) > part.most;
    });
}

} // namespace

QImage DecodeArtwork(const QByteArray& file) {
    const QByteArray format = FormatOf(file);
    if ((format != "jpeg" && format != "png") || IsCostly(file, format))
        return {};
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64{size.width()} * size.height() > kMaxPixels)
        return {};
    const QSize largest(kArtworkSide, kArtworkSide);
    if (size.width() > kArtworkSide || size.height() > kArtworkSide)
        reader.setScaledSize(size.scaled(largest, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

bool IsJpeg(const QByteArray& file) {
    return FormatOf(file) == "jpeg";
}
