#include "app/TrackArtwork.h"

#include "app/ArtworkField.h"
#include "base/Language.h"
#include "library/MediaLists.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Pictures.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include <filesystem>

namespace {

// Nothing here is scaled: Qt does that on threads that the thread sanitizer can't follow.
constexpr QSize kFirst(20, 12);
constexpr QSize kOther(12, 20);
constexpr QSize kNone(0, 0);

/// A list whose first track is shown in a field: tracks with a picture, another, and none.
class TrackArtworkTest : public ::testing::Test {
protected:
    TrackArtworkTest() {
        SetLanguageFile(QString()); // texts are their own keys
        AddTrack("other.mp3", kOther);
        AddTrack("none.mp3", kNone);
        m_artwork->ShowTrack(m_list, 0);
    }

    QString AddTrack(const char* name, QSize picture) {
        const QString path = m_scratch.Write(name, ReadFile(MediaFile("untagged.mp3")));
        EXPECT_TRUE(picture.isEmpty() ||
                    WriteTrackArtwork(path, MakePicture("jpeg", picture)) == 0);
        return ::AddTrack(m_list, path).m_strPath;
    }
    /// Runs the event loop until another picture is shown, and returns its size.
    [[nodiscard]] QSize NextPicture() {
        const QImage before = m_field.GetPicture();
        EXPECT_TRUE(RunUntil([&] { return m_field.GetPicture() != before; }));
        return m_field.GetPicture().size();
    }
    [[nodiscard]] bool Shows(QSize size) {
        return RunUntil([&] { return m_field.GetPicture().size() == size; });
    }

    /// Drags things onto the field and drops them if it takes them; whether it had a use for them.
    bool Drop(const QList<QUrl>& urls) {
        QMimeData dragged;
        dragged.setText("text");
        if (!urls.isEmpty())
            dragged.setUrls(urls);
        const auto actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(QPoint(9, 9), actions, &dragged, Qt::LeftButton, {});
        enter.setDropAction(Qt::MoveAction);
        enter.ignore();
        QApplication::sendEvent(&m_field, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(QPointF(9, 9), actions, &dragged, Qt::LeftButton, {});
        drop.ignore();
        QApplication::sendEvent(&m_field, &drop);
        EXPECT_TRUE(!drop.isAccepted() || drop.dropAction() == Qt::CopyAction);
        return drop.isAccepted();
    }
    /// Whether there is news of a failure, once all that was dropped has been stored or not.
    bool HasFailed() {
        bool isDone = false;
        m_writer.Run([&isDone] { return [&isDone] { isDone = true; }; });
        EXPECT_TRUE(RunUntil([&] { return isDone; }));
        return !std::exchange(m_status.news, {}).isEmpty();
    }
    bool DropFile(const QByteArray& content, const char* name = "dropped.jpg") {
        return Drop({QUrl::fromLocalFile(m_scratch.Write(name, content))});
    }

    ScratchFolder m_scratch;
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add("Mine", MEDIA_TYPE_COLLECTION, 1);
    const QString m_path = AddTrack("song.mp3", kFirst);
    CArtworkField m_field{nullptr};
    CWorker m_writer{"writer", CWorker::AtEnd::Finish};
    FakeStatus m_status;
    std::optional<CTrackArtwork> m_artwork{std::in_place, m_lists, m_field, m_writer, m_status};
};

} // namespace

TEST_F(TrackArtworkTest, PictureStaysUntilThatOfTheNextTrackComes) {
    EXPECT_EQ(m_field.GetPicture().size(), kNone) << "nobody waits for it";
    EXPECT_EQ(NextPicture(), kFirst);
    m_artwork->ShowTrack(m_list, 1);
    EXPECT_EQ(m_field.GetPicture().size(), kFirst);
    EXPECT_EQ(NextPicture(), kOther);
    m_artwork->ShowTrack(m_list, 2);
    m_artwork->ShowTrack(m_list, 3); // there is none
    EXPECT_EQ(NextPicture(), kNone);
    for (const int index : {0, 2, 0, 1}) // the last one wins
        m_artwork->ShowTrack(m_list, index);
    EXPECT_EQ(NextPicture(), kOther);
}

TEST_F(TrackArtworkTest, OwnerMayGoWhileAPictureIsRead) {
    m_artwork.reset();
    WaitForThreads();
    m_artwork.emplace(m_lists, m_field, m_writer, m_status).ShowTrack(m_list, 0);
    WaitForThreads();
    m_artwork.reset(); // the picture is on its way
    QCoreApplication::processEvents();
    EXPECT_EQ(m_field.GetPicture().size(), kNone);
}

TEST_F(TrackArtworkTest, DroppedJpegGoesIntoTheFile) {
    const QByteArray dropped = MakePicture("jpeg", kOther);
    EXPECT_TRUE(DropFile(dropped, "no ending")) << "the old picture is still being read";
    EXPECT_TRUE(Shows(kOther));
    EXPECT_EQ(ReadTrackArtwork(m_path), dropped);

    m_scratch.Write(Path::FromBytes("odd \xE9.jpg"), MakePicture("jpeg", kFirst));
    EXPECT_TRUE(Drop({QUrl("https://example.org/a.jpg"),
                      QUrl(QStringLiteral("file://%1/odd%20%E9.jpg").arg(m_scratch.Path())),
                      QUrl::fromLocalFile(m_path)}));
    EXPECT_EQ(NextPicture(), kFirst);
}

TEST_F(TrackArtworkTest, OtherDropsChangeNothing) {
    const QByteArray before = ReadFile(m_path);
    const QByteArray jpeg = MakePicture("jpeg", kOther);
    EXPECT_FALSE(Drop({}));
    EXPECT_FALSE(Drop({QUrl("https://example.org/a.jpg")}));
    EXPECT_TRUE(Drop({QUrl::fromLocalFile(m_scratch.Path())}) && HasFailed());
    for (const QByteArray& file : {MakePicture("png", {20, 10}), jpeg.first(100), QByteArray()})
        EXPECT_TRUE(DropFile(file) && HasFailed());

    for (const int type : {MEDIA_TYPE_ALL, MEDIA_TYPE_PHONE, MEDIA_TYPE_SELECTION}) {
        m_list.m_iType = type;
        m_artwork->ShowTrack(m_list, 0);
        EXPECT_FALSE(DropFile(jpeg)) << type;
    }
    m_list.m_iType = MEDIA_TYPE_COLLECTION;
    m_artwork->ShowTrack(m_list, 0);
    const QString otherName = m_scratch.File("link.mp3");
    std::filesystem::create_hard_link(m_path.toStdString(), otherName.toStdString());
    EXPECT_TRUE(DropFile(jpeg) && HasFailed()) << "a file with two names is not rewritten";
    EXPECT_TRUE(Shows(kFirst));
    std::filesystem::remove(otherName.toStdString());
    m_list.ClearAll();
    EXPECT_FALSE(DropFile(jpeg)) << "the track is gone";
    EXPECT_EQ(ReadFile(m_path), before);
}
