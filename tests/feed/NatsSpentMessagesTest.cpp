// What is held of messages that have been read.

#ifdef TIMESHARE_WITH_NATS

#include "terminal/feed/NatsSpentMessages.h"

#include <gtest/gtest.h>
#include <nats/nats.h>

#include <string>

using terminal::NatsSpentMessages;

namespace {

natsMsg *messageOf(size_t bytes) {
    const std::string data(bytes, 'x');
    natsMsg *message = nullptr;
    return natsMsg_Create(&message, "md.tick.SH600000", nullptr, data.data(), static_cast<int>(bytes)) ==
                   NATS_OK
               ? message
               : nullptr;
}

class NatsSpentMessagesTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(nats_Open(-1), NATS_OK); } // its thread frees the messages
};

} // namespace

TEST_F(NatsSpentMessagesTest, SmallOnesAreGivenBackByTheirNumber) {
    NatsSpentMessages spent;
    for (size_t i = 1; i < 256; ++i) {
        spent.add(messageOf(100));
        ASSERT_EQ(spent.held(), i);
    }
    spent.add(messageOf(100));
    EXPECT_EQ(spent.held(), 0u);
}

TEST_F(NatsSpentMessagesTest, LargeOnesAreGivenBackByTheirWeight) {
    NatsSpentMessages spent;
    for (size_t i = 1; i < 4; ++i) {
        spent.add(messageOf(256 * 1024));
        ASSERT_EQ(spent.held(), i);
    }
    spent.add(messageOf(256 * 1024));
    EXPECT_EQ(spent.held(), 0u);
    spent.add(messageOf(2 * 1024 * 1024));
    EXPECT_EQ(spent.held(), 0u) << "one by itself";
    spent.add(messageOf(1));
    EXPECT_EQ(spent.held(), 1u) << "it begins anew";
    spent.giveBack();
    EXPECT_EQ(spent.held(), 0u);
}

#endif
