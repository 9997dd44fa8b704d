#pragma once

#include "tags/Id3v2Tag.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

/// Tags put together by hand, for what no encoder writes.

using FrameList = std::vector<std::pair<const char*, QByteArray>>;

inline QByteArray EightBit(const QByteArray& text) {
    return '\0' + text;
}

inline QByteArray TagBytes(int version, const FrameList& frames) {
    Id3v2Tag tag;
    tag.version = version;
    for (const auto& [id, data] : frames)
        tag.frames.push_back({id, 0, data});
    return AssembleId3v2Tag(tag);
}

inline CTrackInfo ReadInfo(const QString& path) {
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(path, info), 0);
    return info;
}

/// Sound of a real encoder, without tags.
inline QByteArray Mp3Sound() {
    return ReadFile(MediaFile("untagged.mp3"));
}
