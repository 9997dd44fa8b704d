#pragma once

#include "skin/Theme.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QString>

#include <map>
#include <optional>

/// The picture that a pixel comes from. Never above 100, so that no colour is the key colour.
enum class Picture : int { Top = 1, Left, Right, Bottom, Close, Minimize, Maximize, Restore, None };

/// The colour that pixel (x, y) of a picture has. Pictures have at most 256 pixels a side.
[[nodiscard]] inline QRgb PixelOf(Picture picture, int x, int y) {
    return qRgb(x, y, static_cast<int>(picture));
}

/// A picture in which every pixel tells its place.
[[nodiscard]] inline QImage MakePlaces(Picture picture, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, PixelOf(picture, x, y));
    }
    return image;
}

[[nodiscard]] inline QByteArray Encode(const QImage& image, const char* format) {
    QBuffer buffer;
    QImageWriter(&buffer, format).write(image);
    return buffer.data();
}

/// A theme of small odd pictures, in files of its own, that a test changes before it loads it. Its
/// looks are 30 (top), 4 (left), 6 (right) and 5 (bottom) thick.
class SyntheticTheme {
public:
    using Section = std::map<QString, QString>;

    SyntheticTheme() {
        Draw(Picture::Top, QStringLiteral("top.png"), {40, 61});
        Draw(Picture::Left, QStringLiteral("left.bmp"), {9, 50});
        Draw(Picture::Right, QStringLiteral("right.png"), {12, 52});
        Draw(Picture::Bottom, QStringLiteral("bottom.bmp"), {38, 10});
        Section& main = m_sections[QStringLiteral("Personality")];
        main = {{QStringLiteral("Top"), QStringLiteral("top.png")},
                {QStringLiteral("Left"), QStringLiteral("left.bmp")},
                {QStringLiteral("Right"), QStringLiteral("right.png")},
                {QStringLiteral("Bottom"), QStringLiteral("bottom.bmp")},
                {QStringLiteral("TextShift"), QStringLiteral("25")},
                {QStringLiteral("TextShiftVert"), QStringLiteral("4")}};
        const std::pair<const char*, int> splits[] = {
            {"TopTopHeight", 7},    {"TopBotHeight", 9},   {"LeftTopHeight", 5},
            {"LeftBotHeight", 6},   {"RightTopHeight", 8}, {"RightBotHeight", 10},
            {"BottomTopHeight", 6}, {"BottomBotHeight", 8}};
        for (const auto& [key, length] : splits)
            main[QString::fromLatin1(key)] = QString::number(length);
    }

    /// Writes a picture of the theme's folder.
    void Draw(Picture picture, const QString& name, QSize size) {
        Write(name, MakePlaces(picture, size));
    }
    void Write(const QString& name, const QImage& image) {
        Write(name, Encode(image, name.endsWith(QStringLiteral("bmp")) ? "bmp" : "png"));
    }
    void Write(const QString& name, const QByteArray& file) { m_folder.Write(name, file); }

    /// Sets a key of "Personality".
    void Set(const char* key, const QString& value) {
        m_sections[QStringLiteral("Personality")][QString::fromLatin1(key)] = value;
    }
    void Set(const char* key, int value) { Set(key, QString::number(value)); }

    /// Adds a button section with a picture of this size.
    void AddButton(int action, Picture picture, QSize size, int x, int y) {
        const QString name = QStringLiteral("button%1.png").arg(m_nButtons);
        Draw(picture, name, size);
        AddButton({{QStringLiteral("Action"), QString::number(action)},
                   {QStringLiteral("ButtonImage"), name},
                   {QStringLiteral("XCoord"), QString::number(x)},
                   {QStringLiteral("YCoord"), QString::number(y)}});
    }
    void AddButton(const Section& section) {
        m_sections[QStringLiteral("Button%1").arg(m_nButtons++)] = section;
        Set("ButtonCount", m_nButtons);
    }

    [[nodiscard]] QString File(const QString& name) const { return m_folder.File(name); }

    [[nodiscard]] QByteArray Text() const {
        QString text;
        for (const auto& [name, section] : m_sections) {
            text += QStringLiteral("[%1]\n").arg(name);
            for (const auto& [key, value] : section)
                text += QStringLiteral("%1=%2\n").arg(key, value);
        }
        return text.toUtf8();
    }

    /// Writes the theme file and loads it.
    [[nodiscard]] std::optional<Theme> Load(qreal scale = 1) const {
        return Theme::Load(m_folder.Write(QStringLiteral("theme.ini"), Text()), scale);
    }

private:
    ScratchFolder m_folder;
    std::map<QString, Section> m_sections;
    int m_nButtons = 0;
};
