#pragma once

#include "base/IStatusDisplay.h"
#include "base/Listeners.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <chrono>
#include <vector>

class CProgressSlider;

/// The status line of the main window: the bar, its text, and its tool tip.
///
/// Thread: interface thread. Lifetime: the bar outlives this, and this the operations that it
/// shows.
class CStatusLine : public QObject, public IStatusDisplay {
public:
    explicit CStatusLine(CProgressSlider& bar);

    void ShowLasting(Lasting what, const QString& text) override;
    void ShowNews(const QString& text) override;
    [[nodiscard]] std::unique_ptr<IRunningOperation>
    BeginOperation(const QString& text, std::function<void()> cancel) override;
    [[nodiscard]] bool IsBusy() const override { return !m_operations.empty(); }
    void CancelOperations() override;

    /// Hears of each begin and end of an operation.
    [[nodiscard]] CListening OnBusyChanged(std::function<void()> call) {
        return m_busyChanged.Listen(std::move(call));
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Operation;

    void Show();
    [[nodiscard]] QString Text() const;
    [[nodiscard]] QString TimeLeft() const;

    CProgressSlider& m_bar;
    std::array<QString, 2> m_lasting; ///< by `Lasting`
    QString m_strNews;
    QTimer m_newsEnd;
    std::vector<Operation*> m_operations; ///< those that run, in the order in which they began
    CListeners<> m_busyChanged;
};
