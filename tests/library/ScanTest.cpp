#include "base/Messages.h"
#include "library/FolderScan.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/MessageTarget.h"
#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <utility>
#include <vector>

namespace {

/// A receiver of scans: the lists, the scanner and a target that is run until a list is done.
struct Receiver {
    CMediaLists lists;
    CMediaList& collection = lists.Add(QStringLiteral("Collection"), MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CLibraryScanner scanner{lists};
    std::vector<std::intptr_t> numbers;
    QEventLoop loop;
    MessageTarget messages;

    Receiver() {
        messages.On(WM_TD_ADD_TRACK, [this](Message& message) {
            numbers.push_back(message.lParam);
            return scanner.OnAddTrack(message);
        });
        messages.On(WM_TD_LIST_DONE, [this](const Message&) {
            loop.quit();
            return 0;
        });
    }

    std::unique_ptr<CScanRequest> Request(const CMediaList& list, const QString& folder) const {
        auto request = std::make_unique<CScanRequest>();
        request->m_hWndTarget = messages.Address();
        request->m_iType = list.m_iType;
        request->m_iListId = list.m_iId;
        request->m_strPath = folder;
        request->m_bRecurse = 1;
        return request;
    }

    void Scan(std::unique_ptr<CScanRequest> request) {
        scanner.Start(std::move(request));
        loop.exec();
    }
};

/// The names of the list's tracks, sorted, with blanks between.
QString Names(const CMediaList& list) {
    QStringList names;
    for (int i = 0; i < list.GetCount(); ++i)
        names += Path::FileName(list[i]->m_strPath);
    names.sort();
    return names.join(u' ');
}

/// A folder of that many tracks.
struct TracksFolder : ScratchFolder {
    explicit TracksFolder(int tracks) {
        for (int i = 0; i < tracks; ++i)
            Write(QStringLiteral("%1.mp3").arg(i), "x");
    }
};

} // namespace

TEST(ScanTest, FindsTheMusicOfATreeOnce) {
    const ScratchFolder scratch;
    for (const char* name : {"a.mp3", "sub/b.WMA", "sub/deep/c.m4a", "d.aac", "list.m3u",
                             "sub/odd\xE9.Mp3", "video.mp4", "cd.cda", "mp3", "text.mp3.txt"})
        scratch.Write(Path::FromBytes(name), "x");
    scratch.MakeFolder(QStringLiteral("folder.mp3"));
    ASSERT_EQ(::mkfifo(Path::ToBytes(scratch.File(QStringLiteral("pipe.mp3"))), 0600), 0);
    const std::pair<const char*, const char*> links[] = {
        {"..", "sub/circle"}, {"sub/deep", "twice"}, {"nowhere", "gone.mp3"}};
    for (const auto& [target, name] : links)
        ASSERT_EQ(::symlink(target, Path::ToBytes(scratch.File(QString::fromUtf8(name)))), 0);

    Receiver receiver;
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    EXPECT_EQ(Names(receiver.all),
              QStringLiteral("a.mp3 b.WMA c.m4a d.aac list.m3u ") + Path::FromBytes("odd\xE9.Mp3"));
    EXPECT_EQ(receiver.numbers, (std::vector<std::intptr_t>{1, 2, 3, 4, 5, 6}));

    auto request = receiver.Request(receiver.all, scratch.Path());
    request->m_bRecurse = 0;
    request->m_bIncludePlaylists = 0;
    receiver.all.ClearAll();
    receiver.Scan(std::move(request));
    EXPECT_EQ(Names(receiver.all), u"a.mp3 d.aac");

    request = receiver.Request(receiver.all, scratch.Path());
    request->m_iListId = -5; // of no list
    receiver.Scan(std::move(request));
    receiver.Scan(receiver.Request(receiver.all, scratch.File(QStringLiteral("missing"))));
    EXPECT_EQ(receiver.all.GetCount(), 2);
}

TEST(ScanTest, TracksOfTheCollectionEnterNoOtherList) {
    const ScratchFolder scratch;
    scratch.Write(QStringLiteral("mine/a.mp3"), "x");
    scratch.Write(QStringLiteral("mine too/b.Mp3"), QByteArray(2048, '\0'));
    const QString mine = scratch.File(QStringLiteral("mine"));
    Receiver receiver;
    receiver.lists.SetLocation(receiver.collection, mine);
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    ASSERT_EQ(Names(receiver.all), u"b.Mp3");
    const CTrackRecord& track = *receiver.all[0];
    EXPECT_EQ(track.m_strTitle + track.m_strSize + track.m_strFormat, u"b2.00 KBMP3");
    EXPECT_EQ(track.m_nFileSize, 2048u);
    EXPECT_EQ(track.m_bChecked, 0);
    receiver.Scan(receiver.Request(receiver.collection, mine));
    EXPECT_EQ(Names(receiver.collection), u"a.mp3");
}

TEST(ScanTest, DocumentOfTheCollectionIsToldOnceItIsAdded) {
    const TracksFolder folder(5);
    Receiver receiver;
    receiver.lists.SetLocation(receiver.collection, folder.Path());
    int told = 0;
    receiver.scanner.AutoPlay(folder.File(QStringLiteral("3.mp3")),
                              [&](const CMediaList& list, int index) {
                                  ++told;
                                  EXPECT_EQ(&list, &receiver.collection);
                                  EXPECT_EQ(index, list.GetCount() - 1);
                                  EXPECT_EQ(list[index]->m_strTitle, u"3");
                              });
    for (int scans = 0; scans < 2; ++scans)
        receiver.Scan(receiver.Request(receiver.collection, folder.Path()));
    EXPECT_EQ(told, 1);
}

TEST(ScanTest, CancelKeepsWhatWasFound) {
    const TracksFolder folder(20);
    Receiver receiver;
    receiver.messages.On(WM_TD_ADD_TRACK, [&receiver](Message& message) {
        if (message.lParam == 5)
            g_bCancelScan = 1;
        return receiver.scanner.OnAddTrack(message);
    });
    receiver.Scan(receiver.Request(receiver.all, folder.Path()));
    EXPECT_EQ(receiver.all.GetCount(), 5);
    receiver.Scan(receiver.Request(receiver.all, folder.File(QStringLiteral("none"))));
    EXPECT_EQ(g_bCancelScan, 0) << "the next scan runs again";
}

TEST(ScanTest, OwnersMayGoInMidScan) {
    const TracksFolder folder(50);
    for (int round = 0; round < 20; ++round) {
        std::optional<Receiver> receiver(std::in_place);
        for (int scans = 0; scans < 3; ++scans)
            receiver->scanner.Start(receiver->Request(receiver->all, folder.Path()));
        while (static_cast<int>(receiver->numbers.size()) < round)
            QCoreApplication::processEvents();
        receiver.reset();
    }
}
