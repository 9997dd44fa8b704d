#include "library/MediaList.h"

#include "base/DecimalValue.h"
#include "base/FileKinds.h"
#include "library/MergeSort.h"
#include "library/PlaylistFile.h"
#include "library/TrackColumns.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
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

/// What a track is sorted by.
struct Key {
    std::uint32_t number = 0;
    std::u16string_view text; ///< with its case folded
};

/// The case goes letter by letter, so that the results compare as the texts do without regard to
/// it, but many times as fast.
void AppendFolded(std::u16string& folded, QStringView text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t letter = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            letter = QChar::surrogateToUcs4(text[i], text[i + 1]);
        if (QChar::requiresSurrogates(letter))
            ++i;
        for (const char16_t unit : QChar::fromUcs4(QChar::toCaseFolded(letter)))
            folded += unit;
    }
}

/// `column` is none for the check boxes.
std::uint32_t NumberOf(const CTrackRecord& track, const TrackColumn* column) {
    if (!column)
        return track.m_bChecked;
    switch (column->key) {
    case SortKey::Text:
        return 0;
    case SortKey::Number:
        return DecimalValue(track.*column->text);
    case SortKey::Duration:
        return static_cast<std::uint32_t>(track.m_nDuration);
    case SortKey::FileSize:
        return static_cast<std::uint32_t>(track.m_nFileSize);
    }
    return 0;
}

bool SortsByText(const TrackColumn* column) {
    return column && column->key == SortKey::Text;
}

/// Numbers by their difference as a signed number of 32 bits, which wraps.
int Compare(const Key& a, const Key& b) {
    if (a.number != b.number)
        return static_cast<int>(a.number - b.number);
    return a.text.compare(b.text);
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
    std::u16string texts[2];
    if (SortsByText(column)) {
        AppendFolded(texts[0], a->*column->text);
        AppendFolded(texts[1], b->*column->text);
    }
    return Compare({NumberOf(*a, column), texts[0]}, {NumberOf(*b, column), texts[1]});
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

    struct Item {
        Key key;
        std::unique_ptr<CTrackRecord> record;
    };
    std::u16string texts; // all in one, for they are read in no order
    std::vector<std::size_t> ends;
    for (const auto& record : m_records) {
        if (SortsByText(column))
            AppendFolded(texts, (*record).*column->text);
        ends.push_back(texts.size());
    }
    std::vector<Item> items;
    items.reserve(m_records.size());
    for (std::size_t i = 0, start = 0; i < m_records.size(); start = ends[i++]) {
        const auto text = std::u16string_view(texts).substr(start, ends[i] - start);
        items.push_back({{NumberOf(*m_records[i], column), text}, std::move(m_records[i])});
    }
    MergeSort(items, [direction](const Item& a, const Item& b) {
        const int order = Compare(a.key, b.key);
        return direction ? order > 0 : order < 0;
    });
    std::transform(items.begin(), items.end(), m_records.begin(),
                   [](Item& item) { return std::move(item.record); });
    const bool changed =
        !std::is_sorted(m_records.begin(), m_records.end(),
                        [](const auto& a, const auto& b) { return a->m_iIndex < b->m_iIndex; });
    Number();
    return changed;
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
