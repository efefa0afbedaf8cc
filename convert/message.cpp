#include "convert/message.h"

namespace convert {
namespace {

constexpr std::size_t kMostBytesQuoted = 60;

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; }

}  // namespace

std::string Filled(const std::string& text, const std::vector<std::string>& arguments) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool place = text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9';
    const auto argument = place ? static_cast<std::size_t>(text[i + 1] - '1') : arguments.size();
    if (argument >= arguments.size()) {
      filled += text[i];
      continue;
    }
    filled += arguments[argument];
    ++i;
  }
  return filled;
}

std::string InEnglish(const Message& message) {
  std::vector<std::string> arguments = message.arguments;
  for (const Message& inner : message.inner) arguments.push_back(InEnglish(inner));
  return Filled(message.text, arguments);
}

std::string Quoted(const std::string& text) {
  std::size_t end = text.size();
  if (end > kMostBytesQuoted) {
    end = kMostBytesQuoted;
    while (end > 0 && IsContinuation(text[end])) --end;
  }
  std::string quoted = "\"";
  for (std::size_t i = 0; i < end; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    quoted += byte < 0x20 || byte == 0x7f ? ' ' : text[i];
  }
  return quoted + (end < text.size() ? "...\"" : "\"");
}

}  // namespace convert
