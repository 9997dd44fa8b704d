#pragma once

#include "platform/MessageTarget.h"

class CCommandState;
class CMediaLists;
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
    MessageAddress messages; ///< the main dialog, which adds tracks to lists
};
