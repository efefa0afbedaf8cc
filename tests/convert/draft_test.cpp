#include "convert/draft/Draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>

#include "convert/draft/alignment.h"
#include "convert/draft/english_rules.h"
#include "convert/draft/frame_mouths.h"
#include "convert/draft/phrases.h"
#include "convert/formats/formats.h"
#include "tests/convert/sheets.h"

namespace {

using convert::Document;
using convert::SoundFile;

const std::string kSamples = SOURCE_DIR "/samples/";

/// The frames on which comments stand.
std::vector<int> CommentFrames(const Document& sheet) {
  std::vector<int> frames;
  for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
    if (!sheet.rows[i][2].empty()) frames.push_back(static_cast<int>(i));
  }
  return frames;
}

TEST(Draft, WordsOfTheSampleLieWithinAFrameAsAMean) {
  const Document by_hand = *convert::ReadExposureSheet(support::FileBytes(kSamples + "frogs.exp")).sheet;
  const auto sound = SoundFile::Open(kSamples + "frogs.wav").sound;
  ASSERT_TRUE(sound);
  convert::Context context;
  context.names = &convert::ShapeTable::Default();
  context.rate_text = "24";
  context.sound_seconds = static_cast<double>(sound->ScanAll().frames) / sound->SamplesPerSecond();
  const auto reading =
      convert::DraftOf("Five thin frogs jump\nand hum to the blue moon.", *sound, {"en-us", false}, context);
  ASSERT_TRUE(reading.sheet);
  const auto expected = CommentFrames(by_hand), found = CommentFrames(*reading.sheet);
  ASSERT_EQ(found.size(), expected.size());
  int frames_off = 0, frames_off_evenly = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    frames_off += std::abs(found[i] - expected[i]);
    frames_off_evenly += std::abs(static_cast<int>(i * by_hand.rows.size() / found.size()) - expected[i]);
  }
  EXPECT_LE(frames_off, 10);
  EXPECT_EQ(frames_off_evenly, 34);
  EXPECT_EQ(reading.sheet->rows[0][1], "F");
  EXPECT_EQ(InEnglish(reading.notes[0]), "this is a draft: go through it by ear");
}

TEST(Draft, AStartInTheTextMovesItsPhrase) {
  const auto sound = SoundFile::Open(kSamples + "frogs.wav").sound;
  convert::Context context;
  context.rate_text = "24";
  context.sound_seconds = 71.0 / 24;
  const auto reading = convert::DraftOf("[0.5] one\n2.0\ttwo\n", *sound, {"en-us", false}, context);
  const auto frames = CommentFrames(*reading.sheet);
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_GE(frames[0], 12);
  EXPECT_GE(frames[1], 48);
  // More words than the sound has room for are still all there.
  std::string crowd = "[2.9]";
  for (int i = 0; i < 500; ++i) crowd += " strengths";
  EXPECT_TRUE(convert::DraftOf(crowd, *sound, {"en-us", false}, context).sheet);
}

TEST(Draft, TheTextIsReadByPhrases) {
  const auto parsed =
      convert::ParsePhrases("# for Ann\n[1:02.5] \"Well,\" she said\xe2\x80\xa6\n\n63.25\tNo - 7!\n");
  ASSERT_EQ(parsed.phrases.size(), 2u);
  EXPECT_EQ(parsed.phrases[0].start_seconds, 62.5);
  EXPECT_THAT(parsed.phrases[0].words, testing::ElementsAre("Well", "she", "said"));
  EXPECT_EQ(parsed.phrases[1].start_seconds, 63.25);
  EXPECT_THAT(parsed.phrases[1].words, testing::ElementsAre("No", "7"));
  for (const auto& [text, message] :
       std::map<std::string, std::string>{{"[x] a", "line 1: expected a time"},
                                          {"[2] a\n[1] b", "line 2: expected a time"},
                                          {"[-1] a", "line 1: expected a time"},
                                          {"...\n", "the text has no words"}}) {
    EXPECT_THAT(InEnglish(convert::ParsePhrases(text).failure), testing::HasSubstr(message)) << text;
  }
}

std::string Spoken(std::string_view word) {
  std::string all;
  for (const std::string& name : convert::EnglishSoundNames(word)) all += (all.empty() ? "" : " ") + name;
  return all;
}

TEST(Draft, SpellsEnglish) {
  for (const auto& [word, sounds] : std::map<std::string, std::string>{{"make", "M EY K"},
                                                                       {"making", "M EY K IH NG"},
                                                                       {"thought", "TH AO T"},
                                                                       {"night", "N AY T"},
                                                                       {"nation", "N EY SH AX N"},
                                                                       {"knife", "N AY F"},
                                                                       {"phone", "F OW N"},
                                                                       {"stopped", "S T AA P T"},
                                                                       {"queen", "K W IY N"},
                                                                       {"little", "L IH T AX L"},
                                                                       {"judge", "JH AH JH"},
                                                                       {"watch", "W AA CH"},
                                                                       {"happy", "HH AE P IY"},
                                                                       {"words", "W ER D Z"},
                                                                       {"church", "CH ER CH"},
                                                                       {"picture", "P IH K CH ER"},
                                                                       {"moon", "M UW N"},
                                                                       {"", ""},
                                                                       {"'", ""}}) {
    EXPECT_EQ(Spoken(word), sounds) << word;
  }
  // Seven hundred and, as spoken, twenty one: by its sounds the same as in letters.
  for (const auto& [digits, letters] : std::map<std::string, std::string>{
           {"721", "seven-hundred-twenty-one"}, {"1000", "one-thousand"}, {"1001", "one-thousand-one"}}) {
    std::string by_digits, by_letters;
    for (const auto& sound : convert::EnglishSounds(digits)) by_digits += sound.mouths + ",";
    for (const auto& sound : convert::EnglishSounds(letters)) by_letters += sound.mouths + ",";
    EXPECT_EQ(by_digits, by_letters) << digits;
  }
  EXPECT_TRUE(convert::EnglishSounds("\xe6\xbc\xa2").empty());
}

TEST(Draft, SoundsFallOnWhatTheySoundLike) {
  using convert::Manner;
  // Half a second of quiet, a hiss, a vowel, two seconds of quiet, a vowel.
  std::vector<convert::VoiceHop> hops;
  const auto add = [&](int count, float level, float hertz, bool voiced) {
    hops.insert(hops.end(), static_cast<std::size_t>(count), {level, hertz, voiced});
  };
  add(50, -60, 1000, false);
  add(12, -15, 5500, true);
  add(20, -2, 900, true);
  add(200, -60, 1000, false);
  add(15, -2, 900, true);
  const convert::SpeechSound hiss{Manner::kHiss, "S", 115}, vowel{Manner::kVowel, "A", 135};
  const auto spans = convert::Align(hops, {{hiss, vowel}, {}, {vowel}});
  ASSERT_EQ(spans.size(), 3u);
  EXPECT_EQ(spans[0][0].begin, 50);
  EXPECT_EQ(spans[0][0].end, 62);
  EXPECT_EQ(spans[0][1].end, 82);
  EXPECT_EQ(spans[2][0].begin, 282);
  EXPECT_EQ(spans[2][0].end, 297);
}

TEST(Draft, AFrameShowsTheMouthThatTheEyeWouldMiss) {
  // Frames of a tenth of a second. Lips that close for a third of a frame win it; a vowel for less does not.
  const auto shown = convert::MouthsOfFrames(
      {{0, 0.18, "A"}, {0.18, 0.22, "M"}, {0.22, 0.46, "E"}, {0.46, 0.48, "O"}, {0.48, 0.6, "T"}}, 6, 0.6);
  EXPECT_THAT(shown, testing::ElementsAre("A", "", "E", "", "", "T"));
  const auto lips = convert::MouthsOfFrames({{0, 0.14, "A"}, {0.14, 0.175, "M"}, {0.175, 0.3, "E"}}, 3, 0.3);
  EXPECT_THAT(lips, testing::ElementsAre("A", "M", "E"));
  // A vowel that is crowded out gets a frame of a mouth that is shown for two.
  const auto crowded = convert::MouthsOfFrames({{0, 0.03, "A"}, {0.03, 0.3, "M"}}, 3, 0.3);
  EXPECT_THAT(crowded, testing::ElementsAre("A", "M", ""));
}

}  // namespace
