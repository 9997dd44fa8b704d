#pragma once

#include "base/IPrompts.h"

class QWidget;

/// Asks and warns the user in dialogs over a window.
class CPrompts : public IPrompts {
public:
    explicit CPrompts(QWidget& window)
        : m_window(window) {}

    [[nodiscard]] bool Confirm(const QString& question) override;
    void Warn(const QString& text) override;
    [[nodiscard]] Answer Ask(const Question& question) override;

private:
    QWidget& m_window;
};
