#include "dialogs/AboutDlg.h"

#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "skin/Colours.h"
#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

// The picture at 120 %: it leaves its left 240 of 400 pixels to the texts.
constexpr QSize kGroundSize(480, 288);
constexpr int kTextWidth = 288 - 2 * CDialogLayout::kMargin;

/// The picture behind the texts, stretched over the whole client area.
class Ground : public QWidget {
public:
    explicit Ground(QWidget* parent)
        : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), LoadPicture(PictureId::About, devicePixelRatioF()));
    }
};

QFont TextFont() {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(14);
    font.setBold(true);
    return font;
}

} // namespace

CAboutDlg::CAboutDlg(QWidget* parent)
    : CBaseDlg(parent) {
    setWindowTitle(LoadString(IDS_MAIN_ABOUT));
    AddHelpKey(*this, IDS_HELPDOC_TRACKDK);
    auto* ground = new Ground(this);
    ground->setMinimumSize(kGroundSize);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addWidget(ground);

    auto* layout = new CDialogLayout(ground);

    QStringList texts = {LoadString(IDS_MAIN_TITLE) + u' ' +
                         QCoreApplication::applicationVersion()};
    for (const StringId id : {IDS_ABOUT_COPYRIGHT, IDS_ABOUT_WARNING, IDS_ABOUT_NOTICE})
        texts += LoadString(id);
    for (const QString& text : texts) {
        auto* label = new CSkinLabel(text.trimmed(), ground);
        QPalette colours = label->palette();
        colours.setColor(QPalette::WindowText, QColor(Colours::kText));
        label->setPalette(colours);
        label->setFont(TextFont());
        label->setWordWrap(true);
        label->setFixedSize(kTextWidth, label->heightForWidth(kTextWidth));
        layout->addWidget(label, 0, Qt::AlignLeft | Qt::AlignAbsolute);
    }
    setAccessibleDescription(texts.join(u'\n'));
    layout->addStretch();
    auto* ok = layout->AddButton(PictureId::Ok, IDS_BT_OK, [this] { accept(); });
    ok->setDefault(true);
    ok->setFocus();
}
