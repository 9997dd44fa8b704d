#pragma once

#include <QAccessibleWidget>

#include <map>
#include <vector>

class CSkinWnd;
class QDialog;
struct FrameButton;

/// A dialog whose frame is ours.
class IFramedWindow {
public:
    [[nodiscard]] virtual CSkinWnd& GetSkin() = 0;

protected:
    ~IFramedWindow() = default;
};

/// A dialog as a screen reader sees it: behind its other children come the buttons of its frame,
/// which are no widgets.
///
/// Thread: interface thread. Owner: Qt's table of interfaces.
class CFrameAccessible final : public QAccessibleWidget {
public:
    /// Lets Qt find this class for dialogs. Once is enough, more do no harm.
    static void Install();

    /// The dialog is an IFramedWindow, too.
    explicit CFrameAccessible(QDialog& dialog);
    ~CFrameAccessible() override;

    /// None while the dialog is destroyed, though what lies in it may still be asked for then.
    [[nodiscard]] CSkinWnd* Skin() const;
    [[nodiscard]] std::vector<FrameButton> GetButtons() const;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

private:
    static QAccessibleInterface* Make(const QString& className, QObject* object);

    mutable std::map<int, QAccessible::Id> m_buttons; ///< by what lies there; made when asked for
};
