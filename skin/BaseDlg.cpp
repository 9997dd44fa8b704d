#include "skin/BaseDlg.h"

CBaseDlg::CBaseDlg(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags) {}

void SetThemeFile(const QString&) {}
