#pragma once

#include "player/TransportDisplay.h"
#include "tests/fixtures/NoView.h"

#include <set>
#include <utility>

/// Remembers what it was last shown.
struct RecordingDisplay : ITransportDisplay {
    void ShowState(TransportState shown) override { state = shown; }
    void ShowPosition(int percent) override { position = percent; }
    void ShowCaption(const QString& text) override { caption = text.toStdString(); }
    void EnableSeek(bool enable) override { canSeek = enable; }
    void Beep() override { ++beeps; }

    TransportState state = TransportState::Stopped;
    int position = -1;
    std::string caption;
    bool canSeek = false;
    int beeps = 0;
};

struct RecordingView : NoView {
    void RefreshRows(int, const CMediaList* list, int index) override {
        refreshed.insert({list, index});
    }
    void ShowPlayingList(int listId) override { playingList = listId; }

    std::set<std::pair<const CMediaList*, int>> refreshed;
    int playingList = -1;
};
