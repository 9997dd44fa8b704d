#include "dialogs/DialogLayout.h"

#include "dialogs/Help.h"
#include "skin/ImageButton.h"

#include <QHBoxLayout>

DialogLayout::DialogLayout(QWidget* parent)
    : QVBoxLayout(parent) {
    setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    setSpacing(kGap);
}

CImageButton* DialogLayout::AddButton(PictureId glyph, StringId label,
                                      const std::function<void()>& action) {
    if (!m_pButtons) {
        m_pButtons = new QHBoxLayout;
        m_pButtons->setSpacing(kGap);
        m_pButtons->addStretch();
        addLayout(m_pButtons);
    }
    auto* button = new CImageButton(glyph, QString(), parentWidget());
    button->SetLabel(LoadString(label));
    QObject::connect(button, &CImageButton::clicked, button, action);
    m_pButtons->addWidget(button);
    return button;
}

void DialogLayout::AddHelpButton(StringId topic) {
    QWidget* dialog = parentWidget();
    AddButton(PictureId::Help, IDS_BT_HELP, [=] {
        OpenHelp(topic, dialog);
    })->SetTooltipText(LoadString(IDS_BT_HELP), QKeySequence::HelpContents);
    AddHelpKey(*dialog, topic);
}
