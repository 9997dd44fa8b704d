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

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <utility>

namespace {

/// Has a help folder beside this program, and the desktop's browser.
class HelpTest : public ::testing::Test {
protected:
    HelpTest() {
        for (const char* page : {"index.html", "scanning.html", "customize-view.html"})
            WriteFile(Page(page), "<p>A page.");
        UseTopic("index.html", Folder());
        QObject::connect(&m_browser, &QTextBrowser::sourceChanged,
                         [this](const QUrl& url) { m_strOpened = url.toLocalFile(); });
        QDesktopServices::setUrlHandler("file", &m_browser, "setSource");
    }
    ~HelpTest() override { QDesktopServices::unsetUrlHandler("file"); }

    /// Lets the language file give the main topic this page, and all of them this folder.
    void UseTopic(const QString& page, const QString& folder) const {
        const QString text =
            QStringLiteral("[TrackDeck]\nIDS_HELPDOCUMENT=%1\nIDS_HELPDOC_TRACKDK=%2\n"
                           "IDS_HELPDOC_SCANNING=scanning.html\n"
                           "IDS_HELPDOC_MODVIEW=customize-view.html\n"
                           "IDS_HELP_UNOPENED=No page %s\n");
        SetLanguageFile(m_scratch.Write("l.lgg", text.arg(folder, page).toUtf8()));
    }
    [[nodiscard]] QString Page(const char* name) const { return m_pages.filePath(name); }
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
                                "/h\u00E9lp #1 %41-XXXXXX"};
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
        QWidget* focus = dialog->focusWidget();
        QTest::keyClick(focus ? focus : dialog, Qt::Key_F1);
        EXPECT_EQ(TakeOpened(), Page(name)) << dialog->metaObject()->className();
        int buttons = 0;
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            if (button->toolTip() != "IDS_BT_HELP (F1)")
                continue;
            ++buttons;
            button->click();
            EXPECT_EQ(TakeOpened(), Page(name));
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
    EXPECT_EQ(TakeOpened(), Page("index.html"));
}

TEST_F(HelpTest, WarnsOfWhatIsNoPageOfTheHelp) {
    EXPECT_EQ(OpenMainTopic(), u"");
    EXPECT_EQ(TakeOpened(), Page("index.html"));
    const QString program = QCoreApplication::applicationFilePath();
    const QString name = QFileInfo(program).fileName();
    ASSERT_TRUE(QDir(m_pages.path()).mkdir("folder"));
    const std::pair<QString, QString> rows[] = {{"missing.html", Folder()},
                                                {"folder", Folder()},
                                                {{}, Folder()},
                                                {"../" + name, Folder()},
                                                {program, Folder()},
                                                {name, Folder() + "/.."},
                                                {program, "/"}};
    for (const auto& [page, folder] : rows) {
        UseTopic(page, folder);
        const QString path = QCoreApplication::applicationDirPath() + u'/' + folder + u'/' + page;
        EXPECT_EQ(OpenMainTopic(), "No page " + path);
        EXPECT_EQ(TakeOpened(), u"") << page.toStdString();
    }
    UseTopic("index.html", Folder());
    QDesktopServices::setUrlHandler("file", &m_browser, "noSuchSlot");
    EXPECT_EQ(OpenMainTopic(), "No page " + Page("index.html"));
}

TEST(HelpPagesTest, LeadToEachOther) {
    SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
    const QDir help(HELP_FOLDER);
    const QStringList files = help.entryList(QDir::Files);
    const QStringList pages = files.filter(".html");
    for (const StringId topic : {IDS_HELPDOC_TRACKDK, IDS_HELPDOC_SCANNING, IDS_HELPDOC_MODVIEW})
        EXPECT_TRUE(pages.contains(LoadString(topic))) << topic;
    for (const QString& page : pages) {
        const QString text = QString::fromUtf8(ReadFile(help.filePath(page)));
        static const QRegularExpression link("(?:href|src)=\"([^\"]*)\"");
        QStringList links;
        for (auto match = link.globalMatch(text); match.hasNext();) {
            links += match.next().captured(1);
            EXPECT_TRUE(files.contains(links.last())) << (page + u' ' + links.last()).toStdString();
        }
        for (const QString& file : files)
            EXPECT_TRUE(links.contains(file)) << (page + u' ' + file).toStdString();
    }
}
