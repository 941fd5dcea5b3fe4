// PositionedMessages is a stream buffer that writes each line of messages
// to a target buffer behind the position it concerns, "file:line:column: ",
// the position being asked for when the line starts.  For a token's
// position it adds the source line and a caret under the token, as C
// compilers do.  Lines whose position is unknown pass unchanged.
#ifndef FW_DRIVER_POSITIONED_MESSAGES_H
#define FW_DRIVER_POSITIONED_MESSAGES_H

#include <streambuf>
#include <string>

#include "model/source_position.h"

class PositionedMessages : public std::streambuf {
 public:
  using Where = SourcePosition (*)();
  // Nothing is written to `target` before a line ends or Flush.
  explicit PositionedMessages(std::streambuf* target) : target_(target) {}
  ~PositionedMessages() override { Flush(); }

  // Where the lines started from now on stand, and whether that is a token.
  void Locate(Where where, bool token) {
    where_ = where;
    token_ = token;
  }
  // Writes a started line as if it had ended.
  void Flush();

 protected:
  int_type overflow(int_type c) override;

 private:
  void WriteLine();
  // The line of the file, without its end; empty when it can't be read.
  static std::string SourceLine(const SourcePosition& position);

  std::streambuf* target_;
  Where where_ = nullptr;
  bool token_ = false;
  std::string line_;
  SourcePosition position_;
};

#endif
