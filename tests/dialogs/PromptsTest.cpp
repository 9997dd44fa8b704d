#include "base/Language.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/ConfirmationDlg.h"
#include "dialogs/WarningDlg.h"
#include "skin/SkinLabel.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

class PromptsTest : public ::testing::Test {
protected:
    PromptsTest() {
        SetLanguageFile(m_scratch.Write(QStringLiteral("l.lgg"), "[TrackDeck]\n"
                                                                 "IDS_BT_OK=OK\n"
                                                                 "IDS_BT_YES=Yes\n"
                                                                 "IDS_BT_NO=No\n"));
    }

private:
    ScratchFolder m_scratch;
};

/// The result of a prompt that `act` is done to; -1 if that doesn't end it.
int Answer(Prompt& prompt, const std::function<void(QWidget&)>& act) {
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
        for (auto* button : prompt.findChildren<QPushButton*>())
            if (button->accessibleName() == QString::fromLatin1(label))
                QTest::mouseClick(button, Qt::LeftButton);
    };
}

} // namespace

TEST_F(PromptsTest, AnswersKeysAndClicks) {
    const struct {
        std::function<void(QWidget&)> act;
        int confirmation;
        int warning;
    } rows[] = {
        {Key(Qt::Key_Return), 6, 1},
        {Key(Qt::Key_Enter), 6, 1},
        {Key(Qt::Key_Space), 6, 1},
        {Key(Qt::Key_Escape), 7, 1},
        {[](QWidget& prompt) { prompt.close(); }, 7, 1},
    };
    for (const auto& row : rows) {
        CConfirmationDlg confirmation(QStringLiteral("Sure?"), nullptr);
        EXPECT_EQ(Answer(confirmation, row.act), row.confirmation) << &row - rows;
        CWarningDlg warning(QStringLiteral("No."), nullptr);
        EXPECT_EQ(Answer(warning, row.act), row.warning) << &row - rows;
    }
    const struct {
        std::function<void(QWidget&)> act;
        int result;
    } confirmations[] = {
        {Click("Yes"), 6},
        {Click("No"), 7},
        {Key(Qt::Key_Y), 6},
        {Key(Qt::Key_N, Qt::AltModifier), 7},
        {[](QWidget& prompt) {
             Key(Qt::Key_Tab)(prompt);
             Key(Qt::Key_Return)(prompt);
         },
         7},
    };
    for (const auto& row : confirmations) {
        CConfirmationDlg confirmation(QStringLiteral("Sure?"), nullptr);
        EXPECT_EQ(Answer(confirmation, row.act), row.result) << &row - confirmations;
    }
}

TEST_F(PromptsTest, ShowsTextsOfAnyLengthWithinTheScreen) {
    const QString sentence = QStringLiteral("A word & <b>another</b>. ");
    const QString texts[] = {{},
                             QStringLiteral("Short."),
                             QStringLiteral("Two\nlines."),
                             sentence.repeated(80),
                             sentence.repeated(2'000),
                             QString(500, u'W'),
                             QString(60, u'W'),
                             u'x' + QStringLiteral("\U0001F3B5").repeated(500),
                             QString(300, u'\n')};
    for (const QString& text : texts) {
        CWarningDlg dialog(text, nullptr);
        dialog.show();
        const QRect screen = dialog.screen()->availableGeometry();
        EXPECT_TRUE(screen.contains(dialog.frameGeometry())) << dialog.frameGeometry().height();
        QString shown;
        for (const auto* label : dialog.findChildren<CSkinLabel*>()) {
            if (!label->pixmap().isNull())
                continue;
            EXPECT_TRUE(label->text().isValidUtf16());
            shown = label->text().remove(QChar(0x200B));
            // All of it can be seen, by scrolling at most.
            const QRect needed = label->fontMetrics().boundingRect(QRect(QPoint(), label->size()),
                                                                   Qt::TextWordWrap, label->text());
            EXPECT_LE(needed.width(), label->width());
            EXPECT_LE(needed.height(), label->height());
            const auto* area = dialog.findChild<QScrollArea*>();
            EXPECT_TRUE(area ? area->viewport()->width() >= label->width()
                             : dialog.rect().contains(label->geometry()));
        }
        EXPECT_EQ(shown, text);
        EXPECT_EQ(dialog.accessibleDescription(), text);
    }
}

TEST_F(PromptsTest, AboutTellsAllItsTexts) {
    CAboutDlg dialog(nullptr);
    dialog.show();
    EXPECT_EQ(dialog.accessibleDescription().remove(u' '),
              u"IDS_MAIN_TITLE\nIDS_ABOUT_COPYRIGHT\nIDS_ABOUT_WARNING\nIDS_ABOUT_NOTICE");
    Key(Qt::Key_Return)(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(PromptsTest, AboutKeepsItsTextsOffThePicture) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        CAboutDlg dialog(nullptr);
        dialog.show();
        for (const auto* label : dialog.findChildren<CSkinLabel*>())
            EXPECT_LT(label->geometry().right(), label->parentWidget()->width() * 6 / 10);
    }
    QApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
}
