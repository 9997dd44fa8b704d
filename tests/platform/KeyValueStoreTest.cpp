#include "platform/KeyValueStore.h"

#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <limits>

static const QString kKey = "Settings/Value";

TEST(KeyValueStoreTest, ValuesComeBackAsWrittenBesideUnknownOnes) {
    const QString texts[] = {QString(),
                             "/home/user/Music, \"best of\" = 100 %; @home",
                             QStringLiteral(u"/Musik/\u6771\u4EAC/\U0001F3B5"),
                             Path::FromBytes("/music/\xE9t\xE9"),
                             "12",
                             "  blanks  "};
    const ScratchFolder scratch;
    const QString file = scratch.Write("store.ini", "[Settings]\nFuture=5\n");
    for (const QString& path : {file, scratch.File("new/folder/store.ini")}) {
        for (const QString& text : texts) {
            CKeyValueStore writer(path);
            writer.WriteText(kKey, text);
            writer.WriteInt("Root", std::numeric_limits<int>::min());
            ASSERT_TRUE(writer.Commit());
            const CKeyValueStore reader(path);
            EXPECT_TRUE(reader.Exists());
            EXPECT_EQ(reader.ReadText(kKey, 200), text);
            EXPECT_EQ(reader.ReadInt("Root"), std::numeric_limits<int>::min());
        }
    }
    EXPECT_EQ(CKeyValueStore(file).ReadInt("Settings/Future"), 5);
}

TEST(KeyValueStoreTest, WrongKindsAreNotThere) {
    const ScratchFolder scratch;
    auto store = [&, number = 0](const QByteArray& value) mutable {
        const QString name = QStringLiteral("%1.ini").arg(++number);
        return CKeyValueStore(scratch.Write(name, "[Settings]\nValue=" + value + "\n"));
    };
    for (const char* value : {"abc", "1.5", "", "99999999999"})
        EXPECT_FALSE(store(value).ReadInt(kKey)) << value;
    EXPECT_EQ(store("abc").ReadText(kKey, 3), "abc");
    EXPECT_FALSE(store("abcd").ReadText(kKey, 3)) << "longer than the room for it";
    EXPECT_FALSE(store("a, b").ReadText(kKey, 99)) << "a list is no text";
    EXPECT_FALSE(CKeyValueStore(scratch.File("missing.ini")).Exists());
}

TEST(KeyValueStoreTest, DamagedFileIsKeptAside) {
    const ScratchFolder scratch;
    const QString file = scratch.File("store.ini");
    const QByteArray damages[] = {"\x01\x02 no line of the form\nkey and value\n",
                                  QByteArray(2 << 20, 'x')};
    for (const QByteArray& damage : damages) {
        WriteFile(file, damage);
        EXPECT_FALSE(CKeyValueStore(file).Exists() || CKeyValueStore(file).ReadInt(kKey));
        CKeyValueStore store(file); // another than the one that read, as at the end of a run
        EXPECT_EQ(ReadFile(file), damage) << "reading changes nothing";
        store.WriteInt(kKey, 7);
        EXPECT_TRUE(store.Commit());
        EXPECT_EQ(CKeyValueStore(file).ReadInt(kKey), 7);
    }
    EXPECT_EQ(ReadFile(file + ".damaged"), damages[0]);
    EXPECT_EQ(ReadFile(file + ".damaged2"), damages[1]);
}
