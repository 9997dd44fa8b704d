#pragma once

#include <QImage>

// The pictures of skin/blackstyle/. Their measures stand in its theme.ini too.

enum class FrameStrip { Top, Left, Right, Bottom };

/// A border strip with its active and its inactive look.
[[nodiscard]] QImage DrawFrameStrip(FrameStrip strip, qreal scale);
