#include "base/Messages.h"
#include "library/FolderScan.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/Files.h"
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
#include <set>

namespace {

void Link(const QString& target, const QString& name) {
    ASSERT_EQ(::symlink(Path::ToBytes(target), Path::ToBytes(name)), 0);
}

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

    std::unique_ptr<CScanRequest> Request(CMediaList& list, const QString& folder) {
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

std::set<QString> Names(const CMediaList& list) {
    std::set<QString> names;
    for (int i = 0; i < list.GetCount(); ++i)
        EXPECT_TRUE(names.insert(Path::FileName(list[i]->m_strPath)).second) << "found twice";
    return names;
}

} // namespace

TEST(ScanTest, FindsTheMusicOfATreeOnce) {
    const ScratchFolder scratch;
    const QString odd = Path::FromBytes("odd \xE9.Mp3");
    for (const QString& name :
         {QStringLiteral("a.mp3"), QStringLiteral("sub/b.WMA"), QStringLiteral("sub/deep/c.m4a"),
          QStringLiteral("d.aac"), QStringLiteral("list.m3u"), QStringLiteral("sub/") + odd,
          QStringLiteral("video.mp4"), QStringLiteral("cd.cda"), QStringLiteral("mp3"),
          QStringLiteral("text.mp3.txt")})
        scratch.Write(name, "x");
    scratch.MakeFolder(QStringLiteral("folder.mp3"));
    ASSERT_EQ(::mkfifo(Path::ToBytes(scratch.File(QStringLiteral("pipe.mp3"))), 0600), 0);
    Link(scratch.Path(), scratch.File(QStringLiteral("sub/circle")));
    Link(scratch.File(QStringLiteral("sub/deep")), scratch.File(QStringLiteral("twice")));
    Link(scratch.File(QStringLiteral("nowhere")), scratch.File(QStringLiteral("gone.mp3")));

    Receiver receiver;
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    EXPECT_EQ(Names(receiver.all),
              (std::set<QString>{QStringLiteral("a.mp3"), QStringLiteral("b.WMA"),
                                 QStringLiteral("c.m4a"), QStringLiteral("d.aac"),
                                 QStringLiteral("list.m3u"), odd}));
    EXPECT_EQ(receiver.numbers, (std::vector<std::intptr_t>{1, 2, 3, 4, 5, 6}));

    auto request = receiver.Request(receiver.all, scratch.Path());
    request->m_bRecurse = 0;
    request->m_bIncludePlaylists = 0;
    receiver.all.ClearAll();
    receiver.Scan(std::move(request));
    EXPECT_EQ(Names(receiver.all),
              (std::set<QString>{QStringLiteral("a.mp3"), QStringLiteral("d.aac")}));
}

TEST(ScanTest, TracksWithoutTagsHaveNameSizeAndFormat) {
    const ScratchFolder scratch;
    scratch.Write(QStringLiteral("My song.Mp3"), QByteArray(2048, '\0'));
    Receiver receiver;
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    ASSERT_EQ(receiver.all.GetCount(), 1);
    const CTrackRecord& track = *receiver.all[0];
    EXPECT_EQ(track.m_strTitle, QStringLiteral("My song"));
    EXPECT_EQ(track.m_strSize, QStringLiteral("2.00 KB"));
    EXPECT_EQ(track.m_nFileSize, 2048u);
    EXPECT_EQ(track.m_strFormat, QStringLiteral("MP3"));
    EXPECT_EQ(track.m_bChecked, 0);
}

TEST(ScanTest, TracksOfTheCollectionEnterNoOtherList) {
    const ScratchFolder scratch;
    scratch.Write(QStringLiteral("mine/a.mp3"), "x");
    scratch.Write(QStringLiteral("mine too/b.mp3"), "x");
    Receiver receiver;
    receiver.lists.SetLocation(receiver.collection, scratch.File(QStringLiteral("mine")));
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    EXPECT_EQ(Names(receiver.all), std::set<QString>{QStringLiteral("b.mp3")});
    receiver.Scan(receiver.Request(receiver.collection, scratch.File(QStringLiteral("mine"))));
    EXPECT_EQ(Names(receiver.collection), std::set<QString>{QStringLiteral("a.mp3")});
}

TEST(ScanTest, MissingListAndMissingFolderAreNoHindrance) {
    const ScratchFolder scratch;
    scratch.Write(QStringLiteral("a.mp3"), "x");
    Receiver receiver;
    auto request = receiver.Request(receiver.all, scratch.Path());
    request->m_iListId = -5;
    receiver.Scan(std::move(request));
    EXPECT_EQ(receiver.numbers.size(), 1u);
    receiver.Scan(receiver.Request(receiver.all, scratch.File(QStringLiteral("missing"))));
    EXPECT_EQ(receiver.all.GetCount(), 0);
}

TEST(ScanTest, CancelKeepsWhatWasFound) {
    const ScratchFolder scratch;
    for (int i = 0; i < 20; ++i)
        scratch.Write(QStringLiteral("%1.mp3").arg(i), "x");
    Receiver receiver;
    receiver.messages.On(WM_TD_ADD_TRACK, [&receiver](Message& message) {
        if (message.lParam == 5)
            g_bCancelScan = 1;
        return receiver.scanner.OnAddTrack(message);
    });
    receiver.Scan(receiver.Request(receiver.all, scratch.Path()));
    EXPECT_EQ(receiver.all.GetCount(), 5);
}

TEST(ScanTest, OwnersMayGoInMidScan) {
    const ScratchFolder scratch;
    for (int i = 0; i < 50; ++i)
        scratch.Write(QStringLiteral("%1.mp3").arg(i), "x");
    for (int round = 0; round < 20; ++round) {
        std::optional<Receiver> receiver(std::in_place);
        for (int scans = 0; scans < 3; ++scans)
            receiver->scanner.Start(receiver->Request(receiver->all, scratch.Path()));
        while (static_cast<int>(receiver->numbers.size()) < round)
            QCoreApplication::processEvents();
        receiver.reset();
    }
}
