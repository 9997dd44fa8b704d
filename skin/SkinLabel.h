#pragma once

#include <QLabel>

/// The text of a dialog. It is shown as it is: names of files may look like markup.
///
/// Thread: interface thread.
class CSkinLabel : public QLabel {
public:
    CSkinLabel(const QString& text, QWidget* parent)
        : QLabel(text, parent) {
        setTextFormat(Qt::PlainText);
    }
};
