#pragma once

/// Numbers of the messages by which workers, dialogs and the main dialog talk. They are a contract.
enum MessageId : int {
    /// Sets the text of a dialog's item. wParam: the item; the payload is a `TextPayload`.
    WM_SETTEXT = 0x000C,

    /// A scan has ended. wParam: the type of its list; lParam: the scan's number. The payload says
    /// which list that is, and whether it is whole.
    WM_TD_LIST_DONE = 0x8002,

    /// Add one file to a list. The payload is a `CMediaFileRequest`; lParam: a running number.
    WM_TD_ADD_TRACK = 0x800A,

    /// A scan has read tracks, which the message carries. wParam: the list's identifier; lParam:
    /// the
    /// scan's number.
    WM_TD_TRACKS_READ = 0x8100,

    /// The media graph has news. Zero words.
    WM_TD_GRAPH_NOTIFY = 0x8015,

    /// The track was played to its end. Zero words.
    WM_TD_TRACK_FINISHED = 0x8018,
};
