#include "app/MprisMetadata.h"

#include "library/TrackRecord.h"
#include "platform/Path.h"

#include <QDBusObjectPath>
#include <QStringList>

namespace {

constexpr struct {
    const char* name;
    TrackText text;
    bool isList;
} kTexts[] = {
    {"xesam:title", &CTrackRecord::m_strTitle, false},
    {"xesam:artist", &CTrackRecord::m_strArtist, true},
    {"xesam:album", &CTrackRecord::m_strAlbum, false},
    {"xesam:genre", &CTrackRecord::m_strGenre, true},
};

/// The number in "3" and "3/12"; 0 if there is none.
int TrackNumber(const QString& text) {
    return text.section(u'/', 0, 0).trimmed().toInt();
}

} // namespace

QString FileUrl(const QString& path) {
    return QStringLiteral("file://") +
           QString::fromLatin1(Path::ToBytes(path).toPercentEncoding("/"));
}

QVariantMap MakeMetadata(const CTrackRecord& track, const QString& id, std::int64_t duration,
                         const QString& coverPath) {
    QVariantMap metadata{
        {QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(id))},
        {QStringLiteral("xesam:url"), FileUrl(track.m_strPath)},
    };
    for (const auto& field : kTexts) {
        // Half a character would make the bus close the connection.
        const QString text = Path::ForDisplay(track.*field.text);
        if (!text.isEmpty())
            metadata.insert(QLatin1String(field.name),
                            field.isList ? QVariant(QStringList(text)) : QVariant(text));
    }
    if (const int number = TrackNumber(track.m_strTrackNumber); number > 0)
        metadata.insert(QStringLiteral("xesam:trackNumber"), number);
    if (duration > 0)
        metadata.insert(QStringLiteral("mpris:length"), qlonglong(duration / kMicrosecond));
    if (!coverPath.isEmpty())
        metadata.insert(QStringLiteral("mpris:artUrl"), FileUrl(coverPath));
    return metadata;
}
