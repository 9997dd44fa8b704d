#include "skin/FrameAccessible.h"

#include "skin/SkinWnd.h"

#include <QAccessible>
#include <QDialog>

#include <algorithm>
#include <vector>

namespace {

/// A button of a frame.
class FrameButtonAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    FrameButtonAccessible(const CFrameAccessible& frame, int hit)
        : m_frame(frame)
        , m_nHit(hit) {}

    [[nodiscard]] int Hit() const { return m_nHit; }

    [[nodiscard]] bool isValid() const override { return m_frame.Skin(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override { return m_frame.window(); }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_frame.object());
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? Button().name : QString();
    }
    [[nodiscard]] QRect rect() const override {
        const QRect place = Button().place;
        return isValid() ? place.translated(m_frame.rect().topLeft()) : QRect();
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = Button().place.isEmpty() || m_frame.state().invisible;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        CSkinWnd* skin = m_frame.Skin();
        if (skin && name == pressAction())
            skin->ClickButton(m_nHit);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    /// An empty one once the frame has no such button any more.
    [[nodiscard]] FrameButton Button() const {
        for (FrameButton& button : m_frame.GetButtons())
            if (button.hit == m_nHit)
                return std::move(button);
        return {};
    }

    const CFrameAccessible& m_frame;
    int m_nHit;
};

} // namespace

void CFrameAccessible::Install() {
    QAccessible::installFactory(&CFrameAccessible::Make); // which leaves out one it has
}

QAccessibleInterface* CFrameAccessible::Make(const QString& className, QObject* object) {
    const bool isDialog = className == QLatin1String(QDialog::staticMetaObject.className());
    return isDialog && dynamic_cast<IFramedWindow*>(object)
               ? new CFrameAccessible(*static_cast<QDialog*>(object))
               : nullptr;
}

CFrameAccessible::CFrameAccessible(QDialog& dialog)
    : QAccessibleWidget(&dialog, QAccessible::Dialog) {}

CFrameAccessible::~CFrameAccessible() {
    for (const auto& [hit, id] : m_buttons)
        QAccessible::deleteAccessibleInterface(id);
}

CSkinWnd* CFrameAccessible::Skin() const {
    auto* window = dynamic_cast<IFramedWindow*>(widget());
    return window ? &window->GetSkin() : nullptr;
}

std::vector<FrameButton> CFrameAccessible::GetButtons() const {
    const CSkinWnd* skin = Skin();
    return skin ? skin->GetButtons() : std::vector<FrameButton>();
}

int CFrameAccessible::childCount() const {
    return QAccessibleWidget::childCount() + static_cast<int>(GetButtons().size());
}

QAccessibleInterface* CFrameAccessible::child(int index) const {
    const int button = index - QAccessibleWidget::childCount();
    if (button < 0)
        return QAccessibleWidget::child(index);
    const std::vector<FrameButton> buttons = GetButtons();
    if (button >= std::ssize(buttons))
        return nullptr;
    const int hit = buttons[static_cast<std::size_t>(button)].hit;
    auto known = m_buttons.find(hit);
    if (known == m_buttons.end()) {
        auto* made = new FrameButtonAccessible(*this, hit);
        known = m_buttons.emplace(hit, QAccessible::registerAccessibleInterface(made)).first;
    }
    return QAccessible::accessibleInterface(known->second);
}

QAccessibleInterface* CFrameAccessible::childAt(int x, int y) const {
    for (int i = QAccessibleWidget::childCount(); i < childCount(); ++i)
        if (QAccessibleInterface* button = child(i); button->rect().contains(x, y))
            return button;
    return QAccessibleWidget::childAt(x, y);
}

int CFrameAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* button = dynamic_cast<const FrameButtonAccessible*>(child);
    if (!button)
        return QAccessibleWidget::indexOfChild(child);
    const std::vector<FrameButton> buttons = GetButtons();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const FrameButton& one) {
        return one.hit == button->Hit();
    });
    return found == buttons.end()
               ? -1
               : QAccessibleWidget::childCount() + static_cast<int>(found - buttons.begin());
}
