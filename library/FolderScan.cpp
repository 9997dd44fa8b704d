#include "library/FolderScan.h"

#include "base/FileKinds.h"
#include "base/Language.h"
#include "base/Messages.h"
#include "platform/Files.h"
#include "platform/Path.h"

#include <QCollator>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace {

/// Sorts names as people do: numbers by their value, letters without regard to case. Of the
/// locales, the one of plain bytes knows no such order.
class NameOrder {
public:
    NameOrder()
        : m_collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale()) {
        m_collator.setNumericMode(true);
        m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    }

    void Sort(std::vector<FolderEntry>& entries) const {
        std::vector<std::pair<QCollatorSortKey, FolderEntry>> keyed;
        keyed.reserve(entries.size());
        for (FolderEntry& entry : entries) {
            QCollatorSortKey key = m_collator.sortKey(entry.name);
            keyed.emplace_back(std::move(key), std::move(entry));
        }
        std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
            const int order = a.first.compare(b.first);
            return order != 0 ? order < 0 : a.second.name < b.second.name;
        });
        std::transform(keyed.begin(), keyed.end(), entries.begin(),
                       [](auto& pair) { return std::move(pair.second); });
    }

private:
    QCollator m_collator;
};

/// Files that are handed over together.
constexpr std::size_t kMostAtOnce = 64;

/// One walk over a folder tree.
class Walk {
public:
    Walk(const CScanRequest& request, const std::stop_token& stop, const FileTaker& take)
        : m_request(request)
        , m_stop(stop)
        , m_take(take)
        , m_strHead(LoadString(IDS_SCAN_HEAD) + u' ') {}

    void WalkFolder(const QString& folder) {
        const auto status = GetFileStatus(folder);
        if (!status || !m_walked.insert(status->identity).second)
            return;
        ShowFolder(folder);
        // The whole listing is read before the first entry is looked at, so that a deep tree does
        // not hold a descriptor for each of its levels.
        auto entries = ListFolder(folder);
        if (!entries)
            return;
        m_order.Sort(*entries);
        for (const FolderEntry& entry : *entries) {
            if (m_bEnded || m_stop.stop_requested())
                return;
            TakeEntry(Path::Join(folder, entry.name), entry.kind);
        }
        HandOver();
    }

private:
    void TakeEntry(const QString& path, FileKind kind) {
        if (kind == FileKind::Folder) {
            if (m_request.m_bRecurse) {
                HandOver(); // what stands before the folder comes before its files
                WalkFolder(path);
            }
        } else if (kind == FileKind::Regular && IsMusicFile(path) &&
                   (m_request.m_bIncludePlaylists || !IsPlaylistFile(path))) {
            TakeFile(path);
        }
    }

    void TakeFile(const QString& path) {
        auto file = std::make_unique<CMediaFileRequest>();
        file->m_strPath = path;
        file->m_iType = m_request.m_iType;
        file->m_iListId = m_request.m_iListId;
        m_found.push_back(std::move(file));
        if (m_found.size() >= kMostAtOnce)
            HandOver();
    }

    void HandOver() {
        if (!m_found.empty() && !m_bEnded)
            m_bEnded = !m_take(std::exchange(m_found, {}));
    }

    void ShowFolder(const QString& folder) const {
        auto text = std::make_unique<TextPayload>(m_strHead + Path::ForDisplay(folder));
        m_request.m_pProgressDlg.Post({WM_SETTEXT, kScanFolderItem, 0, std::move(text)});
    }

    const CScanRequest& m_request;
    const std::stop_token& m_stop;
    const FileTaker& m_take;
    const QString m_strHead; ///< what stands before a folder that is shown
    const NameOrder m_order;
    std::set<FileIdentity> m_walked;
    FoundFiles m_found;    ///< not handed over yet
    bool m_bEnded = false; ///< no more files are wanted
};

} // namespace

void WalkFolders(const CScanRequest& request, const std::stop_token& stop, const FileTaker& take) {
    Walk(request, stop, take).WalkFolder(request.m_strPath);
}
