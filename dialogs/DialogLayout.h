#pragma once

#include "base/Language.h"
#include "skin/Pictures.h"

#include <QVBoxLayout>

#include <functional>

class CImageButton;
class QHBoxLayout;
class QLabel;

/// The room that the text of a label takes, its lines wrapped at a width.
[[nodiscard]] QSize FitText(const QLabel& label, int widest);

/// Whether the label of a button can be read under it.
enum class Caption { None, Shown };

/// The layout of every dialog: its parts in a column, and under them a row of round buttons at the
/// bottom right. What is shared by all of them is the distances, on a grid of 4 px.
class CDialogLayout : public QVBoxLayout {
public:
    static constexpr int kMargin = 16; ///< around the parts
    static constexpr int kGap = 8;     ///< between two parts

    explicit CDialogLayout(QWidget* parent);

    /// Appends a button to the row; the first call puts the row under what the column has by then.
    CImageButton* AddButton(PictureId glyph, const QString& label,
                            const std::function<void()>& action, Caption caption = Caption::None);
    CImageButton* AddButton(PictureId glyph, StringId label, const std::function<void()>& action) {
        return AddButton(glyph, LoadString(label), action);
    }

private:
    QHBoxLayout* m_pButtons = nullptr;
};
