#include "convert/draft/Draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
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
  // Oh - see - happy - achy, easy - aha - bee.
  support::MakeSound(
      path, "40. 30V 20. 12S 20V 38. 8B 20V 10. 18V 34. 12V 12S 16V 5. 12V 9S 12V 30. 12V 8B 14V 20. 22V");
  const auto sound = SoundFile::Open(path).sound;
  std::remove(path.c_str());
  const auto drafted = [&](const std::string& text) { return *Drafted(text, *sound, "200").sheet; };
  // Two frames a hundredth. A breath has the mouth that follows, a stop and an affricate close the one before
  // them, a short pause holds it; a word that can't be spelled begins with the one before.
  EXPECT_EQ(
      CellsOf(drafted("\xe6\xbc\xa2\n[0.3] Oh, \xe6\xbc\xa2 see.\nHappy\n[0:02.4] achy\n#\neasy\naha\nbee")),
      "0:Closed 0\"\xe6\xbc\xa2\" 80:O 80\"Oh \xe6\xbc\xa2\" 110:U 140:Closed 180:S 180\"see\" 204:E "
      "244:Closed 320:A 320\"Happy\" 369:P 396:E 432:Closed 500:A 500\"achy\" 517:Ch 548:E 590\"easy\" "
      "614:S 632:E "
      "656:Closed 716:A 716\"aha\" 740:E 784:Closed 824:B 824\"bee\" 828:E /868");
  EXPECT_EQ(CellsOf(drafted("[9] late")), "0:Closed 867\"late\" /868");
  EXPECT_THAT(CellsOf(drafted("see\n[0.3] Oh")), testing::StartsWith("0:S 0\"see\""))
      << "nothing is heard there";
  // More words than the sound has room for are still all there, fifty on each hop.
  std::string crowd = "[4.24]";
  for (int i = 0; i < 500; ++i) crowd += " strengths";
  EXPECT_THAT(CommentFrames(drafted(crowd)),
              testing::ElementsAre(848, 850, 852, 854, 856, 858, 860, 862, 864, 866));
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
                                          {"[-1:70] a", "line 1: expected a time"},
                                          {"...\n", "the text has no words"}}) {
    EXPECT_THAT(InEnglish(convert::ParsePhrases(text).failure), testing::HasSubstr(message)) << text;
  }
}

/// Words with their sounds, as a dictionary has them: something for each rule, and what breaks the rules.
constexpr const char* kSpelled =
    "about AX B AW T; accent AE K S EH N T; added AE D IH D; again AX G EH N; angle AE NG G AX L; "
    "antique AE N T IY K; apples AE P AX L Z; away AX W EY; be B IY; beds B EH D Z; bees B IY Z; "
    "bells B EH L Z; berry B EH R IY; bird B ER D; board B AO R D; boat B OW T; book B UH K; "
    "bored B AO R D; bought B AO T; boxes B AA K S IH Z; boy B OY; bread B R EH D; breathe B R IY DH; "
    "brother B R AH DH ER; build B IH L D; bus B AH S; buy B AY; cabbage K AE B IH JH; called K AO L D; "
    "care K EH R; carry K AE R IY; cars K AA R Z; castle K AE S AX L; caught K AO T; cautious K AO SH AX S; "
    "ceiling S IY L IH NG; chair CH EH R; change CH EY N JH; cheque CH EH K; chew CH UW; chrome K R OW M; "
    "coin K OY N; cough K AO F; could K UH D; country K AH N T R IY; cows K AW Z; cruel K R UW L; "
    "danger D EY N JH ER; deer D IY R; dishes D IH SH IH Z; don't D OW N T; double D AH B AX L; dough D OW; "
    "drinkable D R IH NG K AX B AX L; drums D R AH M Z; earth ER TH; easy IY Z IY; egg EH G; "
    "energy EH N ER JH IY; enforcement EH N F AO R S M AX N T; enough IH N AH F; era EH R AX; eyes AY Z; "
    "faces F EY S IH Z; father F AA DH ER; feud F Y UW D; few F Y UW; field F IY L D; find F AY N D; "
    "finger F IH NG G ER; fire F AY ER; flew F L UW; flies F L AY Z; floor F L AO R; flu F L UW; "
    "friend F R EH N D; fruit F R UW T; full F UH L; ghost G OW S T; gift G IH F T; glove G L AH V; "
    "gnome N OW M; goes G OW Z; gold G OW L D; grew G R UW; group G R UW P; grow G R OW; guess G EH S; "
    "half HH AE F; hammer HH AE M ER; happier HH AE P IY ER; hear HH IY R; hearts HH AA R T S; hi HH AY; "
    "honor AA N ER; hour AW ER; hurry HH ER IY; hymn HH IH M; i'm AY M; icy AY S IY; india IH N D IY AX; "
    "jobs JH AA B Z; john JH AA N; judge JH AH JH; jumped JH AH M P T; key K IY; kissed K IH S T; "
    "kisses K IH S IH Z; kitten K IH T AX N; known N OW N; lately L EY T L IY; lawyer L AO Y ER; "
    "lazy L EY Z IY; league L IY G; learn L ER N; legs L EH G Z; liked L AY K T; lure L UH R; "
    "medal M EH D AX L; mission M IH SH AX N; my M AY; nation N EY SH AX N; nervous N ER V AX S; no N OW; "
    "off AO F; one W AH N; optician AA P T IH SH AX N; orphan AO R F AX N; pages P EY JH IH Z; "
    "partial P AA R SH AX L; patio P AE T IY OW; peaceful P IY S F AX L; peaches P IY CH IH Z; "
    "pens P EH N Z; per P ER; picture P IH K CH ER; pie P AY; players P L EY ER Z; "
    "playwrights P L EY W R AY T S; pour P AO R; precious P R EH SH AX S; psalm S AA M; puffed P AH F T; "
    "qatar K AE T AA R; quick K W IH K; quizzes K W IH Z IH Z; raccoon R AE K UW N; reached R IY CH T; "
    "revs R EH V Z; roll R OW L; rough R AH F; said S EH D; scene S IY N; school S K UW L; show SH OW; "
    "sign S AY N; slow S L OW; snow S N OW; something S AH M TH IH NG; song S AO NG; soup S UW P; "
    "special S P EH SH AX L; sphere S F IY R; straight S T R EY T; table T EY B AX L; taste T EY S T; "
    "taxi T AE K S IY; tennis T EH N IH S; the DH AX; through TH R UW; thumb TH AH M; times T AY M Z; "
    "tired T AY ER D; toe T OW; tough T AH F; tried T R AY D; tube T UW B; tunnel T AH N AX L; turn T ER N; "
    "two T UW; type T AY P; use Y UW Z; vein V EY N; view V Y UW; vision V IH ZH AX N; walk W AO K; "
    "wanted W AA N T IH D; warm W AO R M; was W AH Z; washed W AA SH T; watch W AA CH; water W AO T ER; "
    "we're W IY R; weather W EH DH ER; weigh W EY; what W AH T; when W EH N; whose HH UW Z; wild W AY L D; "
    "window W IH N D OW; women W IH M IH N; worm W ER M; write R AY T; xenon Z EH N AA N; yell Y EH L; "
    "you Y UW";

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
  // The synthesizer's sounds, by their first letters; what it has besides has no mouth.
  std::istringstream mnemonics(
      "tS t2 aI@ aU eI oU OI OY a V 6 A 0 O o E e I i @L @ 3 U u y Y W dZ S Z s z ts C f pf v T D h x Q p b "
      "t d k g m n N l r R j w * ?");
  std::string shown;
  for (std::string mnemonic; mnemonics >> mnemonic;) shown += convert::SoundOfMnemonic(mnemonic).mouths + ",";
  EXPECT_EQ(
      shown,
      "Ch,T,A I,A U,E I,O U,O I,O I,A,A,A,O,O,O,O,E,E,E,E,L,E,E R,U,U,U,U,U,Ch,Ch,Ch,S,S,S,Ch,F,F,V,Th,Th,"
      ",K,G,P,B,T,D,K,G,M,N,N,L,R,R,E,W,T,,");
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
  convert::VoiceListener steady(16000);
  steady.Listen(support::Samples("50V"));
  for (const auto& hop : steady.Finish()) EXPECT_TRUE(hop.voiced) << "without a quiet to stand out from";
}

TEST(Draft, SoundsFallOnWhatTheySoundLike) {
  using convert::Manner;
  const std::map<char, convert::VoiceHop> heard = {{'.', {-60, 1000, false}},
                                                   {'n', {-20, 3000, false}},
                                                   {'S', {-15, 5500, true}},
                                                   {'s', {-15, 5500, false}},
                                                   {'V', {-2, 900, true}}};
  const std::map<char, convert::SpeechSound> spoken = {{'S', {Manner::kHiss, "S", 115}},
                                                       {'V', {Manner::kVowel, "A", 135}}};
  for (const auto& [sound, text, expected] : std::initializer_list<std::array<std::string, 3>>{
           {"50. 12S 20V 200. 15V", "SV  V", "50-62 62-82 282-297 "},
           {"20V 200. 12s 20V", "V SV", "0-20 220-232 232-252 "},  // a hiss that is no voice
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
           {{{0.1, 0.2, "A"}, {0.32, 0.4, "A"}, {0.6, 0.7, "E"}}, {"", "A", "", "", "", "", "E"}},
           {{{0, 0.1, "A"}}, {"A"}}}) {
    const auto frames = static_cast<double>(shown.size());
    EXPECT_EQ(convert::MouthsOfFrames(spans, std::lround(frames), 0.1 * frames), shown);
  }
  for (const char* vowel : {"A", "E", "I", "O", "U"})
    EXPECT_EQ(convert::MouthsOfFrames({{0, 0.03, vowel}, {0.03, 0.3, "M"}}, 3, 0.3)[0], vowel);
  // Lips and teeth win a frame with a smaller share of it than the vowel before them.
  for (const auto& [begin, end, winners] :
       {std::tuple{0.15, 0.19, "MBPFVW"}, {0.165, 0.195, "MBP"}, {0.175, 0.195, ""}}) {
    for (const std::string mouth : {"M", "B", "P", "F", "V", "W", "S"}) {
      const Spans spans{{0, begin, "A"}, {begin, end, mouth}, {end, 0.3, "E"}};
      EXPECT_EQ(convert::MouthsOfFrames(spans, 3, 0.3)[1] == mouth,
                std::strstr(winners, mouth.c_str()) != nullptr);
    }
  }
}

}  // namespace
