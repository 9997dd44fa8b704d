#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/KeyValueStore.h"
#include "platform/Path.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace {

/// The main dialog's part of a scan.
struct ScanningDlgTest : ::testing::Test {
    ScanningDlgTest() { scanner.Listen(messages); }

    const ScratchFolder scratch;
    CMediaLists lists;
    CMediaList& collection = lists.Add("Mine", MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add("All", MEDIA_TYPE_ALL, 1);
    CLibraryScanner scanner{lists};
    CMessageTarget messages;
};

} // namespace

TEST(ScanPCDlgTest, KeepsTheChoiceOfAnAcceptedDialog) {
    const ScratchFolder scratch;
    const ScopedVariable config("XDG_CONFIG_HOME", scratch.Path());
    const QString chosen = scratch.MakeFolder(Path::FromBytes(" caf\xE9\nx "));
    GetSettings() = {};
    GetSettings().m_strSearchDir = "/old";
    GetSettings().m_bScanSubfolders = 1;
    for (const bool accept : {false, true}) {
        CScanPCDlg dialog(nullptr);
        EXPECT_EQ(dialog.GetFolder(), "/old");
        EXPECT_TRUE(dialog.IsRecursive());
        auto& folder = *dialog.findChild<QLineEdit*>();
        const auto buttons = dialog.findChildren<QPushButton*>();
        const QPushButton& start =
            **std::ranges::find(buttons, "IDS_SCAN_START", &QWidget::toolTip);
        EXPECT_FALSE(start.isEnabled());
        folder.setText("/no/such folder");
        EXPECT_FALSE(start.isEnabled());
        folder.setText("~");
        EXPECT_EQ(dialog.GetFolder(), QDir::homePath());
        folder.setText("/usr/../tmp//");
        EXPECT_TRUE(start.isEnabled());
        EXPECT_EQ(dialog.GetFolder(), "/tmp");
        folder.setText(chosen + "/gone");
        QTimer::singleShot(0, &dialog, [] {
            qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept();
        });
        (*std::ranges::find(buttons, "IDS_BT_BROWSING", &QWidget::toolTip))->click();
        EXPECT_EQ(dialog.GetFolder(), chosen);
        EXPECT_TRUE(start.isEnabled());
        dialog.findChild<QCheckBox*>()->setChecked(false);
        if (accept)
            dialog.accept();
        else
            dialog.reject();
    }
    EXPECT_EQ(GetSettings().m_bScanSubfolders, 0);
    const CKeyValueStore store(scratch.File("Veltria/Track Deck.ini"));
    EXPECT_EQ(store.ReadText("SearchDir", 999), chosen);
}

TEST_F(ScanningDlgTest, CountsWhatIsNewAndPostsItOn) {
    SetLanguageFile(scratch.Write("l.lgg", "[TrackDeck]\n"
                                           "IDS_SCAN_FOUND=found %d\n"
                                           "IDS_SCAN_FINISHED=finished:\n"));
    for (const char* name : {"mine/a.mp3", "b.mp3", "c.wma", "list.m3u", "two\nlines/d.aac"})
        scratch.Write(name, "x");
    lists.SetLocation(collection, scratch.File("mine"));
    CScanningDlg dialog(scanner, {all.m_iId, scratch.Path(), true}, nullptr);
    EXPECT_EQ(dialog.windowTitle(), u"IDS_SCAN_ING");
    const auto texts = [&dialog] {
        QStringList all;
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            all += label->text();
        return all.join(u'|');
    };
    const auto found =
        scanner.OnFound([&](const CMediaList&, int) { EXPECT_FALSE(texts().contains(u'\n')); });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (!scanner.IsScanning(all.m_iId))
            dialog.findChild<QPushButton*>()->click();
    });
    watch.start(1);
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_EQ(all.GetCount(), 3);
    EXPECT_EQ(dialog.windowTitle(), u"IDS_SCAN_COMPLET");
    EXPECT_EQ(texts(), u"finished: 3|found 3");
    EXPECT_EQ(dialog.findChild<QPushButton*>()->toolTip(), u"IDS_BT_CLOSE");
}

TEST_F(ScanningDlgTest, CancelEndsTheScanAndNotTheDialog) {
    SetLanguageFile({});
    for (int i = 0; i < 8'000; ++i) // far more than one turn of the event loop relays
        scratch.Write(QStringLiteral("%1.mp3").arg(i), "x");
    CScanningDlg dialog(scanner, {all.m_iId, scratch.Path(), false}, nullptr);
    const QLabel& found = *dialog.findChildren<QLabel*>().last();
    while (found.text() != u"IDS_SCAN_FOUND")
        QCoreApplication::processEvents();
    dialog.reject();
    EXPECT_EQ(dialog.windowTitle(), u"IDS_SCAN_CANCELED");
    dialog.reject(); // a second one closes, whatever the first one led to
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_GE(all.GetCount(), 1) << "what was found by then stays";
    EXPECT_LT(all.GetCount(), 8'000);
}
