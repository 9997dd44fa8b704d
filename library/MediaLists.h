#pragma once

#include "library/MediaList.h"

#include <QString>

#include <list>
#include <memory>
#include <vector>

/// The location of a list: its folder, or the path it was read from.
struct CMediaListEntry {
    int m_iListId = 0;
    QString m_strName;
    QString m_strLocation;
};

/// All lists of the program, in the order of their sections on screen.
///
/// Thread: interface thread only. Workers name a list by its identifier.
class CMediaLists {
public:
    using Lists = std::list<std::unique_ptr<CMediaList>>;

    /// Appends a new, empty list.
    CMediaList& Add(const QString& name, int type, int expanded);

    [[nodiscard]] const Lists& All() const { return m_lists; }

    /// The list that commands work on: that of the exclusive view, else the active one if it is
    /// visible and open. None if there is no such list.
    [[nodiscard]] CMediaList* GetActiveList() const;

    [[nodiscard]] CMediaList* FindListById(int id) const;
    [[nodiscard]] CMediaList* FindListByType(int type) const;

    /// True if a phone is connected.
    [[nodiscard]] bool HasPhoneList() const;

    void SetLocation(const CMediaList& list, const QString& location);

    /// Empty for a list without a location.
    [[nodiscard]] QString GetLocation(int listId) const;

private:
    Lists m_lists;
    std::vector<CMediaListEntry> m_listEntries;
};
