#include "app/TrackArtwork.h"

#include "app/ArtworkField.h"
#include "app/ArtworkPicture.h"
#include "base/Guard.h"
#include "base/IStatusDisplay.h"
#include "base/Language.h"
#include "library/MediaLists.h"
#include "library/TrackEdit.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/Id3Picture.h"
#include "tags/TrackTags.h"

#include <QDebug>
#include <QImage>

#include <exception>
#include <utility>

namespace {

/// Null if there is none.
QImage ReadPicture(const QString& path) {
    try {
        return DecodeArtwork(ReadTrackArtwork(path));
    } catch (const std::exception& error) {
        qWarning() << "Artwork could not be read:" << error.what();
        return {};
    }
}

/// Puts a picture into the tags of a track. Returns what is wrong, for the user; nothing if it is
/// there.
QString StorePicture(const QString& track, const QString& file) {
    // The tags say that it is a JPEG picture. One that can't be shown is none.
    const auto picture = ReadWholeFile(file, Id3Picture::kMaxSize);
    if (!picture || !IsJpeg(*picture) || DecodeArtwork(*picture).isNull())
        return FormatText(LoadString(IDS_ARTWORK_UNUSABLE),
                          {Path::ForDisplay(Path::FileName(file))});
    if (WriteTrackArtwork(track, *picture) != 0)
        return FormatText(LoadString(IDS_EDIT_UNSTORED),
                          {Path::ForDisplay(Path::FileName(track)), WhyUnwritable(track)});
    return {};
}

} // namespace

CTrackArtwork::CTrackArtwork(const CMediaLists& lists, CArtworkField& field, CWorker& writer,
                             IStatusDisplay& status)
    : m_lists(lists)
    , m_field(field)
    , m_writer(writer)
    , m_status(status) {
    field.SetDropHandler([this](const QString& file) {
        bool used = false;
        Guarded("OnDropFiles()", [&] { used = OnDrop(file); });
        return used;
    });
}

void CTrackArtwork::ShowTrack(const CMediaList& list, int index) {
    const CTrackRecord* track = list[index];
    if (!track)
        return;
    m_iListId = list.m_iId;
    m_strTrackPath = track->m_strPath;
    m_field.setAcceptDrops(IsInCollection());
    Read();
}

bool CTrackArtwork::OnDrop(const QString& file) {
    if (!IsInCollection())
        return false;
    m_writer.Run([this, file, track = m_strTrackPath] {
        return [this, track, problem = StorePicture(track, file)] { OnStored(track, problem); };
    });
    return true;
}

void CTrackArtwork::OnStored(const QString& track, const QString& problem) {
    if (!problem.isEmpty())
        m_status.ShowNews(problem);
    else if (track == m_strTrackPath)
        Read();
}

/// Whether the track is still there, too.
bool CTrackArtwork::IsInCollection() const {
    const CMediaList* list = m_lists.FindListById(m_iListId);
    return list && list->m_iType == MEDIA_TYPE_COLLECTION && list->FindPath(m_strTrackPath) >= 0;
}

void CTrackArtwork::Read() {
    if (m_bReading) {
        m_bReadAgain = true;
        return;
    }
    m_bReading = true;
    m_reader.Run([this, path = m_strTrackPath] {
        return [this, picture = ReadPicture(path)] { OnRead(picture); };
    });
}

void CTrackArtwork::OnRead(const QImage& picture) {
    m_bReading = false;
    if (std::exchange(m_bReadAgain, false))
        Read();
    else
        m_field.SetPicture(picture);
}
