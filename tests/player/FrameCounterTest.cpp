#include "player/FrameCounter.h"

#include "player/MediaGraph.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/ScratchFolder.h"

namespace {

double Seconds(const QString& path) {
    CFrameCounter length(path);
    while (length.Step()) {
    }
    return static_cast<double>(length.GetLength().value_or(0)) / kMediaSecond;
}

} // namespace

TEST(FrameCounterTest, CountsFrames) {
    const ScratchFolder scratch;
    const QByteArray sound = ReadFile(MediaFile("untagged.aac"));
    const QByteArray mpeg = ReadFile(MediaFile("unmeasured-vbr.mp3"));
    const double adts = 88 * 1024.0 / 44100;
    const double seconds = 2.04; // of the MPEG files: padded by their encoder
    const struct {
        const char* name;
        QByteArray content;
        double seconds;
        double tolerance;
    } cases[] = {
        {"ADTS", sound, adts, 1e-4},
        {"tagged", ReadFile(MediaFile("mutagen-v23.aac")), adts, 1e-4},
        {"rubbish in the middle", sound + QByteArray(70'000, 'x') + sound, 2 * adts, 0.05},
        {"several steps", sound.repeated(60), 60 * adts, 1e-4},
        {"cut in a frame", sound + sound.left(10), adts + 1024.0 / 44100, 1e-4},
        {"cut in a header", sound + sound.left(4), adts, 1e-4},
        {"a header without a size", sound + QByteArray("\xFF\xF1\x50\x00\x00\x1F\xFC", 7), adts,
         0.05},
        {"a wrong rate", QByteArray("\xFF\xF1\x7C\x00\x1F\xFF\xFC", 7), 0, 0},
        {"MPEG 1, layer 3, variable rate", mpeg, seconds, 0.06},
        {"MPEG 2, layer 3", ReadFile(MediaFile("unmeasured-cbr.mp3")), seconds, 0.06},
        {"several steps of MPEG", mpeg.repeated(60), 60 * seconds, 3},
        {"a free bit rate", QByteArray("\xFF\xFB\x00\x00\x00\x00\x00", 7), 0, 0},
        {"a picture", ReadFile(MediaFile("large.jpg")), 0, 0.1},
        {"nothing", {}, 0, 0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(Seconds(scratch.Write("a.aac", c.content)), c.seconds, c.tolerance) << c.name;
    EXPECT_EQ(Seconds(scratch.File("missing.aac")), 0);
}
