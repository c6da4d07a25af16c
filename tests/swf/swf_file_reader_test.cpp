#include "swf/ListingFixture.h"

using swf::ActionBuilder;
using swf::SwfWriter;
using swf::u16;
using swf::u32;

namespace {

const std::string kEndOfData = "[skipTagLengh] Unexpected end of Data  ";

ActionBuilder play() { return ActionBuilder().op(0x06); }
ActionBuilder stop() { return ActionBuilder().op(0x07); }
const Lines kPlay = {kDoStart, "[ActionPlay]", kDoEnd};
const Lines kPlayStop = {kDoStart, "[ActionPlay]", kDoEnd, kDoStart, "[ActionStop]", kDoEnd};

TEST_F(ListingTest, ForeignShortAndDamagedFiles) {
  std::string packed = SwfWriter().doAction(play()).doAction(stop()).end().cws();
  std::string unended = packed.substr(0, packed.size() - 4);  // no checksum: the stream never ends
  std::string large = SwfWriter().doAction(play()).tag(2, std::string(200000, 'z') + "y").doAction(stop()).end().cws();
  std::string skipped = SwfWriter().doAction(play()).tag(2, std::string(40, 'x')).fws();
  std::string listed = SwfWriter().doAction(ActionBuilder().op(0x06).op(0x07).record(0x96, std::string(8, '\0'))).fws();
  struct Case {
    std::string bytes;
    Lines expected;
    RunResult code;
    bool endOfData;
  };
  const Case cases[] = {
      {"", {}, RUN_SWF_BAD_SIGNATURE, false},
      {"ZWS\x08", {}, RUN_SWF_BAD_SIGNATURE, false},
      {"FWS", {}, RUN_SUCCESS, false},
      {"FWS\x08\x01", {}, RUN_SUCCESS, false},
      {"CWS", {}, RUN_SUCCESS, false},
      {std::string("CWS\x08\x10\x00\x00", 7), {}, RUN_SUCCESS, false},
      {unended, kPlayStop, RUN_SUCCESS, false},
      // a wrong checksum is an inflate error after all the data
      {unended + "\xff\xff\xff\xff", kPlayStop, RUN_SWF_UNCOMPRESS_FAILED, false},
      {packed.substr(0, 8) + "garbage", {}, RUN_SWF_UNCOMPRESS_FAILED, false},
      // a stream cut in the middle lists the blocks inflated before the cut
      {large.substr(0, large.size() / 2), kPlay, RUN_SUCCESS, true},
      // a skipped tag that runs past the data
      {skipped.substr(0, skipped.size() - 10), kPlay, RUN_SUCCESS, true},
      // a script block cut short lists its whole records, without a log line
      {listed.substr(0, listed.size() - 3), {kDoStart, "[ActionPlay]", "[ActionStop]", kDoEnd}, RUN_SUCCESS, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    LogCapture::clear();
    RunResult code = 0;
    EXPECT_EQ(listFile(c.bytes, &code), c.expected);
    EXPECT_EQ(code, c.code);
    ASSERT_FALSE(LogCapture::lines().empty());
    EXPECT_EQ(LogCapture::lines()[0].function, "SWFDeAssemblerMain");
    EXPECT_EQ(LogCapture::lines()[0].text, "[SWFDeAssemblerMain] [swfHeader] [" + c.bytes.substr(0, 3) + "]");
    EXPECT_EQ(LogCapture::contains(kEndOfData), c.endOfData);
    if (c.endOfData) {
      EXPECT_EQ(LogCapture::lines().back().function, "skipTagLengh");
    }
  }
  Lines lines;
  EXPECT_EQ(deAssembler.SWFDeAssemblerMain(dir.file("missing.swf"), lines), RUN_SWF_OPEN_FAILED);
  firstTimeVal = TimeBudget::nowMicros() - TimeBudget::kBudgetMicros - 1000;
  RunResult code = 0;
  EXPECT_TRUE(listFile(SwfWriter().doAction(play()).fws(), &code).empty());
  EXPECT_EQ(code, RUN_TIME_LIMIT);
}

TEST_F(ListingTest, TagHeadersAndTheEndOfTheWalk) {
  struct Case {
    const char* what;
    SwfWriter movie;
    Lines expected;
  };
  const std::string longDoAction = u16(12 << 6 | 63);
  SwfWriter pushTrace;
  pushTrace.tag(9, "\xff\xff\xff").doAction(ActionBuilder().record(0x96, std::string("\0a\0", 3)).op(0x26)).tag(1, "");
  const Case cases[] = {
      {"other tags are skipped", pushTrace.end(),
       {kDoStart, "[ActionPush]", str("a"), "[ActionTrace]", kDoEnd}},
      {"32-bit length form",
       SwfWriter().longTag(12, play().bytes()).longTag(2, std::string(70, 'x')).doAction(stop()).end(),
       kPlayStop},
      {"code 92 ends the walk", SwfWriter().tag(92, "").doAction(play()).end(), {}},
      {"code 1023 ends the walk although it has a name", SwfWriter().tag(1023, "").doAction(play()).end(), {}},
      {"empty DoAction is passed over", SwfWriter().tag(12, "").doAction(play()).end(), kPlay},
      {"a DoAction of 10,000,000 bytes is passed over",
       SwfWriter().raw(longDoAction + u32(10000000)).doAction(play()).end(), kPlay},
      {"a DoAction of 9,999,999 bytes is listed as far as the data goes",
       SwfWriter().raw(longDoAction + u32(9999999) + "\x06\x07"), {kDoStart, "[ActionPlay]", "[ActionStop]", kDoEnd}},
      {"frame size with 0-bit fields", SwfWriter(std::string(1, '\0')).doAction(play()).end(), kPlay},
      {"frame size with 31-bit fields", SwfWriter(std::string(16, '\xff') + "\x80").doAction(play()).end(), kPlay},
  };
  for (const Case& c : cases) {
    for (const std::string& bytes : {c.movie.fws(), c.movie.cws()}) {
      RunResult code = 0;
      EXPECT_EQ(listFile(bytes, &code), c.expected) << c.what << " " << bytes.substr(0, 3);
      EXPECT_EQ(code, RUN_SUCCESS) << c.what;
    }
  }
}

TEST_F(ListingTest, SpritesAreWalkedFromTheirIdentifierWord) {
  SwfWriter nested;
  nested.doAction(ActionBuilder().op(0x04)).end();
  SwfWriter body;
  body.doAction(play()).sprite(64, 64, nested).tag(1, "").end();
  struct Case {
    uint16_t id;
    uint16_t frames;
    Lines expected;
  };
  const Case cases[] = {
      // identifier below 64 reads as the end tag; the frame count 1 then ends the whole walk
      {1, 1, {kClipStart, kClipEnd}},
      // identifier 64, frame count 1: the outer walk takes the sprite's tags
      // (and the sprite nested in them), and their end tag ends it
      {64, 1, {kClipStart, kClipEnd, kDoStart, "[ActionPlay]", kDoEnd, kClipStart, "[ActionNextFrame]", kClipEnd}},
      // both 64 or more: the sprite's walk lists its block without banners and
      // skips the nested sprite; the outer walk goes on after the sprite
      {64, 64, {kClipStart, "[ActionPlay]", kClipEnd, kDoStart, "[ActionStop]", kDoEnd}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(listFile(SwfWriter().sprite(c.id, c.frames, body).doAction(stop()).end().fws()), c.expected)
        << c.id << "/" << c.frames;
  }
}

TEST_F(ListingTest, ImagesAndListingsAreBoundedInSize) {
  SwfWriter movie;
  movie.doAction(play()).tag(2, std::string(100000, '\0')).doAction(stop()).end();
  deAssembler.maxImageBytes = 4096;
  RunResult code = 0;
  EXPECT_EQ(listFile(movie.cws(), &code), kPlay);
  EXPECT_EQ(code, RUN_SWF_UNCOMPRESS_FAILED);
  EXPECT_EQ(listFile(movie.fws(), &code), kPlay);
  EXPECT_EQ(code, RUN_SUCCESS);

  deAssembler.maxImageBytes = UINT64_MAX;
  // Listing stops once its lines, each with the string's overhead, fill the limit.
  const Lines full = {kDoStart, "[ActionPlay]", "[ActionPlay]"};
  deAssembler.maxListingBytes = 0;
  for (const std::string& line : full) deAssembler.maxListingBytes += line.size() + DeAssembler::kListingLineOverhead;
  std::string busy = SwfWriter().doAction(ActionBuilder().raw("\x06\x06\x06\x06")).doAction(stop()).end().fws();
  EXPECT_EQ(listFile(busy), (Lines{kDoStart, "[ActionPlay]", "[ActionPlay]", kDoEnd}));
  deAssembler.maxListingBytes += 1;
  EXPECT_EQ(listFile(busy), (Lines{kDoStart, "[ActionPlay]", "[ActionPlay]", "[ActionPlay]", kDoEnd}));
}

TEST_F(ListingTest, BranchTargetsAreIdentifiedByTheirOffsetInTheFile) {
  // The If (5 bytes, after the 2-byte tag header) targets the Stop after it.
  SwfWriter movie;
  movie.tag(9, "abc");
  char label[32];
  snprintf(label, sizeof(label), "Label#@x442#0x%x", static_cast<unsigned>(movie.fws().size() + 2 + 5));
  movie.doAction(ActionBuilder().branchIf(0).op(0x07)).end();
  for (const std::string& bytes : {movie.fws(), movie.cws()}) EXPECT_EQ(listFile(bytes).at(4), label);
}

}  // namespace
