#include "app/CoverFile.h"

#include "app/ArtworkPicture.h"
#include "platform/FileReplacement.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

#include <QBuffer>
#include <QDebug>
#include <QImage>

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace {

/// False if there is no picture, or it can't be written.
bool WriteCover(const QString& trackPath, const QString& path) {
    const QImage picture = DecodeArtwork(ReadTrackArtwork(trackPath));
    QBuffer buffer;
    if (picture.isNull() || !picture.save(&buffer, "PNG"))
        return false;
    std::optional<CFileReplacement> file = CFileReplacement::BeginOrCreate(path);
    return file && file->Append(buffer.data()) && file->Commit();
}

} // namespace

/// Owner of the file, which goes with it.
struct CCoverFile::File {
    File(const QString& trackPath, const QString& target) {
        try {
            if (WriteCover(trackPath, target))
                path = target;
        } catch (const std::exception& error) { // there is a next cover
            qWarning() << "A cover could not be read:" << error.what();
        }
    }
    ~File() {
        std::error_code failure;
        if (!path.isEmpty())
            std::filesystem::remove(Path::ToBytes(path).toStdString(), failure);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    QString path; ///< empty if there is none
};

CCoverFile::CCoverFile(QString folder, std::function<void()> changed)
    : m_strFolder(std::move(folder))
    , m_pfnChanged(std::move(changed)) {}

CCoverFile::~CCoverFile() = default;

void CCoverFile::ShowTrack(const QString& path) {
    m_strTrackPath = path;
    m_pFile.reset();
    if (m_bReading)
        m_bReadAgain = true;
    else
        Read();
}

QString CCoverFile::GetPath() const {
    return m_pFile ? m_pFile->path : QString();
}

void CCoverFile::Read() {
    if (m_strTrackPath.isEmpty() || m_strFolder.isEmpty())
        return;
    // Another name each time: programs keep pictures by their names.
    const QString target = Path::Join(m_strFolder, QStringLiteral("cover-%1.png").arg(++m_nFile));
    m_worker.Run([this, track = m_strTrackPath, target] {
        return [this, file = std::make_shared<const File>(track, target)] { OnRead(file); };
    });
    m_bReading = true;
}

void CCoverFile::OnRead(std::shared_ptr<const File> file) {
    m_bReading = false;
    if (std::exchange(m_bReadAgain, false)) {
        Read();
        return;
    }
    m_pFile = std::move(file);
    m_pfnChanged();
}
