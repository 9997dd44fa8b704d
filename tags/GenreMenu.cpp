#include "tags/GenreMenu.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace GenreMenu {
namespace {

struct Row {
    const char* group;
    std::initializer_list<const char*> entries;
};

// Some entries stand in another group than their kind suggests; users know them there.
// clang-format off
constexpr Row kRows[] = {
    {"Alternative & Punk",
     {"Ambient/Dream Pop", "Art Rock", "Avant Rock", "Brit Pop", "Emo", "Experimental",
      "Alt-Folk", "Post-Punk", "General Alternative", "Indie", "Power Pop", "Rap Metal",
      "Pop-Punk", "Riot Grrrl/Queercore", "General Punk", "Hardcore Punk", "Lo-Fi/Garage",
      "Old School Punk", "Straight Edge Punk"}},
    {"Blues",
     {"Acoustic Blues", "Blues Rock", "Electric Blues", "General Blues", "Japanese Blues"}},
    {"Books & Spoken",
     {"Short Stories", "Comedy", "General Books", "General Spoken", "Poetry", "Politics",
      "Religion", "Spoken Word", "Stories/Fairytales"}},
    {"Children's Music",
     {"General Children's Music", "Japanese Children's Song(Doyo)"}},
    {"Classical",
     {"Baroque", "Chamber Music", "Choral", "Contemporary", "Ensembles", "General Classical",
      "Classical Guitar", "Medieval", "Opera", "Romantic Era", "Piano", "Renaissance Era",
      "Strings", "Japanese Classical"}},
    {"Country",
     {"Alternative Country", "Bluegrass", "Country Blues", "Traditional Country",
      "General Country", "Rockabilly", "Contemporary Country", "General R&B", "Motown", "Soul"}},
    {"Data",
     {"General Data", "Applications", "Games", "Operating Systems", "Karaoke", "Japanese Karaoke",
      "Pop Vocals"}},
    {"Easy Listening",
     {"Bachelor Pad", "General Easy Listening", "Lounge", "Love Songs", "Mood Music",
      "General Dance", "Club Dance"}},
    {"Electronica/Dance",
     {"Acid House", "Big Beat", "Drum n'Bass/Jungle", "Electronica", "General Electronic",
      "Turntablism", "Minimalist Experimental", "Ambient Electronica", "Garage", "General House",
      "Deep House", "Progressive House", "Happy House", "Industrial Dance",
      "Dark Techno/Darkwave", "Electro", "Detroit Techno", "Gabber", "General Techno",
      "Hardcore Techno", "Illbient", "Rave Music", "Tribal House", "General Trance",
      "Ambient Trance", "Hard Trance/Acid", "Progressive/Dream", "Tech Trance", "Trip Hop",
      "Acid Jazz"}},
    {"Folk",
     {"Contemporary Folk", "General Folk", "Traditional Folk"}},
    {"Gospel & Religious",
     {"General Religious", "General Christian", "Gospel", "Christian Rock", "Grunge", "Jam Bands",
      "Folk-Rock", "Soft Rock", "Hard Rock"}},
    {"Hip Hop/Rap",
     {"Bass Assault", "East Coast Rap", "Freestyle Rap", "Gangsta", "General Hip Hop",
      "General Rap", "Hardcore Rap", "Horrorcore", "Old School Hip Hop", "Southern Rap",
      "West Coast Rap", "Underground Rap"}},
    {"Holiday",
     {"Chanukka", "Christmas", "General Holiday", "Halloween", "Cool/West Coast Jazz",
      "Ballroom"}},
    {"Jazz",
     {"Bop", "Big Band Swing", "Dixieland/New Orleans Jazz", "Free/Avant Jazz", "Fusion",
      "General Jazz", "Latin", "Ragtime", "Swing Revival", "Smooth Jazz", "Jazz Vocals",
      "Japanese Fusion", "Japanese Jazz"}},
    {"Industrial",
     {"General Industrial", "Minimal/Noise", "Old School Industrial", "Hardcore Industrial",
      "Ska/Rock Steady", "Dancehall", "Ragga"}},
    {"Latin",
     {"Brazilian", "Latin Pop", "Mexican", "Latin Rock", "General Latin", "Ranchero",
      "Salsa/Merengue", "South/Central American", "Spanish/Portugese", "Tropical/Samba",
      "Afro-Cuban", "Foreign Rap"}},
    {"Metal",
     {"Alternative Metal", "Black/Death Metal", "Grindcore", "General Metal", "Gothic Metal",
      "Hardcore Metal", "Heavy Metal", "Pop/Hair Metal", "Progressive Metal",
      "Thrash/Speed Metal"}},
    {"New Age",
     {"Ambient New Age", "Environmental Music", "General New Age", "Meditation Music",
      "Teen Pop"}},
    {"Pop",
     {"Acoustic Pop", "Disco", "European Pop", "General Pop", "Japanese Pop", "Christian Pop",
      "Christian Rap"}},
    {"Rock",
     {"Funk Rock", "Classic Rock", "General Rock", "Goth Rock", "Instrumental Rock", "New Wave",
      "Progressive Rock", "Psychedelic Rock", "Rock & Roll", "Ska Revival/3rd Wave",
      "Southern Rock", "Surf Rock", "Japanese Rock", "Adult Film/Erotica"}},
    {"R&B",
     {"Urban Crossover", "Funk"}},
    {"Reggae",
     {"Dub", "General Reggae", "Tejano/Norteno"}},
    {"Soundtrack",
     {"General Soundtrack", "Film Score", "Film Soundtrack", "Musicals/Broadway",
      "Television Score", "Television Soundtrack", "Japanese General Soundtrack", "Anime",
      "Game"}},
    {"Unclassifiable",
     {"General Unclassifiable", "Japanese Unclassifiable", "Zydeco/Cajun", "Polka",
      "World Fusion", "Central Asian", "Klezmer"}},
    {"World",
     {"African", "Middle East/Arabic", "Asian", "Caribbean", "General Celtic", "Classical Indian",
      "Western European", "Flamenco/Gypsy", "French", "German", "Hawaiian", "Indian Subcontinent",
      "Irish Celtic", "Jewish/Israeli", "Native American", "Oceania", "Quebecois",
      "Eastern European", "Scandinavian", "Aboriginal Australian/Didjeridu", "Japanese Folk",
      "Japanese Enka", "Japanese Traditional(Minzoku)", "General World"}},
};
// clang-format on

std::vector<Group> MakeGroups() {
    std::vector<Group> groups;
    int id = kFirstId;
    for (const Row& row : kRows) {
        Group group{QString::fromLatin1(row.group), id, {}};
        for (const char* entry : row.entries)
            group.entries.push_back(QString::fromLatin1(entry));
        id += static_cast<int>(row.entries.size());
        groups.push_back(std::move(group));
    }
    return groups;
}

} // namespace

const std::vector<Group>& Groups() {
    static const std::vector<Group> groups = MakeGroups();
    return groups;
}

QString Entry(int id) {
    const auto& groups = Groups();
    const auto next =
        std::upper_bound(groups.begin(), groups.end(), id,
                         [](int value, const Group& group) { return value < group.firstId; });
    if (next == groups.begin())
        return {};
    const Group& group = *std::prev(next);
    const auto index = static_cast<std::size_t>(id - group.firstId);
    return index < group.entries.size() ? group.entries[index] : QString();
}

} // namespace GenreMenu
