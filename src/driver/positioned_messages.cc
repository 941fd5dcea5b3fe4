#include "driver/positioned_messages.h"

#include <fstream>

PositionedMessages::int_type PositionedMessages::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  if (line_.empty() && where_ != nullptr) position_ = where_();
  line_.push_back(traits_type::to_char_type(c));
  if (c == '\n') WriteLine();
  return c;
}

void PositionedMessages::Flush() {
  if (line_.empty()) return;
  line_.push_back('\n');
  WriteLine();
}

void PositionedMessages::WriteLine() {
  std::string text;
  if (position_.Known())
    text = std::string(position_.file) + ":" + std::to_string(position_.line) + ":" +
           std::to_string(position_.column) + ": ";
  text += line_;
  std::string source = position_.Known() && token_ ? SourceLine(position_) : "";
  if (!source.empty()) {
    // Tabs are kept so that the caret stands under the token whatever the
    // tab width of the reader's terminal.
    std::string caret;
    for (int i = 0; i + 1 < position_.column && i < static_cast<int>(source.size()); ++i)
      caret.push_back(source[i] == '\t' ? '\t' : ' ');
    text += source + "\n" + caret + "^\n";
  }
  target_->sputn(text.data(), static_cast<std::streamsize>(text.size()));
  line_.clear();
  position_ = SourcePosition();
}

std::string PositionedMessages::SourceLine(const SourcePosition& position) {
  std::ifstream file(position.file);
  std::string line;
  for (int number = 1; number <= position.line; ++number)
    if (!std::getline(file, line)) return "";
  return line;
}
