#include "skin/MenuLook.h"

#include "base/Settings.h"
#include "platform/KeyValueStore.h"

namespace {

/// As long as the path of a theme's file can be.
constexpr qsizetype kLongestThemeName = 260;

} // namespace

MenuLook MenuLookFor(const KeyValueStore& store) {
    const auto theme = store.ReadText(QStringLiteral("Software/Microsoft/Plus!/Themes/Current"),
                                      kLongestThemeName);
    const bool isClassic =
        theme && theme->endsWith(QStringLiteral("Windows Classic.theme"), Qt::CaseInsensitive);
    return isClassic ? MenuLook::Classic : MenuLook::Normal;
}

MenuLook CurrentMenuLook() {
    static const MenuLook look = MenuLookFor(KeyValueStore(UserStoreFile()));
    return look;
}
