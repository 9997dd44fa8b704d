#pragma once

#include "base/IPrompts.h"

class QWidget;

/// Asks and tells the user in dialogs over a window.
class CPrompts : public IPrompts {
public:
    explicit CPrompts(QWidget& window)
        : m_window(window) {}

    [[nodiscard]] bool Confirm(const QString& question) override;
    void Warn(const QString& text) override;

private:
    QWidget& m_window;
};
