// tagdump FILE...: what the program reads from the tags of each file, one JSON object a line. The
// exit status is 1 if a file can't be read.

#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

QJsonObject Describe(const QString& path, bool readable) {
    CTrackInfo info;
    const int result = ReadTrackTags(path, info);
    return {
        {QStringLiteral("path"), Path::ForDisplay(path)},
        {QStringLiteral("readable"), readable},
        {QStringLiteral("result"), result},
        {QStringLiteral("album"), info.m_strAlbum},
        {QStringLiteral("artist"), info.m_strArtist},
        {QStringLiteral("bpm"), info.m_strBPM},
        {QStringLiteral("composer"), info.m_strComposer},
        {QStringLiteral("diskNumber"), info.m_strDiskNumber},
        {QStringLiteral("format"), info.m_strFormat},
        {QStringLiteral("genre"), info.m_strGenre},
        {QStringLiteral("length"), info.m_strLength},
        {QStringLiteral("size"), info.m_strSize},
        {QStringLiteral("tempo"), info.m_strTempo},
        {QStringLiteral("title"), info.m_strTitle},
        {QStringLiteral("trackNumber"), info.m_strTrackNumber},
        {QStringLiteral("year"), info.m_strYear},
        {QStringLiteral("lengthMs"), static_cast<qint64>(info.m_nLengthMs)},
        {QStringLiteral("sizeBytes"), static_cast<qint64>(info.m_nSizeBytes)},
    };
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: tagdump FILE...\n", stderr);
        return 2;
    }
    bool allReadable = true;
    for (int i = 1; i < argc; ++i) {
        const QString path = Path::FromBytes(argv[i]);
        const bool readable = OpenForReading(path).IsOpen();
        const QJsonDocument line(Describe(path, readable));
        std::puts(line.toJson(QJsonDocument::Compact).constData());
        allReadable = allReadable && readable;
    }
    return allReadable ? 0 : 1;
}
