#include "library/MediaLists.h"

#include <algorithm>

namespace {

template <typename Test>
CMediaList* FindFirst(const CMediaLists::Lists& lists, Test test) {
    const auto found =
        std::find_if(lists.begin(), lists.end(), [&test](const auto& list) { return test(*list); });
    return found == lists.end() ? nullptr : found->get();
}

} // namespace

CMediaList& CMediaLists::Add(const QString& name, int type, int expanded) {
    return *m_lists.emplace_back(std::make_unique<CMediaList>(name, type, expanded));
}

void CMediaLists::Remove(int id) {
    const auto found = std::find_if(m_lists.begin(), m_lists.end(),
                                    [id](const auto& list) { return list->m_iId == id; });
    if (found == m_lists.end())
        return;
    m_removing.Tell(**found);
    std::erase_if(m_listEntries, [id](const auto& entry) { return entry.m_iListId == id; });
    m_lists.erase(found);
}

CMediaList* CMediaLists::GetActiveList() const {
    if (g_bPlaylistOnly)
        return FindListByType(MEDIA_TYPE_PLAYLIST);
    if (g_bSelectionOnly)
        return FindListByType(MEDIA_TYPE_SELECTION);
    return FindFirst(m_lists, [](const CMediaList& list) {
        return list.m_bVisible && list.m_bExpanded && list.m_bActive;
    });
}

CMediaList* CMediaLists::FindListById(int id) const {
    return FindFirst(m_lists, [id](const CMediaList& list) { return list.m_iId == id; });
}

CMediaList* CMediaLists::FindListByType(int type) const {
    return FindFirst(m_lists, [type](const CMediaList& list) { return list.m_iType == type; });
}

bool CMediaLists::HasPhoneList() const {
    return FindListByType(MEDIA_TYPE_PHONE) != nullptr;
}

void CMediaLists::SetLocation(const CMediaList& list, const QString& location) {
    const auto found =
        std::find_if(m_listEntries.begin(), m_listEntries.end(),
                     [&list](const auto& entry) { return entry.m_iListId == list.m_iId; });
    if (found != m_listEntries.end())
        found->m_strLocation = location;
    else
        m_listEntries.push_back({list.m_iId, list.m_strName, location});
}

QString CMediaLists::GetLocation(int listId) const {
    const auto found =
        std::find_if(m_listEntries.begin(), m_listEntries.end(),
                     [listId](const auto& entry) { return entry.m_iListId == listId; });
    return found == m_listEntries.end() ? QString() : found->m_strLocation;
}
