#include "app/ArtworkField.h"
#include "app/TrackDeckDlg.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/ScanPCDlg.h"
#include "grid/GridCtrl.h"
#include "platform/KeyValueStore.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QTest>
#include <QTimer>

#include <filesystem>

namespace {

constexpr int kFiles = 10000;
constexpr QSize kMiniSize(400, 89);

/// The window in a home of the test's own.
class StartTest : public ::testing::Test, public QObject {
protected:
    /// Has a collection of so many tracks of several kinds. `name`: of a document to open, which is
    /// no music.
    void Open(int files, const char* name = nullptr) {
        GetSettings() = {};
        SetLanguageFile(LANGUAGES_FOLDER "/language.lgg");
        SetThemeFile(THEME_FILE);
        const std::filesystem::path folder =
            scratch.MakeFolder("Music/Veltria Track Deck").toStdString();
        const QStringList media{"lame-v1.mp3", "mutagen-v24.mp3", "untagged.aac",
                                "tagged.m4a",  "tagged.wma",      "vbr.mp3"};
        for (int i = 0; i < files; ++i) {
            const std::filesystem::path source = MediaFile(media[i % media.size()]).toStdString();
            const auto album = folder / ("Album " + std::to_string(i / 100));
            std::filesystem::create_directories(album);
            // A new file takes longer on some file systems than the scan of it.
            std::filesystem::create_symlink(
                source, album / (std::to_string(i) + source.extension().string()));
        }
        if (name)
            document = scratch.Write(name, "x");
        dialog.emplace(document);
        grid = dialog->findChild<CGridCtrl*>();
        list = dialog->GetLists().FindListByType(MEDIA_TYPE_COLLECTION);
        dialog->installEventFilter(this);
    }

    void OpenAndRead(int files, int filesOfOthers = 0) {
        Open(files);
        dialog->show();
        ASSERT_TRUE(RunUntil([&] { return grid->GetRowCount() == 3 + files + filesOfOthers; }));
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && readAtFirstPaint < 0)
            readAtFirstPaint = list->GetCount();
        return false;
    }

    /// Scans a folder for All Music, doing something when the first dialog is up.
    void Scan(const std::function<void()>& meanwhile) {
        GetSettings().m_strSearchDir = scratch.File("Elsewhere");
        QTimer hands; // on the two dialogs, which wait for them
        QObject::connect(&hands, &QTimer::timeout, &hands, [&] {
            auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dynamic_cast<CScanPCDlg*>(modal)) {
                meanwhile();
                modal->accept();
            } else if (modal && modal->windowTitle() == LoadString(IDS_SCAN_COMPLET)) {
                modal->reject();
            }
        });
        hands.start(5);
        QApplication::setActiveWindow(&*dialog);
        QTest::keyClick(&*dialog, Qt::Key_F, Qt::ControlModifier);
        hands.stop();
        QApplication::processEvents();
    }

    void ClickRow(int row) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->GetCellRect({row, 1}).center());
    }

    /// Runs until the player has found out what the documents here are.
    static bool TurnsOutUnplayable(const CTrackRecord& track) {
        return RunUntil([&] { return track.m_strStatus == LoadString(IDS_FEILD_CORRUPT); });
    }
    [[nodiscard]] const CMediaList& AllMusic() const {
        return *dialog->GetLists().FindListByType(MEDIA_TYPE_ALL);
    }

    const ScratchFolder scratch;
    const ScopedVariable home{"HOME", scratch.Path()};
    const ScopedVariable config{"XDG_CONFIG_HOME", scratch.File("config")};
    const ScopedVariable temporary{"TMPDIR", scratch.Path()};
    QString document; ///< the path, empty for none
    std::optional<CTrackDeckDlg> dialog;
    CGridCtrl* grid = nullptr;
    const CMediaList* list = nullptr; ///< the collection
    int readAtFirstPaint = -1;        ///< tracks
};

} // namespace

TEST_F(StartTest, WindowComesFirstAndAnswersWhileTheCollectionIsRead) {
    Open(kFiles);
    dialog->show();
    ASSERT_TRUE(RunUntil([&] { return list->GetCount() > 200; }));
    EXPECT_GE(readAtFirstPaint, 0);
    EXPECT_LT(readAtFirstPaint, 100);

    // The title rows answer a click while tracks come in.
    ClickRow(2);
    EXPECT_EQ(dialog->GetLists().GetActiveList()->m_iType, MEDIA_TYPE_ALL);
    EXPECT_LT(list->GetCount(), kFiles) << "the scan is still running";

    ASSERT_TRUE(RunUntil([&] { return grid->GetRowCount() == 3 + kFiles; }));
    EXPECT_EQ(dialog->GetLists().GetActiveList(), list);
    grid->verticalScrollBar()->setValue(grid->verticalScrollBar()->maximum());
    ClickRow(kFiles + 1);
    EXPECT_EQ((*list)[kFiles - 1]->m_bRowSelected, 1);
}

TEST_F(StartTest, DocumentFromOutsidePlaysInTheMiniPlayer) {
    Open(1, "outside.mp3");
    ASSERT_TRUE(RunUntil([&] { return AllMusic().GetCount() == 1; }));
    EXPECT_EQ(AllMusic()[0]->m_strTitle, u"outside");
    EXPECT_TRUE(AllMusic()[0]->m_bPlaying);
    EXPECT_EQ(dialog->size(), kMiniSize);
    EXPECT_FALSE(grid->isVisibleTo(&*dialog));
    dialog->show();
    EXPECT_TRUE(TurnsOutUnplayable(*AllMusic()[0]));
}

TEST_F(StartTest, DocumentThatPlaysKeepsTheButtonsWhenTheCollectionIsRead) {
    document = MediaFile("vbr.mp3");
    OpenAndRead(1, 1);
    EXPECT_EQ(dialog->GetLists().GetActiveList(), &AllMusic());
    EXPECT_TRUE(AllMusic()[0]->m_bPlaying);
}

TEST_F(StartTest, DocumentOfTheCollectionPlaysOnceItIsRead) {
    Open(3, "Music/Veltria Track Deck/mine.mp3");
    EXPECT_EQ(dialog->size(), kMiniSize);
    dialog->show();
    ASSERT_TRUE(RunUntil([&] { return grid->GetRowCount() == 3 + 4; }));
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ((*list)[index]->m_bPlaying, (*list)[index]->m_strTitle == u"mine");
    EXPECT_TRUE(TurnsOutUnplayable(*(*list)[list->FindPath(document)]));
    EXPECT_EQ(AllMusic().GetCount(), 0);
}

TEST_F(StartTest, PlaylistFromOutsidePlaysItsTracks) {
    const ScratchFolder outside;
    const QString track = outside.Write("named by it alone.mp3", ReadFile(MediaFile("vbr.mp3")));
    document = outside.Write("outside.m3u", "gone.mp3\r\n" + track.toUtf8());
    OpenAndRead(1, 1);
    const auto bars = dialog->findChildren<QAbstractSlider*>();
    EXPECT_TRUE(RunUntil([&] {
        return std::ranges::any_of(bars, [](const QAbstractSlider* bar) {
            return bar->accessibleDescription() == u"named by it alone";
        });
    }));
    EXPECT_EQ(dialog->size(), kMiniSize);
}

TEST_F(StartTest, ClickShowsTheArtworkOfTheTrack) {
    constexpr int kTracks = 4; // one of them has a picture
    OpenAndRead(kTracks);
    const CArtworkField* field = nullptr;
    for (const QWidget* child : dialog->findChildren<QWidget*>())
        field = field ? field : dynamic_cast<const CArtworkField*>(child);
    ASSERT_TRUE(field && field->isVisible());
    int pictures = 0;
    for (int index = 0; index < kTracks; ++index) {
        ClickRow(index + 2);
        const bool hasPicture = !ReadTrackArtwork((*list)[index]->m_strPath).isEmpty();
        EXPECT_TRUE(RunUntil([&] { return field->GetPicture().isNull() != hasPicture; })) << index;
        pictures += hasPicture;
    }
    EXPECT_EQ(pictures, 1);
}

TEST_F(StartTest, MiniPlayerAndClosingKeepThePlaces) {
    OpenAndRead(3);
    dialog->move(30, 40);
    dialog->resize(700, 500);
    const auto toggle = [&] {
        for (const FrameButton& button : dialog->GetSkin().GetButtons())
            if (button.hit == FrameHit::FirstCustom)
                QTest::mouseClick(&*dialog, Qt::LeftButton, {}, button.place.center());
    };
    toggle();
    EXPECT_EQ(dialog->size(), kMiniSize);
    EXPECT_FALSE(grid->isVisible());
    toggle();
    EXPECT_EQ(QRect(dialog->pos(), dialog->size()), QRect(30, 40, 700, 500));
    EXPECT_TRUE(grid->isVisible());
    dialog->showMaximized(); // as a desktop's own key does
    toggle();
    EXPECT_EQ(dialog->size(), kMiniSize);
    EXPECT_TRUE(dialog->isVisible() && !dialog->isMaximized());
    toggle();
    EXPECT_TRUE(dialog->GetSkin().IsMaximized());
    dialog->GetSkin().Restore();
    toggle();
    dialog->move(50, 60);
    dialog->close();

    const CKeyValueStore store(scratch.File("config/Veltria/Track Deck.ini"));
    for (const QString line :
         {"MiniMode=1", "MiniPlayer/MiniPosX=50", "MiniPlayer/MiniPosY=60", "MainWindow/Volume=70",
          "MainWindow/MainPosX=30", "MainWindow/MainSizeX=700", "MainWindow/MainSizeY=500",
          "MainWindow/Maximized=0", "TrackSheet/ColumnDef=255"})
        EXPECT_EQ(store.ReadInt(line.section(u'=', 0, 0)), line.section(u'=', 1).toInt())
            << line.toStdString();
}

/// Nothing loses the focus as long as it lives.
class KeptFocus : public QObject {
public:
    KeptFocus() { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override { return event->type() == QEvent::FocusOut; }
};

TEST_F(StartTest, ScanThatEndsInTheMiddleOfAnEditLeavesIt) {
    OpenAndRead(4);
    scratch.Write("Elsewhere/new.mp3", "x");
    // The two dialogs of the scan come before and after the edit, which they would else end.
    std::optional<KeptFocus> keptFocus(std::in_place);
    const auto edit = [&] {
        for (int row = 2; !grid->IsEditing(); ++row)
            grid->OnEditCell({row, 1});
    };
    Scan(edit);
    keptFocus.reset();
    EXPECT_EQ(AllMusic().GetCount(), 1);
    EXPECT_TRUE(grid->IsEditing());
    EXPECT_EQ(grid->GetRowCount(), 3 + 4 + 1);
    QApplication::setActiveWindow(&*dialog);
    QTest::keyClick(dialog->focusWidget(), Qt::Key_D, Qt::ControlModifier); // as any command does
    EXPECT_FALSE(grid->IsEditing());
    edit();
    dialog.reset(); // which ends one, too
}

TEST_F(StartTest, ScanForAllMusicEndsWhatPlaysOfIt) {
    OpenAndRead(1);
    scratch.Write("Elsewhere/a.mp3", ReadFile(MediaFile("untagged.mp3")));
    Scan([] {});
    const CMediaList& all = AllMusic();
    ASSERT_TRUE(RunUntil([&] { return all.GetCount() == 1 && all[0]->m_iRow > 0; }));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {},
                       grid->GetCellRect({all[0]->m_iRow, 1}).center());
    const auto plays = [&] { return all[0]->m_nDuration > 0; };
    ASSERT_TRUE(RunUntil(plays));
    Scan([] {});
    ASSERT_TRUE(RunUntil([&] { return all.GetCount() == 1; }));
    EXPECT_FALSE(all[0]->m_bPlaying);
    EXPECT_FALSE(RunUntil(plays, 300)); // the new record knows nothing of the old graph
}
