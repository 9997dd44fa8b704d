#pragma once

#include <QString>

/// The process: finds the language file, makes sure that it is the only instance, and runs the main
/// dialog.
class CTrackDeckApp {
public:
    /// Runs the program to its end. Returns the exit code: 0, or 1 where another instance already
    /// runs, which then comes to the front.
    int Run(int argc, char** argv);

private:
    void ParseCommandLine(int argc, char** argv);

    QString m_strLanguageFile;
    QString m_strOpenFile; ///< document to open at start
};
