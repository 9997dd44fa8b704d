// Claim: a scan costs little more than touching the files, and reading tags a fraction of what the
// tag library takes on its own.
//
// Scans a realistic library of 10,000 tracks into real lists, without a window. The floor is a walk
// that opens each file and reads its first 64 KB and last 128 bytes; the link is id3lib's own Link
// on the MP3 and AAC files. All three alternate on a warm cache; the figures are medians of five.

#include "base/FileKinds.h"
#include "base/Messages.h"
#include "bench/Clock.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/MessageTarget.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <id3/tag.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kTracks = 10000;
constexpr int kRounds = 5;

std::string MakeLibrary() {
    const std::string folder = BENCH_FOLDER "/library";
    if (!std::filesystem::exists(folder + "/.complete")) {
        std::printf("making the library in %s\n", folder.c_str());
        const std::string command =
            std::string(MAKE_LIBRARY) + " '" + folder + "' " + std::to_string(kTracks);
        if (std::system(command.c_str()) != 0)
            std::exit(1);
    }
    return folder;
}

/// Returns the number of tracks.
int Scan(const QString& folder) {
    CMediaLists lists;
    CMediaList& all = lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CLibraryScanner scanner(lists);
    CMessageTarget messages;
    QEventLoop loop;
    scanner.Listen(messages);
    const auto done = scanner.OnDone([&](const CMediaList&, bool) { loop.quit(); });
    scanner.ScanList(all, folder);
    loop.exec();
    return all.GetCount();
}

std::vector<std::string> ListFiles(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    return files;
}

void TouchFiles(const std::string& folder) {
    static std::array<char, 64 * 1024> buffer;
    for (const std::string& path : ListFiles(folder)) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const off_t size = ::lseek(file, 0, SEEK_END);
        const auto tail = std::max<off_t>(size - 128, 0);
        if (::pread(file, buffer.data(), buffer.size(), 0) < 0 ||
            ::pread(file, buffer.data(), 128, tail) < 0)
            std::perror(path.c_str());
        ::close(file);
    }
}

void ReadTags(const std::vector<QString>& files) {
    for (const QString& file : files) {
        CTrackInfo info;
        if (ReadTrackTags(file, info) != 0)
            std::fprintf(stderr, "no tags in %s\n", qUtf8Printable(file));
    }
}

/// Milliseconds that the first look into a large file without any tag or sound takes.
double ReadZerosMs() {
    const std::string path = BENCH_FOLDER "/zeros.mp3";
    std::ofstream(path).close();
    std::filesystem::resize_file(path, 8 << 20);
    return MeasureMs([&] { ReadTags({Path::FromBytes(path)}); });
}

void LinkTags(const std::vector<QString>& files) {
    for (const QString& file : files) {
        ID3_Tag tag;
        tag.Link(Path::ToBytes(file).constData(), 0xFFFF);
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const std::string folder = MakeLibrary();
    const QString scanned = Path::FromBytes(folder);
    std::vector<QString> tagged;
    for (const std::string& file : ListFiles(folder))
        if (const QString path = Path::FromBytes(file); IsMp3OrAacFile(path))
            tagged.push_back(path);

    int tracks = 0;
    std::vector<double> scan;
    std::vector<double> floor;
    std::vector<double> read;
    std::vector<double> link;
    TouchFiles(folder);
    for (int round = 0; round < kRounds; ++round) {
        scan.push_back(MeasureMs([&] { tracks = Scan(scanned); }));
        floor.push_back(MeasureMs([&] { TouchFiles(folder); }));
        read.push_back(MeasureMs([&] { ReadTags(tagged); }));
        link.push_back(MeasureMs([&] { LinkTags(tagged); }));
    }
    std::printf("tracks=%d tagged=%zu scan_ms=%.0f floor_ms=%.0f read_ms=%.0f link_ms=%.0f "
                "zeros_ms=%.2f\n",
                tracks, tagged.size(), Median(scan), Median(floor), Median(read), Median(link),
                ReadZerosMs());
    std::printf("scan files_per_s=%.0f ratio_to_floor=%.2f ratio_to_link=%.3f\n",
                tracks * 1000 / Median(scan), Median(scan) / Median(floor),
                Median(read) / Median(link));
    return tracks == kTracks ? 0 : 1;
}
