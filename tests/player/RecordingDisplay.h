#pragma once

#include "player/TransportDisplay.h"
#include "tests/fixtures/NoView.h"

#include <QString>

#include <set>
#include <utility>

/// Remembers what it was last shown.
struct RecordingDisplay : ITransportDisplay {
    void ShowButtons(const TransportButtons& shown) override { buttons = shown; }
    void ShowPosition(int percent) override { position = percent; }
    void ShowCaption(const QString& text) override { caption = text.toStdString(); }
    void EnableSeek(bool enable) override { canSeek = enable; }
    void ShowPlayMode(int shown) override { mode = shown; }
    void Beep() override { ++beeps; }

    TransportButtons buttons;
    int position = -1;
    std::string caption;
    bool canSeek = false;
    int mode = -1;
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
