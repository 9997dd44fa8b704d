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

std::string Letters(const CPlayQueue& queue) {
    std::string letters;
    for (const CPlayQueueEntry& entry : queue.Entries())
        letters += entry.strPath.at(1).toLatin1();
    return letters;
}

char Current(const CPlayQueue& queue) {
    const auto entry = queue.Current();
    return entry ? entry->strPath.at(1).toLatin1() : '-';
}

} // namespace

TEST(PlayQueueTest, OrderOfThePlainModes) {
    const struct {
        std::string tracks;
        int startRow;
        std::string order;
        char current;
    } cases[] = {
        {"abcd", -1, "abcd", 'a'}, {"abCd", -1, "Cabd", 'C'}, {"abCD", -1, "CabD", 'C'},
        {"abCd", 3, "abCd", 'd'},  {"a.b.c", 2, "abc", 'b'},  {"...", -1, "", '-'},
        {"", -1, "", '-'},         {"ab", 7, "ab", 'a'},
    };
    for (const auto& c : cases)
        for (const int mode : {PLAY_SINGLE, PLAY_CONTINUOUS}) {
            SCOPED_TRACE(c.tracks + " from " + std::to_string(c.startRow));
            CMediaList list({}, MEDIA_TYPE_ALL, 1);
            Fill(list, c.tracks);
            CPlayQueue queue;
            queue.Build(list, c.startRow, mode);
            EXPECT_EQ(Letters(queue), c.order);
            EXPECT_EQ(Current(queue), c.current);
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
                std::string letters = Letters(queue);
                EXPECT_EQ(letters.front(), startRow == 5 ? 'f' : 'H');
                EXPECT_EQ(Current(queue), letters.front());
                orders.insert(letters);
                std::sort(letters.begin(), letters.end());
                EXPECT_EQ(letters, "Habcdefg");
            }
    EXPECT_GT(orders.size(), 10U);
}

TEST(PlayQueueTest, StepsByMode) {
    // Steps: n next, p previous. After each of them: the current track, '-' for none.
    const struct {
        int mode;
        std::string steps;
        std::string tracks;
    } cases[] = {
        {PLAY_SINGLE, "nnnn", "bc-a"},
        {PLAY_SINGLE, "pnpp", "abaa"},
        {PLAY_CONTINUOUS, "nnnn", "bcab"},
        {PLAY_CONTINUOUS, "pppn", "cbab"},
    };
    CMediaList list({}, MEDIA_TYPE_ALL, 1);
    Fill(list, "abc");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.steps);
        CPlayQueue queue;
        queue.Build(list, -1, c.mode);
        std::string tracks;
        for (const char step : c.steps) {
            const bool isThere = step == 'n' ? queue.Next(c.mode) : queue.Previous(c.mode);
            tracks += Current(queue);
            EXPECT_EQ(isThere, tracks.back() != '-');
        }
        EXPECT_EQ(tracks, c.tracks);
    }
}

TEST(PlayQueueTest, AnEmptyQueueHasNoSteps) {
    for (int mode = PLAY_SINGLE; mode <= PLAY_RANDOM_CONTINUOUS; ++mode) {
        CPlayQueue queue;
        EXPECT_FALSE(queue.CanNext(mode) || queue.CanPrevious(mode));
        EXPECT_FALSE(queue.Previous(mode));
        EXPECT_FALSE(queue.Next(mode));
    }
}
