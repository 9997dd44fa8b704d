#include "base/Language.h"

#include "platform/IniFile.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace {

constexpr qsizetype kLongestText = 1023;

QString g_strLanguageFile;

struct StringKey {
    int id;
    QStringView key;
};

constexpr StringKey kStringKeys[] = {
#define TRACKDECK_STRING_KEY(id, key) {id, u"" #key},
    TRACKDECK_STRING_TABLE(TRACKDECK_STRING_KEY)
#undef TRACKDECK_STRING_KEY
};

} // namespace

void SetLanguageFile(const QString& path) {
    g_strLanguageFile = path;
}

QString LoadString(int id) {
    const auto* found =
        std::lower_bound(std::begin(kStringKeys), std::end(kStringKeys), id,
                         [](const StringKey& entry, int wanted) { return entry.id < wanted; });
    if (found == std::end(kStringKeys) || found->id != id)
        return {};
    return GetLanguageText(found->key.toString());
}

QString GetLanguageText(const QString& key) {
    QString text = CIniFile(g_strLanguageFile).ReadText(u"TrackDeck", key, key, kLongestText);
    text.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    text.replace(QStringLiteral("\\r"), QStringLiteral("\r"));
    text.replace(QStringLiteral("\\t"), QStringLiteral("\t"));
    return text;
}

QString GetMenuText(const QString& prefix, const QString& name) {
    QString key = prefix + name;
    key = key.remove(u' ').remove(u'&').toUpper();
    const QString text = GetLanguageText(key);
    return text.contains(prefix) ? GetLanguageText(name) : text;
}

QString FormatText(const QString& format, const QStringList& values) {
    static const QRegularExpression placeholder(QStringLiteral("%[sdu]"));
    QString text = format;
    qsizetype from = 0;
    for (const QString& value : values) {
        const QRegularExpressionMatch match = placeholder.match(text, from);
        if (!match.hasMatch())
            break;
        text.replace(match.capturedStart(), match.capturedLength(), value);
        from = match.capturedStart() + value.size();
    }
    return text;
}
