#include "library/MediaList.h"

#include "base/DecimalValue.h"
#include "base/FileKinds.h"
#include "library/MergeSort.h"
#include "library/PlaylistFile.h"
#include "library/TrackColumns.h"

#include <algorithm>
#include <iterator>
#include <utility>

int g_bSelectionOnly = 0;
int g_bPlaylistOnly = 0;

bool IsExclusiveView() {
    return g_bSelectionOnly || g_bPlaylistOnly;
}

namespace {

int NextListId() {
    static int next = 0;
    return next++;
}

/// Difference of two 32-bit numbers as a signed number, which wraps.
int WrappingDifference(std::uint32_t a, std::uint32_t b) {
    return static_cast<int>(a - b);
}

int Compare(const CTrackRecord& a, const CTrackRecord& b, const TrackColumn& column) {
    const QString& textA = a.*column.text;
    const QString& textB = b.*column.text;
    switch (column.key) {
    case SortKey::Text:
        return textA.compare(textB, Qt::CaseInsensitive);
    case SortKey::Number:
        return WrappingDifference(DecimalValue(textA), DecimalValue(textB));
    case SortKey::Duration:
        return WrappingDifference(static_cast<std::uint32_t>(a.m_nDuration),
                                  static_cast<std::uint32_t>(b.m_nDuration));
    case SortKey::FileSize:
        return WrappingDifference(static_cast<std::uint32_t>(a.m_nFileSize),
                                  static_cast<std::uint32_t>(b.m_nFileSize));
    }
    return 0;
}

/// `column` is none for the check boxes.
int CompareBy(const CTrackRecord& a, const CTrackRecord& b, const TrackColumn* column) {
    return column ? Compare(a, b, *column) : a.m_bChecked - b.m_bChecked;
}

} // namespace

CMediaList::CMediaList(const QString& name, int type, int expanded)
    : m_strName(name)
    , m_iType(type)
    , m_iId(NextListId())
    , m_bExpanded(expanded) {}

CTrackRecord* CMediaList::operator[](int index) const {
    return index >= 0 && index < GetCount() ? m_records[index].get() : nullptr;
}

void CMediaList::Append(std::unique_ptr<CTrackRecord> record) {
    record->m_iIndex = GetCount();
    m_byPath.insert(record.get());
    m_records.push_back(std::move(record));
    m_sortOrder.reset();
}

std::vector<int> CMediaList::RemoveIf(const std::function<bool(const CTrackRecord&)>& goes) {
    std::vector<int> removed;
    std::erase_if(m_records, [&](const auto& record) {
        if (!goes(*record))
            return false;
        removed.push_back(record->m_iIndex);
        Unindex(*record);
        return true;
    });
    Number();
    return removed;
}

void CMediaList::SetPath(int index, const QString& path) {
    CTrackRecord& record = *m_records.at(index);
    Unindex(record);
    record.m_strPath = path;
    m_byPath.insert(&record);
}

void CMediaList::Unindex(CTrackRecord& record) {
    const auto [first, behind] = m_byPath.equal_range(&record);
    m_byPath.erase(std::find(first, behind, &record));
}

void CMediaList::Number() {
    for (int index = 0; index < GetCount(); ++index)
        m_records[index]->m_iIndex = index;
}

void CMediaList::ClearAll() {
    m_byPath.clear();
    m_records.clear();
    m_sortOrder.reset();
    m_pCdCache.reset();
    m_bModified = 0;
    m_iSourceType = -1;
}

int CMediaList::TypeOfSource() const {
    const bool holdsCopies = m_iType == MEDIA_TYPE_PLAYLIST || m_iType == MEDIA_TYPE_SELECTION;
    return holdsCopies ? m_iSourceType : m_iType;
}

bool CMediaList::IsOnScreen() const {
    if (g_bPlaylistOnly)
        return m_iType == MEDIA_TYPE_PLAYLIST;
    if (g_bSelectionOnly)
        return m_iType == MEDIA_TYPE_SELECTION;
    return m_bVisible != 0;
}

bool CMediaList::ShowsTracks() const {
    return IsOnScreen() && (IsExclusiveView() || m_bExpanded);
}

bool CMediaList::IsTitleHit(int row) const {
    return !IsExclusiveView() && m_bVisible && m_iTitleRow == row;
}

int CMediaList::BodyHit(int row) const {
    if (!ShowsTracks())
        return -1;
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [row](const auto& record) { return record->m_iRow == row; });
    return found == m_records.end() ? -1 : static_cast<int>(found - m_records.begin());
}

int CMediaList::FindPath(const QString& path) const {
    const std::vector<int> indices = FindPaths(path);
    const auto first = std::min_element(indices.begin(), indices.end());
    return first == indices.end() ? -1 : *first;
}

std::vector<int> CMediaList::FindPaths(const QString& path) const {
    std::vector<int> indices;
    const auto [first, behind] = m_byPath.equal_range(path);
    std::transform(first, behind, std::back_inserter(indices),
                   [](const CTrackRecord* record) { return record->m_iIndex; });
    return indices;
}

int CMediaList::CountChecked(int excludePlaylists) const {
    return static_cast<int>(
        std::count_if(m_records.begin(), m_records.end(), [&](const auto& record) {
            return record->m_bChecked && !(excludePlaylists && IsPlaylistFile(record->m_strPath));
        }));
}

int CMediaList::CountPlaylists() const {
    return static_cast<int>(std::count_if(m_records.begin(), m_records.end(), [](const auto& r) {
        return IsPlaylistFile(r->m_strPath);
    }));
}

int CMediaList::CountCheckedPlaylists() const {
    return CountChecked(0) - CountChecked(1);
}

QString CMediaList::GetTitleText() const {
    return QStringLiteral("%1 (%2/%3)")
        .arg(m_strName, QString::number(CountChecked(0)), QString::number(GetCount()));
}

int CMediaList::CompareRecords(int i, int j, unsigned columnBit) const {
    const CTrackRecord* a = (*this)[i];
    const CTrackRecord* b = (*this)[j];
    const TrackColumn* column = FindTrackColumn(columnBit);
    if (!a || !b || (columnBit != 0 && !column))
        return 0;
    return CompareBy(*a, *b, column);
}

int CMediaList::SortBy(unsigned columnBit, int direction) {
    if (direction == kToggleDirection) {
        m_bSortAscending = !m_bSortAscending;
        direction = m_bSortAscending;
    }
    const TrackColumn* column = FindTrackColumn(columnBit);
    if (columnBit != 0 && !column)
        return 0;
    m_sortOrder = SortOrder{columnBit, direction != 0};
    std::vector<const CTrackRecord*> before(m_records.size());
    std::transform(m_records.begin(), m_records.end(), before.begin(),
                   [](const auto& record) { return record.get(); });
    MergeSort(m_records, [column, direction](const auto& a, const auto& b) {
        const int order = CompareBy(*a, *b, column);
        return direction ? order > 0 : order < 0;
    });
    Number();
    return !std::equal(m_records.begin(), m_records.end(), before.begin(),
                       [](const auto& record, const auto* old) { return record.get() == old; });
}

int CMediaList::MoveCheckedUp(std::vector<int>& changedFlags) {
    return MoveChecked(changedFlags, 0, 1);
}

int CMediaList::MoveCheckedDown(std::vector<int>& changedFlags) {
    return MoveChecked(changedFlags, GetCount() - 1, -1);
}

/// Walks from index `first` by `step`; a checked record changes place with the unchecked one that
/// was walked over before it.
int CMediaList::MoveChecked(std::vector<int>& changedFlags, int first, int step) {
    changedFlags.assign(m_records.size(), 0);
    int moved = 0;
    for (int i = first; i >= 0 && i < GetCount(); i += step) {
        const int other = i - step;
        if (other < 0 || other >= GetCount() || !m_records[i]->m_bChecked ||
            m_records[other]->m_bChecked)
            continue;
        std::swap(m_records[i]->m_iRow, m_records[other]->m_iRow);
        std::swap(m_records[i]->m_iIndex, m_records[other]->m_iIndex);
        std::swap(m_records[i], m_records[other]);
        changedFlags[i] = changedFlags[other] = 1;
        m_sortOrder.reset();
        moved = 1;
    }
    return moved;
}

bool CMediaList::SavePlaylist() const {
    QStringList tracks;
    for (const auto& record : m_records)
        tracks += record->m_strPath;
    return WritePlaylist(m_strPath, tracks);
}
