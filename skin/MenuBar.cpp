#include "skin/MenuBar.h"

#include <QShortcut>

CMenuBar::CMenuBar(QWidget* parent)
    : QMenuBar(parent) {
    setNativeMenuBar(false);
    const auto* openFirst = new QShortcut(Qt::Key_F10, this);
    QObject::connect(openFirst, &QShortcut::activated, this, [this] {
        if (!actions().isEmpty())
            setActiveAction(actions().constFirst());
    });
}

BCMenu& CMenuBar::AddMenu(const QString& title) {
    auto* menu = new BCMenu(title, this);
    addMenu(menu);
    return *menu;
}
