#include "app/StatusLine.h"

#include "base/Language.h"
#include "skin/ProgressSlider.h"

#include <QHelpEvent>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kNewsTime = 8s;

} // namespace

class CStatusLine::Operation : public IRunningOperation {
public:
    Operation(CStatusLine& line, QString text, std::function<void()> cancel)
        : m_line(line)
        , m_pfnCancel(std::move(cancel))
        , m_strText(std::move(text)) {}

    ~Operation() override {
        std::erase(m_line.m_operations, this);
        m_line.Show();
        m_line.m_busyChanged.Tell();
    }

    void ShowProgress(const QString& text, int percent) override {
        m_strText = text;
        m_nPercent = percent;
        m_line.Show();
    }

    CStatusLine& m_line;
    const std::function<void()> m_pfnCancel;
    QString m_strText;
    int m_nPercent = -1;
    const Clock::time_point m_begin = Clock::now();
};

CStatusLine::CStatusLine(CProgressSlider& bar)
    : m_bar(bar) {
    m_bar.installEventFilter(this);
    m_newsEnd.setSingleShot(true);
    m_newsEnd.callOnTimeout(this, [this] {
        m_strNews.clear();
        Show();
    });
}

void CStatusLine::ShowLasting(Lasting what, const QString& text) {
    m_lasting[static_cast<std::size_t>(what)] = text;
    Show();
}

void CStatusLine::ShowNews(const QString& text) {
    m_strNews = text;
    m_newsEnd.start(kNewsTime);
    Show();
}

std::unique_ptr<IRunningOperation> CStatusLine::BeginOperation(const QString& text,
                                                               std::function<void()> cancel) {
    auto operation = std::make_unique<Operation>(*this, text, std::move(cancel));
    m_operations.push_back(operation.get());
    Show();
    m_busyChanged.Tell();
    return operation;
}

/// One may end with another.
void CStatusLine::CancelOperations() {
    for (const Operation* operation : std::vector(m_operations))
        if (std::count(m_operations.begin(), m_operations.end(), operation) > 0)
            std::function(operation->m_pfnCancel)(); // a copy: it ends its operation
}

void CStatusLine::Show() {
    m_bar.SetCaption(Text());
    m_bar.setValue(IsBusy() ? std::max(m_operations.back()->m_nPercent, 0) : 0);
}

QString CStatusLine::Text() const {
    if (IsBusy())
        return m_operations.back()->m_strText;
    if (!m_strNews.isEmpty())
        return m_strNews;
    QStringList lasting(m_lasting.begin(), m_lasting.end());
    lasting.removeAll(QString());
    return lasting.join(QStringLiteral(" - "));
}

/// Empty where nobody knows.
QString CStatusLine::TimeLeft() const {
    if (!IsBusy() || m_operations.back()->m_nPercent <= 0)
        return {};
    const Operation& operation = *m_operations.back();
    const auto passed =
        std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - operation.m_begin);
    const auto left = passed.count() * (100 - operation.m_nPercent) / operation.m_nPercent;
    const QString time = QStringLiteral("%1:%2").arg(left / 60).arg(left % 60, 2, 10, QChar(u'0'));
    return FormatText(LoadString(IDS_STATUS_TIMELEFT), {time});
}

/// The bar shows, and is not to be moved.
bool CStatusLine::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        event->ignore();
        return true;
    case QEvent::ToolTip:
        if (const QString left = TimeLeft(); !left.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), left, &m_bar);
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
