#include "app/TrackDeckApp.h"

#include <cstdlib>

int main(int argc, char** argv) {
    const int result = CTrackDeckApp().Run(argc, argv);
    // Threads that still scan are not waited for. Leaving without the destructors of static objects
    // keeps the ground under them until the process is gone.
    std::_Exit(result);
}
