#pragma once

#include "skin/BaseDlg.h"

/// Tells the program's name and version, whose it is, and under which terms it may be used.
///
/// Thread: interface thread.
class CAboutDlg : public CBaseDlg {
public:
    explicit CAboutDlg(QWidget* parent);
};
