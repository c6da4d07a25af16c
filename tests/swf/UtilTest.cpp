#include "swf/ListingFixture.h"
#include "swf/Util.h"

namespace {

TEST_F(ListingTest, BitsAreTakenMostSignificantFirstAcrossBytes) {
  const uint8_t data[] = {0xB3, 0x55, 0xFF, 0xFF, 0xFF};
  Util util;
  int32_t position = 0;
  int32_t bitsLeft = 8;
  uint8_t current = util.getByte(data, position, 5);
  EXPECT_EQ(util.getBitsValue(bitsLeft, current, data, position, 5, 3), 0x5u);    // 101
  EXPECT_EQ(util.getBitsValue(bitsLeft, current, data, position, 5, 7), 0x4Du);   // 10011 01
  EXPECT_EQ(position, 2);
  EXPECT_EQ(util.getBitsValue(bitsLeft, current, data, position, 5, 6), 0x15u);   // 010101
  EXPECT_EQ(position, 2);
  EXPECT_EQ(util.getBitsValue(bitsLeft, current, data, position, 5, 20), 0xFFFFu);  // masked to 16 bits
  EXPECT_EQ(position, 5);
  // Past the data the bits are zero.
  EXPECT_EQ(util.getBitsValue(bitsLeft, current, data, position, 5, 12), 0xF00u);
  EXPECT_EQ(position, 6);
}

TEST_F(ListingTest, WordsAreLittleEndianAndZeroPastTheData) {
  const uint8_t data[] = {0x01, 0x02, 0x03, 0x04, 0x05};
  Util util;
  int32_t position = 0;
  EXPECT_EQ(util.getDoubleWord(data, position, 5), 0x04030201u);
  EXPECT_EQ(util.getWord(data, position, 5), 0x0005u);
  EXPECT_EQ(position, 6);
  EXPECT_EQ(util.getWord(data, position, 5), 0u);
}

TEST_F(ListingTest, SkippingToOrPastTheEndLogsAndStopsThere) {
  Util util;
  const uint8_t data[1] = {0};
  struct Case {
    int32_t position;
    uint32_t length;
    int32_t expected;
    bool logged;
  };
  for (const Case& c : {Case{2, 5, 7, false}, Case{2, 8, 10, true}, Case{2, 9, 10, true},
                        Case{2, 0xFFFFFFFFu, 10, true}}) {
    LogCapture::clear();
    int32_t position = c.position;
    util.skipTagLengh(data, position, c.length, 10);
    EXPECT_EQ(position, c.expected);
    EXPECT_EQ(LogCapture::contains("[skipTagLengh] Unexpected end of Data  "), c.logged) << c.length;
  }
}

}  // namespace
