// SourcePosition is where a statement or token stands in the configuration
// text: the file's path as it was opened, and the line and column, both
// counted from 1.  A position without a file is unknown: objects that the
// compile makes rather than the text have none.
#ifndef FW_MODEL_SOURCE_POSITION_H
#define FW_MODEL_SOURCE_POSITION_H

struct SourcePosition {
  // Lives as long as the run; null for an unknown position.
  const char* file = nullptr;
  int line = 0;
  int column = 0;

  bool Known() const { return file != nullptr; }
};

#endif
