#include "skin/Pictures.h"
#include "tools/make-theme/Drawing.h"
#include "tools/make-theme/Glyphs.h"
#include "tools/make-theme/RoundButtons.h"
#include "tools/make-theme/Scenes.h"
#include "tools/make-theme/WindowButtons.h"
#include "tools/make-theme/WindowFrame.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSet>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

struct Picture {
    QString path; ///< from the top of the tree
    QImage image;
};

using Draw = std::function<QImage(qreal scale)>;

void Add(std::vector<Picture>& pictures, const QString& path, const Draw& draw) {
    pictures.push_back({path + QStringLiteral(".png"), draw(1)});
    pictures.push_back({path + QStringLiteral("@1.5x.png"), draw(1.5)});
    pictures.push_back({path + QStringLiteral("@2x.png"), draw(2)});
}

void AddTheme(std::vector<Picture>& pictures) {
    const auto add = [&pictures](const char* name, const Draw& draw) {
        Add(pictures, QStringLiteral("skin/blackstyle/") + QLatin1String(name), draw);
    };
    const auto strip = [](FrameStrip which) {
        return [which](qreal scale) { return DrawFrameStrip(which, scale); };
    };
    const auto button = [](WindowButton which) {
        return [which](qreal scale) { return DrawWindowButton(which, scale); };
    };
    add("top", strip(FrameStrip::Top));
    add("left", strip(FrameStrip::Left));
    add("right", strip(FrameStrip::Right));
    add("bottom", strip(FrameStrip::Bottom));
    add("close", button(WindowButton::Close));
    add("maximize", button(WindowButton::Maximize));
    add("restore", button(WindowButton::Restore));
    add("minimize", button(WindowButton::Minimize));
}

QString ResourcePath(PictureId id) {
    return QStringLiteral("resources/%1").arg(static_cast<int>(id));
}

void AddResources(std::vector<Picture>& pictures) {
    const auto add = [&pictures](PictureId id, const Draw& draw) {
        Add(pictures, ResourcePath(id), draw);
    };
    add(PictureId::RaisedDisc, DrawRaisedDisc);
    add(PictureId::PressedFrame, DrawSunkenDisc);
    add(PictureId::HoverFrame, DrawHoverDisc);
    add(PictureId::FocusRing, DrawFocusRing);
    const QSet<PictureId> strips{PictureId::NewPlaylist, PictureId::ScanPC, PictureId::CancelAll};
    for (const PictureId id : GlyphIds()) {
        if (strips.contains(id))
            add(id, [id](qreal scale) { return DrawButtonStates(id, scale); });
        else
            add(id, [id](qreal scale) { return DrawGlyph(id, scale); });
    }
    add(PictureId::Band, DrawBand);
    add(PictureId::Volume, DrawVolume);
    add(PictureId::WarningSign, DrawWarningSign);
    add(PictureId::QuestionSign, DrawQuestionSign);
    add(PictureId::Splash, DrawSplash);
    add(PictureId::About, DrawAbout);
    add(PictureId::VolumeChannel, DrawVolumeChannel);
    add(PictureId::VolumeThumb, DrawVolumeThumb);
    add(PictureId::MiniPlayer, [](qreal scale) { return DrawViewButton(true, scale); });
    add(PictureId::NormalWindow, [](qreal scale) { return DrawViewButton(false, scale); });
    for (const int side : kProgramIconSides) {
        pictures.push_back(
            {QStringLiteral("%1-%2.png").arg(ResourcePath(PictureId::ProgramIcon)).arg(side),
             DrawProgramIcon(side)});
    }
}

/// As it is stored: without alpha where there is none.
QImage Stored(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            if (qAlpha(plain.pixel(x, y)) != 255)
                return plain;
        }
    }
    return plain.convertToFormat(QImage::Format_RGB888);
}

bool Write(const QString& path, const QImage& image) {
    QImageWriter writer(path, "png");
    writer.setCompression(100);
    if (writer.write(Stored(image)))
        return true;
    std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(writer.errorString()));
    return false;
}

/// Whether the pictures look alike: builds may round the edges of a shape differently.
bool Alike(const QImage& one, const QImage& other) {
    constexpr int kTolerance = 6;
    if (one.size() != other.size())
        return false;
    const QImage a = one.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < a.height(); ++y) {
        const uchar* lineA = a.constScanLine(y);
        const uchar* lineB = b.constScanLine(y);
        for (int i = 0; i < 4 * a.width(); ++i) {
            if (std::abs(lineA[i] - lineB[i]) > kTolerance)
                return false;
        }
    }
    return true;
}

bool Check(const QString& path, const QImage& image) {
    if (Alike(QImage(path), image))
        return true;
    std::fprintf(stderr, "%s: is not what make_theme draws\n", qPrintable(path));
    return false;
}

/// Pictures in the folders that nothing draws.
bool CheckNothingElse(const QDir& tree, const std::vector<Picture>& pictures) {
    QSet<QString> known;
    for (const Picture& picture : pictures)
        known.insert(picture.path);
    bool good = true;
    for (const QString& folder : {QStringLiteral("resources"), QStringLiteral("skin/blackstyle")}) {
        for (const QString& name :
             QDir(tree.filePath(folder)).entryList({QStringLiteral("*.png")}, QDir::Files)) {
            if (known.contains(folder + u'/' + name))
                continue;
            std::fprintf(stderr, "%s/%s: is drawn by nothing\n", qPrintable(folder),
                         qPrintable(name));
            good = false;
        }
    }
    return good;
}

} // namespace

/// make_theme TREE writes the pictures of resources/ and skin/blackstyle/; make_theme --check TREE
/// ends with 1 if they are not what it would write.
int main(int argc, char** argv) {
    const bool check = argc == 3 && QLatin1String(argv[1]) == QLatin1String("--check");
    if (argc != 2 && !check) {
        std::fprintf(stderr, "usage: make_theme [--check] TREE\n");
        return 2;
    }
    const QDir tree(QString::fromLocal8Bit(argv[argc - 1]));
    std::vector<Picture> pictures;
    AddTheme(pictures);
    AddResources(pictures);

    bool good = !check || CheckNothingElse(tree, pictures);
    for (const Picture& picture : pictures) {
        const QString path = tree.filePath(picture.path);
        tree.mkpath(QFileInfo(picture.path).path());
        good = (check ? Check(path, picture.image) : Write(path, picture.image)) && good;
    }
    return good ? 0 : 1;
}
