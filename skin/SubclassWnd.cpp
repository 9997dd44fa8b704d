#include "skin/SubclassWnd.h"

void CSubclassWnd::HookWindow(QWidget* window) {
    if (m_hWnd)
        m_hWnd->removeEventFilter(this);
    m_hWnd = window;
    if (m_hWnd)
        m_hWnd->installEventFilter(this);
}

bool CSubclassWnd::eventFilter(QObject* object, QEvent* event) {
    return object == m_hWnd && WindowProc(*event);
}
