#pragma once

#include "base/Language.h"

class CDialogLayout;
class QWidget;

// The help: pages in a folder beside the program, shown by the desktop's browser. The language file
// names the folder and the pages, so a translation can have pages of its own; a name that leads out
// of the folder is that of no page.
//
// Thread: interface thread.

/// Opens the page of a topic, an identifier IDS_HELPDOC_.... If there is no such page, or no
/// browser for it, a warning over `parent` names its path.
void OpenHelp(StringId topic, QWidget* parent);

/// Lets F1, or whatever key the desktop has for help, open the page of a topic from a dialog.
void AddHelpKey(QWidget& dialog, StringId topic);

/// Appends a button for the help on a topic to the dialog's row, and gives the dialog the key for
/// it.
void AddHelpButton(CDialogLayout& layout, StringId topic);
