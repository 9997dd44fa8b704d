#pragma once

#include "skin/Theme.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

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
    using Section = std::map<QByteArray, QByteArray>;

    SyntheticTheme() {
        Write("top.png", MakePlaces(Picture::Top, {40, 61}));
        Write("left.bmp", MakePlaces(Picture::Left, {9, 50}));
        Write("right.png", MakePlaces(Picture::Right, {12, 52}));
        Write("bottom.bmp", MakePlaces(Picture::Bottom, {38, 10}));
        m_sections["Personality"] = {
            {"Top", "top.png"},       {"Left", "left.bmp"},     {"Right", "right.png"},
            {"Bottom", "bottom.bmp"}, {"TextShift", "25"},      {"TextShiftVert", "4"},
            {"TopTopHeight", "7"},    {"TopBotHeight", "9"},    {"LeftTopHeight", "5"},
            {"LeftBotHeight", "6"},   {"RightTopHeight", "8"},  {"RightBotHeight", "10"},
            {"BottomTopHeight", "6"}, {"BottomBotHeight", "8"},
        };
    }

    /// Writes a picture of the theme's folder.
    void Write(const QByteArray& name, const QImage& image) {
        Write(name, Encode(image, name.endsWith("bmp") ? "bmp" : "png"));
    }
    void Write(const QByteArray& name, const QByteArray& file) { WriteFile(File(name), file); }

    /// Sets a key of "Personality".
    void Set(const char* key, const QByteArray& value) { m_sections["Personality"][key] = value; }
    void Set(const char* key, int value) { Set(key, QByteArray::number(value)); }

    /// Adds a button section with a picture of this size.
    void AddButton(int action, Picture picture, QSize size, int x, int y) {
        const QByteArray name = "button" + QByteArray::number(m_nButtons) + ".png";
        Write(name, MakePlaces(picture, size));
        AddButton({{"Action", QByteArray::number(action)},
                   {"ButtonImage", name},
                   {"XCoord", QByteArray::number(x)},
                   {"YCoord", QByteArray::number(y)}});
    }
    void AddButton(const Section& section) {
        m_sections["Button" + QByteArray::number(m_nButtons++)] = section;
        Set("ButtonCount", m_nButtons);
    }

    [[nodiscard]] QString File(const QByteArray& name) const {
        return m_folder.File(QString::fromLatin1(name));
    }

    /// Writes the theme file and loads it.
    [[nodiscard]] std::optional<Theme> Load(qreal scale = 1) const {
        QByteArray text;
        for (const auto& [name, section] : m_sections) {
            text += '[' + name + "]\n";
            for (const auto& [key, value] : section)
                text += key + '=' + value + '\n';
        }
        WriteFile(File("theme.ini"), text);
        return Theme::Load(File("theme.ini"), scale);
    }

private:
    ScratchFolder m_folder;
    std::map<QByteArray, Section> m_sections;
    int m_nButtons = 0;
};
