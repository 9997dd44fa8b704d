#pragma once

class CCommandState;
class CLibraryScanner;
class CMediaLists;
class CWorker;
class IPrompts;
class IStatusDisplay;
class ITrackPlayer;
class ITrackView;

/// What the commands work with.
///
/// Thread: interface thread. Lifetime: all of it outlives those that are given it.
struct CommandContext {
    CMediaLists& lists;
    ITrackView& view;
    CCommandState& state;
    ITrackPlayer& player;
    IPrompts& prompts;
    IStatusDisplay& status;
    CLibraryScanner& scanner;
    CWorker& writer; ///< writes tags and artwork, one after the other
};
