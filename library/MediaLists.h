#pragma once

#include "base/Listeners.h"
#include "library/MediaList.h"

#include <QString>

#include <functional>
#include <list>
#include <memory>
#include <utility>
#include <vector>

/// The location of a list: its folder, or the path it was read from.
struct CMediaListEntry {
    int m_iListId = 0;
    QString m_strName;
    QString m_strLocation;
};

/// All lists of the program, in the order of their sections on screen.
///
/// Thread: interface thread only. Workers, and all who keep a list from one event to the next, name
/// it by its identifier.
class CMediaLists {
public:
    using Lists = std::list<std::unique_ptr<CMediaList>>;

    /// Appends a new, empty list.
    CMediaList& Add(const QString& name, int type, int expanded);

    /// Deletes a list and its location. Those who listen hear of it before. Nothing for an
    /// identifier that is no list's.
    void Remove(int id);

    /// Hears of each list that is about to go, with its tracks still in it. No pointer to it or to
    /// one of its tracks may be kept.
    [[nodiscard]] CListening OnRemoving(std::function<void(CMediaList& list)> call) {
        return m_removing.Listen(std::move(call));
    }

    [[nodiscard]] const Lists& All() const { return m_lists; }

    /// The list that commands work on: that of the exclusive view, else the active one if it is
    /// visible and open. None if there is no such list.
    [[nodiscard]] CMediaList* GetActiveList() const;

    [[nodiscard]] CMediaList* FindListById(int id) const;

    /// The first one of a type. Of phones and discs there may be several.
    [[nodiscard]] CMediaList* FindListByType(int type) const;

    /// True if a phone is connected.
    [[nodiscard]] bool HasPhoneList() const;

    void SetLocation(const CMediaList& list, const QString& location);

    /// Empty for a list without a location.
    [[nodiscard]] QString GetLocation(int listId) const;

private:
    Lists m_lists;
    CListeners<CMediaList&> m_removing;
    std::vector<CMediaListEntry> m_listEntries;
};
