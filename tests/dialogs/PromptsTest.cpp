#include "dialogs/Prompts.h"

#include "base/Language.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/ConfirmationDlg.h"
#include "dialogs/QuestionDlg.h"
#include "dialogs/WarningDlg.h"
#include "skin/SkinLabel.h"
#include "tests/fixtures/Printers.h"

#include <QCheckBox>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

namespace {

struct PromptsTest : ::testing::Test {
    PromptsTest() { SetLanguageFile(LANGUAGES_FOLDER "/language.lgg"); }
};

Question MakeQuestion(const QString& text) {
    return {text,
            {{"Yes", true},
             {"No"},
             {"Yes to &all", true},
             {"No, but as for the others I will make up my mind later"}},
            0,
            1,
            "&Do not ask again"};
}

/// The result of a prompt that `act` is done to; -1 if that doesn't end it.
int ResultOf(CPrompt&& prompt, const std::function<void(QWidget&)>& act) {
    prompt.setResult(-1);
    prompt.setModal(true);
    prompt.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&prompt));
    act(prompt);
    return prompt.isVisible() ? -1 : prompt.result();
}

std::function<void(QWidget&)> Key(int key, Qt::KeyboardModifiers modifiers = {}) {
    return [=](QWidget& prompt) {
        QWidget* focus = prompt.focusWidget();
        QTest::keyClick(focus ? focus : &prompt, static_cast<Qt::Key>(key), modifiers);
    };
}

std::function<void(QWidget&)> Click(const char* label) {
    return [=](QWidget& prompt) {
        for (auto* button : prompt.findChildren<QAbstractButton*>())
            if (button->accessibleName() == label)
                QTest::mouseClick(button, Qt::LeftButton);
    };
}

} // namespace

TEST_F(PromptsTest, AnswersKeysAndClicks) {
    // What the user does, and the results of a confirmation, a warning and a question.
    const std::tuple<std::function<void(QWidget&)>, int, int, int> rows[] = {
        {Key(Qt::Key_Return), 6, 1, 0},
        {Key(Qt::Key_Enter), 6, 1, 0},
        {Key(Qt::Key_Space), 6, 1, 0},
        {Key(Qt::Key_Escape), 7, 1, 1},
        {[](QWidget& prompt) { prompt.close(); }, 7, 1, 1},
        {Click("Yes"), 6, -1, 0},
        {Click("No"), 7, -1, 1},
        {Click("Yes to all"), -1, -1, 2},
        {Key(Qt::Key_Y), 6, -1, 0},
        {Key(Qt::Key_N, Qt::AltModifier), 7, -1, 1},
        {Key(Qt::Key_A), -1, -1, 2},
        {Key(Qt::Key_A, Qt::AltModifier), -1, -1, 2},
        {Key(Qt::Key_D, Qt::AltModifier), -1, -1, -1},
        {[](QWidget& prompt) {
             Key(Qt::Key_Tab)(prompt);
             Key(Qt::Key_Return)(prompt);
         },
         7, 1, 1}};
    const QString text = "Sure?";
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const auto& [act, confirmation, warning, question] = row;
        EXPECT_EQ(ResultOf(CConfirmationDlg(text, nullptr), act), confirmation);
        EXPECT_EQ(ResultOf(CWarningDlg(text, nullptr), act), warning);
        EXPECT_EQ(ResultOf(CQuestionDlg(MakeQuestion(text), nullptr), act), question);
    }
}

TEST_F(PromptsTest, WaitForTheUserOverTheWindow) {
    QWidget window;
    CPrompts prompts(window);
    const auto then = [&](std::function<void(QWidget&)> act) {
        QTimer::singleShot(0, &window, [&window, act = std::move(act)] {
            QWidget& prompt = *QApplication::activeModalWidget();
            EXPECT_EQ(prompt.parentWidget(), &window);
            act(prompt);
        });
    };
    then(Click("Yes"));
    EXPECT_TRUE(prompts.Confirm({}));
    then(Click("No"));
    EXPECT_FALSE(prompts.Confirm({}));
    then(Click("OK"));
    prompts.Warn({});
    Question question = MakeQuestion({});
    then([](QWidget& prompt) {
        QTest::mouseClick(prompt.findChild<QCheckBox*>(), Qt::LeftButton, {}, {8, 8});
        Key(Qt::Key_Return)(prompt);
    });
    const Answer ticked = prompts.Ask(question);
    EXPECT_TRUE(ticked.choice == 0 && ticked.isTicked);
    question.box.clear();
    then(Click("Yes to all"));
    const Answer answer = prompts.Ask(question);
    EXPECT_TRUE(answer.choice == 2 && !answer.isTicked);
}

TEST_F(PromptsTest, ShowTextsOfAnyLengthWithinTheScreen) {
    const QString sentence = "A word & <b>another</b>. ";
    const QString notes = u'x' + QStringLiteral("\U0001F3B5").repeated(500);
    const QString texts[] = {{},
                             "Two\nlines.",
                             sentence.repeated(80),
                             sentence.repeated(2'000),
                             QString(500, u'W'),
                             notes,
                             QString(300, u'\n')};
    for (const QString& text : texts) {
        CQuestionDlg dialog(MakeQuestion(text), nullptr);
        dialog.show();
        const QRect screen = dialog.screen()->availableGeometry();
        EXPECT_TRUE(screen.contains(dialog.frameGeometry())) << dialog.frameGeometry().height();
        QStringList shown;
        for (const auto* label : dialog.findChildren<CSkinLabel*>()) {
            if (!label->pixmap().isNull())
                continue;
            EXPECT_TRUE(label->text().isValidUtf16());
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            shown += label->text().remove(QChar(0x200B));
            // All of it can be seen, by scrolling at most.
            const QRect needed = label->fontMetrics().boundingRect(QRect(QPoint(), label->size()),
                                                                   Qt::TextWordWrap, label->text());
            EXPECT_LE(needed.width(), label->width());
            EXPECT_LE(needed.height(), label->height());
            const auto* area = dialog.findChild<QScrollArea*>();
            EXPECT_TRUE(area && area->isAncestorOf(label)
                            ? area->viewport()->width() >= label->width()
                            : dialog.rect().contains(label->geometry()));
        }
        QStringList expected{text};
        for (const Question::Choice& choice : MakeQuestion(text).choices)
            expected += QString(choice.text).remove(u'&');
        EXPECT_EQ(shown, expected);
        EXPECT_EQ(dialog.accessibleDescription(), text);
    }
}

TEST_F(PromptsTest, AboutShowsAllItsTextsBesideItsPicture) {
    SetLanguageFile({});
    CAboutDlg dialog(nullptr);
    dialog.setLayoutDirection(Qt::RightToLeft);
    dialog.show();
    for (const auto* label : dialog.findChildren<CSkinLabel*>())
        EXPECT_LT(label->geometry().right(), label->parentWidget()->width() * 6 / 10);
    EXPECT_EQ(dialog.accessibleDescription().remove(u' '),
              u"IDS_MAIN_TITLE\nIDS_ABOUT_COPYRIGHT\nIDS_ABOUT_WARNING\nIDS_ABOUT_NOTICE");
    Key(Qt::Key_Return)(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}
