#include "player/AdtsLength.h"

#include "player/MediaGraph.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

double Seconds(const QString& path) {
    AdtsLength length(path);
    while (length.Step()) {
    }
    return static_cast<double>(length.GetLength().value_or(0)) / kMediaSecond;
}

} // namespace

TEST(AdtsLengthTest, CountsFrames) {
    const ScratchFolder scratch;
    const QByteArray sound = ReadFile(MediaFile(QStringLiteral("untagged.aac")));
    const double frames = 1024.0 / 44100;
    const struct {
        const char* name;
        QByteArray content;
        double seconds;
    } cases[] = {
        {"whole", sound, 88 * frames},
        {"tagged", ReadFile(MediaFile(QStringLiteral("mutagen-v23.aac"))), 88 * frames},
        {"rubbish in the middle", sound + QByteArray(70'000, 'x') + sound, 176 * frames},
        {"several steps", sound.repeated(60), 60 * 88 * frames},
        {"cut in a frame", sound + sound.left(10), 89 * frames},
        {"cut in a header", sound + sound.left(4), 88 * frames},
        {"a header without a size", sound + QByteArray("\xFF\xF1\x50\x00\x00\x1F\xFC", 7),
         88 * frames},
        {"a wrong rate", QByteArray("\xFF\xF1\x7C\x00\x1F\xFF\xFC", 7), 0},
        {"nothing", {}, 0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(Seconds(scratch.Write(QStringLiteral("a.aac"), c.content)), c.seconds, 1e-4)
            << c.name;
    EXPECT_EQ(Seconds(scratch.File(QStringLiteral("missing.aac"))), 0);
}
