// What the program says, kept apart from the language in which it is said.
#pragma once

#include <string>
#include <vector>

// Marks a text for the catalogue of translations and leaves it as it is, as the toolkit's macro of that name
// does: the files here know no toolkit. It is spelled exactly as there, since a file may include both.
#ifndef QT_TRANSLATE_NOOP
#define QT_TRANSLATE_NOOP(scope, x) x
#endif

namespace convert {

/// An English text, marked for the catalogue's context "convert", with %1, %2, ... where its arguments go.
struct Message {
  const char* text = "";
  std::vector<std::string> arguments = {};
  /// Messages that go into this one, numbered on from the arguments: they are translated too.
  std::vector<Message> inner = {};

  bool Empty() const { return *text == '\0'; }
};

/// The text with its arguments in place of %1 to %9. What stands in an argument is never replaced again.
std::string Filled(const std::string& text, const std::vector<std::string>& arguments);
std::string InEnglish(const Message& message);

/// A piece of a file for a message: in quotes, short, without control characters, cut between characters.
std::string Quoted(const std::string& text);

using Messages = std::vector<Message>;

}  // namespace convert
