#include "bench/Collection.h"

#include <QStringList>

#include <random>

namespace {

struct Words {
    QStringList list;
    int weight; ///< of 100 titles
};

/// What a collection is made of: mostly Latin, with other scripts, accents that combine, and
/// scripts that need a layout.
const std::vector<Words>& Vocabulary() {
    static const std::vector<Words> words = {
        {QStringLiteral("Morning Light Over the Harbour Blue Train Waltz for Debby Night and Day "
                        "Silent River Stone Autumn Leaves Black Coffee Paper Moon Dancing Ghost "
                        "Winter Sun Electric Garden Broken Mirror Hotel Avenue Midnight Radio")
             .split(u' '),
         80},
        {QStringLiteral("Für Elise Après un rêve Señorita Åse Dvořák Smörgåsbord Noël Čas Łódź")
             .split(u' '),
         10},
        {QStringLiteral("Подмосковные вечера Калинка Белая ночь Θάλασσα Μίσιρλου").split(u' '), 4},
        {QStringLiteral("上を向いて歩こう 月亮代表我的心 아리랑 さくら").split(u' '), 3},
        {QStringLiteral("نسم علينا الهوى הבה נגילה").split(u' '), 2},
        {QStringLiteral("Cafe\u0301 Re\u0301sume\u0301 \U0001F3B5 Song").split(u' '), 1},
    };
    return words;
}

class Maker {
public:
    std::vector<Track> Make() {
        QStringList artists;
        for (int i = 0; i < 1500; ++i)
            artists += Phrase(2);
        QStringList albums;
        for (int i = 0; i < 8000; ++i)
            albums += Phrase(3);
        const QStringList genres =
            QStringLiteral("Rock Jazz Classical Folk Pop Ambient").split(u' ');
        std::vector<Track> tracks;
        tracks.reserve(kTracks);
        for (int i = 0; i < kTracks; ++i) {
            const int album = Number(albums.size());
            const int seconds = 60 + Number(500);
            tracks.push_back(
                {QString(), Phrase(2 + Number(4)), artists[album % artists.size()], albums[album],
                 genres[album % genres.size()],
                 QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0')),
                 QStringLiteral("%1 KB").arg(500 + Number(20'000)),
                 QString::number(60 + Number(120)), QString()});
        }
        return tracks;
    }

private:
    int Number(qsizetype below) { return static_cast<int>(m_random() % below); }

    QString Phrase(int words) {
        int lot = Number(100);
        auto kind = Vocabulary().begin();
        while (lot >= kind->weight)
            lot -= (kind++)->weight;
        QStringList phrase;
        for (int i = 0; i < words; ++i)
            phrase += kind->list[Number(kind->list.size())];
        return phrase.join(u' ');
    }

    std::mt19937 m_random{20'26};
};

} // namespace

std::vector<Track> MakeCollection() {
    return Maker().Make();
}
