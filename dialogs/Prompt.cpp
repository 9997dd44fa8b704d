#include "dialogs/Prompt.h"

#include "dialogs/DialogLayout.h"
#include "dialogs/Help.h"
#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace {

constexpr int kMinTextWidth = 200; ///< room for the window's title
constexpr int kMaxTextWidth = 400; ///< where longer lines are wrapped
constexpr QSize kAround(160, 200); ///< what the text leaves of the screen for all else

constexpr qsizetype kLongestWord = 24;
constexpr qsizetype kPieceOfWord = 8;

/// A word that may be wider than a line, such as a path, gets invisible places to be broken at.
QString BreakLongWords(const QString& text) {
    QString broken;
    for (qsizetype start = 0; start < text.size();) {
        const auto space = std::find_if(text.begin() + start, text.end(),
                                        [](QChar unit) { return unit.isSpace(); });
        const qsizetype end = qMin(space - text.begin() + 1, text.size()); // behind the space
        const bool isLong = end - start > kLongestWord;
        qsizetype piece = start;
        for (qsizetype i = start; i < end; ++i) {
            if (isLong && i - piece >= kPieceOfWord && !text[i].isLowSurrogate()) {
                broken += QChar(0x200B);
                piece = i;
            }
            broken += text[i];
        }
        start = end;
    }
    return broken;
}

/// Y answers yes, and Alt+Y too.
void SetKeyOfLabel(CImageButton* button) {
    const QChar letter = button->accessibleName().append(u' ').front();
    if (!letter.isLetter())
        return;
    const auto key = static_cast<Qt::Key>(letter.toUpper().unicode());
    auto* shortcut = new QShortcut(button);
    shortcut->setKeys({QKeySequence(key), QKeySequence(Qt::ALT | key)});
    QObject::connect(shortcut, &QShortcut::activated, button, &CImageButton::click);
}

} // namespace

Prompt::Prompt(PictureId sign, const QString& text, const std::vector<Answer>& answers,
               QWidget* parent)
    : CBaseDlg(parent)
    , m_escapeResult(answers.back().result) {
    setAccessibleDescription(text);
    AddHelpKey(*this, IDS_HELPDOC_TRACKDK);
    auto* signLabel = new QLabel(this);
    signLabel->setPixmap(LoadPicture(sign, devicePixelRatioF()));
    auto* message = new QHBoxLayout;
    message->setSpacing(2 * DialogLayout::kGap);
    message->addWidget(signLabel, 0, Qt::AlignTop);
    message->addWidget(MakeText(text), 1, Qt::AlignVCenter);
    auto* layout = new DialogLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(message);
    layout->addSpacing(DialogLayout::kGap);

    CImageButton* enter = nullptr;
    for (const Answer& answer : answers) {
        auto* button =
            layout->AddButton(answer.glyph, answer.label, [this, answer] { done(answer.result); });
        SetKeyOfLabel(button);
        if (!enter)
            enter = button;
    }
    enter->setDefault(true);
    enter->setFocus();
}

QWidget* Prompt::MakeText(const QString& text) {
    const QSize largest = screen()->availableSize() - kAround;
    auto* label = new CSkinLabel(BreakLongWords(text), this);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const int widest = qMin(kMaxTextWidth, largest.width());
    const QRect lines = label->fontMetrics().boundingRect(QRect(0, 0, widest, QWIDGETSIZE_MAX),
                                                          Qt::TextWordWrap, label->text());
    label->setFixedSize(qMax(lines.width() + 1, qMin(kMinTextWidth, widest)), lines.height());
    if (label->height() <= largest.height())
        return label;

    constexpr int kMargin = DialogLayout::kGap / 2;
    label->setMargin(kMargin);
    label->setFixedSize(label->size().grownBy({kMargin, kMargin, kMargin, kMargin}));
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::StyledPanel); // which shows the focus, to scroll by keyboard
    area->setAccessibleName(text);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(label);
    area->viewport()->setAutoFillBackground(false);
    label->setAutoFillBackground(false);
    area->setFixedSize(label->width() + 2 * area->frameWidth() +
                           area->verticalScrollBar()->sizeHint().width(),
                       largest.height());
    return area;
}
