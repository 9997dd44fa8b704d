#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

/// Sees the events of one window before the window's own class does, and can stop them. The object
/// hooked last comes first.
///
/// Thread: interface thread. The hook ends with the window or with this object, whichever goes
/// first.
class CSubclassWnd : public QObject {
public:
    /// Leaves the window that was hooked before, and hooks this one; with none it only leaves.
    void HookWindow(QWidget* window);

    [[nodiscard]] bool IsHooked() const { return !m_hWnd.isNull(); }
    [[nodiscard]] QWidget* Window() const { return m_hWnd; }

protected:
    /// True stops the event: neither the next hook nor the window gets it.
    virtual bool WindowProc(QEvent& event) = 0;

private:
    bool eventFilter(QObject* object, QEvent* event) final;

    QPointer<QWidget> m_hWnd;
};
