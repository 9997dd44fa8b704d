#include "app/ArtworkPicture.h"

#include "app/ArtworkField.h"
#include "base/Language.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Pictures.h"
#include "tests/fixtures/ScratchFolder.h"

namespace {

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

} // namespace

TEST(ArtworkPictureTest, DecodesWhatIsSoundAndCheap) {
    const QByteArray jpeg = MakePicture("jpeg", {300, 200});
    const struct {
        const char* what;
        QByteArray file;
        QSize size{0, 0};
    } rows[] = {{"small", ReadFile(MediaFile("small.jpg")), {288, 216}},
                {"scaled down", ReadFile(MediaFile("large.jpg")), {512, 372}},
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
                {"too many texts", MakePicture("png", {20, 10}, 40)}};
    for (const auto& row : rows)
        EXPECT_EQ(DecodeArtwork(row.file).size(), row.size) << row.what;
}

TEST(ArtworkFieldTest, PaintsThePictureInItsShape) {
    SetLanguageFile(QString()); // texts are their own keys
    CArtworkField field(nullptr);
    field.resize(84, 84);
    const QImage placeholder = field.grab().toImage();
    field.SetPicture(QImage::fromData(MakePicture("jpeg", {288, 216})));
    const QImage shown = field.grab().toImage();
    EXPECT_EQ(shown.pixel(42, 2), shown.pixel(60, 82)) << "above and below it nothing";
    EXPECT_NE(shown.pixel(42, 42), shown.pixel(42, 2));
    field.SetPicture({});
    EXPECT_EQ(field.grab().toImage(), placeholder);
    EXPECT_NE(placeholder.pixel(0, 42), shown.pixel(0, 2)) << "it has a frame";
}
