#include "swf/ListingFixture.h"
#include "swf/Util.h"

namespace {

TEST_F(ListingTest, BitsAreTakenMostSignificantFirstAcrossBytes) {
  const uint8_t data[] = {0xB3, 0x55, 0xFF, 0xFF, 0xFF};
  Util util;
  int32_t position = 0;
  int32_t bitsLeft = 8;
  uint8_t current = util.getByte(data, position, 5);
  auto bits = [&](int32_t count) { return util.getBitsValue(bitsLeft, current, data, position, 5, count); };
  EXPECT_EQ(bits(3), 0x5u);    // 101
  EXPECT_EQ(bits(7), 0x4Du);   // 10011 01
  EXPECT_EQ(bits(6), 0x15u);   // 010101, no fetch
  EXPECT_EQ(position, 2);
  EXPECT_EQ(bits(20), 0xFFFFu);  // masked to 16 bits
  EXPECT_EQ(bits(12), 0xF00u);   // zero past the data
  EXPECT_EQ(position, 6);
}

TEST_F(ListingTest, SkippingToOrPastTheEndLogsAndStopsThere) {
  const uint8_t data[1] = {0};
  for (uint32_t length : {5u, 8u, 9u, 0xFFFFFFFFu}) {
    LogCapture::clear();
    int32_t position = 2;
    Util().skipTagLengh(data, position, length, 10);
    EXPECT_EQ(position, length < 8 ? 7 : 10);
    EXPECT_EQ(LogCapture::contains("[skipTagLengh] Unexpected end of Data  "), length >= 8) << length;
  }
}

}  // namespace
