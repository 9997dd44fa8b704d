#pragma once

#include "platform/Worker.h"

#include <QString>

#include <functional>
#include <memory>

/// The cover of one track as a file for other programs to show: a PNG picture, scaled down.
///
/// Thread:   interface thread. The picture is read and written on a thread of its own, one at a
///           time, and is there when the handler is called.
/// Lifetime: destroying it waits for no thread. A file goes with the next track and at the end.
/// Errors:   no file for a track without a picture that can be shown, and in a folder that can't be
///           written to.
class CCoverFile {
public:
    /// `folder`: for the files, readable by the user alone; none are written if it is empty.
    CCoverFile(QString folder, std::function<void()> changed);
    ~CCoverFile();

    CCoverFile(const CCoverFile&) = delete;
    CCoverFile& operator=(const CCoverFile&) = delete;

    /// Goes over to another track; an empty path is none. It has no file until the handler is
    /// called.
    void ShowTrack(const QString& path);

    /// Full path of the file, another for each track; empty if there is none.
    [[nodiscard]] QString GetPath() const;

private:
    struct File;

    void Read();
    void OnRead(std::shared_ptr<const File> file);

    QString m_strFolder;
    std::function<void()> m_pfnChanged;
    QString m_strTrackPath;
    std::shared_ptr<const File> m_pFile;
    int m_nFile = 0;           ///< number in the name of the file written last
    bool m_bReading = false;   ///< a thread is at work
    bool m_bReadAgain = false; ///< what it reads is out of date
    CWorker m_worker{"cover"}; // last: it goes first
};
