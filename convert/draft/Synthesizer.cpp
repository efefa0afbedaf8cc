#include "convert/draft/Synthesizer.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace convert {
namespace {

// The library's published interface, as far as it is used: it is opened at run time, so that the program
// needs neither it nor its headers.
enum EventType { kEnd = 0, kWord = 1, kPhoneme = 7 };
struct Event {
  int type;
  unsigned unique_identifier;
  int text_position;  // in characters, from 1
  int length;
  int audio_milliseconds;
  int sample;
  void* user_data;
  union {
    int number;
    const char* name;
    char mnemonic[8];
  } id;
};
constexpr int kRetrieve = 1;  // the sound is handed over, not played
constexpr int kPhonemeEvents = 1;
constexpr int kDontExit = 0x8000;
constexpr unsigned kTextIsUtf8 = 1;
constexpr int kCharacterPosition = 1;

/// What the callback hears of one phrase.
struct Heard {
  std::vector<Event> events;
};
Heard* g_heard = nullptr;

int TakeEvents(short*, int, Event* events) {
  for (; g_heard && events->type != kEnd; ++events) g_heard->events.push_back(*events);
  return 0;
}

std::int64_t Characters(std::string_view text) {
  return std::count_if(text.begin(), text.end(),
                       [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; });
}

std::string_view MnemonicOf(const Event& event) {
  const std::string_view all(event.id.mnemonic, sizeof event.id.mnemonic);
  return all.substr(0, all.find('\0'));
}

}  // namespace

struct Synthesizer::Library {
  void* handle = nullptr;
  int (*initialize)(int output, int buffer_milliseconds, const char* path, int options) = nullptr;
  void (*set_callback)(int (*)(short*, int, Event*)) = nullptr;
  int (*set_voice)(const char* name) = nullptr;
  int (*synthesize)(const void* text, std::size_t size, unsigned position, int position_type, unsigned end,
                    unsigned flags, unsigned* identifier, void* user_data) = nullptr;
  int (*synchronize)() = nullptr;
  int (*terminate)() = nullptr;

  template <typename Function>
  bool Get(const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(handle, name));
    return function != nullptr;
  }
  bool Open() {
    handle = dlopen("libespeak-ng.so.1", RTLD_NOW | RTLD_LOCAL);
    return handle && Get("espeak_Initialize", initialize) && Get("espeak_SetSynthCallback", set_callback) &&
           Get("espeak_SetVoiceByName", set_voice) && Get("espeak_Synth", synthesize) &&
           Get("espeak_Synchronize", synchronize) && Get("espeak_Terminate", terminate);
  }
};

Synthesizer::Synthesizer(std::unique_ptr<Library> library) : library_(std::move(library)) {}

Synthesizer::~Synthesizer() {
  library_->terminate();
  dlclose(library_->handle);
}

std::unique_ptr<Synthesizer> Synthesizer::Find(const std::string& language) {
  auto library = std::make_unique<Library>();
  if (!library->Open() || library->initialize(kRetrieve, 0, nullptr, kPhonemeEvents | kDontExit) <= 0)
    return nullptr;
  std::unique_ptr<Synthesizer> synthesizer(new Synthesizer(std::move(library)));
  if (synthesizer->library_->set_voice(language.c_str()) != 0) return nullptr;
  synthesizer->library_->set_callback(TakeEvents);
  return synthesizer;
}

std::vector<std::vector<SpeechSound>> Synthesizer::SoundsOf(const std::vector<std::string>& words) {
  std::string text;
  std::vector<std::int64_t> first_characters;
  for (const std::string& word : words) {
    first_characters.push_back(Characters(text) + 1);
    text += word + " ";
  }
  Heard heard;
  g_heard = &heard;
  library_->synthesize(text.c_str(), text.size() + 1, 0, kCharacterPosition, 0, kTextIsUtf8, nullptr,
                       nullptr);
  library_->synchronize();
  g_heard = nullptr;

  std::vector<std::vector<SpeechSound>> sounds(words.size());
  std::size_t word = 0;
  SpeechSound* last = nullptr;
  int last_begin = 0;
  for (const Event& event : heard.events) {
    if (event.type == kWord) {
      const auto behind =
          std::upper_bound(first_characters.begin(), first_characters.end(), event.text_position);
      word = static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - first_characters.begin(), 1) - 1);
    }
    if (event.type != kPhoneme) continue;
    if (last) last->milliseconds = std::max(event.audio_milliseconds - last_begin, 10);
    last = nullptr;
    const SpeechSound sound = SoundOfMnemonic(MnemonicOf(event));
    if (sound.milliseconds <= 0) continue;
    sounds[word].push_back(sound);
    last = &sounds[word].back();
    last_begin = event.audio_milliseconds;
  }
  return sounds;
}

}  // namespace convert
