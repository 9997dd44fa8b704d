#include "player/PlayQueue.h"

#include "library/MediaList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

/// A list from letters: a track each, in upper case a checked one, '.' a playlist file.
void Fill(CMediaList& list, const std::string& tracks) {
    for (const char letter : tracks) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strPath = QStringLiteral("/%1.%2")
                               .arg(QLatin1Char(letter))
                               .arg(letter == '.' ? QStringLiteral("M3U") : QStringLiteral("mp3"));
        track->m_bChecked = letter >= 'A' && letter <= 'Z';
        list.Append(std::move(track));
    }
}

/// The track at the place in the queue, '-' for none.
char Current(const CPlayQueue& queue) {
    const auto entry = queue.Current();
    return entry ? entry->strPath.at(1).toLatin1() : '-';
}

/// Once round the queue, from the place in it.
std::string Round(CPlayQueue& queue) {
    std::string letters;
    for (int i = 0; i < queue.GetCount(); ++i, queue.Next(PLAY_CONTINUOUS))
        letters += Current(queue);
    return letters;
}

} // namespace

TEST(PlayQueueTest, OrderOfThePlainModes) {
    const struct {
        std::string tracks;
        int startRow;
        std::string round;
    } cases[] = {
        {"abcd", -1, "abcd"}, {"abCd", -1, "Cabd"}, {"abCD", -1, "CabD"}, {"abCd", 3, "dabC"},
        {"a.b.c", 2, "bca"},  {"...", -1, ""},      {"", -1, ""},         {"ab", 7, "ab"},
    };
    for (const auto& c : cases)
        for (const int mode : {PLAY_SINGLE, PLAY_CONTINUOUS}) {
            CMediaList list({}, MEDIA_TYPE_ALL, 1);
            Fill(list, c.tracks);
            CPlayQueue queue;
            queue.Build(list, c.startRow, mode);
            EXPECT_EQ(Round(queue), c.round) << c.tracks << " from " << c.startRow;
        }
}

TEST(PlayQueueTest, RandomOrderBeginsWithTheTrackThatIsAskedForAndHoldsEachOnce) {
    CMediaList list({}, MEDIA_TYPE_ALL, 1);
    Fill(list, "abcdefgH.");
    std::set<std::string> orders;
    for (int i = 0; i < 20; ++i)
        for (const int mode : {PLAY_RANDOM, PLAY_RANDOM_CONTINUOUS})
            for (const int startRow : {5, -1}) {
                CPlayQueue queue;
                queue.Build(list, startRow, mode);
                EXPECT_FALSE(queue.CanPrevious(PLAY_RANDOM));
                std::string letters = Round(queue);
                EXPECT_EQ(letters.front(), startRow == 5 ? 'f' : 'H');
                orders.insert(letters);
                std::sort(letters.begin(), letters.end());
                EXPECT_EQ(letters, "Habcdefg");
            }
    EXPECT_GT(orders.size(), 10U);
}

TEST(PlayQueueTest, StepsByMode) {
    // Steps: n next, p previous. After each of them: the current track, '-' for none.
    const struct {
        std::string tracks;
        int mode;
        std::string steps;
        std::string current;
    } cases[] = {
        {"abc", PLAY_SINGLE, "nnnn", "bc-a"},
        {"abc", PLAY_SINGLE, "pnpp", "abaa"},
        {"abc", PLAY_CONTINUOUS, "nnnn", "bcab"},
        {"abc", PLAY_CONTINUOUS, "pppn", "cbab"},
        {"", PLAY_SINGLE, "pn", "--"},
        {"", PLAY_CONTINUOUS, "pn", "--"},
        {"", PLAY_RANDOM, "pn", "--"},
        {"", PLAY_RANDOM_CONTINUOUS, "pn", "--"},
    };
    for (const auto& c : cases) {
        CMediaList list({}, MEDIA_TYPE_ALL, 1);
        Fill(list, c.tracks);
        CPlayQueue queue;
        EXPECT_FALSE(queue.CanNext(c.mode) || queue.CanPrevious(c.mode));
        queue.Build(list, -1, c.mode);
        std::string current;
        for (const char step : c.steps) {
            const bool isThere = step == 'n' ? queue.Next(c.mode) : queue.Previous(c.mode);
            current += Current(queue);
            EXPECT_EQ(isThere, current.back() != '-');
        }
        EXPECT_EQ(current, c.current) << c.steps;
    }
}
