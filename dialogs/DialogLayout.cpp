#include "dialogs/DialogLayout.h"

#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int kCaptionWidth = 112; ///< where longer captions are wrapped

/// The label of a button, its key underlined where the desktop's habit is to show keys.
class ButtonCaption : public CSkinLabel {
public:
    ButtonCaption(const QString& label, QWidget* parent)
        : CSkinLabel(QString(label).remove(u'&'), parent)
        , m_strLabel(label) {
        setFixedSize(FitText(*this, kCaptionWidth));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const bool isShown = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
        style()->drawItemText(&painter, rect(),
                              Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap |
                                  (isShown ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                              palette(), isEnabled(), m_strLabel, foregroundRole());
    }

private:
    const QString m_strLabel;
};

} // namespace

QSize FitText(const QLabel& label, int widest) {
    const QRect lines = label.fontMetrics().boundingRect(QRect(0, 0, widest, QWIDGETSIZE_MAX),
                                                         Qt::TextWordWrap, label.text());
    return {lines.width() + 1, lines.height()};
}

CDialogLayout::CDialogLayout(QWidget* parent)
    : QVBoxLayout(parent) {
    setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    setSpacing(kGap);
}

CImageButton* CDialogLayout::AddButton(PictureId glyph, const QString& label,
                                       const std::function<void()>& action, Caption caption) {
    if (!m_pButtons) {
        m_pButtons = new QHBoxLayout;
        m_pButtons->setSpacing(kGap);
        m_pButtons->addStretch();
        addLayout(m_pButtons);
    }
    auto* button = new CImageButton(glyph, QString(), parentWidget());
    button->SetLabel(label);
    QObject::connect(button, &CImageButton::clicked, button, action);
    if (caption == Caption::None) {
        m_pButtons->addWidget(button);
        return button;
    }
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addWidget(new ButtonCaption(label, parentWidget()), 0, Qt::AlignHCenter | Qt::AlignTop);
    m_pButtons->addLayout(column);
    return button;
}
