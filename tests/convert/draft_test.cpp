#include "convert/draft/Draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <tuple>

#include "convert/draft/alignment.h"
#include "convert/draft/english_rules.h"
#include "convert/draft/frame_mouths.h"
#include "convert/draft/phrases.h"
#include "convert/draft/voice_features.h"
#include "convert/formats/formats.h"
#include "tests/convert/sheets.h"

namespace {

using convert::Document;
using convert::Reading;
using convert::SoundFile;
using support::CellsOf;

const std::string kSamples = SOURCE_DIR "/samples/";

/// The frames on which comments stand.
std::vector<int> CommentFrames(const Document& sheet) {
  std::vector<int> frames;
  for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
    if (!sheet.rows[i][2].empty()) frames.push_back(static_cast<int>(i));
  }
  return frames;
}

Reading Drafted(const std::string& text, SoundFile& sound, const char* rate) {
  convert::Context context;
  context.names = &convert::ShapeTable::Default();
  context.rate_text = rate;
  context.sound_seconds = static_cast<double>(sound.ScanAll().frames) / sound.SamplesPerSecond();
  return convert::DraftOf(text, sound, {"en-us", false}, context);
}

TEST(Draft, WordsOfTheSampleLieWithinAFrameAsAMean) {
  const Document by_hand = *convert::ReadExposureSheet(support::FileBytes(kSamples + "frogs.exp")).sheet;
  const auto reading = Drafted("Five thin frogs jump\nand hum to the blue moon.",
                               *SoundFile::Open(kSamples + "frogs.wav").sound, "24");
  const auto expected = CommentFrames(by_hand), found = CommentFrames(*reading.sheet);
  ASSERT_EQ(found.size(), expected.size());
  int frames_off = 0;
  for (std::size_t i = 0; i < found.size(); ++i) frames_off += std::abs(found[i] - expected[i]);
  EXPECT_LE(frames_off, 10) << "laid evenly the words are 34 frames off";
}

TEST(Draft, SoundsPausesAndWordsHaveTheirFrames) {
  const std::string path = testing::TempDir() + "voice" + std::to_string(getpid()) + ".au";
  // Oh - see - happy - achy, easy - aha.
  support::MakeSound(
      path, "40. 30V 20. 12S 20V 38. 8B 20V 10. 18V 34. 12V 12S 16V 5. 12V 9S 12V 30. 12V 8B 14V 8.");
  const auto sound = SoundFile::Open(path).sound;
  std::remove(path.c_str());
  const auto drafted = [&](const std::string& text) { return *Drafted(text, *sound, "200").sheet; };
  // Two frames a hundredth. A breath has the mouth that follows, a stop and an affricate close the one before
  // them, a short pause holds it; a word that can't be spelled begins with the one before.
  EXPECT_EQ(CellsOf(drafted("\xe6\xbc\xa2\n[0.3] Oh, \xe6\xbc\xa2 see.\nHappy\n[0:02.4] achy\n#\neasy\naha")),
            "0:Closed 0\"\xe6\xbc\xa2\" 80:O 80\"Oh \xe6\xbc\xa2\" 110:U 140:Closed 180:S 180\"see\" 204:E "
            "244:Closed 320:A 320\"Happy\" 369:P 396:E 432:Closed 500:A 500\"achy\" 517:Ch 548:E 590\"easy\" "
            "614:S 632:E "
            "656:Closed 716:A 716\"aha\" 740:E /800");
  EXPECT_EQ(CellsOf(drafted("[9] late")), "0:Closed 799\"late\" /800");
  // More words than the sound has room for are still all there, fifty on each hop.
  std::string crowd = "[3.9]";
  for (int i = 0; i < 500; ++i) crowd += " strengths";
  EXPECT_THAT(CommentFrames(drafted(crowd)),
              testing::ElementsAre(780, 782, 784, 786, 788, 790, 792, 794, 796, 798));
}

TEST(Draft, TheTextIsReadByPhrases) {
  const auto parsed = convert::ParsePhrases(
      "# for Ann\n[0] ((Well \xe2\x80\x9e\xe2\x80\x9cshe said\xe2\x80\x9c\xe2\x80\x9d\n\n"
      "[1:12.5] yes\n72.5\tNo - 7!\n");
  ASSERT_EQ(parsed.phrases.size(), 3u);
  EXPECT_EQ(parsed.phrases[0].start_seconds, 0);
  EXPECT_THAT(parsed.phrases[0].words, testing::ElementsAre("Well", "she", "said"));
  EXPECT_EQ(parsed.phrases[1].start_seconds, 72.5);
  EXPECT_THAT(parsed.phrases[2].words, testing::ElementsAre("No", "7"));
  for (const auto& [text, message] :
       std::map<std::string, std::string>{{"[x] a", "line 1: expected a time"},
                                          {"[2] a\n[1] b", "line 2: expected a time"},
                                          {"[-1] a", "line 1: expected a time"},
                                          {"...\n", "the text has no words"}}) {
    EXPECT_THAT(InEnglish(convert::ParsePhrases(text).failure), testing::HasSubstr(message)) << text;
  }
}

/// Words with their sounds.
constexpr const char* kSpelled =
    "about AX B AW T; apples AE P AX L Z; away AX W EY; be B IY; bees B IY Z; bought B AO T; "
    "brother B R AH DH ER; castle K AE S AX L; ceiling S IY L IH NG; chew CH UW; cough K AO F; "
    "country K AH N T R IY; danger D EY N JH ER; double D AH B AX L; dough D OW; earth ER TH; easy IY Z IY; "
    "enforcement EH N F AO R S M AX N T; finger F IH NG G ER; flies F L AY Z; fruit F R UW T; "
    "girls G ER L Z; group G R UW P; guess G EH S; hi HH AY; honor AA N ER; hour AW ER; key K IY; "
    "known N OW N; learn L ER N; nervous N ER V AX S; no N OW; off AO F; pages P EY JH IH Z; "
    "peaceful P IY S F AX L; pie P AY; scene S IY N; show SH OW; soup S UW P; use Y UW Z; walk W AO K; "
    "watch W AA CH; weather W EH DH ER; lazy L EY Z IY";

TEST(Draft, SpellsEnglish) {
  std::istringstream words(kSpelled);
  for (std::string word, sounds; words >> word && std::getline(words, sounds, ';');) {
    std::string spoken;
    for (const std::string& name : convert::EnglishSoundNames(word)) spoken += " " + name;
    EXPECT_EQ(spoken, sounds) << word;
  }
  for (const char* mute : {"", "'"}) EXPECT_TRUE(convert::EnglishSoundNames(mute).empty());
  const auto mouths = [](std::string_view text) {
    std::string shown;
    for (const auto& sound : convert::EnglishSounds(text)) shown += sound.mouths + " ";
    return shown;
  };
  // A number is said as in letters; six digits are one number.
  for (const auto& [digits, letters] : std::map<std::string, std::string>{
           {"721", "seven-hundred-twenty-one"},
           {"1001", "one-thousand-one"},
           {"100-900", "one-hundred-nine-hundred"},
           {"1203197", "one-hundred-twenty-thousand-three-hundred-nineteen-seven"}})
    EXPECT_EQ(mouths(digits), mouths(letters)) << digits;
  for (const auto& [mnemonic, mouth] : {std::pair{"tS", "Ch"}, {"t2", "T"}, {"aI@", "A I"}, {"?", ""}})
    EXPECT_EQ(convert::SoundOfMnemonic(mnemonic).mouths, mouth) << mnemonic;
  EXPECT_EQ(
      mouths("camel-judge-finger-half-weather-bus-vision-puffed-young-rough-dishes-both-change-COULDN'T-ZAP"),
      "K A M E L Ch A Ch F E N G E R  A F W E Th E R B A S V E Ch E N P A F T E A N R A F D E Ch E S B "
      "O U Th Ch E I N Ch K U D N T S A P ");
  EXPECT_TRUE(convert::EnglishSounds("\xe6\xbc\xa2").empty());
}

TEST(Draft, TheListenerTellsAVoiceFromPauses) {
  convert::VoiceListener listener(16000);
  const std::vector<double> samples = support::Samples("3_ 50V 12_ 20S 13_ 20Q 30V");
  // In pieces of any size; half a hop is one too.
  listener.Listen(std::span(samples).first(100));
  listener.Listen(std::span(samples).subspan(100, samples.size() - 180));
  const auto hops = listener.Finish();
  std::size_t at = 0;
  // Twelve hops are a stop's closure, and the beginning is no pause. A tenth of the hops that aren't silent
  // tells the quiet, and a voice is 9 decibels above it.
  for (const auto& [count, level, hertz, voiced] : {std::tuple{3, -90.97, 0, false},
                                                    {50, 0.0, 1000, true},
                                                    {12, -90.97, 0, true},
                                                    {20, -17.08, 5500, true},
                                                    {13, -90.97, 0, false},
                                                    {20, -35.0, 2000, false},
                                                    {30, 0.0, 1000, true}}) {
    for (int i = 0; i < count; ++i, ++at) {
      ASSERT_LT(at, hops.size());
      EXPECT_NEAR(hops[at].level, level, 0.1) << at;
      EXPECT_NEAR(hops[at].hertz, hertz, 60) << at;
      EXPECT_EQ(hops[at].voiced, voiced) << at;
    }
  }
  EXPECT_EQ(at, hops.size());
}

TEST(Draft, SoundsFallOnWhatTheySoundLike) {
  using convert::Manner;
  const std::map<char, convert::VoiceHop> heard = {
      {'.', {-60, 1000, false}}, {'n', {-20, 3000, false}}, {'S', {-15, 5500, true}}, {'V', {-2, 900, true}}};
  const std::map<char, convert::SpeechSound> spoken = {{'S', {Manner::kHiss, "S", 115}},
                                                       {'V', {Manner::kVowel, "A", 135}}};
  for (const auto& [sound, text, expected] : std::initializer_list<std::array<std::string, 3>>{
           {"50. 12S 20V 200. 15V", "SV  V", "50-62 62-82 282-297 "},
           // A room as bright as a hiss: it is known by what is heard in the pauses.
           {"60n 12S 20V 60n", "SV", "60-72 72-92 "},
           // Ten seconds: five words close together, then five with a second between them.
           {"40V 20. 40V 20. 40V 20. 40V 20. 40V 20. 40V 100. 40V 100. 40V 100. 40V 100. 40V 100.",
            "V V V V V V V V V V",
            "0-40 60-100 120-160 180-220 240-280 300-340 440-480 580-620 720-760 860-900 "},
           // Four sounds have to share two hops, or get one each.
           {"2V", "SV SV", "0-0 0-1 1-1 1-2 "},
           {"2. 2V", "SV SV", "0-1 1-2 2-3 3-4 "}}) {
    std::vector<convert::VoiceHop> hops;
    std::istringstream runs(sound);
    for (auto [count, name] = std::pair(0, '.'); runs >> count >> name;)
      hops.insert(hops.end(), static_cast<std::size_t>(count), heard.at(name));
    std::vector<std::vector<convert::SpeechSound>> words(1);
    for (const char c : text) {
      if (c == ' ') words.emplace_back();
      if (c != ' ') words.back().push_back(spoken.at(c));
    }
    std::string found;
    for (const auto& word : convert::Align(hops, words)) {
      for (const auto& span : word)
        found += std::to_string(span.begin) + "-" + std::to_string(span.end) + " ";
    }
    EXPECT_EQ(found, expected) << sound;
  }
}

TEST(Draft, AFrameShowsTheMouthThatTheEyeWouldMiss) {
  using Spans = std::vector<convert::MouthSpan>;
  // Frames of a tenth of a second.
  for (const auto& [spans, shown] : std::initializer_list<std::pair<Spans, std::vector<std::string>>>{
           {{{0, 0.2, "A"}, {0.22, 0.46, "E"}, {0.46, 0.48, "O"}, {0.48, 0.6, "T"}},
            {"A", "", "E", "", "", "T"}},
           // A vowel that is crowded out gets a frame of a mouth that is shown for two, unless it was before.
           {{{0, 0.13, "M"}, {0.13, 0.15, "A"}, {0.15, 0.3, "M"}, {0.3, 0.4, "E"}}, {"M", "A", "M", "E"}},
           {{{0, 0.1, "A"}, {0.1, 0.12, "M"}, {0.12, 0.14, "A"}, {0.14, 0.4, "M"}}, {"A", "M", "", ""}},
           {{{0, 0.26, "M"}, {0.26, 0.28, "A"}, {0.28, 0.3, "M"}}, {"M", "", ""}},
           // Where nothing is said the mouth is held.
           {{{0.1, 0.2, "A"}, {0.4, 0.5, "E"}}, {"", "A", "", "", "E"}},
           {{{0, 0.1, "A"}}, {"A"}}}) {
    const auto frames = static_cast<double>(shown.size());
    EXPECT_EQ(convert::MouthsOfFrames(spans, std::lround(frames), 0.1 * frames), shown);
  }
  for (const char* vowel : {"A", "E", "I", "O", "U"})
    EXPECT_EQ(convert::MouthsOfFrames({{0, 0.03, vowel}, {0.03, 0.3, "M"}}, 3, 0.3)[0], vowel);
  // Lips and teeth win a frame with a smaller share of it than the vowel before them.
  for (const auto& [mouth, weight] :
       std::map<std::string, int>{{"M", 3}, {"B", 3}, {"P", 3}, {"F", 2}, {"V", 2}, {"W", 2}, {"S", 1}}) {
    for (const auto& [begin, end, needed] :
         {std::tuple{0.15, 0.19, 2}, {0.165, 0.195, 3}, {0.175, 0.195, 4}}) {
      const Spans spans{{0, begin, "A"}, {begin, end, mouth}, {end, 0.3, "E"}};
      EXPECT_EQ(convert::MouthsOfFrames(spans, 3, 0.3)[1] == mouth, weight >= needed) << mouth;
    }
  }
}

}  // namespace
