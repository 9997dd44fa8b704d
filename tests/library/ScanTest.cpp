#include "library/FolderScan.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "library/TrackReader.h"
#include "platform/MessageTarget.h"
#include "platform/Path.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QCoreApplication>

#include <stdexcept>

namespace {

struct Receiver {
    CMediaLists lists;
    CMediaList& collection = lists.Add("Collection", MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add("All", MEDIA_TYPE_ALL, 1);
    CMessageTarget messages;
    CLibraryScanner scanner{lists};
    bool isWhole = true; ///< of the last scan
    const CListening done =
        scanner.OnDone([this](const CMediaList&, bool whole) { isWhole = whole; });

    Receiver() { scanner.Listen(messages); }

    void Await(const CMediaList& list) {
        EXPECT_TRUE(RunUntil([&] { return !scanner.IsScanning(list.m_iId); }));
    }
    void Scan(const CMediaList& list, const QString& folder) {
        scanner.ScanList(list, folder);
        Await(list);
    }
};

/// "0.mp3", "1.mp3" ... in a folder.
QStringList WriteTracks(const ScratchFolder& folder, int count) {
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names += QStringLiteral("%1.mp3").arg(i);
        folder.Write(names.back(), "x");
    }
    return names;
}

} // namespace

TEST(ScanTest, FindsTheMusicOfATreeOnce) {
    const ScratchFolder scratch;
    for (const char* name :
         {"a.mp3", "sub/b.WMA", "sub/deep/c.m4a", "d.aac", "list.m3u", "sub/odd\xE9.Mp3",
          "video.mp4", "cd.cda", "mp3", "text.mp3.txt", "sub/Track 10.mp3", "sub/track 2.mp3"})
        scratch.Write(Path::FromBytes(name), "x");
    scratch.MakeFolder("folder.mp3");
    scratch.MakePipe("pipe.mp3");
    scratch.MakeLink("sub/circle", "..");
    scratch.MakeLink("twice", "sub/deep");
    scratch.MakeLink("gone.mp3", "nowhere");

    Receiver receiver;
    receiver.Scan(receiver.all, scratch.Path());
    EXPECT_EQ(Names(receiver.all),
              "a.mp3 d.aac list.m3u b.WMA c.m4a odd?.Mp3 track 2.mp3 Track 10.mp3");
    EXPECT_EQ(receiver.all[5]->m_strPath, scratch.File(Path::FromBytes("sub/odd\xE9.Mp3")));

    receiver.all.ClearAll();
    for (const int listId : {receiver.all.m_iId, -5}) { // the last is no list's
        auto request = std::make_unique<CScanRequest>();
        request->m_iListId = listId;
        request->m_strPath = scratch.Path();
        request->m_bIncludePlaylists = 0;
        receiver.scanner.Start(std::move(request));
        receiver.Await(receiver.all);
        EXPECT_EQ(Names(receiver.all), "a.mp3 d.aac");
    }
    receiver.Scan(receiver.all, scratch.File("missing"));
    EXPECT_EQ(receiver.all.GetCount(), 2);
}

TEST(ScanTest, TracksOfTheCollectionEnterNoOtherList) {
    const ScratchFolder scratch;
    scratch.Write("mine/a.mp3", "x");
    scratch.Write("mine too/b.Mp3", QByteArray(2048, '\0'));
    const QString mine = scratch.File("mine");
    Receiver receiver;
    receiver.lists.SetLocation(receiver.collection, mine);
    receiver.Scan(receiver.all, scratch.Path());
    ASSERT_EQ(Names(receiver.all), "b.Mp3");
    const CTrackRecord& track = *receiver.all[0];
    EXPECT_EQ(track.m_strTitle + track.m_strSize + track.m_strFormat, u"b2.00 KBMP3");
    EXPECT_EQ(track.m_nFileSize, 2048u);
    receiver.Scan(receiver.collection, mine);
    EXPECT_EQ(Names(receiver.collection), "a.mp3");
}

TEST(ScanTest, CancelEndsOneScanAtOnce) {
    const ScratchFolder folder;
    const QStringList tracks = WriteTracks(folder, 2000);
    Receiver receiver;
    receiver.scanner.ScanList(receiver.all, folder.Path());
    receiver.scanner.ScanList(receiver.collection, folder.Path());
    ASSERT_TRUE(RunUntil([&] { return receiver.all.GetCount() > 0; }));
    receiver.scanner.Cancel(receiver.all.m_iId);
    EXPECT_FALSE(receiver.isWhole || receiver.scanner.IsScanning(receiver.all.m_iId));
    const int found = receiver.all.GetCount();
    receiver.Await(receiver.collection);
    EXPECT_TRUE(receiver.isWhole);
    EXPECT_EQ(Names(receiver.collection), tracks.join(u' ').toStdString())
        << "the other one goes on, in order";
    EXPECT_EQ(receiver.all.GetCount(), found);
}

TEST(ScanTest, OwnersAndListsMayGoInMidScan) {
    const ScratchFolder folder;
    const QStringList tracks = WriteTracks(folder, 50);
    for (int round = 0; round < 20; ++round) {
        Receiver receiver;
        receiver.scanner.ScanList(receiver.all, folder.Path());
        receiver.scanner.ScanList(receiver.collection, folder.Path());
        receiver.scanner.Add(receiver.all, folder.File(tracks[1]), {});
        for (int turn = 0; turn < round; ++turn)
            QCoreApplication::processEvents();
        if (round % 2 == 0) {
            receiver.lists.Remove(receiver.all.m_iId);
            ASSERT_TRUE(RunUntil([&] { return receiver.collection.GetCount() == 50; }));
        }
    }
}

TEST(ScanTest, AnExceptionEndsReadingAsACancelDoes) {
    std::size_t delivered = 0;
    const auto deliver = [&](const CTrackReader::Tracks& tracks) { delivered += tracks.size(); };
    const auto read = [](const CMediaFileRequest& file) {
        if (file.m_strPath == u"bad")
            throw std::runtime_error("bad");
        return std::make_unique<CTrackRecord>();
    };
    CTrackReader reader({}, read, deliver);
    FoundFiles files;
    for (const char* path : {"good", "bad"}) {
        files.push_back(std::make_unique<CMediaFileRequest>());
        files.back()->m_strPath = QString::fromLatin1(path);
    }
    EXPECT_TRUE(reader.Add(std::move(files)) && !reader.Finish());
    EXPECT_LE(delivered, 1u);
}
