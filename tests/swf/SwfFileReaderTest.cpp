#include <zlib.h>

#include <algorithm>

#include "swf/ListingFixture.h"

using swf::ActionBuilder;
using swf::SwfWriter;
using swf::u16;
using swf::u32;

namespace {

const std::string kDoStart = " ------------ ActionScript ASM Code From TAG_DOACTION Start ------------- \r";
const std::string kDoEnd = " ------------ ActionScript ASM Code From TAG_DOACTION End   ------------- \r";
const std::string kClipStart = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP Start ------------- \r";
const std::string kClipEnd = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP End   ------------- \r";
const std::string kEndOfData = "[skipTagLengh] Unexpected end of Data  ";

ActionBuilder play() { return ActionBuilder().op(0x06); }
ActionBuilder stop() { return ActionBuilder().op(0x07); }

// A zlib stream of `plain` flushed to a byte boundary but never ended.
std::string unendedStream(const std::string& plain) {
  z_stream stream{};
  deflateInit(&stream, Z_BEST_COMPRESSION);
  std::string out(compressBound(plain.size()) + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.data()));
  stream.avail_in = static_cast<uInt>(plain.size());
  stream.next_out = reinterpret_cast<Bytef*>(&out[0]);
  stream.avail_out = static_cast<uInt>(out.size());
  deflate(&stream, Z_SYNC_FLUSH);
  out.resize(out.size() - stream.avail_out);
  deflateEnd(&stream);
  return out;
}

std::string compressedWithStream(const std::string& plain, const std::string& stream) {
  return "CWS" + plain.substr(3, 5) + stream;
}

TEST_F(ListingTest, PlainAndCompressedFilesGiveTheSameListing) {
  SwfWriter movie;
  movie.tag(9, "\xff\xff\xff").doAction(ActionBuilder().push({swf::PushValue::string("a")}).op(0x26)).tag(1, "").end();
  Lines expected = {kDoStart, "[ActionPush]", "ActionPush#@x441#type#@x442#0#@x441#value#@x442#a", "[ActionTrace]",
                    kDoEnd};
  for (bool compressed : {false, true}) {
    LogCapture::clear();
    RunResult code = 0;
    EXPECT_EQ(listFile(compressed ? movie.cws() : movie.fws(), &code), expected);
    EXPECT_EQ(code, RUN_SUCCESS);
    ASSERT_FALSE(LogCapture::lines().empty());
    EXPECT_EQ(LogCapture::lines()[0].function, "SWFDeAssemblerMain");
    EXPECT_EQ(LogCapture::lines()[0].text, compressed ? "[SWFDeAssemblerMain] [swfHeader] [CWS]"
                                                      : "[SWFDeAssemblerMain] [swfHeader] [FWS]");
  }
}

TEST_F(ListingTest, FilesThatAreNotSwfFiles) {
  struct Case {
    std::string bytes;
    std::string logged;
  };
  for (const Case& c : {Case{"", "[SWFDeAssemblerMain] [swfHeader] []"}, Case{"FW", "[SWFDeAssemblerMain] [swfHeader] []"},
                        Case{"ZWS\x08", "[SWFDeAssemblerMain] [swfHeader] [ZWS]"},
                        Case{"fws\x08", "[SWFDeAssemblerMain] [swfHeader] [fws]"}}) {
    LogCapture::clear();
    RunResult code = 0;
    EXPECT_TRUE(listFile(c.bytes, &code).empty());
    EXPECT_EQ(code, RUN_SWF_BAD_SIGNATURE);
    EXPECT_TRUE(LogCapture::contains(c.logged)) << c.logged;
  }
  Lines lines;
  EXPECT_EQ(deAssembler.SWFDeAssemblerMain(dir.file("missing.swf"), lines), RUN_SWF_OPEN_FAILED);
  firstTimeVal = TimeBudget::nowMicros() - TimeBudget::kBudgetMicros - 1000;
  RunResult code = 0;
  EXPECT_TRUE(listFile(SwfWriter().doAction(play()).fws(), &code).empty());
  EXPECT_EQ(code, RUN_TIME_LIMIT);
}

TEST_F(ListingTest, TinyFilesListNothing) {
  for (const std::string& bytes : {std::string("FWS"), std::string("FWS\x08\x01"), std::string("CWS"),
                                   std::string("CWS\x08\x10\x00\x00")}) {
    RunResult code = 0;
    EXPECT_TRUE(listFile(bytes, &code).empty());
    EXPECT_EQ(code, RUN_SUCCESS);
  }
}

TEST_F(ListingTest, TagHeadersAndTheEndOfTheWalk) {
  struct Case {
    const char* what;
    SwfWriter movie;
    Lines expected;
  };
  const Case cases[] = {
      {"32-bit length form", SwfWriter().longTag(12, play().bytes()).longTag(2, std::string(70, 'x')).doAction(stop()).end(),
       {kDoStart, "[ActionPlay]", kDoEnd, kDoStart, "[ActionStop]", kDoEnd}},
      {"code 92 ends the walk", SwfWriter().tag(92, "").doAction(play()).end(), {}},
      {"code 1023 ends the walk although it has a name", SwfWriter().tag(1023, "").doAction(play()).end(), {}},
      {"empty DoAction is passed over", SwfWriter().tag(12, "").doAction(play()).end(), {kDoStart, "[ActionPlay]", kDoEnd}},
      {"a DoAction declared 10,000,000 bytes long is walked as tags",
       SwfWriter().raw(u16(12 << 6 | 63) + u32(10000000)).doAction(play()).end(), {kDoStart, "[ActionPlay]", kDoEnd}},
      {"frame size with 0-bit fields", SwfWriter().frameSize(0, 0, 0, 0, 0).doAction(play()).end(),
       {kDoStart, "[ActionPlay]", kDoEnd}},
      {"frame size with 31-bit fields", SwfWriter().frameSize(31, 0x7FFFFFFF, 1, 0x55555555, 3).doAction(play()).end(),
       {kDoStart, "[ActionPlay]", kDoEnd}},
  };
  for (const Case& c : cases) {
    for (bool compressed : {false, true}) {
      RunResult code = 0;
      EXPECT_EQ(listFile(compressed ? c.movie.cws() : c.movie.fws(), &code), c.expected) << c.what;
      EXPECT_EQ(code, RUN_SUCCESS) << c.what;
    }
  }
}

TEST_F(ListingTest, ADoActionOfMaximalLengthIsListed) {
  SwfWriter movie;
  movie.raw(u16(12 << 6 | 63) + u32(9999999)).doAction(play()).end();
  Lines lines = listFile(movie.fws());
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines.front(), kDoStart);
  EXPECT_EQ(lines.back(), kDoEnd);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), kDoStart), 1);
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
      // identifier 64 and frame count 1: the sprite's tags are walked by the outer
      // walk (the sprite nested in it with them) and its end tag ends that walk
      {64, 1, {kClipStart, kClipEnd, kDoStart, "[ActionPlay]", kDoEnd, kClipStart, "[ActionNextFrame]", kClipEnd}},
      // both 64 or more: the sprite's own walk lists its block without banners and
      // skips the sprite nested in it; the walk goes on after the sprite
      {64, 64, {kClipStart, "[ActionPlay]", kClipEnd, kDoStart, "[ActionStop]", kDoEnd}},
  };
  for (const Case& c : cases) {
    SwfWriter movie;
    movie.sprite(c.id, c.frames, body).doAction(stop()).end();
    EXPECT_EQ(listFile(movie.fws()), c.expected) << c.id << "/" << c.frames;
  }
}

TEST_F(ListingTest, DataThatEndsInsideATag) {
  SwfWriter skipped;
  skipped.doAction(play()).tag(2, std::string(40, 'x'));
  std::string cut = skipped.fws().substr(0, skipped.fws().size() - 10);
  RunResult code = 0;
  EXPECT_EQ(listFile(cut, &code), (Lines{kDoStart, "[ActionPlay]", kDoEnd}));
  EXPECT_EQ(code, RUN_SUCCESS);
  EXPECT_TRUE(LogCapture::contains(kEndOfData));
  EXPECT_EQ(LogCapture::lines().back().function, "skipTagLengh");

  // A script block cut by the end of the file lists its whole records; the
  // walk ends without a log line.
  LogCapture::clear();
  SwfWriter listed;
  listed.doAction(ActionBuilder().op(0x06).op(0x07).push({swf::PushValue::string("abcdef")}));
  std::string cutBlock = listed.fws().substr(0, listed.fws().size() - 3);
  EXPECT_EQ(listFile(cutBlock), (Lines{kDoStart, "[ActionPlay]", "[ActionStop]", kDoEnd}));
  EXPECT_FALSE(LogCapture::contains(kEndOfData));
}

TEST_F(ListingTest, DamagedAndUnfinishedCompressedStreams) {
  SwfWriter movie;
  movie.doAction(play()).doAction(stop()).end();
  std::string plain = movie.fws();
  Lines full = {kDoStart, "[ActionPlay]", kDoEnd, kDoStart, "[ActionStop]", kDoEnd};

  RunResult code = 0;
  EXPECT_EQ(listFile(compressedWithStream(plain, unendedStream(plain.substr(8))), &code), full);
  EXPECT_EQ(code, RUN_SUCCESS);
  // A reserved block type after the flushed data is an inflate error.
  EXPECT_EQ(listFile(compressedWithStream(plain, unendedStream(plain.substr(8)) + "\xff\xff\xff"), &code), full);
  EXPECT_EQ(code, RUN_SWF_UNCOMPRESS_FAILED);
  EXPECT_TRUE(listFile(compressedWithStream(plain, "garbage"), &code).empty());
  EXPECT_EQ(code, RUN_SWF_UNCOMPRESS_FAILED);

  // A stream cut in the middle lists the blocks inflated before the cut.
  SwfWriter large;
  large.doAction(play()).tag(2, std::string(200000, 'z') + std::string(1000, 'y')).doAction(stop()).end();
  std::string packed = large.cws();
  EXPECT_EQ(listFile(packed.substr(0, packed.size() / 2), &code), (Lines{kDoStart, "[ActionPlay]", kDoEnd}));
  EXPECT_EQ(code, RUN_SUCCESS);
}

TEST_F(ListingTest, ImagesAreBoundedInSize) {
  SwfWriter movie;
  movie.doAction(play()).tag(2, std::string(100000, '\0')).doAction(stop()).end();
  deAssembler.maxImageBytes = 4096;
  RunResult code = 0;
  EXPECT_EQ(listFile(movie.cws(), &code), (Lines{kDoStart, "[ActionPlay]", kDoEnd}));
  EXPECT_EQ(code, RUN_SWF_UNCOMPRESS_FAILED);
  EXPECT_EQ(listFile(movie.fws(), &code), (Lines{kDoStart, "[ActionPlay]", kDoEnd}));
  EXPECT_EQ(code, RUN_SUCCESS);

  deAssembler.maxImageBytes = UINT64_MAX;
  deAssembler.maxListingLines = 3;
  SwfWriter busy;
  busy.doAction(ActionBuilder().op(0x06).op(0x06).op(0x06).op(0x06)).doAction(stop()).end();
  EXPECT_EQ(listFile(busy.fws()), (Lines{kDoStart, "[ActionPlay]", "[ActionPlay]", kDoEnd}));
}

TEST_F(ListingTest, BranchTargetsAreIdentifiedByTheirOffsetInTheFile) {
  SwfWriter movie;
  movie.tag(9, "abc");
  uint32_t first = static_cast<uint32_t>(movie.nextTagOffset() + 2 + 5);
  movie.doAction(ActionBuilder().branchIf(0).op(0x07));
  uint32_t second = static_cast<uint32_t>(movie.nextTagOffset() + 2 + 5);
  movie.doAction(ActionBuilder().branchIf(0).op(0x07)).end();
  auto label = [](uint32_t id) {
    char text[64];
    snprintf(text, sizeof(text), "Label#@x442#0x%x", id);
    return std::string(text);
  };
  auto branch = [](uint32_t id) {
    char text[96];
    snprintf(text, sizeof(text), "ActionIf#@x441#offset#@x442#0#@x441#address#@x442#%x", id);
    return std::string(text);
  };
  Lines expected = {kDoStart, "[ActionIf]", branch(first),  "----EMPTY----", label(first),  "[ActionStop]", kDoEnd,
                    kDoStart, "[ActionIf]", branch(second), "----EMPTY----", label(second), "[ActionStop]", kDoEnd};
  EXPECT_EQ(listFile(movie.fws()), expected);
  EXPECT_EQ(listFile(movie.cws()), expected);
}

}  // namespace
