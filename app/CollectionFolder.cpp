#include "app/CollectionFolder.h"

#include "platform/Files.h"
#include "platform/Path.h"

#include <QStandardPaths>

QString MakeDefaultCollectionFolder() {
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (music.isEmpty())
        return {};
    const QString folder = Path::Join(music, QStringLiteral("Veltria Track Deck"));
    return MakeFolder(folder) ? folder : QString();
}
