#pragma once

#include <QImage>
#include <QWidget>

#include <functional>
#include <utility>

/// Shows the artwork of a track, or a line that says what to drop here. While acceptDrops() is set,
/// files can be dropped on it.
///
/// Thread: interface thread.
class CArtworkField : public QWidget {
public:
    /// Takes the path of the first file dropped; answers whether it had a use for it.
    using DropHandler = std::function<bool(const QString& path)>;

    explicit CArtworkField(QWidget* parent);

    /// A null picture is none.
    void SetPicture(const QImage& picture);

    /// Null while there is none.
    [[nodiscard]] const QImage& GetPicture() const { return m_picture; }

    void SetDropHandler(DropHandler handler) { m_pfnDrop = std::move(handler); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void DrawPlaceholder(QPainter& painter) const;

    QImage m_picture;
    QImage m_scaled; ///< m_picture in the pixels of the screen
    QString m_strPlaceholder;
    DropHandler m_pfnDrop;
};
