#include "platform/Path.h"

#include <QStringDecoder>
#include <QUtf8StringView>

namespace Path {
namespace {

constexpr char16_t kEscapeBase = 0xDC00;

/// Unlike QString::fromUtf8 this keeps a byte-order mark, which may be part of a name.
QString DecodeUtf8(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom |
                                                     QStringConverter::Flag::Stateless);
    return decoder.decode(bytes);
}

bool IsEscapedByte(char16_t unit) {
    return unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF;
}

/// Length of the valid UTF-8 sequence at the head of `bytes` (Unicode, table 3-7); 0 if none.
qsizetype SequenceLength(QByteArrayView bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const qsizetype length = lead < 0x80                    ? 1
                             : lead >= 0xC2 && lead <= 0xDF ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
    if (length == 0 || bytes.size() < length)
        return 0;
    return QUtf8StringView(bytes.data(), length).isValidUtf8() ? length : 0;
}

} // namespace

QString FromBytes(QByteArrayView bytes) {
    if (QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8())
        return DecodeUtf8(bytes);
    QString path;
    path.reserve(bytes.size());
    while (!bytes.isEmpty()) {
        const qsizetype length = SequenceLength(bytes);
        if (length > 0) {
            path += DecodeUtf8(bytes.first(length));
            bytes = bytes.sliced(length);
        } else {
            path += QChar(kEscapeBase + static_cast<unsigned char>(bytes.front()));
            bytes = bytes.sliced(1);
        }
    }
    return path;
}

QByteArray ToBytes(QStringView path) {
    if (path.isValidUtf16())
        return path.toUtf8();
    QByteArray bytes;
    bytes.reserve(path.size());
    for (qsizetype i = 0; i < path.size(); ++i) {
        const QChar unit = path[i];
        if (!unit.isSurrogate()) {
            bytes += path.sliced(i, 1).toUtf8();
        } else if (unit.isHighSurrogate() && i + 1 < path.size() && path[i + 1].isLowSurrogate()) {
            bytes += path.sliced(i++, 2).toUtf8();
        } else {
            bytes += IsEscapedByte(unit.unicode()) ? static_cast<char>(unit.unicode() & 0xFF) : '?';
        }
    }
    return bytes;
}

QString ForDisplay(const QString& path) {
    if (path.isValidUtf16())
        return path;
    return DecodeUtf8(ToBytes(path));
}

QString FileName(const QString& path) {
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString Folder(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash < 0 ? QString() : path.first(slash);
}

QString Extension(const QString& path) {
    const qsizetype point = path.lastIndexOf(u'.');
    return point <= path.lastIndexOf(u'/') ? QString() : path.sliced(point + 1);
}

QString BaseName(const QString& path) {
    const QString name = FileName(path);
    const qsizetype point = name.lastIndexOf(u'.');
    return point < 0 ? name : name.first(point);
}

QString Join(const QString& folder, const QString& name) {
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

} // namespace Path
