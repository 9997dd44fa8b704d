#pragma once

#include <QIcon>
#include <QPixmap>
#include <QPointF>

class QPainter;

/// The program's pictures. Each one is a file of resources/ by its number, in renderings for 100,
/// 150 and 200 % (tools/make-theme draws them).
enum class PictureId : int {
    ProgramIcon = 128, ///< in sizes of its own: MakeProgramIcon() alone loads it

    // Round buttons: a disc under a glyph, both 45 by 44.
    RaisedDisc = 161,
    PressedFrame = 162, ///< a sunken disc; the glyph on it is drawn one pixel lower
    HoverFrame = 163,   ///< a disc with a ring
    FocusRing = 164,    ///< around a disc of any kind, and seen through

    Band = 168, ///< the ground of the bottom band, 16 by 103, to be stretched in width

    // Strips of four states (normal, hot, pressed, disabled), each 45 by 44.
    NewPlaylist = 171,
    ScanPC = 172,
    CancelAll = 175,

    CopyToPhone = 173,
    CopyToCollection = 174,
    Previous = 182,
    Play = 183,
    Next = 184,
    Pause = 185,
    Volume = 186, ///< 20 by 20

    WarningSign = 190,  ///< 40 by 40
    QuestionSign = 191, ///< 40 by 40

    Splash = 196, ///< 400 by 240; RGB(255,0,255) is outside its shape
    Ok = 199,
    No = 200,
    Close = 201,
    Help = 202,
    Browse = 203,
    About = 204, ///< the ground of the about dialog, 400 by 240; text goes into the left 240
    StartScan = 205,
    NewFolder = 206,

    MoveDown = 210,
    MoveUp = 211,
    SavePlaylist = 212,
    ClosePlaylist = 213,

    VolumeChannel = 242, ///< 100 by 8, to be stretched between its ends of 4
    VolumeThumb = 243,   ///< 12 by 20

    // Strips of three states (normal, pressed, hot), each 42 by 28.
    MiniPlayer = 275,
    NormalWindow = 276,
};

/// The picture for a scale (1.5 for 150 %): drawn at this scale it shows pixel by pixel, and its
/// device-independent size is that of 100 %, but for what rounding to pixels adds. The states of a
/// strip are equally wide. Scales without a rendering of their own get the next larger one, made
/// smaller, or the largest, made larger. Cached.
///
/// Null only for a build without the picture. Thread: interface thread.
[[nodiscard]] QPixmap LoadPicture(PictureId id, qreal scale);

/// Draws a picture with its top left corner at the device pixel next to `place`, so that nothing is
/// blurred.
void DrawPicture(QPainter& painter, QPointF place, const QPixmap& picture);

/// The sides of the program icon's renderings, in pixels.
inline constexpr int kProgramIconSides[] = {16, 24, 32, 48, 64, 128, 256};

/// The icon of the program's windows.
[[nodiscard]] QIcon MakeProgramIcon();
