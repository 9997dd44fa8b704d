#include "app/TrackArtwork.h"

#include "app/ArtworkField.h"
#include "app/ArtworkPicture.h"
#include "base/Guard.h"
#include "base/IPlaybackGuard.h"
#include "library/MediaLists.h"
#include "platform/Files.h"
#include "platform/WorkerThread.h"
#include "tags/Id3Picture.h"
#include "tags/TrackTags.h"

#include <QDebug>
#include <QImage>

#include <exception>
#include <memory>
#include <thread>
#include <utility>

namespace {

/// The message by which a thread hands over the picture that it has read.
constexpr int kPictureRead = 1;

struct PicturePayload : MessagePayload {
    QImage picture; ///< null if there is none
};

void ReadPicture(const QString& path, const MessageAddress& target,
                 std::unique_ptr<PicturePayload> result) {
    try {
        result->picture = DecodeArtwork(ReadTrackArtwork(path));
    } catch (const std::exception& error) {
        qWarning() << "Artwork could not be read:" << error.what();
    }
    target.Post({kPictureRead, 0, 0, std::move(result)});
}

} // namespace

TrackArtwork::TrackArtwork(const CMediaLists& lists, ArtworkField& field, IPlaybackGuard& guard)
    : m_lists(lists)
    , m_field(field)
    , m_guard(guard) {
    field.SetDropHandler([this](const QString& file) {
        bool used = false;
        Guarded("OnDropFiles()", [&] { used = OnDrop(file); });
        return used;
    });
    m_messages.On(kPictureRead, [this](Message& message) {
        OnRead(message);
        return 0;
    });
}

void TrackArtwork::ShowTrack(const CMediaList& list, int index) {
    const CTrackRecord* track = list[index];
    if (!track)
        return;
    m_iListId = list.m_iId;
    m_strTrackPath = track->m_strPath;
    m_field.setAcceptDrops(IsInCollection());
    Read();
}

bool TrackArtwork::OnDrop(const QString& file) {
    if (!IsInCollection())
        return false;
    // The tags say that it is a JPEG picture. One that can't be shown is none.
    const auto picture = ReadWholeFile(file, Id3Picture::kMaxSize);
    if (!picture || !IsJpeg(*picture) || DecodeArtwork(*picture).isNull())
        return false;
    m_guard.ReleaseFile(m_strTrackPath);
    if (WriteTrackArtwork(m_strTrackPath, *picture) != 0)
        return false;
    Read();
    return true;
}

/// Whether the track is still there, too.
bool TrackArtwork::IsInCollection() const {
    const CMediaList* list = m_lists.FindListById(m_iListId);
    return list && list->m_iType == MEDIA_TYPE_COLLECTION && list->FindPath(m_strTrackPath) >= 0;
}

void TrackArtwork::Read() {
    if (m_bReading) {
        m_bReadAgain = true;
        return;
    }
    std::thread reader(ReadPicture, m_strTrackPath, m_messages.Address(),
                       std::make_unique<PicturePayload>());
    LetRun(std::move(reader), kArtworkThreadName);
    m_bReading = true;
}

void TrackArtwork::OnRead(Message& message) {
    m_bReading = false;
    if (std::exchange(m_bReadAgain, false))
        Read();
    else if (const auto result = message.Take<PicturePayload>())
        m_field.SetPicture(result->picture);
}
