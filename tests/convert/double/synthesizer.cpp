// In the place of the speech synthesizer's library: tells its calls, and speaks the same two words each time.
#include <cstdio>
#include <cstring>

namespace {

struct Event {
  int type = 0, identifier = 0, text_position = 0, length = 0, audio_milliseconds = 0, sample = 0;
  void* user_data = nullptr;
  char mnemonic[8] = {};
};
constexpr int kEnd = 0, kWord = 1, kSentence = 2, kPhoneme = 7;
int (*callback)(short*, int, Event*) = nullptr;

}  // namespace

extern "C" {
int espeak_Initialize(int output, int buffer, const char* path, int options) {
  return std::fprintf(stderr, "Initialize %d %d %s %d\n", output, buffer, path ? path : "-", options);
}
void espeak_SetSynthCallback(int (*heard)(short*, int, Event*)) { callback = heard; }
int espeak_SetVoiceByName(const char* name) {
  std::fprintf(stderr, "Voice %s\n", name);
  return std::strstr(name, "xx") ? 2 : 0;
}
int espeak_Synth(const char* text, std::size_t size, unsigned position, int position_type, unsigned end,
                 unsigned flags, unsigned*, void*) {
  std::fprintf(stderr, "Synth \"%s\" %zu %u %d %u %u\n", text, size, position, position_type, end, flags);
  // Two pieces of sound, the second word beginning with the second; behind an end is nothing to be heard.
  Event first[] = {{.type = kWord, .text_position = 0},  // which no word begins at
                   {.type = kPhoneme, .mnemonic = {'u', ':'}},
                   {.type = kSentence, .text_position = 4},
                   {.type = kEnd},
                   {.type = kPhoneme, .mnemonic = {'m'}}};
  Event second[] = {
      {.type = kPhoneme, .audio_milliseconds = 100, .mnemonic = {'_'}},
      {.type = kWord, .text_position = 4},
      {.type = kPhoneme, .audio_milliseconds = 300, .mnemonic = {'O', 'I', 'a', 'b', 'c', 'd', 'e', 'f'}},
      {.type = kPhoneme, .audio_milliseconds = 400, .mnemonic = {'a'}},
      {.type = kPhoneme, .audio_milliseconds = 800, .mnemonic = {'_', ':'}},
      {.type = kEnd}};
  Event breaths[] = {{.type = kPhoneme, .mnemonic = {'h'}},
                     {.type = kPhoneme, .mnemonic = {'h'}},
                     {.type = kPhoneme, .mnemonic = {'m'}},
                     {.type = kEnd}};
  return callback(nullptr, 0, first) + callback(nullptr, 0, second) +
         (std::strchr(text, 'h') ? callback(nullptr, 0, breaths) : 0);
}
int espeak_Synchronize() { return std::fputs("Synchronize\n", stderr); }
int espeak_Terminate() { return std::fputs("Terminate\n", stderr); }
}
