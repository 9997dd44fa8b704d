#include "dialogs/QuestionDlg.h"

#include <QCheckBox>
#include <QLayout>

CQuestionDlg::CQuestionDlg(const Question& question, QWidget* parent)
    : CPrompt(PictureId::QuestionSign, question.text, parent) {
    setWindowTitle(LoadString(IDS_MAIN_TITLE));
    if (!question.box.isEmpty()) {
        m_pBox = new QCheckBox(question.box, this);
        layout()->addWidget(m_pBox);
    }
    int result = 0;
    for (const Question::Choice& choice : question.choices)
        AddAnswer({choice.agrees ? PictureId::Ok : PictureId::No, choice.text, result++},
                  Caption::Shown);
    SetKeys(static_cast<int>(question.onEnter), static_cast<int>(question.onEscape));
}

Answer CQuestionDlg::GetAnswer() const {
    return {static_cast<std::size_t>(result()), m_pBox && m_pBox->isChecked()};
}
