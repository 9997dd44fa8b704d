#include "dialogs/Prompt.h"

#include "skin/ImageButton.h"
#include "skin/SkinLabel.h"

#include <QHBoxLayout>
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

/// Qt::Key_unknown for a label that has none.
Qt::Key KeyOf(const QString& label) {
    const QChar letter = label.mid(label.indexOf(u'&') + 1).append(u' ').front();
    return letter.isLetterOrNumber() ? static_cast<Qt::Key>(letter.toUpper().unicode())
                                     : Qt::Key_unknown;
}

} // namespace

CPrompt::CPrompt(PictureId sign, const QString& text, QWidget* parent)
    : CBaseDlg(parent)
    , m_pLayout(new CDialogLayout(this)) {
    setAccessibleDescription(text);
    auto* signLabel = new QLabel(this);
    signLabel->setPixmap(LoadPicture(sign, devicePixelRatioF()));
    auto* message = new QHBoxLayout;
    message->setSpacing(2 * CDialogLayout::kGap);
    message->addWidget(signLabel, 0, Qt::AlignTop);
    message->addWidget(MakeText(text), 1, Qt::AlignVCenter);
    m_pLayout->setSizeConstraint(QLayout::SetFixedSize);
    m_pLayout->addLayout(message);
    m_pLayout->addSpacing(CDialogLayout::kGap);
}

void CPrompt::AddAnswer(const Choice& choice, Caption caption) {
    const int result = choice.result;
    auto* button = m_pLayout->AddButton(
        choice.glyph, choice.label, [this, result] { done(result); }, caption);
    m_buttons[result] = button;
    const Qt::Key key = KeyOf(choice.label);
    if (key == Qt::Key_unknown || !m_keys.emplace(key, button).second)
        return;
    button->setShortcut({}); // the same key with Alt, if it has any
    auto* shortcut = new QShortcut(button);
    shortcut->setKeys({QKeySequence(key), QKeySequence(Qt::ALT | key)});
    connect(shortcut, &QShortcut::activated, button, &CImageButton::click);
}

void CPrompt::SetKeys(int enterResult, int escapeResult) {
    m_buttons.at(enterResult)->setDefault(true);
    m_buttons.at(enterResult)->setFocus();
    m_iEscapeResult = escapeResult;
}

QWidget* CPrompt::MakeText(const QString& text) {
    const QSize largest = screen()->availableSize() - kAround;
    auto* label = new CSkinLabel(BreakLongWords(text), this);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const int widest = qMin(kMaxTextWidth, largest.width());
    label->setFixedSize(FitText(*label, widest).expandedTo({qMin(kMinTextWidth, widest), 0}));
    if (label->height() <= largest.height())
        return label;

    constexpr int kMargin = CDialogLayout::kGap / 2;
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
