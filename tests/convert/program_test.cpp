// The program itself: its streams, its statuses, and what it leaves on the disk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "tests/convert/sheets.h"

namespace {

namespace fs = std::filesystem;
using support::FileBytes;
using testing::HasSubstr;
using testing::StartsWith;
const std::string kOwn = "exposure-sheet-convert: ";

class ConvertProgram : public testing::Test {
 protected:
  ConvertProgram() : folder_(fs::path(testing::TempDir()) / ("convert-program-" + std::to_string(getpid()))) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~ConvertProgram() override { fs::remove_all(folder_); }

  /// Runs a line of the shell in the folder, $C being the program and $S the samples. Result: the exit
  /// status.
  int Run(const std::string& line) {
    const std::string script = "unset QT_QPA_PLATFORM DISPLAY XDG_RUNTIME_DIR; cd '" + folder_.string() +
                               "' && C='" CONVERT_PROGRAM "' && S='" SOURCE_DIR "/samples' && { " + line +
                               "; } >out 2>err";
    const int status = std::system(script.c_str());
    out_ = FileBytes(folder_ / "out");
    err_ = FileBytes(folder_ / "err");
    return WEXITSTATUS(status);
  }
  std::string File(const std::string& name) { return FileBytes(folder_ / name); }

  fs::path folder_;
  std::string out_, err_;
};

TEST_F(ConvertProgram, ReplacesAFileOnlyByForceAndLeavesNothingHalfWritten) {
  for (const auto& [from, to] : {std::pair{"$S/frogs.exp", "x.dat"}, {"$S/frogs.wav", "x.wav"}}) {
    ASSERT_EQ(Run("echo old >" + std::string(to) + "; $C --rules " + from + " " + to), 1);
    EXPECT_EQ(err_, kOwn + to + ": is there already (see --force)\n");
    EXPECT_EQ(File(to), "old\n");
    // With a wrong input the output stays as it was, with --force too.
    ASSERT_EQ(Run("$C --force --from " + std::string(to + 2) + " - " + to + " </dev/null"), 1);
    EXPECT_EQ(File(to), "old\n");
  }
  ASSERT_EQ(Run("$C --force $S/frogs.exp x.dat && rm x.wav"), 0);
  EXPECT_THAT(File("x.dat"), StartsWith("MohoSwitch1\n1 FV\n"));
  ASSERT_EQ(Run("ln -s gone link.dat; $C $S/frogs.exp link.dat"), 1) << "a link to nothing is there too";
  // Everything that fails names the file and the reason, in one line, and leaves nothing.
  ASSERT_EQ(Run("mkdir d d.tsv d.wav; echo no | tee no.wav >bad.tsv; echo A >names; "
                "sed 2s/24/0/ $S/frogs.exp >still.exp"),
            0);
  for (const auto& [line, said] : std::initializer_list<std::pair<std::string, std::string>>{
           {"$C gone.exp y.dat", "gone.exp: No such file or directory"},
           {"$C bad.tsv y.dat", "bad.tsv: line 1: expected seconds, a tab and a letter, found \"no\""},
           {"$C d.tsv y.dat", "d.tsv: Is a directory"},
           {"$C d.wav y.wav", "d.wav: Is a directory"},
           {"$C no.wav y.wav", "no.wav: F"},
           {"$C --sound gone.wav $S/frogs.exp y.exp", "gone.wav: No such file or directory"},
           {"$C --shapes gone $S/frogs.exp y.dat", "gone: No such file or directory"},
           {"$C --shapes names $S/frogs.exp y.dat", "names: line 1: expected names of the sheet"},
           {"$C $S/frogs.exp gone/y.dat", "gone/y.dat: No such file or directory"},
           {"$C still.exp y.tsv", "y.tsv: the sheet's rate, \"0\", gives no times (see --rate)"},
           {"$C --to csv $S/frogs.exp - >/dev/full", "standard output: No space left on device"},
           {"$C --to csv $S/frogs.exp /dev/full", "/dev/full: No space left on device"},
           {"$C --to wav $S/frogs.wav - >/dev/full", "standard output: No space left on device"},
           {"ulimit -f 1; $C $S/frogs.exp y.pdf", "y.pdf: File too large"},
           {"ulimit -f 1; $C $S/frogs.wav y.wav", "y.wav: File too large"},
           {"ulimit -f 1; cat $S/frogs.wav | $C --from wav - y.wav", "standard input: File too large"},
           {"head -c 100000000 /dev/zero | $C --from tsv - y.dat", "standard input: File too large"}}) {
    EXPECT_EQ(Run(line), 1) << line;
    EXPECT_THAT(err_, testing::MatchesRegex(kOwn + "[^\n]*\n")) << line;
    EXPECT_THAT(err_, StartsWith(kOwn + said)) << line;
  }
  ASSERT_EQ(Run("rm -r d* n* still.exp; ls -A"), 0);
  EXPECT_EQ(out_, "bad.tsv\nerr\nlink.dat\nout\nx.dat\n");
}

TEST_F(ConvertProgram, WorksInAPipe) {
  ASSERT_EQ(Run("iconv -t utf-16 $S/frogs.exp | $C --from EXP --to csv - - | (printf '\\376\\377'; iconv -t "
                "utf-16be) | $C --from csv --to xdts - - | $C --from xdts --rate 24 - back.exp"),
            0);
  EXPECT_EQ(File("back.exp").substr(0, 23), "ExposureSheet02\r\n24\r\n\r\n");
  ASSERT_EQ(Run("cp $S/frogs.wav A.WAV; $C A.WAV Z.AIFF; $C Z.AIFF z.wav; cmp z.wav $S/frogs.wav"), 0)
      << err_;
  ASSERT_EQ(Run("cat $S/frogs.wav | $C --from wav --to wav - - | cmp - $S/frogs.wav"), 0) << err_;
  ASSERT_EQ(Run("mkfifo p; wc -l <p & $C --to csv $S/frogs.exp p; wait; test -p p"), 0) << err_;
  EXPECT_EQ(out_, "72\n");
  EXPECT_EQ(Run("printf 'MohoSwitch1\n1 grin\n' | $C --from dat --to csv - -"), 0);
  EXPECT_THAT(err_, HasSubstr("standard input: line 2: the table of names has no mouth \"grin\""));
  ASSERT_EQ(Run("for p in letter A4; do $C --paper $p --to pdf $S/frogs.exp - | grep -ao 'Box .0 0 [0-9]*' | "
                "uniq; done"),
            0);
  EXPECT_EQ(out_ + err_, "Box [0 0 612\nBox [0 0 595\n") << "the sound beside the sheet is found";
  // Names in the encodings of their time.
  ASSERT_EQ(Run("sed 's/frogs.wav/\\xe4.wav/; s/Five/F\\xc3\\xbcnf/' $S/frogs.exp >l.exp; $C l.exp m.exp && "
                "cmp l.exp m.exp; printf '<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><rhubarbResult>"
                "<soundFile>\\344.wav</soundFile><mouthCue start=\"0\">A</mouthCue></rhubarbResult>' | "
                "$C --from xml --to pgo - - | sed -n 2p"),
            0);
  EXPECT_EQ(out_, "\xc3\xa4.wav\n");
  // A sheet without frames goes out in every format, and back as one.
  ASSERT_EQ(Run("echo Frame >e.csv; for f in exp dat tsv pgo xdts pdf svg; do $C --rate 24 e.csv e.$f; "
                "printf $?; test ${f%df} = p -o $f = svg || $C e.$f - --rate 24 --to csv | wc -l; done"),
            0);
  EXPECT_EQ(out_, "01\n02\n01\n01\n01\n00");
}

TEST_F(ConvertProgram, SpeaksTheUsersLanguage) {
  // A language without a catalogue is passed over; English needs none, so nothing behind it counts.
  const std::string wrong = "printf 'lipsync version 1\nv\n0\n' | $C --from pgo --to csv - -";
  ASSERT_EQ(Run("export LC_ALL=C.UTF-8 LANGUAGE=fr:de_AT; " + wrong), 1);
  EXPECT_THAT(err_, HasSubstr("Zeile 3: erwartet wird eine Bildrate über 0, da steht \"0\""));
  ASSERT_EQ(Run("export LC_ALL=C.UTF-8 LANGUAGE=en_GB:de; " + wrong), 1);
  EXPECT_THAT(err_, HasSubstr("line 3: expected a frame rate above 0, found \"0\""));
}

TEST_F(ConvertProgram, TellsAWrongCommandLine) {
  for (const auto& [line, said] : std::initializer_list<std::pair<const char*, const char*>>{
           {"$C a.exp", "expected an input and an output"},
           {"$C a.pdf b.exp", "pdf can only be written"},
           {"$C a.exp b.json", "json can only be"},
           {"$C a.wav b.exp", "a sound becomes a sound"},
           {"$C a.txt b.exp", "see --sound"},
           {"$C --rate 0 a.exp b.dat", "--rate: expected a number above 0, found \"0\""},
           {"$C --rate 1e3 a.exp b.dat", "--rate: expected a number above 0, found \"1e3\""},
           {"$C --from txt --sound - - b.exp", "input and sound can't both come from the standard input"},
           {"$C exp b.dat", "can't tell the format of \"exp\" by its name (see --from)"},
           {"$C a.exp b.exp/b", "can't tell the format of \"b.exp/b\" by its name (see --to)"},
           {"$C --paper A3 a.exp b.pdf", "--paper: expected A4 or Letter, found \"A3\""},
           {"$C --colour a.exp b.dat", "there is no option --colour"},
           {"$C a.exp b.dat --rate", "--rate needs a value"},
           {"$C --from html a.exp b.dat", "there is no format \"html\""}}) {
    EXPECT_EQ(Run(line), 2) << line;
    EXPECT_THAT(err_, HasSubstr(said)) << line;
    EXPECT_THAT(out_ + err_, testing::EndsWith("\nexposure-sheet-convert: --help tells more\n")) << line;
  }
  // Statuses of files that aren't there: 1 where the formats go together.
  EXPECT_EQ(
      Run("for f in exp sheet dat tsv xml json pgo xdts csv pdf svg wav txt; do $C n.$f b.exp; printf $?; "
          "$C n.exp $f.$f; printf \"$? \"; done; for f in WAVE flac ogg oga opus mp3 aif aiff aifc au snd "
          "caf w64 rf64 bwf voc; do $C n.$f b.wav; printf $?; done"),
      0);
  EXPECT_EQ(out_, "11 11 11 11 12 12 11 11 11 21 21 22 22 1111111111111111");
  EXPECT_EQ(Run("{ $C -h; $C -V; } >short; $C --help && $C --version && cmp short out"), 0);
  EXPECT_THAT(out_, StartsWith("Usage: exposure-sheet-convert "));
  for (const char* told : {" -, the standard", "\n  exp  ", "\n  txt  ", "\n  --rate ", "\n  --help, "})
    EXPECT_THAT(out_, HasSubstr(told));
  EXPECT_THAT(out_, HasSubstr("isn't understood.\nexposure-sheet-convert 2."));
  ASSERT_EQ(Run("$C --print-shapes >own && cmp own $S/../assets/shapes.txt"), 0) << err_;
}

TEST_F(ConvertProgram, AsksTheSynthesizerForTheSoundsOfWords) {
  support::MakeSound(folder_ / "v.au", "10. 60V 20.");
  support::MakeSound(folder_ / "empty.au", "");
  const std::string draft =
      "printf 'O\\303\\271 \\303\\240 a' >w.txt; LD_LIBRARY_PATH=" DOUBLE_FOLDER " $C --rate 100 w.txt ";
  ASSERT_EQ(Run(draft + "--to csv --sound v.au --language fr --paper a4 - | cut -d, -f1-3 | grep -v ',,$'"),
            0);
  const std::string said = "exposure-sheet-convert: w.txt: this is a draft: go through it by ear\n";
  EXPECT_THAT(err_,
              StartsWith("Initialize 1 0 - 32769\nVoice fr\nSynth \"O\xc3\xb9 \xc3\xa0 a \" 10 0 1 0 1\n"
                         "Synchronize\nTerminate\n" +
                         said));
  // A sixth of the voice each for the first two sounds, the second of which has two mouths.
  EXPECT_EQ(out_,
            "Frame,Shape,Comment\n0,Closed,\n10,U,O\xc3\xb9\n20,O,\xc3\xa0 a\n25,I,\n30,A,\n70,Closed,\n");
  // Six sounds share five hundredths of a second evenly; two breaths have the mouth that follows them.
  support::MakeSound(folder_ / "short.au", "5V");
  ASSERT_EQ(Run("printf 'oh oa' >h.txt; LD_LIBRARY_PATH=" DOUBLE_FOLDER " $C --rate 200 --to csv h.txt - "
                "--sound short.au --language fr | cut -d, -f1-3 | grep -v ',,$'"),
            0);
  EXPECT_EQ(out_, "Frame,Shape,Comment\n0,O,oh oa\n1,I,\n2,A,\n4,M,\n");
  const std::string mute =
      " can't be spelled: the library of espeak-ng isn't there, or has no voice of that name\n";
  // English needs no synthesizer, and says so unless none was asked for.
  for (const auto& [options, status, told] : std::initializer_list<std::tuple<std::string, int, std::string>>{
           {"--sound v.au --rules", 0, "with exposure-sheet-convert first\n" + said},
           {"--sound v.au --language en-xx", 0,
            said + "exposure-sheet-convert: w.txt: the words are spelled by rules for English; with the "
                   "library of espeak-ng other languages are possible\n"},
           {"--sound v.au --language xx", 1,
            "Terminate\nexposure-sheet-convert: w.txt: words in the language \"xx\"" + mute},
           {"--sound v.au --language de --rules", 1, "words in the language \"de\"" + mute},
           {"--sound empty.au", 1, "w.txt: the sound to lay it along is empty\n"}}) {
    EXPECT_EQ(Run("rm -f d.exp; " + draft + options + " d.exp; r=$?; test $r = 0 -o ! -e d.exp && exit $r"),
              status)
        << options;
    EXPECT_THAT(err_, testing::EndsWith(told)) << options;
  }
}

TEST_F(ConvertProgram, TellsWhatIsNoLongerAsItWas) {
  ASSERT_EQ(
      Run("printf '47,E\\n47,A\\n0,I\\n0,O\\n' >t.csv; $C t.csv t.exp; printf '.snd\\0\\0\\0\\30\\0\\0\\0"
          "\\4\\0\\0\\0\\3\\0\\0\\37\\100\\0\\0\\0\\2\\0\\0\\0\\0' >s.au; $C s.au s.wav"),
      0);
  EXPECT_EQ(err_, kOwn + "t.csv: no frame rate is told; it is taken to be 24 (see --rate)\n" + kOwn +
                      "t.csv: 2 mouths shorter than a frame are left out, the first at frame 0\n" + kOwn +
                      "s.wav: 2 channels are mixed to one\n");
  ASSERT_EQ(Run("for n in 22 19; do for i in $(seq $n); do echo $i,grin; done >g.csv; $C --force g.csv g.exp "
                "2>n; wc -l <n; sed -n '/more/p' n; done"),
            0);
  EXPECT_EQ(out_, "21\n" + kOwn + "g.csv: 3 more like it\n20\n");
}

TEST_F(ConvertProgram, TakesTheLengthOfASoundAndATableOfNames) {
  ASSERT_EQ(Run("cp $S/frogs.wav . && printf 'MohoSwitch1\\n1 gape\\n5 shut\\n' >a.dat && "
                "printf '\\357\\273\\277A | gape | D\\nClosed | shut | X\\n' >names && "
                "$C --shapes names --sound frogs.wav --rate 12 a.dat b.exp"),
            0)
      << err_;
  // 2.96 seconds at 12 frames a second, and the heading.
  const std::string start =
      "ExposureSheet02\r\n12\r\n" + (folder_ / "frogs.wav").string() +
      "\r\nReserved\r\nReserved\r\n 37 \r\n 3 \r\nReserved\r\nReserved\r\n0\r\nA \r\n\r\n1\r\n\r\n";
  EXPECT_THAT(File("b.exp"), StartsWith(start));
  // What a format leaves out is told of the output, and nothing of it is lost by what is told before.
  ASSERT_EQ(
      Run("sed 's/frogs.wav/gone.wav/; 0,/True/s/True/False/' $S/frogs.exp >c.2.exp && $C c.2.exp c.svg"), 0);
  EXPECT_THAT(File("c.svg"), HasSubstr("<title>c.2</title>"));
  EXPECT_EQ(err_, kOwn + "c.svg: the sound \"gone.wav\" can't be read; its waveform is left out\n" + kOwn +
                      "c.svg: the lock and the tracks' visibility are left out: the format has none\n");
  // A sound that is given takes the place of the sheet's own, and is drawn as wide as it goes: silence isn't.
  support::MakeSound(folder_ / "mute.au", "20_");
  support::MakeSound(folder_ / "low.au", "20B");
  ASSERT_EQ(
      Run("for s in $S/frogs.wav low.au mute.au; do $C --sound - --to svg $S/frogs.exp - <$s | grep -oE "
          "'<path|L78[45]' | sort -u | tr '\\n' ' '; echo; done; "
          "$C --from exp --to svg - - <$S/frogs.exp | grep '<title>'; $C --to svg c.2.exp - 2>&1 | grep -o "
          "'<title>.*'"),
      0);
  EXPECT_EQ(out_, "<path L784 \n<path L785 \n\n<title>c.2</title>\n");
  ASSERT_EQ(Run("for f in frogs.wav -; do $C --sound $f --to pgo c.2.exp - <frogs.wav | sed -n 2p; done"), 0);
  EXPECT_EQ(out_, (folder_ / "frogs.wav").string() + "\ngone.wav\n") << "the standard input has no name";
  EXPECT_THAT(File("b.exp"), HasSubstr("\r\n4\r\nClosed \r\n\r\n5\r\n\r\n\r\n6\r\n"));
}

}  // namespace
