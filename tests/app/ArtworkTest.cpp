#include "app/ArtworkField.h"
#include "app/ArtworkPicture.h"
#include "app/TrackArtwork.h"
#include "base/Language.h"
#include "library/MediaLists.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"

#include <QApplication>
#include <QBuffer>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImageWriter>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <optional>
#include <thread>

namespace {

QByteArray Media(const char* name) {
    return ReadFile(MediaFile(QString::fromLatin1(name)));
}

/// The bytes of a picture file with `texts` long texts in it.
QByteArray MakePicture(const char* format, QSize size, int texts = 0) {
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(QColor(100, 100, 100));
    for (int i = 0; i < texts; ++i)
        image.setText(QStringLiteral("key%1").arg(i), QString(1000, u'x'));
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(true);
    EXPECT_TRUE(writer.write(image));
    return buffer.data();
}

/// A JPEG file whose last scan comes `times` times more.
QByteArray RepeatLastScan(const QByteArray& jpeg, int times) {
    const qsizetype scan = jpeg.lastIndexOf("\xFF\xDA");
    const qsizetype end = jpeg.size() - 2;
    return jpeg.first(scan) + jpeg.sliced(scan, end - scan).repeated(times + 1) + jpeg.sliced(end);
}

/// A JPEG file with `times` empty segments of a kind behind its head.
QByteArray AddSegments(const QByteArray& jpeg, char kind, int times) {
    const QByteArray segment = QByteArray("\xFF") + kind + QByteArray("\0\2", 2);
    return jpeg.first(2) + segment.repeated(times) + jpeg.sliced(2);
}

constexpr QSize kNone(0, 0);
constexpr QSize kSmall(288, 216); // small.jpg, shown as it is
constexpr QSize kLarge(512, 372); // large.jpg, scaled down

/// A list whose first track is shown in a field: tracks with a small, a large and no picture.
class ArtworkTest : public ::testing::Test {
protected:
    ArtworkTest() {
        SetLanguageFile(QString()); // texts are their own keys
        const QString large = AddTrack("large.mp3", "untagged.mp3");
        EXPECT_EQ(WriteTrackArtwork(large, Media("large.jpg")), 0);
        AddTrack("none.mp3", "untagged.mp3");
        m_field.resize(84, 84);
        m_artwork->ShowTrack(m_list, 0);
    }
    // What a thread needs is there until the program ends, not longer.
    ~ArtworkTest() override { WaitForReader(); }

    QString AddTrack(const char* name, const char* media) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strPath = m_scratch.Write(QString::fromLatin1(name), Media(media));
        m_list.Append(std::move(track));
        return m_list[m_list.GetCount() - 1]->m_strPath;
    }
    /// Runs the event loop until another picture is shown, and returns its size.
    [[nodiscard]] QSize NextPicture() {
        const QImage before = m_field.GetPicture();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_field.GetPicture() != before; }, 60'000));
        return m_field.GetPicture().size();
    }
    static void WaitForReader() {
        while (HasThread(::getpid(), kArtworkThreadName))
            std::this_thread::yield();
    }

    /// Drags things onto the field and drops them if it takes them; whether it had a use for them.
    bool Drop(const QList<QUrl>& urls) {
        QMimeData dragged;
        dragged.setText(QStringLiteral("text"));
        if (!urls.isEmpty())
            dragged.setUrls(urls);
        QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction | Qt::MoveAction, &dragged,
                              Qt::LeftButton, {});
        enter.setDropAction(Qt::MoveAction);
        enter.ignore();
        QApplication::sendEvent(&m_field, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(QPointF(9, 9), Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton,
                        {});
        drop.ignore();
        QApplication::sendEvent(&m_field, &drop);
        EXPECT_TRUE(!drop.isAccepted() || drop.dropAction() == Qt::CopyAction);
        return drop.isAccepted();
    }
    bool DropFile(const QByteArray& content, const char* name = "dropped.jpg") {
        return Drop({QUrl::fromLocalFile(m_scratch.Write(QString::fromLatin1(name), content))});
    }

    ScratchFolder m_scratch;
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add(QStringLiteral("Mine"), MEDIA_TYPE_COLLECTION, 1);
    const QString m_path = AddTrack("song.mp3", "lame-v23-v1-picture.mp3");
    ArtworkField m_field{nullptr};
    std::optional<TrackArtwork> m_artwork{std::in_place, m_lists, m_field};
};

} // namespace

TEST(ArtworkPictureTest, DecodesWhatIsSoundAndCheap) {
    const QByteArray jpeg = MakePicture("jpeg", {300, 200});
    const struct {
        const char* what;
        QByteArray file;
        QSize size = kNone;
    } rows[] = {
        {"small", Media("small.jpg"), kSmall},
        {"scaled down", Media("large.jpg"), kLarge},
        {"PNG with a text", MakePicture("png", {20, 10}, 1), {20, 10}},
        {"progressive", jpeg, {300, 200}},
        {"thin", MakePicture("png", {1, 20000}), {1, 512}},
        {"nothing", {}},
        {"no picture", "hello"},
        {"another format", MakePicture("bmp", {20, 10})},
        {"JPEG head alone", jpeg.first(100)},
        {"damaged PNG", MakePicture("png", {300, 200}).first(60)},
        {"too many pixels", MakePicture("png", {10000, 2600})},
        {"too many scans", RepeatLastScan(jpeg, 200)},
        {"a few comments", AddSegments(jpeg, '\xFE', 300), {300, 200}},
        {"too many comments", AddSegments(jpeg, '\xFE', 2000)},
        {"too many Exif parts", AddSegments(jpeg, '\xE1', 2000)},
        {"too many profiles", AddSegments(jpeg, '\xE2', 2000)},
        {"too many texts", MakePicture("png", {20, 10}, 40)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DecodeArtwork(row.file).size(), row.size) << row.what;
}

TEST_F(ArtworkTest, PictureStaysUntilThatOfTheNextTrackComes) {
    EXPECT_EQ(m_field.GetPicture().size(), kNone) << "nobody waits for it";
    EXPECT_EQ(NextPicture(), kSmall);
    const QImage shown = m_field.grab().toImage();
    EXPECT_EQ(shown.pixel(42, 2), shown.pixel(60, 82)) << "above and below it nothing";
    EXPECT_NE(shown.pixel(42, 42), shown.pixel(42, 2));

    m_artwork->ShowTrack(m_list, 1);
    EXPECT_EQ(m_field.GetPicture().size(), kSmall);
    EXPECT_EQ(NextPicture(), kLarge);
    m_artwork->ShowTrack(m_list, 2);
    m_artwork->ShowTrack(m_list, 3); // there is none
    EXPECT_EQ(NextPicture(), kNone);
    EXPECT_NE(m_field.grab().toImage().pixel(0, 42), shown.pixel(0, 2)) << "a placeholder";
}

TEST_F(ArtworkTest, LastTrackAskedForWins) {
    for (const int index : {2, 0, 2, 1})
        m_artwork->ShowTrack(m_list, index);
    EXPECT_EQ(NextPicture(), kLarge);
}

TEST_F(ArtworkTest, OwnerMayGoWhileAPictureIsRead) {
    m_artwork.reset();
    WaitForReader();
    QCoreApplication::processEvents();
    m_artwork.emplace(m_lists, m_field).ShowTrack(m_list, 0);
    WaitForReader();
    m_artwork.reset(); // the picture is on its way
    QCoreApplication::processEvents();
    EXPECT_EQ(m_field.GetPicture().size(), kNone);
}

TEST_F(ArtworkTest, DroppedJpegGoesIntoTheFile) {
    const QByteArray dropped = Media("large.jpg");
    EXPECT_TRUE(DropFile(dropped, "no ending")) << "the old picture is still being read";
    EXPECT_EQ(ReadTrackArtwork(m_path), dropped);
    EXPECT_EQ(NextPicture(), kLarge);

    const QString oddName = Path::FromBytes("odd \xE9.jpg");
    WriteFile(m_scratch.File(oddName), Media("small.jpg"));
    EXPECT_TRUE(Drop({QUrl(QStringLiteral("https://example.org/a.jpg")),
                      QUrl(QStringLiteral("file://%1/odd%20%E9.jpg").arg(m_scratch.Path())),
                      QUrl::fromLocalFile(m_path)}));
    EXPECT_EQ(NextPicture(), kSmall);
}

TEST_F(ArtworkTest, OtherDropsChangeNothing) {
    const QByteArray before = ReadFile(m_path);
    const QByteArray jpeg = Media("large.jpg");
    EXPECT_FALSE(Drop({}));
    EXPECT_FALSE(Drop({QUrl(QStringLiteral("https://example.org/a.jpg"))}));
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(m_scratch.Path())}));
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(m_scratch.File(QStringLiteral("none.jpg")))}));
    for (const QByteArray& file : {MakePicture("png", {20, 10}), jpeg.first(100), QByteArray()})
        EXPECT_FALSE(DropFile(file));

    for (const int type : {MEDIA_TYPE_ALL, MEDIA_TYPE_PHONE, MEDIA_TYPE_SELECTION}) {
        m_list.m_iType = type;
        m_artwork->ShowTrack(m_list, 0);
        EXPECT_FALSE(DropFile(jpeg)) << type;
    }
    m_list.m_iType = MEDIA_TYPE_COLLECTION;
    m_artwork->ShowTrack(m_list, 0);
    const QString otherName = m_scratch.File(QStringLiteral("other.mp3"));
    std::filesystem::create_hard_link(m_path.toStdString(), otherName.toStdString());
    EXPECT_FALSE(DropFile(jpeg)) << "a file with two names is not rewritten";
    EXPECT_EQ(NextPicture(), kSmall);
    std::filesystem::remove(otherName.toStdString());
    m_list.ClearAll();
    EXPECT_FALSE(DropFile(jpeg)) << "the track is gone";
    EXPECT_EQ(ReadFile(m_path), before);
}
