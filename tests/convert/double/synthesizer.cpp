// In the place of the speech synthesizer's library: tells its calls, and speaks the same two words each time.
#include <cstdio>
#include <cstring>

namespace {

struct Event {
  int type = 0;
  unsigned unique_identifier = 0;
  int text_position = 0, length = 0, audio_milliseconds = 0, sample = 0;
  void* user_data = nullptr;
  union {
    const char* name;
    char mnemonic[8];
  } id{};
};
constexpr int kEnd = 0, kWord = 1, kSentence = 2, kPhoneme = 7;
int (*callback)(short*, int, Event*) = nullptr;

Event Spoken(int milliseconds, const char* mnemonic) {
  Event event{.type = kPhoneme, .audio_milliseconds = milliseconds};
  std::memcpy(event.id.mnemonic, mnemonic, std::strlen(mnemonic));
  return event;
}

}  // namespace

extern "C" {
int espeak_Initialize(int output, int buffer, const char* path, int options) {
  std::fprintf(stderr, "Initialize %d %d %s %d\n", output, buffer, path ? path : "-", options);
  return 22050;
}
void espeak_SetSynthCallback(int (*heard)(short*, int, Event*)) { callback = heard; }
int espeak_SetVoiceByName(const char* name) {
  std::fprintf(stderr, "Voice %s\n", name);
  return std::strstr(name, "xx") ? 2 : 0;
}
int espeak_Synth(const void* text, std::size_t size, unsigned position, int position_type, unsigned end,
                 unsigned flags, unsigned*, void*) {
  std::fprintf(stderr, "Synth \"%s\" %zu %u %d %u %u\n", static_cast<const char*>(text), size, position,
               position_type, end, flags);
  // Two pieces of sound, the second word beginning with the second piece; behind the end is no event.
  Event first[] = {{kWord, 0, 1}, Spoken(0, "u:"), {kSentence, 0, 4}, {kEnd}, Spoken(50, "m")};
  Event second[] = {{kWord, 0, 4}, Spoken(100, "OIabcdef"), Spoken(200, "a"), Spoken(600, "_:"), {kEnd}};
  callback(nullptr, 0, first);
  callback(nullptr, 0, second);
  return 0;
}
int espeak_Synchronize() { return std::fputs("Synchronize\n", stderr); }
int espeak_Terminate() { return std::fputs("Terminate\n", stderr); }
}
