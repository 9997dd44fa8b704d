#pragma once

class CMediaList;
class MessageAddress;
class QString;

// How a list is filled from the interface thread itself: by the messages that scans send, too.

/// Has a file added to a list; it is there when the call returns. `checked`: with its check set.
void SendAddTrack(const MessageAddress& target, const CMediaList& list, const QString& path,
                  int checked = 0);

/// Tells that a list of this type has been filled.
void SendListDone(const MessageAddress& target, int type);
