#pragma once

#include "base/StringTable.h"

#include <QString>
#include <QStringList>

/// Identifiers of the texts a user sees. The numbers are stable.
enum StringId : int {
#define TRACKDECK_STRING_ID(id, key) key = id,
    TRACKDECK_STRING_TABLE(TRACKDECK_STRING_ID)
#undef TRACKDECK_STRING_ID
};

// No text that a user sees is compiled into the program: all of it lies in one language file, in
// the section "TrackDeck". Each question reads that file, so callers ask when they show a text and
// not in a loop over rows. Where the file or a key is missing, the key itself is the text.
//
// Thread: any, after SetLanguageFile() at the start of the process.

/// The file that all texts come from.
void SetLanguageFile(const QString& path);

/// The text of an identifier; empty for a number that is none.
[[nodiscard]] QString LoadString(int id);

/// The text of a key, at most 1023 UTF-16 units of it. The character pairs \n, \r and \t in the
/// file stand for line feed, carriage return and tab.
[[nodiscard]] QString GetLanguageText(const QString& key);

/// The text of a menu item or header that is known by its English name: that of the key made of
/// `prefix` and `name` without blanks and ampersands in upper case, else that of the key `name`.
[[nodiscard]] QString GetMenuText(const QString& prefix, const QString& name);

/// `format` with its placeholders (%s, %d, %u) replaced by `values`, in their order. A text from
/// the file may have too many or too few of them: what is left over stays as it is.
[[nodiscard]] QString FormatText(const QString& format, const QStringList& values);
