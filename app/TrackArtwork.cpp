#include "app/TrackArtwork.h"

#include "app/ArtworkField.h"
#include "app/ArtworkPicture.h"
#include "base/Guard.h"
#include "library/MediaLists.h"
#include "platform/Files.h"
#include "tags/Id3Picture.h"
#include "tags/TrackTags.h"

TrackArtwork::TrackArtwork(const CMediaLists& lists, ArtworkField& field)
    : m_lists(lists)
    , m_field(field) {
    field.SetDropHandler([this](const QString& file) {
        bool used = false;
        Guarded("OnDropFiles()", [&] { used = OnDrop(file); });
        return used;
    });
}

void TrackArtwork::ShowTrack(const CMediaList& list, int index) {
    const CTrackRecord* track = list[index];
    if (!track)
        return;
    m_iListId = list.m_iId;
    m_strTrackPath = track->m_strPath;
    m_field.setAcceptDrops(IsInCollection());
    Show();
}

bool TrackArtwork::OnDrop(const QString& file) {
    if (!IsInCollection())
        return false;
    // The tags say that it is a JPEG picture. One that can't be shown is none.
    const auto picture = ReadWholeFile(file, Id3Picture::kMaxSize);
    if (!picture || !IsJpeg(*picture) || DecodeArtwork(*picture).isNull())
        return false;
    if (WriteTrackArtwork(m_strTrackPath, file) != 0)
        return false;
    Show();
    return true;
}

/// Whether the track is still there, too.
bool TrackArtwork::IsInCollection() const {
    const CMediaList* list = m_lists.FindListById(m_iListId);
    return list && list->m_iType == MEDIA_TYPE_COLLECTION && list->FindPath(m_strTrackPath) >= 0;
}

void TrackArtwork::Show() {
    m_field.SetPicture(ReadTrackArtwork(m_strTrackPath));
}
