#include "app/SingleInstance.h"

#include "tests/fixtures/RunUntil.h"

#include <unistd.h>

TEST(SingleInstanceTest, LaterInstanceCallsTheFirst) {
    const QString name = QStringLiteral("instance of process %1").arg(::getpid());
    CSingleInstance first(name);
    ASSERT_TRUE(first.IsFirst());
    int calls = 0;
    first.Listen([&calls] { ++calls; });
    const CSingleInstance later(name);
    EXPECT_FALSE(later.IsFirst());
    later.CallFirst();
    EXPECT_TRUE(RunUntil([&] { return calls == 1; }));
    EXPECT_TRUE(CSingleInstance(name + u'2').IsFirst());
}
