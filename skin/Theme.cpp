#include "skin/Theme.h"

#include "platform/IniFile.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype kLargestFile = 256 << 10;
constexpr qsizetype kLongestText = 999;
constexpr int kLongestLength = 16'384;
constexpr int kMostButtons = 64;
constexpr int kLongestStripSide = 1024; // a window is at least as large as its strips
constexpr qint64 kMostPixels = 4'000'000;

enum class Action : int { Close = 0, Maximize = 1, Minimize = 2 };

/// Reads one theme, step by step; the first step that fails ends it.
class ThemeReader {
public:
    ThemeReader(const QString& path, qreal scale)
        : m_file(CIniFile(path).ReadAll(kLargestFile))
        , m_strFolder(path.left(path.lastIndexOf(u'/') + 1)) {
        m_theme.scale = scale;
    }

    std::optional<Theme> Read() && {
        const bool isWhole =
            ReadStripPictures() && ReadSplits() && ReadButtons() && ReadTextPlaces();
        return isWhole ? std::optional(std::move(m_theme)) : std::nullopt;
    }

private:
    QString ReadName(QStringView section, QStringView key) const {
        const QString value = m_file.ReadText(section, key, QString(), kLongestText);
        return value.mid(std::max(value.lastIndexOf(u'\\'), value.lastIndexOf(u'/')) + 1);
    }

    std::optional<int> ReadNumber(QStringView section, QStringView key, int fallback,
                                  int most) const {
        const int number = m_file.ReadInteger(section, key, fallback);
        return number >= 0 && number <= most ? std::optional(number) : std::nullopt;
    }

    std::optional<int> ReadLength(QStringView section, QStringView key) const {
        const std::optional<int> length = ReadNumber(section, key, 0, kLongestLength);
        return length ? std::optional(m_theme.Scaled(*length)) : std::nullopt;
    }

    bool LoadPicture(CSkinBitmap& bitmap, const QString& name) {
        if (name.isEmpty() || !bitmap.LoadFromFile(m_strFolder + name, m_theme.scale))
            return false;
        m_nPixels += qint64{bitmap.Width()} * bitmap.Height();
        return m_nPixels <= kMostPixels;
    }

    bool LoadStrip(CSkinBitmap& bitmap, QStringView key) {
        return LoadPicture(bitmap, ReadName(kPersonality, key)) &&
               std::max(bitmap.Width(), bitmap.Height()) <= m_theme.Scaled(kLongestStripSide);
    }

    bool ReadStripPictures() {
        if (!LoadPicture(m_theme.dialog, ReadName(kPersonality, u"DialogBmp")))
            m_theme.dialog = CSkinBitmap();
        if (!LoadStrip(m_theme.top.bitmap, u"Top") || !LoadStrip(m_theme.left.bitmap, u"Left") ||
            !LoadStrip(m_theme.right.bitmap, u"Right") ||
            !LoadStrip(m_theme.bottom.bitmap, u"Bottom"))
            return false;
        m_theme.m_nTopHeight = m_theme.top.bitmap.Height() / 2;
        m_theme.m_nLeftWidth = m_theme.left.bitmap.Width() / 2;
        m_theme.m_nRightWidth = m_theme.right.bitmap.Width() / 2;
        m_theme.m_nBottomHeight = m_theme.bottom.bitmap.Height() / 2;
        return true;
    }

    bool ReadSplit(ThemeStrip& strip, int length, QStringView headKey, QStringView tailKey) const {
        const std::optional<int> head = ReadLength(kPersonality, headKey);
        const std::optional<int> tail = ReadLength(kPersonality, tailKey);
        if (!head || !tail)
            return false;
        strip.headEnd = *head;
        strip.tailStart = std::max(length - *tail, *head + 1);
        return true;
    }

    bool ReadSplits() {
        ThemeStrip& top = m_theme.top;
        ThemeStrip& left = m_theme.left;
        ThemeStrip& right = m_theme.right;
        ThemeStrip& bottom = m_theme.bottom;
        return ReadSplit(top, top.bitmap.Width(), u"TopTopHeight", u"TopBotHeight") &&
               ReadSplit(left, left.bitmap.Height(), u"LeftTopHeight", u"LeftBotHeight") &&
               ReadSplit(right, right.bitmap.Height(), u"RightTopHeight", u"RightBotHeight") &&
               ReadSplit(bottom, bottom.bitmap.Width(), u"BottomTopHeight", u"BottomBotHeight");
    }

    /// Where a section's button goes; null if the section is to be passed over.
    ThemeButton* ButtonFor(int action) {
        switch (static_cast<Action>(action)) {
        case Action::Close:
            return &m_theme.close;
        case Action::Minimize:
            return &m_theme.minimize;
        case Action::Maximize:
            return m_theme.maximize.bitmap.IsLoaded() ? &m_theme.restore : &m_theme.maximize;
        }
        return nullptr;
    }

    bool ReadButton(const QString& section, int imageCount) {
        ThemeButton* const button = ButtonFor(m_file.ReadInteger(section, u"Action", 0));
        if (!button)
            return true;
        const std::optional<int> x = ReadLength(section, u"XCoord");
        const std::optional<int> y = ReadLength(section, u"YCoord");
        if (!x || !y || !LoadPicture(button->bitmap, ReadName(section, u"ButtonImage")))
            return false;
        button->left = *x - button->bitmap.Width() / imageCount;
        button->top = *y;
        button->right = *x;
        button->bottom = *y + button->bitmap.Height();
        return true;
    }

    bool ReadButtons() {
        const auto count = ReadNumber(kPersonality, u"ButtonCount", 0, kMostButtons);
        const auto imageCount = ReadNumber(kPersonality, u"ButtonImgCount", 3, kLongestLength);
        if (!count || imageCount.value_or(0) == 0)
            return false;
        for (int i = 0; i < *count; ++i) {
            if (!ReadButton(QStringLiteral("Button%1").arg(i), *imageCount))
                return false;
        }
        return true;
    }

    bool ReadTextPlaces() {
        const auto shift = ReadLength(kPersonality, u"TextShift");
        const auto shiftVert = ReadLength(kPersonality, u"TextShiftVert");
        if (!shift || !shiftVert)
            return false;
        m_theme.m_nTextShift = *shift;
        m_theme.m_nTextShiftVert = *shiftVert;
        m_theme.m_bUsesTran = m_file.ReadInteger(kPersonality, u"UsesTran", 0) != 0;
        return true;
    }

    static constexpr QStringView kPersonality = u"Personality";

    CIniContent m_file;
    QString m_strFolder;
    Theme m_theme;
    qint64 m_nPixels = 0; // read so far
};

} // namespace

std::optional<Theme> Theme::Load(const QString& path, qreal scale) {
    return ThemeReader(path, scale).Read();
}
