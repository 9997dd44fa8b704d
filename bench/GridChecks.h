#pragma once

#include "bench/Collection.h"

/// Shows the tracks as My Collection in a window of 60 rows, and prints what checking them costs:
/// all of them by command and by Space, and one by a click on its check box; and how many rows'
/// worth of the window the click paints. Each as far as the window is painted again.
void MeasureChecks(const std::vector<Track>& tracks);

/// Measures what changes rows of the view of the lists, besides the painting: a click on a header,
/// folding a section and opening it again, a track that goes, 100 that come, a status. Prints it.
void MeasureRows(const std::vector<Track>& tracks);
