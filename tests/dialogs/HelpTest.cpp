#include "dialogs/Help.h"

#include "base/Language.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/FolderDlg.h"
#include "dialogs/Prompts.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "dialogs/SetColumnDlg.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace {

/// Has a help folder beside this program, and the desktop's browser.
class HelpTest : public ::testing::Test {
protected:
    HelpTest() {
        for (const char* page : {"index.html", "scanning.html", "customize-view.html"})
            WriteFile(m_pages.filePath(QString::fromLatin1(page)), "<p>A page.");
        UseTopic(QStringLiteral("index.html"));
        QObject::connect(&m_browser, &QTextBrowser::sourceChanged,
                         [this](const QUrl& url) { m_strOpened = url.toLocalFile(); });
        QDesktopServices::setUrlHandler(QStringLiteral("file"), &m_browser, "setSource");
    }
    ~HelpTest() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    /// Lets the language file give the main topic this page, and perhaps all of them this folder.
    void UseTopic(const QString& page, const QString& folder = {}) const {
        SetLanguageFile(m_scratch.Write(QStringLiteral("l.lgg"),
                                        "[TrackDeck]\n"
                                        "IDS_HELPDOCUMENT=" +
                                            (folder.isEmpty() ? Folder() : folder).toUtf8() +
                                            "\nIDS_HELPDOC_TRACKDK=" + page.toUtf8() +
                                            "\nIDS_HELPDOC_SCANNING=scanning.html\n"
                                            "IDS_HELPDOC_MODVIEW=customize-view.html\n"
                                            "IDS_HELP_UNOPENED=No page %s\n"));
    }

    [[nodiscard]] QString Folder() const { return QDir(m_pages.path()).dirName(); }

    /// The file that the browser had to open since the last call.
    [[nodiscard]] QString TakeOpened() { return std::exchange(m_strOpened, {}); }

    /// The text of the warning, empty if there is none, by which opening the main topic ends.
    [[nodiscard]] static QString OpenMainTopic() {
        QString warning;
        QTimer::singleShot(0, qApp, [&warning] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                warning = dialog->accessibleDescription();
                dialog->close();
            }
        });
        OpenHelp(IDS_HELPDOC_TRACKDK, nullptr);
        QCoreApplication::processEvents();
        return warning;
    }

    const QTemporaryDir m_pages{QCoreApplication::applicationDirPath() +
                                QStringLiteral("/h\u00E9lp #1 %41-XXXXXX")};
    const ScratchFolder m_scratch;
    QString m_strOpened;
    QTextBrowser m_browser;
};

} // namespace

TEST_F(HelpTest, EveryDialogOpensItsTopic) {
    CMediaLists lists;
    CLibraryScanner scanner(lists);
    CAboutDlg about(nullptr);
    CFolderDlg folder(m_scratch.Path(), nullptr);
    CScanPCDlg scan(nullptr);
    CScanningDlg scanning(scanner, {0, m_scratch.Path(), false}, nullptr);
    CSetColumnDlg columns(0, nullptr);
    const std::tuple<QDialog*, const char*, int> rows[] = {{&about, "index.html", 0},
                                                           {&folder, "index.html", 0},
                                                           {&scan, "scanning.html", 1},
                                                           {&scanning, "scanning.html", 0},
                                                           {&columns, "customize-view.html", 1}};
    for (const auto& [dialog, name, helpButtons] : rows) {
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        const QString page = m_pages.filePath(QString::fromLatin1(name));
        QWidget* focus = dialog->focusWidget();
        QTest::keyClick(focus ? focus : dialog, Qt::Key_F1);
        EXPECT_EQ(TakeOpened(), page) << dialog->metaObject()->className();
        int buttons = 0;
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            if (button->toolTip() != QStringLiteral("IDS_BT_HELP (F1)"))
                continue;
            ++buttons;
            button->click();
            EXPECT_EQ(TakeOpened(), page);
        }
        EXPECT_EQ(buttons, helpButtons) << name;
        EXPECT_TRUE(dialog->isVisible());
        dialog->hide();
    }
    QWidget window;
    QTimer::singleShot(0, &window, [] {
        QWidget* prompt = QApplication::activeModalWidget();
        EXPECT_TRUE(QTest::qWaitForWindowActive(prompt));
        QTest::keyClick(prompt, Qt::Key_F1);
        prompt->close();
    });
    CPrompts(window).Warn({});
    EXPECT_EQ(TakeOpened(), m_pages.filePath(QStringLiteral("index.html")));
}

TEST_F(HelpTest, WarnsOfWhatIsNoPageOfTheHelp) {
    EXPECT_EQ(OpenMainTopic(), u"");
    EXPECT_EQ(TakeOpened(), m_pages.filePath(QStringLiteral("index.html")));
    const QString program = QCoreApplication::applicationFilePath();
    const QString name = QFileInfo(program).fileName();
    ASSERT_TRUE(QDir(m_pages.path()).mkdir(QStringLiteral("folder")));
    const std::pair<QString, QString> rows[] = {{QStringLiteral("missing.html"), Folder()},
                                                {QStringLiteral("folder"), Folder()},
                                                {{}, Folder()},
                                                {QStringLiteral("../") + name, Folder()},
                                                {program, Folder()},
                                                {name, Folder() + QStringLiteral("/..")},
                                                {program, QStringLiteral("/")}};
    for (const auto& [page, folder] : rows) {
        UseTopic(page, folder);
        const QString path = QCoreApplication::applicationDirPath() + u'/' + folder + u'/' + page;
        EXPECT_EQ(OpenMainTopic(), QStringLiteral("No page ") + path);
        EXPECT_EQ(TakeOpened(), u"") << page.toStdString();
    }
    UseTopic(QStringLiteral("index.html"));
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &m_browser, "noSuchSlot");
    EXPECT_EQ(OpenMainTopic(),
              QStringLiteral("No page ") + m_pages.filePath(QStringLiteral("index.html")));
}

TEST(HelpPagesTest, LeadToEachOther) {
    SetLanguageFile(QStringLiteral(LANGUAGES_FOLDER "/language.lgg"));
    const QDir help(QStringLiteral(HELP_FOLDER));
    const QStringList files = help.entryList(QDir::Files);
    const QStringList pages = files.filter(QStringLiteral(".html"));
    for (const StringId topic : {IDS_HELPDOC_TRACKDK, IDS_HELPDOC_SCANNING, IDS_HELPDOC_MODVIEW})
        EXPECT_TRUE(pages.contains(LoadString(topic))) << topic;
    for (const QString& page : pages) {
        const QString text = QString::fromUtf8(ReadFile(help.filePath(page)));
        static const QRegularExpression link(QStringLiteral("(?:href|src)=\"([^\"]*)\""));
        QStringList links;
        for (auto match = link.globalMatch(text); match.hasNext();) {
            links += match.next().captured(1);
            EXPECT_TRUE(files.contains(links.last())) << (page + u' ' + links.last()).toStdString();
        }
        for (const QString& file : files)
            EXPECT_TRUE(links.contains(file)) << (page + u' ' + file).toStdString();
    }
}
