#include "platform/MessageTarget.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <atomic>
#include <stdexcept>

namespace {

constexpr int kNumber = 0x8001;
constexpr int kLast = 0x8002;

/// Holds a share, by which those alive can be counted.
struct SharingPayload : CMessagePayload {
    explicit SharingPayload(const std::shared_ptr<int>& share)
        : m_share(share) {}
    std::shared_ptr<int> m_share;
};

struct OtherPayload : CMessagePayload {};

void RunUntilLast(CMessageTarget& target) {
    QEventLoop loop;
    target.On(kLast, [&loop](Message&) {
        loop.quit();
        return 0;
    });
    loop.exec();
}

} // namespace

TEST(MessageTargetTest, PostsKeepTheirOrderAndSendsBringAnswers) {
    CMessageTarget target;
    std::vector<std::intptr_t> seen; // plain on purpose: handlers run on one thread
    target.On(kNumber, [&seen](Message& message) {
        seen.push_back(message.wParam);
        return message.wParam * 2;
    });
    std::atomic<int> wrong = 0;
    std::vector<std::jthread> senders;
    std::atomic<int> running = 4;
    for (int sender = 0; sender < 4; ++sender)
        senders.emplace_back([&, sender, address = target.Address()] {
            for (int i = 0; i < 500; ++i) {
                const std::intptr_t value = sender * 1000 + i;
                if (i % 5 == 0)
                    wrong += address.Send({kNumber, value}) != value * 2;
                else
                    wrong += !address.Post({kNumber, value});
            }
            if (--running == 0)
                address.Post({kLast});
        });
    RunUntilLast(target);
    EXPECT_EQ(wrong, 0);
    ASSERT_EQ(seen.size(), 2000u);
    std::intptr_t last[4] = {-1, 999, 1999, 2999};
    for (const std::intptr_t value : seen)
        EXPECT_EQ(value, ++last[value / 1000]);
    seen.clear();

    target.SetHeld(true);
    target.Address().Post({kNumber, 2});
    QCoreApplication::processEvents();
    EXPECT_EQ(target.Address().Send({kNumber, 1}), 2) << "a direct call on its own thread";
    target.SetHeld(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (std::vector<std::intptr_t>{1, 2}));

    target.On(kNumber, [](Message&) -> std::intptr_t { throw std::runtime_error("test"); });
    EXPECT_EQ(target.Address().Send({kNumber}), 0);
    EXPECT_EQ(target.Address().Send({kLast + 1}), 0) << "a number without handler";
}

TEST(MessageTargetTest, PayloadsAreTakenOrFreed) {
    const auto share = std::make_shared<int>();
    std::unique_ptr<SharingPayload> kept;
    {
        CMessageTarget target;
        target.On(kNumber, [&kept](Message& message) {
            EXPECT_EQ(message.Take<OtherPayload>(), nullptr) << "something else is not taken";
            if (message.wParam == 1)
                kept = message.Take<SharingPayload>();
            return 0;
        });
        for (const int value : {1, 2})
            target.Address().Post({kNumber, value, 0, std::make_unique<SharingPayload>(share)});
        EXPECT_EQ(share.use_count(), 1 + 2);
        QCoreApplication::processEvents();
        EXPECT_EQ(share.use_count(), 1 + 1) << "what the handler leaves goes with the message";
        target.Address().Post({kNumber, 3, 0, std::make_unique<SharingPayload>(share)});
    }
    EXPECT_EQ(share.use_count(), 1 + 1) << "undelivered payloads go with the target";
    kept.reset();
    EXPECT_EQ(share.use_count(), 1);
}

TEST(MessageTargetTest, SendersWakeWhenTheTargetGoes) {
    for (int round = 0; round < 50; ++round) {
        std::optional<CMessageTarget> target(std::in_place);
        target->On(kNumber, [](Message&) { return 1; });
        std::atomic<int> started = 0;
        std::vector<std::jthread> senders;
        for (int i = 0; i < 3; ++i)
            senders.emplace_back([&started, address = target->Address()] {
                ++started;
                while (!address.IsClosed())
                    address.Send({kNumber});
                EXPECT_EQ(address.Send({kNumber}), 0);
                EXPECT_FALSE(address.Post({kNumber}));
            });
        while (started < 3)
            QCoreApplication::processEvents();
        target.reset();
    }
}

TEST(MessageTargetTest, FloodLeavesTheEventLoopAlive) {
    CMessageTarget target;
    target.On(kNumber, [](Message&) {
        QElapsedTimer busy;
        busy.start();
        while (busy.nsecsElapsed() < 100'000) {
        }
        return 0;
    });
    for (int i = 0; i < 3000; ++i)
        target.Address().Post({kNumber});
    target.Address().Post({kLast});
    int beats = 0;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&beats] { ++beats; });
    heart.start(5);
    RunUntilLast(target);
    EXPECT_GE(beats, 10) << "300 ms of handling in one go";
}

TEST(MessageTargetTest, QueueGoesOnInAHandlersOwnEventLoop) {
    CMessageTarget target;
    bool innerRan = false;
    target.On(kNumber, [&](Message&) {
        RunUntilLast(target);
        innerRan = true;
        return 0;
    });
    target.Address().Post({kNumber});
    target.Address().Post({kLast});
    QCoreApplication::processEvents();
    EXPECT_TRUE(innerRan);
}
