#include "app/CommandAction.h"

#include "base/Language.h"
#include "library/CommandMap.h"
#include "library/Commands.h"

#include <QAction>
#include <QMenu>

QAction* MakeCommandAction(const MenuItem& item, const char* prefix, const CCommandMap& commands,
                           QObject* owner) {
    auto* action = new QAction(
        GetMenuText(QString::fromLatin1(prefix), QString::fromLatin1(item.name)), owner);
    if (item.key.key() != 0)
        action->setShortcut(item.key);
    // One page of help for a key that is held; only moves go on.
    action->setAutoRepeat(item.command == Command::kMoveUp || item.command == Command::kMoveDown);
    action->setEnabled(commands.Has(item.command));
    QObject::connect(action, &QAction::triggered, action,
                     [&commands, action, command = item.command] {
                         if (!action->menu()) // which a screen reader may press, too
                             commands.Run(command);
                     });
    return action;
}

QString MenuTextOf(const QString& name) {
    QString text = name;
    text.replace(u'&', QStringLiteral("&&"));
    return text.startsWith(u'&') ? text : u'&' + text;
}
