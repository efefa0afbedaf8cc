#include "convert/draft/Draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <numbers>
#include <sstream>

#include "convert/draft/alignment.h"
#include "convert/draft/english_rules.h"
#include "convert/draft/frame_mouths.h"
#include "convert/draft/phrases.h"
#include "convert/draft/voice_features.h"
#include "convert/formats/formats.h"
#include "tests/convert/sheets.h"

namespace {

using convert::Document;
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

TEST(Draft, SoundsPausesAndWordsHaveTheirFrames) {
  const std::string path = testing::TempDir() + "voice" + std::to_string(getpid()) + ".au";
  using support::kHiss, support::kHum, support::kVowel;
  support::MakeSound(path, {{40, 0.0005, kHum}, {30, 0.5, kVowel},                             // oh
                            {20, 0.0005, kHum}, {12, 0.07, kHiss}, {20, 0.5, kVowel},          // see
                            {38, 0.0005, kHum}, {8, 0.025, 2700}, {20, 0.5, kVowel},           // ha
                            {10, 0.0005, kHum}, {18, 0.5, kVowel},                             // ppy
                            {34, 0.0005, kHum}, {12, 0.5, kVowel}, {12, 0.07, kHiss},          // itch
                            {16, 0.5, kVowel},  {5, 0.0005, kHum}, {12, 0.5, kVowel},          // y, ea
                            {9, 0.07, kHiss},   {12, 0.5, kVowel}, {30, 0.0005, kHum},         // sy
                            {12, 0.5, kVowel},  {8, 0.025, 2700},  {14, 0.5, kVowel}, {8, 0.0005, kHum}});  // aha
  const auto sound = SoundFile::Open(path).sound;
  std::remove(path.c_str());
  convert::Context context;
  context.rate_text = "200";
  context.sound_seconds = 4;
  const auto drafted = [&](const std::string& text) {
    return *convert::DraftOf(text, *sound, {"en-us", false}, context).sheet;
  };
  // Two frames are a hundredth of a second. A breath has the mouth that follows, a stop and an affricate close
  // the mouth before them, a short pause holds it; a word that can't be spelled begins with the one before.
  EXPECT_EQ(CellsOf(drafted("\xe6\xbc\xa2\n[0.3] Oh, \xe6\xbc\xa2 see.\nHappy\n[0:02.4] itchy\n#\neasy\naha")),
            "0:Closed 0\"\xe6\xbc\xa2\" 80:O 80\"Oh \xe6\xbc\xa2\" 110:U 140:Closed 180:S 180\"see\" 204:E 244:Closed 320:A "
            "320\"Happy\" 369:P 396:E 432:Closed 500:E 500\"itchy\" 517:Ch 548:E 590\"easy\" 614:S 632:E "
            "656:Closed 716:A 716\"aha\" 740:E /800");
  EXPECT_EQ(CellsOf(drafted("[9] late")), "0:Closed 799\"late\" /800");
  // More words than the sound has room for are still all there, fifty on each hop.
  std::string crowd = "[3.9]";
  for (int i = 0; i < 500; ++i) crowd += " strengths";
  EXPECT_THAT(CommentFrames(drafted(crowd)),
              testing::ElementsAre(780, 782, 784, 786, 788, 790, 792, 794, 796, 798));
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

/// Words with their sounds.
constexpr const char* kSpelled =
    "about AX B AW T; accent AE K S EH N T; animal AE N IH M AX L; antique AE N T IY K; "
    "apples AE P AX L Z; arms AA R M Z; away AX W EY; back B AE K; be B IY; bees B IY Z; board B AO R D; "
    "boat B OW T; bought B AO T; boxes B AA K S IH Z; boy B OY; bread B R EH D; breathe B R IY DH; "
    "brother B R AH DH ER; building B IH L D IH NG; bus B AH S; buys B AY Z; buzzes B AH Z IH Z; "
    "cabs K AE B Z; called K AO L D; camel K AE M AX L; care K EH R; carrier K AE R IY ER; cars K AA R Z; "
    "castle K AE S AX L; cause K AO Z; cautious K AO SH AX S; ceiling S IY L IH NG; change CH EY N JH; "
    "cheque CH EH K; cherry CH EH R IY; chew CH UW; chrome K R OW M; churches CH ER CH IH Z; "
    "circle S ER K AX L; cold K OW L D; cough K AO F; country K AH N T R IY; cows K AW Z; daddy D AE D IY; "
    "danger D EY N JH ER; dishes D IH SH IH Z; dogs D AA G Z; double D AH B AX L; dough D OW; earth ER TH; "
    "easy IY Z IY; egg EH G; enforcement EH N F AO R S M AX N T; extra EH K S T R AX; faces F EY S IH Z; "
    "feud F Y UW D; few F Y UW; field F IY L D; find F AY N D; finger F IH NG G ER; flew F L UW; "
    "flies F L AY Z; floor F L AO R; flu F L UW; fly F L AY; fruit F R UW T; full F UH L; "
    "garden G AA R D AX N; ghost G OW S T; girls G ER L Z; glove G L AH V; gnome N OW M; goes G OW Z; "
    "grew G R UW; group G R UW P; grow G R OW; guess G EH S; hair HH EH R; half HH AE F; "
    "hearts HH AA R T S; hi HH AY; honor AA N ER; hour AW ER; hurry HH ER IY; hymn HH IH M; i'm AY M; "
    "india IH N D IY AX; judge JH AH JH; key K IY; kissed K IH S T; kisses K IH S IH Z; knife N AY F; "
    "known N OW N; lamb L AE M; lawyer L AO Y ER; lazy L EY Z IY; learn L ER N; letter L EH T ER; "
    "looked L UH K T; lure L UH R; mission M IH SH AX N; names N EY M Z; nation N EY SH AX N; "
    "needed N IY D IH D; nervous N ER V AX S; nicely N AY S L IY; night N AY T; no N OW; off AO F; "
    "optician AA P T IH SH AX N; organ AO R G AX N; pages P EY JH IH Z; partial P AA R SH AX L; "
    "patio P AE T IY OW; peaceful P IY S F AX L; phone F OW N; picture P IH K CH ER; pie P AY; "
    "pour P AO R; precious P R EH SH AX S; psalm S AA M; puffed P AH F T; queen K W IY N; "
    "rabbit R AE B IH T; raccoon R AE K UW N; rain R EY N; reached R IY CH T; roll R OW L; rough R AH F; "
    "runs R AH N Z; scene S IY N; school S K UW L; show SH OW; sign S AY N; sincere S IH N S IY R; "
    "single S IH NG G AX L; slow S L OW; snow S N OW; song S AO NG; soup S UW P; special S P EH SH AX L; "
    "stopped S T AA P T; summer S AH M ER; table T EY B AX L; taste T EY S T; taxi T AE K S IY; "
    "tennis T EH N IH S; think TH IH NG K; toe T OW; tough T AH F; tried T R AY D; tune T UW N; "
    "type T AY P; use Y UW Z; vein V EY N; village V IH L IH JH; vision V IH ZH AX N; voice V OY S; "
    "walk W AO K; wanted W AA N T IH D; warm W AO R M; washed W AA SH T; watch W AA CH; "
    "weather W EH DH ER; white W AY T; whose HH UW Z; wild W AY L D; window W IH N D OW; words W ER D Z; "
    "wouldn't W UH D N T; write R AY T; make M EY K; making M EY K IH NG; little L IH T AX L; "
    "happy HH AE P IY; moon M UW N; again AX G EH N; because B IH K AO Z; been B IH N; blood B L AH D; "
    "does D AH Z; enough IH N AH F; father F AA DH ER; foot F UH T; friend F R EH N D; from F R AH M; "
    "great G R EY T; have HH AE V; into IH N T UW; listen L IH S AX N; live L IH V; money M AH N IY; "
    "of AH V; once W AH N S; one W AH N; people P IY P AX L; put P UH T; said S EH D; some S AH M; "
    "that DH AE T; the DH AX; their DH EH R; there DH EH R; they DH EY; through TH R UW; "
    "together T AX G EH DH ER; two T UW; was W AH Z; were W ER; what W AH T; where W EH R; "
    "woman W UH M AX N; women W IH M IH N; won't W OW N T; you Y UW; your Y AO R; yes Y EH S";

TEST(Draft, SpellsEnglish) {
  std::istringstream words(kSpelled);
  for (std::string word, sounds; words >> word && std::getline(words, sounds, ';');)
    EXPECT_EQ(" " + Spoken(word), sounds) << word;
  for (const char* mute : {"", "'"}) EXPECT_EQ(Spoken(mute), "");
  // Seven hundred and, as spoken, twenty one: by its sounds the same as in letters.
  for (const auto& [digits, letters] : std::map<std::string, std::string>{
           {"721", "seven-hundred-twenty-one"}, {"1000", "one-thousand"}, {"1001", "one-thousand-one"}}) {
    std::string by_digits, by_letters;
    for (const auto& sound : convert::EnglishSounds(digits)) by_digits += sound.mouths + ",";
    for (const auto& sound : convert::EnglishSounds(letters)) by_letters += sound.mouths + ",";
    EXPECT_EQ(by_digits, by_letters) << digits;
  }
  for (const auto& [mnemonic, mouth] : {std::pair{"tS", "Ch"}, {"t2", "T"}, {"aI@", "A I"}, {"?", ""}})
    EXPECT_EQ(convert::SoundOfMnemonic(mnemonic).mouths, mouth) << mnemonic;
  std::string shown;
  for (const auto& sound : convert::EnglishSounds(
           "camel-judge-finger-half-weather-bus-vision-puffed-young-rough-dishes-both-change"))
    shown += sound.mouths + " ";
  EXPECT_EQ(shown,
            "K A M E L Ch A Ch F E N G E R  A F W E Th E R B A S V E Ch E N P A F T E A N R A F D E Ch E S B "
            "O U Th Ch E I N Ch ");
  EXPECT_TRUE(convert::EnglishSounds("\xe6\xbc\xa2").empty());
}

TEST(Draft, TheListenerTellsAVoiceFromPauses) {
  convert::VoiceListener listener(8000);
  std::string expected, found;
  // Hops of 80 samples, the loud ones of 1000 hertz. Twelve are a stop's closure, and the beginning is no
  // pause.
  for (const auto& [hops, loud, mark] : {std::tuple{3, 0.0, '.'},
                                         {30, 0.5, 'v'},
                                         {12, 0.0, 'v'},
                                         {30, 0.5, 'v'},
                                         {13, 0.0, '.'},
                                         {30, 0.5, 'v'}}) {
    std::vector<double> samples(80U * static_cast<std::size_t>(hops));
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = loud * std::sin(static_cast<double>(i) * std::numbers::pi / 4);
    listener.Listen(samples);
    expected.append(static_cast<std::size_t>(hops), mark);
  }
  for (const auto& hop : listener.Finish()) {
    found += hop.voiced ? 'v' : '.';
    EXPECT_TRUE(hop.level < -60 || (std::abs(hop.level) < 0.1F && std::abs(hop.hertz - 1000) < 30)) << found;
  }
  EXPECT_EQ(found, expected);
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
  // Four sounds have to share two hops.
  const auto crowd = convert::Align(std::span(hops).first(2), {{hiss, vowel}, {hiss, vowel}});
  EXPECT_TRUE(crowd[0][1].begin == 0 && crowd[0][1].end == 1 && crowd[1][1].end == 2);
}

TEST(Draft, AFrameShowsTheMouthThatTheEyeWouldMiss) {
  // Frames of a tenth of a second. Lips that close for a third of a frame win it; a vowel for less does not.
  const auto shown = convert::MouthsOfFrames(
      {{0, 0.18, "A"}, {0.18, 0.22, "M"}, {0.22, 0.46, "E"}, {0.46, 0.48, "O"}, {0.48, 0.6, "T"}}, 6, 0.6);
  EXPECT_THAT(shown, testing::ElementsAre("A", "", "E", "", "", "T"));
  for (const char* lips : {"M", "B", "P"})
    EXPECT_THAT(convert::MouthsOfFrames({{0, 0.14, "A"}, {0.14, 0.175, lips}, {0.175, 0.3, "E"}}, 3, 0.3),
                testing::ElementsAre("A", lips, "E"));
  // A vowel that is crowded out gets a frame of a mouth that is shown for two.
  const auto crowded = convert::MouthsOfFrames({{0, 0.03, "A"}, {0.03, 0.3, "M"}}, 3, 0.3);
  EXPECT_THAT(crowded, testing::ElementsAre("A", "M", ""));
}

}  // namespace
