#include "base/Language.h"
#include "base/Messages.h"
#include "base/Settings.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/KeyValueStore.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

/// The main dialog's part of a scan.
struct MainDialog {
    MainDialog() {
        messages.On(WM_TD_ADD_TRACK,
                    [this](Message& message) { return scanner.OnAddTrack(message); });
        messages.On(WM_TD_LIST_DONE, [this](const Message& message) {
            doneType = message.wParam;
            return 0;
        });
    }
    CMediaLists lists;
    CMediaList& collection = lists.Add(QStringLiteral("Mine"), MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CLibraryScanner scanner{lists};
    std::intptr_t doneType = -1;
    MessageTarget messages;
};

QStringList LabelTexts(const QDialog& dialog) {
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        texts += label->text();
    return texts;
}

void ClickOnce(const QDialog& dialog) {
    dialog.findChild<QPushButton*>()->click();
}

} // namespace

TEST(ScanPCDlgTest, KeepsTheChoiceOfAnAcceptedDialog) {
    const ScratchFolder scratch;
    const ScopedVariable config("XDG_CONFIG_HOME", scratch.Path());
    GetSettings() = {};
    GetSettings().m_strSearchDir = QStringLiteral("/old");
    GetSettings().m_bScanSubfolders = 1;
    for (const bool accept : {false, true}) {
        CScanPCDlg dialog(nullptr);
        EXPECT_EQ(dialog.GetFolder(), QStringLiteral("/old"));
        EXPECT_TRUE(dialog.IsRecursive());
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("/new"));
        dialog.findChild<QCheckBox*>()->setChecked(false);
        if (accept)
            dialog.accept();
        else
            dialog.reject();
    }
    EXPECT_EQ(GetSettings().m_bScanSubfolders, 0);
    const KeyValueStore store(scratch.File(QStringLiteral("Veltria/Track Deck.ini")));
    EXPECT_EQ(store.ReadText(QStringLiteral("SearchDir"), 99), QStringLiteral("/new"));
}

TEST(ScanningDlgTest, CountsWhatIsNewAndPostsItOn) {
    const ScratchFolder scratch;
    SetLanguageFile(scratch.Write(QStringLiteral("l.lgg"), "[TrackDeck]\n"
                                                           "IDS_SCAN_FOUND=found %d\n"
                                                           "IDS_SCAN_FINISHED=finished:\n"));
    for (const char* name : {"mine/a.mp3", "b.mp3", "c.wma", "list.m3u", "sub/d.aac"})
        scratch.Write(QString::fromLatin1(name), "x");
    MainDialog main;
    main.lists.SetLocation(main.collection, scratch.File(QStringLiteral("mine")));
    CScanningDlg dialog(main.scanner,
                        {main.messages.Address(), main.all.m_iId, scratch.Path(), true}, nullptr);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("IDS_SCAN_ING"));
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (main.doneType >= 0)
            ClickOnce(dialog);
    });
    watch.start(1);
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_EQ(main.doneType, MEDIA_TYPE_ALL);
    EXPECT_EQ(main.all.GetCount(), 3);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("IDS_SCAN_COMPLET"));
    EXPECT_EQ(LabelTexts(dialog),
              (QStringList{QStringLiteral("finished: 3"), QStringLiteral("found 3")}));
    EXPECT_EQ(dialog.findChild<QPushButton*>()->text(), QStringLiteral("IDS_BT_CLOSE"));
}

TEST(ScanningDlgTest, CancelEndsTheScanAndNotTheDialog) {
    const ScratchFolder scratch;
    SetLanguageFile(QString());
    // Far more than the dialog relays before the main dialog gets its turn.
    for (int i = 0; i < 3000; ++i)
        scratch.Write(QStringLiteral("%1.mp3").arg(i), "x");
    MainDialog main;
    CScanningDlg dialog(main.scanner,
                        {main.messages.Address(), main.all.m_iId, scratch.Path(), false}, nullptr);
    main.messages.On(WM_TD_ADD_TRACK, [&](Message& message) {
        if (message.lParam == 5)
            dialog.reject();
        return main.scanner.OnAddTrack(message);
    });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (main.doneType >= 0)
            dialog.reject();
    });
    watch.start(1);
    dialog.exec();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("IDS_SCAN_CANCELED"));
    EXPECT_GE(main.all.GetCount(), 5);
    EXPECT_LT(main.all.GetCount(), 3000);
    EXPECT_EQ(main.doneType, MEDIA_TYPE_ALL);
}

TEST(ScanningDlgTest, MayGoInMidScan) {
    const ScratchFolder scratch;
    for (int i = 0; i < 50; ++i)
        scratch.Write(QStringLiteral("%1.mp3").arg(i), "x");
    MainDialog main;
    for (int round = 0; round < 20; ++round) {
        CScanningDlg dialog(main.scanner,
                            {main.messages.Address(), main.all.m_iId, scratch.Path(), false},
                            nullptr);
        for (int turn = 0; turn < round; ++turn)
            QCoreApplication::processEvents();
    }
}
