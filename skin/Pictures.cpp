#include "skin/Pictures.h"

#include "drawing/DevicePixels.h"

#include <QImage>
#include <QImageReader>
#include <QPixmapCache>

// Outside of any namespace, as the macro asks.
static void InitPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace {

constexpr QRgb kKey = 0xFFFF00FF;

int StatesOf(PictureId id) {
    switch (id) {
    case PictureId::NewPlaylist:
    case PictureId::ScanPC:
    case PictureId::CancelAll:
        return 4;
    case PictureId::MiniPlayer:
    case PictureId::NormalWindow:
        return 3;
    default:
        return 1;
    }
}

QString PathOf(PictureId id, const char* suffix) {
    return QStringLiteral(":/pictures/%1%2.png")
        .arg(static_cast<int>(id))
        .arg(QLatin1String(suffix));
}

const char* RenderingFor(qreal scale) {
    if (scale <= 1)
        return "";
    return scale <= 1.5 ? "@1.5x" : "@2x";
}

/// Where the key colour stands for what is not covered, it must stay as it is.
QImage ScaledWithKey(const QImage& image, QSize size) {
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            if (result.pixel(x, y) == kKey)
                result.setPixel(x, y, 0);
        }
    }
    result = result.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                 .convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            const QRgb pixel = result.pixel(x, y);
            result.setPixel(x, y, qAlpha(pixel) < 128 ? kKey : pixel | 0xFF000000);
        }
    }
    return result;
}

QPixmap Load(PictureId id, qreal scale) {
    InitPictures();
    QImage image(PathOf(id, RenderingFor(scale)));
    if (image.isNull())
        return {};
    const QSize plain = QImageReader(PathOf(id, "")).size();
    const int states = StatesOf(id);
    const QSize size(states * qRound(plain.width() / states * scale),
                     qRound(plain.height() * scale));
    if (image.size() != size && id == PictureId::Splash)
        image = ScaledWithKey(image, size);
    else if (image.size() != size)
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap picture = QPixmap::fromImage(image);
    picture.setDevicePixelRatio(scale);
    return picture;
}

} // namespace

QPixmap LoadPicture(PictureId id, qreal scale) {
    const QString key = QStringLiteral("picture ") + QString::number(static_cast<int>(id)) + u' ' +
                        QString::number(scale);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = Load(id, scale);
        QPixmapCache::insert(key, picture);
    }
    return picture;
}

void DrawPicture(QPainter& painter, QPointF place, const QPixmap& picture) {
    const CDevicePixels pixels(painter);
    painter.drawPixmap(pixels.ToLogical(pixels.At(place)), picture);
}

QIcon MakeProgramIcon() {
    InitPictures();
    QIcon icon;
    for (const int side : kProgramIconSides) {
        icon.addFile(QStringLiteral(":/pictures/%1-%2.png")
                         .arg(static_cast<int>(PictureId::ProgramIcon))
                         .arg(side));
    }
    return icon;
}
