#include "skin/SubclassWnd.h"

#include <QCoreApplication>
#include <QEvent>
#include <gtest/gtest.h>

namespace {

class Window : public QWidget {
public:
    explicit Window(QString& log)
        : m_log(log) {}

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User)
            m_log += u'w';
        return QWidget::event(event);
    }

private:
    QString& m_log;
};

class Hook : public CSubclassWnd {
public:
    Hook(QString& log, char name)
        : m_log(log)
        , m_name(QLatin1Char(name)) {}

    bool m_bStops = false;

protected:
    bool WindowProc(QEvent& event) override {
        if (event.type() == QEvent::User)
            m_log += m_name;
        return m_bStops;
    }

private:
    QString& m_log;
    QChar m_name;
};

} // namespace

TEST(SubclassWndTest, TheHookMadeLastComesFirstAndCanStop) {
    QString log;
    auto window = std::make_unique<Window>(log);
    const auto send = [&] {
        log.clear();
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(window.get(), &event);
        return log;
    };
    Hook a(log, 'a');
    Hook b(log, 'b');
    a.HookWindow(window.get());
    b.HookWindow(window.get());
    EXPECT_EQ(send(), u"baw");
    a.m_bStops = true;
    EXPECT_EQ(send(), u"ba");
    a.HookWindow(window.get());
    EXPECT_EQ(send(), u"a");
    a.m_bStops = false;
    {
        Hook c(log, 'c');
        c.HookWindow(window.get());
        EXPECT_EQ(send(), u"cabw");
    }
    b.HookWindow(nullptr);
    EXPECT_EQ(send(), u"aw");
    window.reset();
    EXPECT_FALSE(a.IsHooked());
}
