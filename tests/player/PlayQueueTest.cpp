#include "player/PlayQueue.h"

#include "tests/fixtures/LibraryFakes.h"

#include <set>
#include <string>

namespace {

/// A queue made from letters: a track each, in upper case a checked one, '.' a playlist file.
struct Queue : CPlayQueue {
    Queue(const std::string& tracks, int startRow, int mode) {
        CMediaList list({}, MEDIA_TYPE_ALL, 1);
        for (const char letter : tracks) {
            const QLatin1String kind(letter == '.' ? "M3U" : "mp3");
            AddTrack(list, QStringLiteral("/%1.%2").arg(QLatin1Char(letter)).arg(kind)).m_bChecked =
                letter >= 'A' && letter <= 'Z';
        }
        EXPECT_FALSE(CanNext(mode) || CanPrevious(mode));
        Build(list, startRow, mode);
    }
    /// The current track, and that after each step: n next, p previous. '-' for none.
    std::string Walk(const std::string& steps, int mode) {
        std::string letters(1, Letter());
        for (const char step : steps) {
            const bool isThere = step == 'n' ? Next(mode) : Previous(mode);
            letters += Letter();
            EXPECT_EQ(isThere, letters.back() != '-');
        }
        return letters;
    }
    [[nodiscard]] char Letter() const {
        return Current() ? Current()->strPath.at(1).toLatin1() : '-';
    }
};

} // namespace

TEST(PlayQueueTest, StepsByMode) {
    const struct {
        std::string tracks;
        int startRow;
        int mode;
        std::string steps, letters;
    } cases[] = {
        {"abc", -1, PLAY_SINGLE, "nnnn", "abc-a"},
        {"abc", -1, PLAY_SINGLE, "pnpp", "aabaa"},
        {"abc", -1, PLAY_CONTINUOUS, "nnnn", "abcab"},
        {"abc", -1, PLAY_CONTINUOUS, "pppn", "acbab"},
        {"abCd", -1, PLAY_SINGLE, "nnnn", "Cabd-"},
        {"abCD", -1, PLAY_SINGLE, "nnnn", "CabD-"},
        {"abCd", 3, PLAY_CONTINUOUS, "nnnn", "dabCd"},
        {"a.b.c", 2, PLAY_CONTINUOUS, "nnn", "bcab"},
        {"ab", 7, PLAY_CONTINUOUS, "nn", "aba"},
        {"...", -1, PLAY_SINGLE, "pn", "---"},
        {"", -1, PLAY_CONTINUOUS, "pn", "---"},
        {"", -1, PLAY_RANDOM, "pn", "---"},
        {"", -1, PLAY_RANDOM_CONTINUOUS, "pn", "---"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Queue(c.tracks, c.startRow, c.mode).Walk(c.steps, c.mode), c.letters)
            << c.tracks << " from " << c.startRow << " in mode " << c.mode;
}

TEST(PlayQueueTest, RandomOrderBeginsWithTheTrackThatIsAskedForAndHoldsEachOnce) {
    std::set<std::string> orders;
    for (int i = 0; i < 20; ++i)
        for (const int mode : {PLAY_RANDOM, PLAY_RANDOM_CONTINUOUS})
            for (const int startRow : {5, -1}) {
                Queue queue("abcdefgH.", startRow, mode);
                EXPECT_FALSE(queue.CanPrevious(PLAY_RANDOM));
                std::string letters = queue.Walk("nnnnnnn", PLAY_CONTINUOUS);
                EXPECT_EQ(letters.front(), startRow == 5 ? 'f' : 'H');
                orders.insert(letters);
                std::sort(letters.begin(), letters.end());
                EXPECT_EQ(letters, "Habcdefg");
            }
    EXPECT_GT(orders.size(), 10U);
}
