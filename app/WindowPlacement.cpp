#include "app/WindowPlacement.h"

#include <algorithm>

namespace {

constexpr QSize kFirstSize(768, 576);

/// How much of the window's left or top edge has to be inside the work area.
constexpr int kReachable = 10;

int MendedSize(int size, int smallest, int room) {
    return size < smallest || size > room ? smallest : size;
}

int MendedPosition(int position, int edge) {
    return position < 0 || position > edge - kReachable ? 0 : position;
}

} // namespace

WindowPlaces FirstRunPlaces(const QRect& workArea) {
    QRect normal(QPoint(), kFirstSize);
    normal.moveCenter(workArea.center());
    const QPoint mini(workArea.left() + 10, workArea.top() + workArea.height() - 100);
    return {normal, QRect(mini, kMiniSize)};
}

WindowPlaces SavedPlaces(const CTrackDeckSettings& settings, const QRect& workArea) {
    const int right = workArea.left() + workArea.width();
    const int bottom = workArea.top() + workArea.height();
    const QRect normal(
        MendedPosition(settings.m_nMainPosX, right), MendedPosition(settings.m_nMainPosY, bottom),
        MendedSize(settings.m_nMainSizeX, kSmallestSize.width(), workArea.width()),
        MendedSize(settings.m_nMainSizeY, kSmallestSize.height(), workArea.height()));
    const QPoint mini(std::min(std::max(settings.m_nMiniPosX, 0), right - kMiniSize.width()),
                      std::min(std::max(settings.m_nMiniPosY, 0), bottom - kMiniSize.height()));
    return {normal, QRect(mini, kMiniSize)};
}
