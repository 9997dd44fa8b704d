#pragma once

#include <QDebug>

#include <exception>

/// Runs a handler of the main dialog. An exception in it is written to the debug output under the
/// operation's name, and the program goes on.
template <typename Call>
void Guarded(const char* operation, Call call) {
    try {
        call();
    } catch (const std::exception& error) {
        qWarning("\nException occured in CTrackDeckDlg::%s %s", operation, error.what());
    } catch (...) {
        qWarning("\nException occured in CTrackDeckDlg::%s", operation);
    }
}
