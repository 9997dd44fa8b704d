#include "app/CoverFile.h"

#include "app/ArtworkPicture.h"
#include "platform/FileReplacement.h"
#include "platform/Path.h"
#include "platform/WorkerThread.h"
#include "tags/TrackTags.h"

#include <QBuffer>
#include <QDebug>
#include <QImage>

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace {

/// The message by which a thread hands over the file that it has written.
constexpr int kCoverRead = 1;

constexpr const char* kThreadName = "cover";

/// False if there is no picture, or it can't be written.
bool WriteCover(const QString& trackPath, const QString& path) {
    const QImage picture = DecodeArtwork(ReadTrackArtwork(trackPath));
    QBuffer buffer;
    if (picture.isNull() || !picture.save(&buffer, "PNG"))
        return false;
    std::optional<FileReplacement> file = FileReplacement::BeginOrCreate(path);
    return file && file->Append(buffer.data()) && file->Commit();
}

} // namespace

/// Owner of the file, which goes with it.
struct CoverFile::File : MessagePayload {
    File(const QString& trackPath, const QString& target) {
        try {
            if (WriteCover(trackPath, target))
                path = target;
        } catch (const std::exception& error) {
            qWarning() << "A cover could not be read:" << error.what();
        }
    }
    ~File() override {
        std::error_code failure;
        if (!path.isEmpty())
            std::filesystem::remove(Path::ToBytes(path).toStdString(), failure);
    }

    QString path; ///< empty if there is none
};

CoverFile::CoverFile(QString folder, std::function<void()> changed)
    : m_strFolder(std::move(folder))
    , m_pfnChanged(std::move(changed)) {
    m_messages.On(kCoverRead, [this](Message& message) {
        OnRead(message.Take<File>());
        return 0;
    });
}

CoverFile::~CoverFile() = default;

void CoverFile::ShowTrack(const QString& path) {
    m_strTrackPath = path;
    m_pFile.reset();
    if (m_bReading)
        m_bReadAgain = true;
    else
        Read();
}

QString CoverFile::GetPath() const {
    return m_pFile ? m_pFile->path : QString();
}

void CoverFile::Read() {
    if (m_strTrackPath.isEmpty() || m_strFolder.isEmpty())
        return;
    // Another name each time: programs keep pictures by their names.
    const QString target = Path::Join(m_strFolder, QStringLiteral("cover-%1.png").arg(++m_nFile));
    LetRun(std::thread([track = m_strTrackPath, target, address = m_messages.Address()] {
               address.Post({kCoverRead, 0, 0, std::make_unique<File>(track, target)});
           }),
           kThreadName);
    m_bReading = true;
}

void CoverFile::OnRead(std::unique_ptr<File> file) {
    m_bReading = false;
    if (std::exchange(m_bReadAgain, false)) {
        Read();
        return;
    }
    m_pFile = std::move(file);
    m_pfnChanged();
}
