#include "app/ArtworkField.h"

#include "base/Language.h"
#include "platform/Path.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

#include <algorithm>

namespace {

constexpr double kCorner = 4;
constexpr int kTextMargin = 6;

/// Path of the first local file among the dropped things; empty if there is none. A name on disk
/// may be no UTF-8, so it is taken from the bytes of the address.
QString FirstFile(const QMimeData& dropped) {
    const QList<QUrl> urls = dropped.urls();
    const auto file =
        std::find_if(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
    if (file == urls.end())
        return {};
    const QByteArray path = file->path(QUrl::FullyEncoded).toLatin1();
    return Path::FromBytes(QByteArray::fromPercentEncoding(path));
}

/// Whatever was proposed: the file stays where it is.
void AcceptCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

CArtworkField::CArtworkField(QWidget* parent)
    : QWidget(parent)
    , m_strPlaceholder(LoadString(IDS_DRAGARTHERE)) {
    setAccessibleName(LoadString(IDS_FEILD_ARTWORK));
    setToolTip(LoadString(IDS_FEILD_ARTWORK));
}

void CArtworkField::SetPicture(const QImage& picture) {
    m_picture = picture;
    m_scaled = {};
    update();
}

void CArtworkField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_picture.isNull()) {
        DrawPlaceholder(painter);
        return;
    }
    const double ratio = devicePixelRatioF();
    const QSize pixels = m_picture.size()
                             .scaled((QSizeF(size()) * ratio).toSize(), Qt::KeepAspectRatio)
                             .expandedTo({1, 1});
    if (m_scaled.size() != pixels)
        m_scaled = m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // On a whole pixel of the screen, so that nothing is blurred.
    const QSize space = (QSizeF(size()) * ratio).toSize() - pixels;
    m_scaled.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(space.width() / 2, space.height() / 2) / ratio, m_scaled);
}

void CArtworkField::DrawPlaceholder(QPainter& painter) const {
    QColor text = palette().color(QPalette::WindowText);
    QColor line = text;
    text.setAlphaF(0.65F);
    line.setAlphaF(0.3F);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, 1, Qt::DashLine));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    painter.setPen(text);
    painter.drawText(rect().adjusted(kTextMargin, kTextMargin, -kTextMargin, -kTextMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_strPlaceholder);
}

void CArtworkField::dragEnterEvent(QDragEnterEvent* event) {
    if (!FirstFile(*event->mimeData()).isEmpty())
        AcceptCopy(*event);
}

void CArtworkField::dropEvent(QDropEvent* event) {
    const QString path = FirstFile(*event->mimeData());
    if (!path.isEmpty() && m_pfnDrop && m_pfnDrop(path))
        AcceptCopy(*event);
    else
        event->ignore();
}
