#pragma once

class CCommandMap;
class QAction;
class QObject;
class QString;
struct MenuItem;

/// The action of a menu's item, with its text, key and command; gray if nothing is done for the
/// command. `prefix` is that of the menu. `owner` owns it.
[[nodiscard]] QAction* MakeCommandAction(const MenuItem& item, const char* prefix,
                                         const CCommandMap& commands, QObject* owner);

/// A menu's text for a name that anybody may have given: its first letter picks it.
[[nodiscard]] QString MenuTextOf(const QString& name);
